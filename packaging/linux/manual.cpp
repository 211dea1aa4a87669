// The manual page, in the language of man.
#include <algorithm>
#include <sstream>

#include "cli/arguments/help.h"
#include "pages.h"

namespace {

using cli::Command;
using cli::Explained;
using cli::Option;

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else if (c == '\'') {
            result += "\\(aq";
        } else {
            result += c;
        }
    }
    return result;
}

std::string bold(std::string_view text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text) {
    return "\\fI" + escaped(text) + "\\fR";
}

// Options and what begins with "exflate" in bold, FILE and the name of the option's value in italics.
std::string prose(std::string_view text, std::string_view value = "FILE") {
    std::string result;
    bool is_command = false;
    for (std::string_view word : cli::words(text)) {
        std::string_view end = word.substr(std::min(word.find_last_not_of(".,;:") + 1, word.size()));
        word.remove_suffix(end.size());
        const bool is_name = is_command && cli::find_command(word) != nullptr;
        is_command = word == "exflate" && end.empty();
        result += result.empty() ? "" : " ";
        if (is_command || is_name || (word.size() > 1 && word.front() == '-')) {
            result += bold(word);
        } else if (word == "FILE" || word == value) {
            result += italic(word);
        } else {
            result += word;
        }
        result += end;
    }
    return result + '\n';
}

std::string item(const std::string& heading, const std::string& text) {
    return ".TP\n" + heading + '\n' + text;
}

std::string synopsis() {
    std::string text;
    for (const Command& command : cli::all_commands()) {
        const bool is_default = command.name == cli::kDefaultCommand;
        text += (text.empty() ? "" : ".br\n") + bold("exflate") + (is_default ? " [" : " ") + bold(command.name) +
                (is_default ? "]" : "") + " [" + italic("OPTION") + "]..." + (command.operands.empty() ? "" : " ") +
                italic(command.operands) + '\n';
    }
    return text;
}

std::string commands() {
    std::string text;
    for (const Command& command : cli::all_commands()) {
        text += item(bold(command.name), prose(cli::full_text(command.brief, command.more)));
    }
    return text;
}

std::string heading(const Option& option) {
    std::string text = option.letter != '\0' ? bold(std::string{'-', option.letter}) + ", " : "";
    text += bold(option.name) + (option.value.empty() ? "" : " " + italic(option.value));
    if (option.commands == cli::kEveryCommand) return text;
    std::string takers;
    for (const std::string_view command : cli::words(option.commands)) {
        takers += (takers.empty() ? "" : ", ") + std::string(command);
    }
    return text + "  (" + takers + ")";
}

std::string options() {
    std::string text;
    std::string_view category;
    for (const Option& option : cli::all_options()) {
        if (option.category != category) text += ".SS " + std::string(option.category) + "\n";
        category = option.category;
        const bool is_for_all = option.commands == cli::kEveryCommand;
        const Command* command = cli::find_command(is_for_all ? "help" : cli::words(option.commands).front());
        text += item(heading(option), prose(cli::full_text(option, *command), option.value));
    }
    return text;
}

std::string explained(std::span<const Explained> rows) {
    std::string text;
    for (const Explained& row : rows) text += item(bold(row.name), prose(cli::full_text(row.text, "")));
    return text;
}

std::string examples() {
    std::string text;
    for (const Command& command : cli::all_commands()) {
        for (const cli::Example& example : command.examples) {
            if (example.line.empty()) continue;
            text += item(bold("exflate " + std::string(example.line)), prose(cli::full_text(example.what, "")));
        }
    }
    return text;
}

std::string part(const std::string& line) {
    if (line == "{{synopsis}}") return synopsis();
    if (line == "{{commands}}") return commands();
    if (line == "{{options}}") return options();
    if (line == "{{exit codes}}") return explained(cli::exit_codes());
    if (line == "{{environment}}") return explained(cli::environment());
    if (line == "{{examples}}") return examples();
    return line + '\n';
}

}  // namespace

std::string manual_page(const std::string& page) {
    std::istringstream lines(page);
    std::string text;
    for (std::string line; std::getline(lines, line);) text += part(line);
    return text;
}
