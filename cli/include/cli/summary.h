// What people are told about one file, on standard error.
#pragma once

#include <string>

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/unnest.h"

namespace cli {

// Alerts and boxes of the plug-in, in full.
void tell_messages(const Console& console, const std::string& file, const Record& record);

// The counts, and where the result went (empty: standard output).
void tell_success(const Console& console, const std::string& file, const host::model::Comp& comp, const Record& record,
                  const std::string& output);

// What the host noticed on the way: failed calls and scripts that the plug-in may have passed over.
void tell_log(const Console& console, const std::string& file, const Record& record);

void tell_failure(const Console& console, const std::string& file, const Failure& failure);

}  // namespace cli
