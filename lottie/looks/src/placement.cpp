// Where the layers of a stack lie at a frame, parents included.
#include "placement.h"

#include <cmath>
#include <limits>

namespace lottie::looks {
namespace {

// The layers from `layer` up to the last ancestor, as far as `stop` says no.
template <class Stop>
std::vector<std::size_t> chain_up(const Stack& stack, std::size_t layer, Stop stop) {
    std::vector<std::size_t> chain;
    std::optional<std::size_t> at = layer;
    while (at && !stop(*at)) {
        chain.push_back(*at);
        at = stack.layers[*at].parent;
    }
    return chain;
}

}  // namespace

Placement::Placement(const Stack& stack)
    : stack_(stack),
      moves_(stack.layers.size(), false),
      world_(stack.layers.size()),
      known_at_(stack.layers.size(), std::numeric_limits<double>::quiet_NaN()) {
    std::vector<bool> decided(stack.layers.size(), false);
    for (std::size_t i = 0; i < stack.layers.size(); ++i) {
        const auto chain = chain_up(stack, i, [&](std::size_t at) { return decided[at]; });
        for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
            const SceneLayer& layer = stack.layers[*at];
            moves_[*at] = layer.transform.is_animated() || (layer.parent && moves_[*layer.parent]);
            decided[*at] = true;
        }
    }
}

bool Placement::is_known(std::size_t layer, double frame) const {
    return known_at_[layer] == frame || (!moves_[layer] && !std::isnan(known_at_[layer]));
}

const Matrix& Placement::world(std::size_t layer, double frame) {
    const auto chain = chain_up(stack_, layer, [&](std::size_t at) { return is_known(at, frame); });
    for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
        const SceneLayer& link = stack_.layers[*at];
        world_[*at] = link.transform.at(frame);
        if (link.parent) world_[*at] = world_[*at].then(world_[*link.parent]);
        known_at_[*at] = frame;
    }
    return world_[layer];
}

}  // namespace lottie::looks
