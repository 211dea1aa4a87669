// Work with the renderer in a process of its own: with some files it crashes, or never ends.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "pictures/comparison.h"

namespace lottie::pictures {

// What `work` gives. Throws std::runtime_error with one sentence when it throws one, crashes, takes more than `seconds`
// (at least 1) of the processor's time, or ten times that on the clock. Changes that it makes to memory are not seen
// here. The caller's process must not have drawn anything itself: the renderer's threads do not go along.
std::string run_apart(const std::function<std::string()>& work, int seconds);

// compare() for the text of two animations. Throws as run_apart() does; also when the renderer refuses one of them.
Comparison compare_apart(const std::string& before, const std::string& after, const std::vector<int>& look_at,
                         int seconds);

}  // namespace lottie::pictures
