// Un-nesting with an eye on the looks and on the size of the file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments/options.h"
#include "cli/shared/trial.h"
#include "looks/audit.h"

namespace cli {

// What became of one nest.
struct LedgerEntry {
    std::size_t number = 0;  // in the stack when its turn came, from 1
    std::string name;
    lottie::looks::Verdict verdict = lottie::looks::Verdict::exact;
    std::size_t layers = 0;          // that came out, or would have
    std::optional<long long> bytes;  // that the file grew, or would have; null when several came out in one run
    std::string kept_because;        // empty: it was un-nested
};

struct Ledger {
    std::vector<LedgerEntry> entries;  // in the order of the runs
    Record record;                     // of all runs together
};

// Whether the options ask for judging at all.
bool is_judged(const Options& options);

// With --only-exact or --max-growth the nests are un-nested one by one, top first, each judged as the file stands then;
// else all together as in a plain run. `text` is the input. Throws Failure (look_changes) under --strict; as
// try_unnesting() otherwise. After a Failure the project is in between: take everything back.
Ledger unnest_judged(lottie::document::Document& document, const std::string& text, const Surroundings& surroundings,
                     host::model::Comp& comp, std::vector<host::model::Layer*> nests, const Options& options);

}  // namespace cli
