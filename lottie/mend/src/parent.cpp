// Applies to nests that hung on another layer: the parent carried everything inside, so now it carries what stands in
// for the nest, or every copy that has no parent of its own. Players measure a path through space anew where its
// numbers are others, and do not come to quite the same; so a layer that moves along one gets its own numbers back.
#include <algorithm>

#include "remedies.h"

namespace lottie::mend {
namespace {

bool moves_along_path(Unnested& unnested, const Nest& nest, const CopiedLayer& copy) {
    if (copy.now == nullptr || unnested.parent_inside(nest, copy.facts)) return false;
    const document::JsonTree& tree = copy.before.tree();
    const document::JsonNode* position = tree.member(tree.member(&tree.root(), "ks"), "p");
    return position != nullptr && tree.text(*position).find("\"to\"") != std::string_view::npos;
}

}  // namespace

void mend_parent(Unnested& unnested, Nest& nest) {
    const auto parent = unnested.parent_in_stack(nest.facts());
    if (!parent) return;
    if (std::any_of(nest.copies.begin(), nest.copies.end(),
                    [&](const CopiedLayer& copy) { return moves_along_path(unnested, nest, copy); })) {
        return mend_place(unnested, nest);
    }
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
