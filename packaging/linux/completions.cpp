// What bash, fish and zsh offer after `exflate`.
#include <algorithm>
#include <map>

#include "cli/arguments/tables.h"
#include "pages.h"

namespace {

using cli::Command;
using cli::Completion;
using cli::Option;

std::string plain(std::string_view text) {
    return std::string(text);
}

std::string joined(const std::vector<std::string>& texts, const std::string& between) {
    std::string result;
    for (const std::string& text : texts) result += (result.empty() ? "" : between) + text;
    return result;
}

// "-o", "--output"
std::vector<std::string> spellings(const Option& option) {
    std::vector<std::string> result;
    if (option.letter != '\0') result.push_back({'-', option.letter});
    result.emplace_back(option.name);
    return result;
}

std::string command_names() {
    return joined(cli::command_names(), " ");
}

// In single quotes, as each of the shells reads them.
std::string quoted(std::string_view text, std::string_view quote) {
    std::string result = "'";
    for (const char c : text) result += c == '\'' ? plain(quote) : std::string(1, c);
    return result + "'";
}

std::string bash_kind(Completion completion, std::string_view choices) {
    switch (completion) {
        case Completion::file:
            return "file";
        case Completion::folder:
            return "folder";
        case Completion::animation:
            return "animation";
        case Completion::choice:
            return quoted(choices, "");
        case Completion::command:
            return quoted(command_names(), "");
        case Completion::nothing:
            break;
    }
    return "nothing";
}

constexpr const char* kBash = R"(# What bash offers after `exflate`.
_exflate() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=@default@ options kind
    COMPREPLY=()
    if [ "$COMP_CWORD" -gt 1 ]; then
        case ${COMP_WORDS[1]} in
            @commands|@) command=${COMP_WORDS[1]} ;;
        esac
    fi
    case $command in
@options@    esac
    case "$command $previous" in
@values@        *)
            if [[ $current == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
                return
            fi ;;
    esac
    case $kind in
        nothing) ;;
        file) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        folder) mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        animation)
            mapfile -t COMPREPLY < <(
                [ "$COMP_CWORD" -gt 1 ] || compgen -W '@commands@' -- "$current"
                compgen -d -- "$current"
                for ending in json lottie tgs; do compgen -f -X "!*.$ending" -- "$current"; done) ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$kind" -- "$current") ;;
    esac
    case $kind in
        file | folder | animation) compopt -o filenames 2>/dev/null ;;
    esac
}
complete -F _exflate exflate
)";

constexpr const char* kZsh = R"(#compdef exflate
# What zsh offers after `exflate`.
_exflate() {
    local -a subcommands arguments
    subcommands=(
@subcommands@    )
    local subcommand=@default@
    if (( CURRENT > 2 )) && [[ $words[2] == (@commands|@) ]]; then
        subcommand=$words[2]
        shift words
        (( CURRENT-- ))
    elif (( CURRENT == 2 )); then
        [[ $PREFIX == -* ]] || _describe -t commands subcommand subcommands
    fi
    case $subcommand in
@options@    esac
    _arguments -s -S $arguments
}
_exflate "$@"
)";

std::string filled(std::string text, const std::map<std::string, std::string>& parts) {
    for (const auto& [name, part] : parts) {
        for (std::size_t at; (at = text.find('@' + name + '@')) != std::string::npos;) {
            text.replace(at, name.size() + 2, part);
        }
    }
    return text;
}

std::string zsh_action(Completion completion, std::string_view choices) {
    switch (completion) {
        case Completion::file:
            return "_files";
        case Completion::folder:
            return "_directories";
        case Completion::animation:
            return "_files -g \"*.(json|lottie|tgs)(-.)\"";
        case Completion::choice:
            return "(" + plain(choices) + ")";
        case Completion::command:
            return "(" + command_names() + ")";
        case Completion::nothing:
            break;
    }
    return " ";
}

// '(-o --output --out-dir)'{-o+,--output=}'[write the result to OUT]:OUT:_files'
std::string zsh_option(const Option& option, const Command& command) {
    std::vector<std::string> excluded = spellings(option);
    for (const Option* other : cli::excluded_by(option, command)) {
        const auto more = spellings(*other);
        excluded.insert(excluded.end(), more.begin(), more.end());
    }
    std::string before = option.repeats ? "*" : "(" + joined(excluded, " ") + ")";
    if (option.commands == cli::kEveryCommand) before = "(- *)";
    std::vector<std::string> names = spellings(option);
    if (!option.value.empty()) {
        for (std::string& name : names) name += name.starts_with("--") ? '=' : '+';
    }
    const std::string name = names.size() == 1 ? names.front() : "{" + joined(names, ",") + "}";
    std::string rest = "[" + plain(option.brief) + "]";
    if (!option.value.empty()) {
        rest += ":" + plain(option.value) + ":" + zsh_action(option.completion, option.choices);
    }
    return quoted(before, "") + name + quoted(rest, "'\\''");
}

