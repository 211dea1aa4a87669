// `exflate replay`: plays a journal to the plug-in.
#pragma once

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/options.h"

namespace cli {

ExitCode replay(const ReplayOptions& options, const Console& console);

}  // namespace cli
