// What people are told about one file, on standard error.
#pragma once

#include <string>

#include "cli/console.h"
#include "cli/shared/failure.h"
#include "cli/shared/unnest.h"
#include "run/judged_run.h"

namespace cli {

// Alerts and boxes of the plug-in, in full.
void tell_messages(const Console& console, const std::string& file, const Record& record);

// The file's size in bytes before and after.
struct Sizes {
    std::size_t before = 0;
    std::size_t after = 0;
};

// The counts, the growth, and where the result went (empty: standard output).
void tell_success(const Console& console, const std::string& file, const std::string& composition, const Record& record,
                  Sizes sizes, const std::string& output);

// The growth of a packed file, and where it went (empty: standard output).
void tell_packed(const Console& console, const std::string& file, Sizes sizes, const std::string& output);

// A sticker that was small enough and is no longer.
void tell_too_large(const Console& console, const std::string& file, std::size_t bytes);

// What became of each nest of a judged run.
void tell_ledger(const Console& console, const std::string& file, const Ledger& ledger);

// What the host noticed on the way: failed calls and scripts that the plug-in may have passed over.
void tell_log(const Console& console, const std::string& file, const Record& record);

void tell_failure(const Console& console, const std::string& file, const Failure& failure);

}  // namespace cli
