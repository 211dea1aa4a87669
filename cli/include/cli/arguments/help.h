// Help: the overview, and a page for each command.
#pragma once

#include <string>

#include "cli/arguments/tables.h"

namespace cli {

// The full text of an option or a command, in sentences.
std::string full_text(std::string_view brief, std::string_view more);

// Likewise, with the options of the command that it cannot be used with.
std::string full_text(const Option& option, const Command& command);

std::string overview();

// Everything about the command.
std::string command_help(const Command& command);

// A line for each option.
std::string command_summary(const Command& command);

// `exflate help [COMMAND]` and `exflate version`, for standard output.
ExitCode show_help(const Options& options, const Console& console);
ExitCode show_version(const Options& options, const Console& console);

}  // namespace cli
