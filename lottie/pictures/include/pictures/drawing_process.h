// Work with the renderer in a process of its own: with some files it crashes, takes all memory, or never ends.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "pictures/comparison.h"

namespace lottie::pictures {

// What drawing may take, one process after another.
struct DrawingBudget {
    std::chrono::milliseconds time;             // of the processor; each process takes its part away
    std::size_t memory = std::size_t{1} << 30;  // bytes, for each
};

// What `work` gives. Throws std::runtime_error with one sentence when it throws one, crashes, or wants more than the
// budget, or three times that on the clock. Changes that it makes to memory are not seen here, and it can open no file.
// The caller's process must not have drawn anything itself: the renderer's threads do not go along.
std::string run_in_child(const std::function<std::string()>& work, DrawingBudget& budget);

// compare() for the text of two animations. Throws as run_in_child() does; also when the renderer refuses one of them.
PictureComparison compare_in_child(const std::string& before, const std::string& after, const std::vector<int>& look_at,
                                   DrawingBudget& budget);

}  // namespace lottie::pictures
