// Applies to nests with masks of hard edges: what a mask leaves of several layers lying over one another is what it
// leaves of each, so each gets the masks, as paths in its own coordinates.
#include "cut.h"
#include "remedies.h"

namespace lottie::mend {

void mend_mask(Unnested& unnested, Nest& nest) {
    cut_layers(unnested, nest, FrameCut::left_aside);
}

}  // namespace lottie::mend
