// The files that a command works on, and where their results go.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/files.h"
#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"
#include "cli/shared/file_io.h"
#include "cli/shared/totals.h"

namespace cli {

// The file for the result of `file`; "-" is standard output.
std::string output_for(const Options& options, const std::string& file);

// Throws Failure (usage) if the result would go to a terminal and nobody asked for that.
void refuse_to_fill_terminal(const Options& options);

// Writes the result of `file`, into a folder that is made if there is none. Throws Failure (failed).
void write_output(const Options& options, const Console& console, const std::string& file, host::base::Pieces bytes);

// What the work on one file came to.
struct FileResult {
    ExitCode code = ExitCode::done;
    FileTotals totals = {};
    std::vector<std::string> texts = {};  // for standard output, where all files share it
};

// What all came to.
struct FileResults {
    ExitCode highest = ExitCode::done;
    FileTotals totals;
};

// Works on all files, several at once if the options say so, but one after another if two of them share a file. `work`
// tells of its own problems. `take` gets the texts in the order of the files, each as soon as it is there; a file whose
// work did not come to its end has the text that `crashed` gives.
FileResults work_on_files(const Options& options, const Console& console,
                          const std::function<FileResult(const std::string& file)>& work,
                          const std::function<void(std::vector<std::string> texts)>& take,
                          const std::function<std::string(const std::string& file, const Failure& failure)>& crashed);

// The same where each file has a result of its own; of several files `sum` is told too, what the totals say. The
// highest exit code. Throws Failure (usage), before any work, if a result has no place to go or two have the same.
ExitCode write_all_files(const Options& options, const Console& console,
                         const std::function<FileResult(const std::string& file)>& work,
                         const std::function<std::string(const FileTotals& totals)>& sum);

// "3 files, 2 other files left out, 1 failed".
std::string counted_files(const Options& options, const FileTotals& totals);

// As guarded(); a file that failed is one in the totals.
FileResult guarded_file(const Console& console, const std::string& file, const std::function<FileResult()>& work);

}  // namespace cli
