// Applies to layers that have nothing to do with the nest: they get back the parents and transforms that they had, for
// whatever the run did to them was not meant for them.
#include "remedies.h"

namespace lottie::mend {

void mend_lost_link(Unnested& unnested, Nest&) {
    for (KeptLayer& layer : unnested.stack()) {
        if (layer.now == nullptr || !layer.is_touched()) continue;
        const auto parent = unnested.parent_in_stack(layer.facts);
        if (parent && unnested.is_unnested(*parent)) continue;  // a child of the nest
        if (layer.before.member("parent") == layer.now->member("parent")) continue;
        if (parent) {
            layer.now->take("parent", layer.before);
        } else {
            layer.now->remove("parent");
        }
        layer.now->take("ks", layer.before);
    }
}

}  // namespace lottie::mend
