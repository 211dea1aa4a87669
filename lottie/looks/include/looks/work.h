// How much work one file may make, told in steps and not by the clock: the same file is refused on every machine.
#pragma once

#include <cstddef>
#include <stdexcept>

namespace lottie::looks {

class TooMuchWork : public std::runtime_error {
  public:
    TooMuchWork() : std::runtime_error("this takes more work than one file may make") {}
};

// A step is about as much as looking at one point of a path.
class Work {
  public:
    static constexpr std::size_t kMost = 800'000'000;  // some ten seconds; real files take a hundredth

    explicit Work(std::size_t most = kMost) : left_(most) {}

    // Throws TooMuchWork when all is used up.
    void spend(std::size_t steps) {
        if (steps > left_) throw TooMuchWork();
        left_ -= steps;
    }

  private:
    std::size_t left_;
};

}  // namespace lottie::looks
