// What `exflate check` finds in a file, and the forms in which it is printed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/nest_check.h"
#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"
#include "cli/shared/totals.h"
#include "looks/judge.h"

namespace cli {

// A file, or one animation of a .lottie file.
struct CheckedFile {
    std::string name;
    std::size_t bytes = 0;  // unpacked
    std::vector<CheckedNest> nests;
    std::size_t left = 0;        // visible nests, if it was to be made flat
    std::optional<Proof> proof;  // of the main composition, if it was to be made flat
    std::string proof_problem;
    std::optional<Failure> failure;  // if set, `nests` holds what was checked before it

    lottie::looks::Verdict verdict() const;  // the worst
    FileTotals totals() const;
};

// A file's part of the report: for people, for programs (docs/check-json.md), and for build servers.
struct TextForm {
    bool quiet = false;
    bool verbose = false;
    Console colors;
};
std::string check_text(const CheckedFile& file, const TextForm& form);
std::string check_json(const CheckedFile& file);
std::string check_junit(const CheckedFile& file);

// The whole report from such parts.
std::string check_json_report(const std::vector<std::string>& parts, const FileTotals& totals, const Options& options);
std::string check_junit_report(const std::vector<std::string>& parts, const FileTotals& totals);
// What follows the texts of several files.
std::string check_text_sum(const FileTotals& totals, const Options& options);

}  // namespace cli
