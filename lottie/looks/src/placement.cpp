// Where the layers of a stack lie at a frame, parents included.
#include "placement.h"

#include <cmath>

namespace lottie::looks {
namespace {

constexpr std::size_t kStepsPerTransform = 10;

}  // namespace

bool Placement::moves(std::size_t layer) {
    chain_.clear();
    std::optional<std::size_t> at = layer;
    bool moves = false;
    while (at) {
        Known& known = known_[*at];
        if (known.movement != Movement::unknown) {
            moves = known.movement == Movement::moves;
            break;
        }
        chain_.emplace_back(*at, &known);
        at = stack_.parent(*at);
    }
    work_.spend(chain_.size());
    for (auto link = chain_.rbegin(); link != chain_.rend(); ++link) {
        moves = moves || stack_.layer(link->first).transform().is_animated();
        link->second->movement = moves ? Movement::moves : Movement::stands_still;
    }
    return moves;
}

const Matrix& Placement::world(std::size_t layer, double frame) {
    moves(layer);
    chain_.clear();
    std::optional<std::size_t> at = layer;
    const Known* above = nullptr;
    while (at) {
        Known& known = known_[*at];
        above = &known;
        if (known.frame == frame || (known.movement == Movement::stands_still && !std::isnan(known.frame))) break;
        chain_.emplace_back(*at, &known);
        above = nullptr;
        at = stack_.parent(*at);
    }
    work_.spend(kStepsPerTransform * chain_.size());
    for (auto link = chain_.rbegin(); link != chain_.rend(); ++link) {
        Known& known = *link->second;
        const Transform& transform = stack_.layer(link->first).transform();
        if (std::isnan(known.frame) || !transform.stands_still_between(known.frame, frame))
            known.own = transform.at(frame);
        known.world = above == nullptr ? known.own : known.own.then(above->world);
        known.frame = frame;
        above = &known;
    }
    return above->world;
}

}  // namespace lottie::looks
