// What the options on the command line set.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/shared/dialog_answers.h"
#include "looks/finding.h"
#include "scriptui/dialog_driver.h"

namespace cli {

enum class CheckFormat { text, json, junit };

// One for all commands: options that a command does not take keep their defaults.
struct Options {
    std::vector<std::string> files;                            // "-" is standard input; for `help`, the command
    const std::string& file() const { return files.front(); }  // of a command that takes one
    bool has_folders = false;                                  // some of the files were found in folders
    std::map<std::string, std::string> places_below;           // of those, relative to their folder
    std::size_t other_files = 0;                               // in the folders that are not animations

    std::string output;         // empty: standard output, or what the two below say
    std::string output_folder;  // empty: none
    bool in_place = false;
    bool force = false;  // replace what is read-only too
    unsigned jobs = 1;   // files worked on at once
    bool quiet = false;  // print only warnings and errors
    bool verbose = false;

    std::string animation;            // id in a .lottie file; empty: all of them; for `report`, the only one
    std::string composition;          // name or id; empty: the main one; for `check`, all of them
    std::vector<std::string> layers;  // names or #indices; none: every nest
    bool recursive = false;
    bool strict = false;               // write nothing when a look would change
    bool only_exact = false;           // un-nest only the nests judged exact
    bool keep_look = false;            // likewise, and those judged equal to the eye
    std::optional<double> max_growth;  // percent of the input's size; shared nests beyond it are kept

    bool mend = false;         // repair what un-nesting loses
    bool flatten = false;      // for `check`: what flatten would do
    bool all = false;          // even where the look changes
    bool exact = false;        // keep nests whose look is not exact
    bool keep_unused = false;  // compositions that nothing shows any more
    bool dry_run = false;      // write nothing

    DialogAnswers answers;
    bool dialog = false;  // a person answers instead

    CheckFormat format = CheckFormat::text;
    bool prove = false;    // compare pictures too
    std::string baseline;  // JSON of an earlier check, whose findings are known; empty: none
    std::vector<lottie::looks::Reason> allowed;
    bool json = false;

    std::string picture;  // the file for the picture of the dialog
    double scale = 1;
    bool controls = false;   // list their names instead
    bool first_use = false;  // as if the dialog had remembered nothing
    std::vector<host::scriptui::Action> actions;

    std::string journal;       // file that records every call between plug-in and host; empty: none
    double script_time = 120;  // seconds of processor time for all scripts of one file
    std::chrono::milliseconds picture_time = std::chrono::minutes(2);  // processor time for all pictures of one file

    enum class Asks { nothing, summary, help, version } asks = Asks::nothing;
};

}  // namespace cli
