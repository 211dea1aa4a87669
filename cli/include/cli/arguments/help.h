// Help: the overview, and a page for each command.
#pragma once

#include <string>

#include "cli/arguments/tables.h"

namespace cli {

// The full text of an option or a command as sentences.
std::string full_text(std::string_view brief, std::string_view more);

// The same with what other options of the command it cannot be used with.
std::string full_text(const Option& option, const Command& command);

std::string overview();

// All that is known of the command.
std::string command_help(const Command& command);

// A line for each option.
std::string command_summary(const Command& command);

// `exflate help [COMMAND]` and `exflate version`, for standard output.
ExitCode show_help(const Options& options, const Console& console);
ExitCode show_version(const Options& options, const Console& console);

}  // namespace cli
