// How much shows along the edge of a nest's frame where it cuts layers one by one that lie over one another.
#pragma once

#include <cstddef>
#include <vector>

#include "palette.h"
#include "unnesting.h"

namespace lottie::looks {

// Tells the share of what may go unseen, 1 being all of it, at a frame of the outer composition. Where the edge runs
// through pixels, each layer fills its part of them, and those below show through the part that the upper ones leave;
// and some players cut groups at whole pixels.
class FrameSeams {
  public:
    explicit FrameSeams(Unnesting& unnesting);  // must outlive it

    double share_at(double frame);

  private:
    struct CutLayer {
        std::size_t inner;  // place inside
        Contrast contrast;  // of its colors to all of the animation
    };

    Unnesting& u_;
    std::vector<CutLayer> cut_;
};

}  // namespace lottie::looks
