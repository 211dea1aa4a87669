// Help: the overview, and a page for each command.
#include "cli/arguments/help.h"

#include <cctype>

#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"
#include "cli/version.h"

namespace cli {
namespace {

constexpr std::size_t kWidth = 80;

std::string plain(std::string_view text) {
    return std::string(text);
}

// `label`, then the text in lines that begin at `column`.
std::string in_column(std::string label, std::size_t column, std::string_view text) {
    const std::string margin(column, ' ');
    std::string result =
        label.size() + 2 > column && column > 0 ? label + '\n' + margin : label + margin.substr(label.size());
    std::size_t at = column;
    for (const std::string_view word : words(text)) {
        if (at > column && at + 1 + word.size() > kWidth) {
            result += '\n' + margin;
            at = column;
        }
        if (at > column) {
            result += ' ';
            ++at;
        }
        result += word;
        at += word.size();
    }
    return result + '\n';
}

std::string paragraph(std::string_view text) {
    return in_column("", 0, text);
}

std::string explained(std::string_view title, std::span<const Explained> rows, std::size_t column) {
    std::string text = "\n" + plain(title) + ":\n";
    for (const Explained& row : rows) text += in_column("  " + plain(row.name), column, row.text);
    return text;
}

std::string examples(const Command& command) {
    std::string text;
    for (const Example& example : command.examples) {
        if (!example.line.empty()) text += "  exflate " + plain(example.line) + "\n      " + plain(example.what) + "\n";
    }
    return text.empty() ? text : "\nExamples:\n" + text;
}

// Headings and options; `show` gives the lines of one.
template <class Show>
std::string options(const Command& command, Show show) {
    std::string text;
    std::string_view category;
    for (const Option* option : options_of(command)) {
        if (option->category != category) text += "\n" + plain(option->category) + ":\n";
        category = option->category;
        text += show(*option);
    }
    return text;
}

// "-o, --output OUT"
std::string heading(const Option& option) {
    std::string text = option.letter != '\0' ? std::string{'-', option.letter} + ", " : "";
    text += option.name;
    return option.value.empty() ? text : text + ' ' + plain(option.value);
}

// "exflate check [OPTION]... FILE..."
std::string usage_line(const Command& command) {
    return "exflate " + plain(command.name) + " [OPTION]..." + (command.operands.empty() ? "" : " ") +
           plain(command.operands);
}

std::string title(const Command& command) {
    return "exflate " + plain(command.name) + ": " + plain(command.brief) + "\n\nUsage: " + usage_line(command) + "\n";
}

}  // namespace

std::string full_text(std::string_view brief, std::string_view more) {
    std::string text = plain(brief) + '.';
    text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    return more.empty() ? text : text + ' ' + plain(more);
}

std::string full_text(const Option& option, const Command& command) {
    std::string text = full_text(option.brief, option.more);
    if (option.repeats) text += " May be repeated.";
    const auto excluded = excluded_by(option, command);
    for (std::size_t i = 0; i < excluded.size(); ++i) {
        text += i == 0 ? " Not with " : i + 1 == excluded.size() ? " or " : ", ";
        text += excluded[i]->name;
    }
    return excluded.empty() ? text : text + '.';
}

std::string overview() {
    std::string text =
        "exflate un-nests the compositions of Lottie files: the layers of a nested\n"
        "composition move out into the composition that uses it.\n\n"
        "Usage: exflate COMMAND [OPTION]... FILE...\n"
        "       exflate [OPTION]... FILE...           the same as exflate run\n\n"
        "Commands:\n";
    for (const Command& command : all_commands()) text += in_column("  " + plain(command.name), 12, command.brief);
    text += '\n' + paragraph(
                       "FILE is a Lottie file, plain or packed (.lottie, .tgs); - is standard input. FOLDER stands for "
                       "the Lottie files in it, however deep: they are recognized by their content; what is hidden and "
                       "what symbolic links mean is left out. Results go to standard output, everything else to "
                       "standard error. With several files the exit code is the highest one.");
    text += explained("Exit codes", exit_codes(), 5) + explained("Environment", environment(), 19);
    return text + "\nexflate COMMAND -h lists the options of a command; --help explains them.\n";
}

std::string command_help(const Command& command) {
    std::string text = title(command);
    if (!command.more.empty()) text += '\n' + paragraph(command.more);
    text += examples(command) + options(command, [&](const Option& option) {
                return "  " + heading(option) + '\n' + in_column("", 6, full_text(option, command));
            });
    return text + "\nSee exflate --help for files, exit codes and the environment.\n";
}

std::string command_summary(const Command& command) {
    const auto line = [](const Option& option) {
        const char* indent = option.letter != '\0' || option.name.size() == 2 ? "  " : "      ";
        return in_column(indent + heading(option), 29, option.brief);
    };
    return title(command) + options(command, line) + examples(command) + "\nSee exflate " + plain(command.name) +
           " --help for more.\n";
}

ExitCode show_help(const Options& options, const Console&) {
    if (options.files.empty()) {
        write_result(overview());
    } else {
        const Command& command = *find_command(options.file());
        const bool is_short = options.asks == Options::Asks::summary;
        write_result(is_short ? command_summary(command) : command_help(command));
    }
    return ExitCode::done;
}

ExitCode show_version(const Options&, const Console&) {
    write_result(std::string("exflate ") + kVersion + "\n");
    return ExitCode::done;
}

}  // namespace cli
