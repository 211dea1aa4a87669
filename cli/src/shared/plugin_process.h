// A plug-in of somebody else's works in a process of its own: whatever it does there, the command ends in good order.
#pragma once

#include <functional>

#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"

namespace cli {

// Does the work in such a process if EXFLATE_PLUGIN names a plug-in and there are processes, else in this one. `work`
// catches everything.
ExitCode keep_plugin_apart(const Options& options, const Console& console, const std::function<ExitCode()>& work);

}  // namespace cli
