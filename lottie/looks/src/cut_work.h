// What it takes to cut convex polygons by one another, in steps of work.
#pragma once

#include <cstddef>

#include "hull.h"

namespace lottie::looks {

// Each corner of one may be looked at for each side of the other.
inline std::size_t steps_to_cut(const Hull& a, const Hull& b) {
    constexpr std::size_t kLooksPerStep = 4;
    return a.size() * b.size() / kLooksPerStep;
}

}  // namespace lottie::looks
