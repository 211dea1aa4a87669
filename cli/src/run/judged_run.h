// Un-nesting under conditions on each nest's look and on the file's size.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments/options.h"
#include "cli/shared/trial.h"
#include "looks/judge.h"

namespace cli {

// What became of one nest.
struct JudgedNest {
    std::string composition;  // name of the one that it is in, in the input; empty for the one being worked on
    std::size_t number = 0;   // in the stack there, from 1
    std::string name;
    lottie::looks::Verdict verdict = lottie::looks::Verdict::exact;
    std::size_t layers = 0;          // that came out of it, or would have
    std::optional<long long> bytes;  // that the file grew, or would have; null when several came out in one run
    std::string kept_because;        // empty: it was un-nested
};

// "nest #1 "Logo" in composition "Intro"", as exflate list shows it.
std::string place_of(const JudgedNest& nest);

// Whether the options ask for it.
bool is_judged(const Options& options);

// With --only-exact, --keep-look or --max-growth the nests are un-nested one by one, top first, each judged as the file
// stands then; otherwise all together as in a plain run. `text` is the input. Returns the nests in the order of the
// runs, and records what all runs did and reported. Throws Failure (look_changes) under --strict; as
// Trials::run() and compare() otherwise. After a Failure the work may be half done, and the project must not be
// written.
std::vector<JudgedNest> unnest_judged(lottie::document::Document& document, const std::string& text,
                                      const RunContext& context, host::model::Comp& comp,
                                      std::vector<host::model::Layer*> nests, const Options& options,
                                      UnnestRecord& record);

}  // namespace cli
