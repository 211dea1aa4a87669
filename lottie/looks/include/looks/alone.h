// One composition of an animation as an animation of its own.
#pragma once

#include <string>
#include <string_view>

#include "looks/animation.h"

namespace lottie::looks {

// The animation with that composition in the place of the main one, at its own size and as long as its layers last; the
// assets stay. For the empty id the animation as it is. Throws std::invalid_argument when there is no such composition.
std::string composition_alone(const Animation& animation, std::string_view id);

// The frame at which composition_alone() begins, in frames of the composition.
double first_frame(const Animation& animation, std::string_view id);

}  // namespace lottie::looks
