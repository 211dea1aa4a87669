// Time in whole ticks, so that arithmetic is exact.
#pragma once

#include <compare>
#include <cstdint>

namespace host::model {

// Divisible by 23.976, 24, 25, 29.97, 30, 48, 50, 59.94 and 60 frames per second; three hours either way fit into 32
// bits, the width in which plug-ins receive times.
inline constexpr std::int64_t kTicksPerSecond = 120'000;

// A point in time or a duration, in ticks.
struct Time {
    std::int64_t ticks = 0;

    friend constexpr auto operator<=>(Time, Time) = default;
    friend constexpr Time operator+(Time a, Time b) { return {a.ticks + b.ticks}; }
    friend constexpr Time operator-(Time a, Time b) { return {a.ticks - b.ticks}; }
    constexpr Time& operator+=(Time b) { return *this = *this + b; }
};

constexpr double seconds(Time t) {
    return static_cast<double>(t.ticks) / static_cast<double>(kTicksPerSecond);
}

// The nearest tick; halves go away from zero.
Time from_seconds(double s);

}  // namespace host::model
