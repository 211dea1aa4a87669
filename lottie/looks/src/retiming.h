// Whether copies that were put on another clock show what the layers inside showed.
#pragma once

#include "json.h"
#include "unnesting.h"

namespace lottie::looks {

// Whether a member of a layer has, at frame after frame, the values that another had at other frames. Where the one
// has a value that is no keyframed property the other must have the same.
class SameOverTime {
  public:
    // One frame of each; both in the order of time.
    struct Moment {
        double before;
        double after;
    };
    // `moments` must outlive it.
    SameOverTime(const std::vector<Moment>& moments, Comparison& comparison)
        : moments_(moments), comparison_(comparison) {}

    bool holds(const Json& before, const Json& after);

  private:
    bool holds_for_property(const Json& before, const Json& after);

    const std::vector<Moment>& moments_;
    Comparison& comparison_;
};

// Whether a copy whose keyframes were put on the clock of the composition outside shows at each frame what its layer
// showed inside; where it lies and what it is hidden by is asked elsewhere.
bool shows_what_it_showed(Unnesting& unnesting, const Copy& copy);

// Whether the parts are lists of masks of different lengths. What became of masks among new ones is looked at with what
// they cut.
bool is_list_with_new_masks(const LayerPart& before, const LayerPart& after);

}  // namespace lottie::looks
