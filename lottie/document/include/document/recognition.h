// Telling animations from other files, before anything is made of them.
#pragma once

#include <string>

namespace lottie::document {

// Whether the text has the beginnings of an animation: layers or assets, and two of the numbers that every animation
// states. One that is cut off or broken further on counts, so that somebody hears of it. Most are known by their first
// few bytes; other JSON is read to its end.
bool looks_like_animation(const std::string& text);

}  // namespace lottie::document
