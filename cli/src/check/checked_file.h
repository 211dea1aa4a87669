// What `exflate check` finds in a file, and the forms in which it is printed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/nest_check.h"
#include "cli/shared/failure.h"
#include "looks/judge.h"

namespace cli {

// A file, or one animation of a .lottie file.
struct CheckedFile {
    std::string name;
    std::size_t bytes = 0;  // unpacked
    std::vector<CheckedNest> nests;
    std::optional<Proof> proof;  // of the main composition, if making it flat was asked for
    std::string proof_problem;
    std::optional<Failure> failure;  // then `nests` holds what was checked until then

    lottie::looks::Verdict verdict() const;  // the worst
};

// For people, for programs (docs/check-json.md), and for build servers.
std::string check_text(const std::vector<CheckedFile>& files);
std::string check_json(const std::vector<CheckedFile>& files);
std::string check_junit(const std::vector<CheckedFile>& files);

}  // namespace cli
