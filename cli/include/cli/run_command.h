// `exflate run`: un-nests and writes.
#pragma once

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/arguments/options.h"

namespace cli {

// Works through the files; the highest code of all. A file with an error is not written and does not stop the others.
ExitCode run(const Options& options, const Console& console);

}  // namespace cli
