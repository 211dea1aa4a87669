// `exflate dialog`: the plug-in's options dialog as a picture.
#pragma once

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/arguments/options.h"

namespace cli {

// Nothing that is done to the dialog is remembered.
ExitCode draw_dialog(const Options& options, const Console& console);

}  // namespace cli
