// Applies to every nest in the plane: its layers get back the transforms and parents that they had inside, and those
// without a parent hang on a null with the nest's own transform and parent. That chain is the one players multiplied
// before.
#include "document/json_text.h"
#include "remedies.h"

namespace lottie::mend {

void mend_place(Unnested& unnested, Nest& nest) {
    const std::string stand_in = std::to_string(unnested.stand_in(nest));
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr) continue;
        const auto parent = unnested.parent_inside(nest, copy.facts);
        if (!parent) {
            copy.now->set("parent", stand_in);
        } else if (LayerText* carrier = nest.copies[*parent].now; carrier != nullptr) {
            copy.now->set("parent", std::to_string(unnested.number_of(*carrier)));
        }
        const document::JsonTree& tree = copy.before.tree();
        if (const document::JsonNode* transform = tree.member(&tree.root(), "ks"))
            copy.now->set("ks", nest.on_outer_clock(copy, *transform));
    }
}

}  // namespace lottie::mend
