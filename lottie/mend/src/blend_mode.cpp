// Applies to nests with a blend mode that never show more than one layer at a time: blended with what is below, that
// layer gives what the group of it alone gave. The audit looks after that.
#include "remedies.h"

namespace lottie::mend {

void mend_blend_mode(Unnested&, Nest& nest) {
    for (CopiedLayer& copy : nest.copies) {
        if (is_drawn(copy) && copy.now->number("bm", 0) == 0) copy.now->take("bm", nest.layer.before);
    }
}

}  // namespace lottie::mend
