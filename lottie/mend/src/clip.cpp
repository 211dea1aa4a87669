// Applies to nests whose frame cut layers off: a mask in the shape of the frame ends each of those where it ended. A
// layer that an expression places, and that only players without expressions saw nothing of, has no such place; its
// position, which only they go by, moves out of the composition.
#include "cut.h"
#include "out_of_sight.h"
#include "remedies.h"

namespace lottie::mend {

void mend_clip(Unnested& unnested, Nest& nest) {
    put_out_of_sight(unnested, nest);
    cut_layers(unnested, nest, FrameCut::where_needed);
}

}  // namespace lottie::mend
