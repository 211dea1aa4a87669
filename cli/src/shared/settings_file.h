// Where the plug-in's dialog keeps what it remembers.
#pragma once

#include "cli/shared/console.h"
#include "script/settings.h"

namespace cli {

// The settings file in the user's configuration folder; in memory when there is no such folder. What is wrong
// with the file is printed as a warning.
host::script::Settings open_settings(const Console& console);

}  // namespace cli
