// What `exflate run` says about one file, on standard error.
#pragma once

#include <string>

#include "cli/shared/console.h"
#include "cli/shared/totals.h"
#include "cli/shared/unnest.h"
#include "run/judged_run.h"

namespace cli {

// Alerts and messages of the plug-in, in full.
void print_messages(const Console& console, const std::string& file, const UnnestRecord& record);

// The file's size in bytes before and after.
struct Sizes {
    std::size_t before = 0;
    std::size_t after = 0;
};

// The counts, the growth, and where the result went (empty: standard output).
void print_success(const Console& console, const std::string& file, const std::string& composition,
                   const UnnestRecord& record, Sizes sizes, const std::string& output);

// The growth of a packed file, and where it went (empty: standard output).
void print_packed(const Console& console, const std::string& file, Sizes sizes, const std::string& output);

// Warns of a sticker that is now too large.
void print_too_large(const Console& console, const std::string& file, std::size_t bytes);

// What became of the nests of a judged run: all of them, or only those kept.
void print_judged_nests(const Console& console, const std::string& file, const std::vector<JudgedNest>& nests,
                        bool all);

// Of several files.
std::string sum_of_runs(const FileTotals& totals);

// What the host noticed: failed calls and scripts that the plug-in may have ignored.
void print_log(const Console& console, const std::string& file, const UnnestRecord& record);

}  // namespace cli
