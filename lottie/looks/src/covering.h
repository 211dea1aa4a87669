// Masks that take from layers what opaque ones above them cover while their nest is faded.
#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "unnesting.h"

namespace lottie::looks {

// Layers that lie over one another and fade one by one show through one another, unless what lies below an opaque one
// is taken away as long as they fade. While they do not, nothing must be: edges that meet show.
class Covering {
  public:
    // Looks at all copies; `unnesting` is needed no longer then. Throws TooMuchWork.
    explicit Covering(Unnesting& unnesting);

    // Whether the masks of a layer inside take away what layers above it cover, and besides them at most what lies
    // beyond the nest's frame.
    bool holds(std::size_t inner) const { return ends_at_frame_[inner].has_value(); }
    bool ends_at_frame(std::size_t inner) const { return ends_at_frame_[inner].value_or(false); }
    // Whether a layer inside lacks what one above it covers, at one of the nest's frames.
    bool takes_away(std::size_t below, std::size_t above, std::size_t frame) const;

  private:
    class Reader;
    std::vector<std::optional<bool>> ends_at_frame_;                          // by place inside
    std::map<std::pair<std::size_t, std::size_t>, std::vector<bool>> taken_;  // (below, above), by frame
};

}  // namespace lottie::looks
