// `exflate replay`: plays a journal to the plug-in.
#pragma once

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/arguments/options.h"

namespace cli {

ExitCode replay(const Options& options, const Console& console);

}  // namespace cli
