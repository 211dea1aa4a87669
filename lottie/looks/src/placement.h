// Where the layers of a stack lie at a frame, parents included.
#pragma once

#include <limits>
#include <unordered_map>
#include <vector>

#include "looks/work.h"
#include "scene.h"

namespace lottie::looks {

// Knows what was asked for last; the work on chains of parents is done once for each frame.
class Placement {
  public:
    // Both must outlive it.
    Placement(const Stack& stack, Work& work) : stack_(stack), work_(work) {}

    // From the layer's own coordinates to those of its composition; good until the next call.
    const Matrix& world(std::size_t layer, double frame);
    // Whether its place depends on the frame.
    bool moves(std::size_t layer);

  private:
    enum class Movement : char { unknown, moves, stands_still };
    struct Known {
        Movement movement = Movement::unknown;
        double frame = std::numeric_limits<double>::quiet_NaN();  // of `world`; not a number when there is none
        Matrix own;                                               // without its parents
        Matrix world;
    };

    const Stack& stack_;
    Work& work_;
    std::unordered_map<std::size_t, Known> known_;  // of the layers that were asked for, and their ancestors
    std::vector<std::pair<std::size_t, Known*>> chain_;
};

}  // namespace lottie::looks
