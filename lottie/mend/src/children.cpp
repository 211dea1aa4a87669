// Applies to layers that hung on the nest: a null with its transform and parent carries them as it did, so they keep
// the transforms that they had.
#include "remedies.h"

namespace lottie::mend {

void mend_children(Unnested& unnested, Nest& nest) {
    for (KeptLayer& layer : unnested.stack()) {
        if (layer.now == nullptr || unnested.parent_in_stack(layer.facts) != nest.place) continue;
        layer.now->set("parent", std::to_string(unnested.stand_in(nest)));
        layer.now->take("ks", layer.before);
    }
}

}  // namespace lottie::mend
