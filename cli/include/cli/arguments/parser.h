// Parses the command line.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/arguments/tables.h"

namespace cli {

struct Request {
    const Command* command;
    Options options;
};

struct UsageProblem {
    std::string sentence;  // what is wrong with the arguments
    std::string help;      // the command that prints the right usage
};

// `arguments` without the program's own name. Without the name of a command they are for `run`.
std::variant<Request, UsageProblem> parse_arguments(const std::vector<std::string>& arguments);

}  // namespace cli
