// `exflate check`: what un-nesting would do to the look.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "audit/audit.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "cli/options.h"

namespace cli {

// How far the pictures of a composition are apart, before and after, at the frame where they are furthest.
struct Proof {
    bool looks_equal = false;
    double frame = 0;  // of the composition
    double mean = 0;   // of all channels, 0..255
    double share_beyond_8 = 0;
    double ssim = 1;
    std::size_t frames = 0;  // that were compared
};

struct CheckedNest {
    std::string composition;  // asset id; empty for the main one
    std::string composition_name;
    std::size_t number = 0;       // in the stack, from 1
    std::size_t layers = 0;       // that come out
    std::size_t bytes_after = 0;  // of the file, this nest alone un-nested
    host::audit::NestReport report;
    std::optional<Proof> proof;
    std::string proof_problem;  // why there is no proof although one was asked for
};

struct CheckedFile {
    std::string name;
    std::size_t bytes = 0;
    std::vector<CheckedNest> nests;
    std::optional<Failure> failure;  // then `nests` holds what was checked until then

    host::audit::Verdict verdict() const;  // the worst
};

// For people, for programs (docs/check-json.md), and for build servers.
std::string check_text(const std::vector<CheckedFile>& files);
std::string check_json(const std::vector<CheckedFile>& files);
std::string check_junit(const std::vector<CheckedFile>& files);

// Every nest is un-nested by itself, judged, and put back; nothing is written but the report on standard output. The
// highest code of all files; `changes` when a look would change.
ExitCode check(const CheckOptions& options, const Console& console);

}  // namespace cli
