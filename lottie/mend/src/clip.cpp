// Applies to nests whose frame cut layers off: a mask in the shape of the frame ends each of those where it ended.
#include "cut.h"
#include "remedies.h"

namespace lottie::mend {

void mend_clip(Unnested& unnested, Nest& nest) {
    cut_layers(unnested, nest, FrameCut::where_needed);
}

}  // namespace lottie::mend
