// Whether an animation that cannot be worked with may pass as it is.
#pragma once

#include <string>

namespace lottie::document {

// Whether the text has all that makes it an animation, and none of its layers shows a composition: whatever is odd in
// it, there is nothing to un-nest.
bool is_flat_animation(const std::string& text);

}  // namespace lottie::document
