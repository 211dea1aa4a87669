// One composition of an animation as an animation of its own.
#pragma once

#include <string>
#include <string_view>

namespace lottie::looks {

struct ExtractedComposition {
    std::string text;
    double first_frame = 0;  // at which `text` begins, in frames of the composition
};

// The animation with that composition in the place of the main one, at its own size and as long as its layers last; the
// assets stay. For the empty id the animation as it is. Throws std::invalid_argument when there is no such composition,
// std::runtime_error for a text that is no animation.
ExtractedComposition extract_composition(std::string_view animation, std::string_view id);

}  // namespace lottie::looks
