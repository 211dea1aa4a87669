// Whether masks that the layers out of a nest got cut them as the nest's masks and frame did.
#pragma once

#include <optional>
#include <vector>

#include "unnesting.h"

namespace lottie::looks {

struct HeldCut {
    bool masks = false;                         // each layer that is drawn is cut by the nest's masks
    bool matte = false;                         // likewise by the nest's matte
    std::vector<bool> frame;                    // by place inside: whether the nest's frame cuts the layer too
    std::optional<std::size_t> cuts_otherwise;  // a layer inside that got masks which are neither
};

// Masks behind a layer's own cut it further: the intersection of both is what the group left of the layer, as long as
// the edges are hard or there is one layer only.
HeldCut find_held_cut(Unnesting& unnesting);

}  // namespace lottie::looks
