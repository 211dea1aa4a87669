// How much the seams show along which faded layers were cut.
#pragma once

#include <vector>

#include "unnesting.h"

namespace lottie::looks {

struct SeenLayer {
    std::size_t inner;  // place inside
    Hull hull;          // as far as it is seen in the outer composition
};

// The share of what may go unseen, 1 being all of it, that the seams between layers take which were cut along one
// another, see looks/seam.h, at a frame of the outer composition. The layers from top to bottom, all of one color each.
// What is more than `least` is looked at more closely. Throws TooMuchWork.
double seam_share(Unnesting& unnesting, const std::vector<SeenLayer>& layers, double frame, double least);

}  // namespace lottie::looks
