// Judging an un-nesting by the animation before and after it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "looks/animation.h"
#include "looks/finding.h"

namespace lottie::looks {

// Where a layer of the stack after the run comes from.
struct Origin {
    enum class Kind {
        kept,    // it was in this stack before
        copied,  // out of a nest
        made,    // by the run, such as a null that stands in for a nest
    };
    Kind kind = Kind::made;
    std::size_t layer = 0;  // its place before: in this stack (kept), in the nest's composition (copied); 0 = top
    std::size_t nest = 0;   // copied: the nest's place in this stack before
};

// What a run did to the stack of one composition.
struct StackChange {
    std::string composition;         // asset id; empty for the main one
    std::vector<std::size_t> nests;  // the un-nested layers' places in the stack before
    std::vector<Origin> after;       // of every layer of the stack after, top to bottom
};

struct NestReport {
    std::size_t nest = 0;  // place in the stack before
    std::string name;
    Verdict verdict = Verdict::exact;
    std::vector<Finding> findings;  // in the order of Reason
};

// One report per un-nested layer, in the order of `change.nests`. What happened to layers that belong to no nest is
// reported for each nest that the run un-nested: one run alone can tell which of them did it.
std::vector<NestReport> judge(const Animation& before, const Animation& after, const StackChange& change);

}  // namespace lottie::looks
