// The files that a command works on, and where their results go.
#pragma once

#include <functional>
#include <string>

#include "base/files.h"
#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"
#include "cli/shared/file_io.h"

namespace cli {

// The file for the result of `file`; "-" is standard output.
std::string output_for(const Options& options, const std::string& file);

// Writes the result of `file`, into a folder that is made if there is none. Throws Failure (failed).
void write_output(const Options& options, const Console& console, const std::string& file, host::base::Pieces bytes);

// Works on all files, several at once if the options say so, but one after another if two of them share a file. `work`
// tells of its own problems. The highest exit code of all. Throws Failure (usage), before any work, if a result has no
// place to go or two have the same.
ExitCode work_on_files(const Options& options, const Console& console,
                       const std::function<ExitCode(const std::string& file)>& work);

}  // namespace cli
