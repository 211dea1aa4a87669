// `exflate check`: what un-nesting would do to the look.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/nest_check.h"
#include "cli/arguments/options.h"
#include "looks/audit.h"

namespace cli {

// Or an animation of a file that holds several.
struct CheckedFile {
    std::string name;
    std::size_t bytes = 0;  // unpacked
    std::vector<CheckedNest> nests;
    std::optional<Failure> failure;  // then `nests` holds what was checked until then

    lottie::looks::Verdict verdict() const;  // the worst
};

// For people, for programs (docs/check-json.md), and for build servers.
std::string check_text(const std::vector<CheckedFile>& files);
std::string check_json(const std::vector<CheckedFile>& files);
std::string check_junit(const std::vector<CheckedFile>& files);

// Every nest is un-nested by itself, judged, and put back; nothing is written but the report on standard output. The
// highest code of all files; `changes` when a look would change.
ExitCode check(const Options& options, const Console& console);

}  // namespace cli
