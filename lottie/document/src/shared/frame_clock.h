// Times in the file are frames; in the model they are ticks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/time.h"

namespace lottie::document {

// What is said of times beyond the range of FrameClock::time().
inline constexpr std::string_view kTooFar =
    "lies more than 4 hours 58 minutes from 0, further than a time of 32 bits reaches";

class FrameClock {
  public:
    FrameClock() = default;
    explicit FrameClock(double frame_rate) : ticks_per_frame_(host::model::kTicksPerSecond / frame_rate) {}

    // The nearest tick; null beyond 32 bits, the width in which plug-ins receive times.
    std::optional<host::model::Time> time(double frames) const;
    // As time(), for frames that were found to be in range when the file was read; beyond it, the end of the range.
    host::model::Time clamped_time(double frames) const;
    double frames(host::model::Time time) const { return static_cast<double>(time.ticks) / ticks_per_frame_; }

    // Whether a number of frames in the file stands for `time`: nothing finer than a tick, or than a sum of rounded
    // times where a frame is not a whole number of ticks.
    bool means(double frames, host::model::Time time) const;
    // How far from time's own frames such a number can lie.
    double slack() const;

    // The shortest decimal spelling of `time` in frames that reads back to the same tick. Where a frame is not a whole
    // number of ticks (29.97 a second), sums of rounded times miss a frame by a tick or two, which would let a layer
    // begin one frame late; there, a spelling with up to three decimals may miss by that much.
    std::string text(host::model::Time time) const;

  private:
    bool has_whole_ticks() const;

    double ticks_per_frame_ = 4000;
};

}  // namespace lottie::document
