// What the arguments of the command ask for.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "cli/dialog_answers.h"
#include "scriptui/dialog_driver.h"

namespace cli {

// Seconds of the processor's time for all scripts of one file.
constexpr double kScriptTime = 120;

struct RunOptions {
    std::vector<std::string> files;  // "-" is standard input
    std::string output;              // empty: standard output, or what the two below say
    std::string output_folder;
    bool in_place = false;
    std::string animation;            // id in a .lottie file; empty: every one
    std::string composition;          // name or id; empty: the main one
    std::vector<std::string> layers;  // names or #indices; none: every nest
    bool recursive = false;
    bool strict = false;               // write nothing when a look would change
    bool only_exact = false;           // un-nest just the nests judged exact
    std::optional<double> max_growth;  // percent of the input's size; shared nests beyond it are kept
    std::string journal;               // file for everything that the plug-in and the host say; empty: none
    DialogAnswers answers;
    bool dialog = false;  // a person answers
    unsigned jobs = 1;    // files at once
    double script_time = kScriptTime;
};

struct ListOptions {
    std::string file;
    bool json = false;
};

struct DialogOptions {
    std::string picture;  // the file
    double scale = 1;
    bool first_use = false;  // as if nothing had been remembered
    std::vector<host::scriptui::Action> actions;
};

enum class CheckFormat { text, json, junit };

struct CheckOptions {
    std::vector<std::string> files;
    std::string animation;            // as for run
    std::string composition;          // name or id; empty: every composition, with `layers` the main one
    std::vector<std::string> layers;  // as for run
    CheckFormat format = CheckFormat::text;
    bool prove = false;  // compare pictures too
    DialogAnswers answers;
    double script_time = kScriptTime;
};

struct ReportOptions {
    std::string file;
    std::string output;               // empty: standard output
    std::string animation;            // id in a .lottie file; empty: the only one
    std::string composition;          // as for run
    std::vector<std::string> layers;  // as for run
    DialogAnswers answers;
    double script_time = kScriptTime;
};

struct ReplayOptions {
    std::string file;
};

// Help or the version for standard output.
struct Information {
    std::string text;
};

// A sentence that says what is wrong with the arguments.
struct UsageProblem {
    std::string sentence;
};

using Request = std::variant<RunOptions, ListOptions, CheckOptions, ReportOptions, DialogOptions, ReplayOptions,
                             Information, UsageProblem>;

// `arguments` without the program's own name. Whatever does not begin with the name of a subcommand is meant for `run`.
Request parse_arguments(const std::vector<std::string>& arguments);

}  // namespace cli
