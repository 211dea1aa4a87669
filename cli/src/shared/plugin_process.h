// Runs somebody else's plug-in in a process of its own, so that the command ends properly whatever it does.
#pragma once

#include <functional>

#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"

namespace cli {

// Does the work in such a process if EXFLATE_PLUGIN names a plug-in and the system has processes, else in this one.
// `work` catches everything.
ExitCode keep_plugin_apart(const Options& options, const Console& console, const std::function<ExitCode()>& work);

}  // namespace cli
