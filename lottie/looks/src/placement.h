// Where the layers of a stack lie at a frame, parents included.
#pragma once

#include <vector>

#include "scene.h"

namespace lottie::looks {

class Placement {
  public:
    explicit Placement(const Stack& stack);

    // From the layer's own coordinates to those of its composition.
    const Matrix& world(std::size_t layer, double frame);
    // Whether its place depends on the frame.
    bool moves(std::size_t layer) const { return moves_[layer]; }

  private:
    bool is_known(std::size_t layer, double frame) const;

    const Stack& stack_;
    std::vector<bool> moves_;
    std::vector<Matrix> world_;
    std::vector<double> known_at_;  // the frame of world_, not a number when there is none
};

}  // namespace lottie::looks
