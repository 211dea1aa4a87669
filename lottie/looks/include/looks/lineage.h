// Where the layers of an animation come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "looks/judge.h"

namespace lottie::looks {

struct Scene;

// The way to a layer of the file through nests, each in the composition that the one before it shows, itself last.
using Descent = std::vector<NestOfFile>;

class Lineage {
  public:
    // Of the animation before the first step, which must outlive it. Throws std::runtime_error when it is none.
    explicit Lineage(std::string_view text);
    Lineage(const Scene& file, Work& work);
    ~Lineage();

    // One more step; in their order. Throws TooMuchWork.
    void add(const StackChange& step);

    // From the composition that holds the layer now, not beyond that many links. Empty for what steps made. Throws
    // TooMuchWork.
    Descent path(const std::string& composition, std::size_t place, std::size_t most = SIZE_MAX);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace lottie::looks
