// How much work judging may take, counted in steps that are the same on every machine.
#pragma once

#include <cstddef>

#include "looks/judge.h"

namespace lottie::looks {

// A step is about as much as looking at one point of a path.
class Work {
  public:
    explicit Work(std::size_t most = Judge::kMostWork) : left_(most) {}

    // Throws TooMuchWork when all is used up.
    void spend(std::size_t steps) {
        if (steps > left_) throw TooMuchWork();
        left_ -= steps;
    }

  private:
    std::size_t left_;
};

}  // namespace lottie::looks
