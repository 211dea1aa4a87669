// What was found about expressions: of each kind it is told once, with the first of the weightiest.
#include "expression_tally.h"

#include <utility>

namespace lottie::looks {

void ExpressionTally::note(Reason reason, Entry entry) {
    const auto [found, is_new] = entries_.try_emplace(reason, entry);
    if (is_new) return;
    entry.count += found->second.count;
    if (entry.weight > found->second.weight) {
        found->second = std::move(entry);
    } else {
        found->second.count = entry.count;
    }
}

void ExpressionTally::append(const ExpressionTally& other) {
    for (const auto& [reason, entry] : other.entries_) note(reason, entry);
}

}  // namespace lottie::looks
