// What the arguments of aegp-check set, and the one table they are read, explained and printed from.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "validator/examine.h"

namespace validator {

enum class ReportFormat { text, json, junit };

struct CheckOptions {
    CheckRequest request;
    std::string project;  // files; empty: none
    std::string declarations;
    ReportFormat format = ReportFormat::text;
    enum class Asks { examination, list, help, version } asks = Asks::examination;
    std::vector<std::string> arguments;  // as given, for repeating
};

// what() is one sentence that says what is wrong with the arguments.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct CheckOption {
    std::string_view name;  // "--only"
    char letter = '\0';
    std::string_view value = {};    // what the value is called; empty for a flag
    std::string_view text;          // what it does, without a full stop
    std::string_view choices = {};  // the values there are, separated by spaces; empty: any
    // Throws std::invalid_argument with a sentence about a value that is wrong.
    void (*set)(CheckOptions& options, const std::string& value);
};

struct ExplainedCode {
    std::string_view name;
    std::string_view text;
};

std::span<const CheckOption> all_options();
std::span<const ExplainedCode> exit_codes();
std::span<const ExplainedCode> examples();

// `arguments` without the program's own name. Throws UsageError.
CheckOptions parse_arguments(const std::vector<std::string>& arguments);

// For standard output.
std::string help_text();
std::string version_text();
// The page of the manual, in the language of man.
std::string manual_page();

}  // namespace validator
