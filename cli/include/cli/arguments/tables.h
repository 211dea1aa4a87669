// The commands and their options. Parsing, help, the manual and the completions of shells are all made from these
// tables.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"

namespace cli {

// What a shell completes a value with.
enum class Completion { nothing, file, folder, animation, choice, command };

struct Option {
    std::string_view name;        // "--output"
    char letter = '\0';           // 'o' for -o
    std::string_view value = {};  // what the value is called; empty for a flag
    std::string_view category;    // heading in help
    std::string_view brief;       // one line for summaries and shells; also the first sentence of the full text
    std::string_view more = {};   // further sentences of the full text
    Completion completion = Completion::nothing;
    std::string_view choices = {};   // the values there are, separated by spaces; empty: any
    std::string_view commands;       // that take it, separated by spaces; kEveryCommand
    std::string_view excludes = {};  // options it cannot be used with, separated by spaces; holds both ways
    bool repeats = false;            // every value counts, not just the last
    // Throws std::invalid_argument with a sentence about a bad value. A flag is given an empty text.
    void (*set)(Options& options, const std::string& value);
};

constexpr std::string_view kEveryCommand = "*";

// The command when none is named.
constexpr std::string_view kDefaultCommand = "run";

struct Example {
    std::string_view line;  // without "exflate "
    std::string_view what;  // it does
};

struct Command {
    std::string_view name;
    std::string_view operands = {};               // "FILE|FOLDER...", "FILE", "[COMMAND]", or nothing
    Completion completion = Completion::nothing;  // of the operands
    std::string_view brief;                       // as of an option
    std::string_view more = {};
    std::array<Example, 3> examples = {};  // the last ones may be empty
    // Returns the exit code; a Failure is reported under the program's name.
    ExitCode (*run)(const Options& options, const Console& console);
    // What is wrong with the options taken together; empty: nothing.
    std::string (*problem)(const Options& options) = [](const Options&) { return std::string(); };
};

// An exit code or an environment variable.
struct Explained {
    std::string_view name;
    std::string_view text;
};

// In the order in which they are shown.
std::span<const Option> all_options();
std::span<const Command> all_commands();
std::span<const Explained> exit_codes();
std::span<const Explained> environment();

// Null if there is no such command.
const Command* find_command(std::string_view name);

std::vector<std::string> command_names();

std::vector<const Option*> options_of(const Command& command);

// Whether it is among the command's operands.
bool takes_folders(const Command& command);

// The options of the command that cannot be used together with this one.
std::vector<const Option*> excluded_by(const Option& option, const Command& command);

// Between spaces.
std::vector<std::string_view> words(std::string_view text);

}  // namespace cli
