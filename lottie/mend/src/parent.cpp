// Applies to nests that hung on another layer: the parent carried everything inside, so now it carries what stands in
// for the nest, or every copy that has no parent of its own.
#include "remedies.h"

namespace lottie::mend {

void mend_parent(Unnested& unnested, Nest& nest) {
    const auto parent = unnested.parent_in_stack(nest.facts());
    if (!parent) return;
    KeptLayer& carrier = unnested.stack()[*parent];
    const std::int64_t number =
        unnested.is_unnested(*parent) ? unnested.stand_in(unnested.nest_at(*parent)) : unnested.number_of(*carrier.now);
    if (nest.stand_in != nullptr) {
        nest.stand_in->set("parent", std::to_string(number));
        return;
    }
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now != nullptr && copy.now->member("parent").empty()) copy.now->set("parent", std::to_string(number));
    }
}

}  // namespace lottie::mend
