// How much shows along the edge of a nest's frame where it cuts layers one by one that lie over one another.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// The share of what may go unseen, 1 being all of it, at a frame of the outer composition: where the edge runs through
// pixels, each layer fills its part of them, and those below show through the part that the upper ones leave.
double frame_seam_share(Unnesting& unnesting, double frame);

}  // namespace lottie::looks
