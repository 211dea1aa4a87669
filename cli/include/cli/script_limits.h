// What the scripts of one file may use.
#pragma once

#include "script/engine.h"

namespace cli {

// For every engine that works on the file. Seconds of the processor's time for all scripts together; one may take a
// quarter of it.
host::script::Limits script_limits(double seconds);

}  // namespace cli
