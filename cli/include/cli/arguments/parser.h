// What the arguments of the command ask for.
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
    std::string sentence;  // says what is wrong with the arguments
    std::string help;      // the command line that shows what is right
};

// `arguments` without the program's own name. What does not begin with the name of a command is meant for `run`.
std::variant<Request, UsageProblem> parse_arguments(const std::vector<std::string>& arguments);

}  // namespace cli
