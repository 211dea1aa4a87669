// Whether masks that the layers out of a nest got cut them as the nest's masks and frame did.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Masks behind a layer's own cut it further: the intersection of both is what the group left of the layer, as long as
// the edges are hard or there is one layer only.
HeldCut find_held_cut(Unnesting& unnesting);

}  // namespace lottie::looks