// Of those that take the option, or that do not.
std::string takers(const Option& option, bool taking) {
    std::vector<std::string> names;
    for (const Command& command : cli::all_commands()) {
        const auto known = cli::options_of(command);
        if ((std::find(known.begin(), known.end(), &option) != known.end()) == taking) names.emplace_back(command.name);
    }
    return joined(names, " ");
}

std::string fish_condition(const Option& option) {
    if (option.commands == cli::kEveryCommand) return "";
    const auto taking = cli::words(option.commands);
    const bool is_default = std::find(taking.begin(), taking.end(), cli::kDefaultCommand) != taking.end();
    const std::string seen = "__fish_seen_subcommand_from ";
    return " -n '" + (is_default ? "not " + seen + takers(option, false) : seen + takers(option, true)) + "'";
}

std::string fish_value(const Option& option) {
    if (option.value.empty()) return "";
    switch (option.completion) {
        case Completion::file:
            return " -r -F";
        case Completion::folder:
            return " -x -a '(__fish_complete_directories)'";
        case Completion::choice:
            return " -x -a " + quoted(option.choices, "");
        default:
            return " -x";
    }
}

}  // namespace

std::string bash_completions() {
    std::string options;
    std::string values;
    for (const Command& command : cli::all_commands()) {
        std::vector<std::string> names;
        for (const Option* option : cli::options_of(command)) {
            const auto more = spellings(*option);
            names.insert(names.end(), more.begin(), more.end());
            if (option->value.empty()) continue;
            std::vector<std::string> patterns;
            for (const std::string& name : more) patterns.push_back('"' + plain(command.name) + ' ' + name + '"');
            values += "        " + joined(patterns, " | ") +
                      ") kind=" + bash_kind(option->completion, option->choices) + " ;;\n";
        }
        options += "        " + plain(command.name) + ") kind=" + bash_kind(command.completion, "") + " options='" +
                   joined(names, " ") + "' ;;\n";
    }
    return filled(kBash, {{"default", plain(cli::kDefaultCommand)},
                          {"commands", command_names()},
                          {"commands|", joined(cli::command_names(), " | ")},
                          {"options", options},
                          {"values", values}});
}

std::string zsh_completions() {
    std::string subcommands;
    std::string options;
    for (const Command& command : cli::all_commands()) {
        subcommands += "        " + quoted(plain(command.name) + ':' + plain(command.brief), "'\\''") + '\n';
        options += "        " + plain(command.name) + ") arguments=(\n";
        for (const Option* option : cli::options_of(command)) {
            options += "            " + zsh_option(*option, command) + '\n';
        }
        if (!command.operands.empty()) {
            const bool repeats = command.operands.ends_with("...");
            options +=
                "            " +
                quoted((repeats ? "*:" : ":") +
                           plain(repeats ? command.operands.substr(0, command.operands.size() - 3) : command.operands) +
                           ':' + zsh_action(command.completion, ""),
                       "'\\''") +
                '\n';
        }
        options += "        ) ;;\n";
    }
    return filled(kZsh, {{"default", plain(cli::kDefaultCommand)},
                         {"commands|", joined(cli::command_names(), "|")},
                         {"subcommands", subcommands},
                         {"options", options}});
}

std::string fish_completions() {
    std::string text = "# What fish offers after `exflate`.\n";
    for (const Command& command : cli::all_commands()) {
        text += "complete -c exflate -n 'not __fish_seen_subcommand_from " + command_names() + "' -a " +
                plain(command.name) + " -d " + quoted(command.brief, "\\'") + '\n';
        if (command.completion == Completion::command) {
            text += "complete -c exflate -n '__fish_seen_subcommand_from " + plain(command.name) + "' -f -a '" +
                    command_names() + "'\n";
        } else if (command.completion == Completion::nothing) {
            text += "complete -c exflate -n '__fish_seen_subcommand_from " + plain(command.name) + "' -f\n";
        }
    }
    for (const Option& option : cli::all_options()) {
        text += "complete -c exflate" + fish_condition(option);
        for (const std::string& name : spellings(option)) {
            text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        text += fish_value(option) + " -d " + quoted(option.brief, "\\'") + '\n';
    }
    return text;
}
