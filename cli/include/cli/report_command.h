// `exflate report`: what un-nesting does to an animation, as a page to look at.
#pragma once

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/arguments/options.h"

namespace cli {

// Un-nests in memory, each nest by itself for its verdict and all together for the animation after, and writes the
// page. The code of check(): `look_changes` when the look of a nest would change.
ExitCode report(const Options& options, const Console& console);

}  // namespace cli
