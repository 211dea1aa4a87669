// Frames to ticks and back to the shortest decimal.
#include "shared/frame_clock.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "document/json_text.h"

namespace lottie::document {
namespace {

constexpr double kMaxTicks = std::numeric_limits<std::int32_t>::max();
constexpr int kMaxDecimals = 15;

// How far, in ticks, a spelling may miss at rates without whole ticks a frame: three sums of rounded times for a whole
// frame, one for thousandths, the finest that exporters write.
constexpr double kWholeFrameSlack = 3;
constexpr double kDecimalSlack = 1.01;

}  // namespace

std::optional<host::model::Time> FrameClock::time(double frames) const {
    const double ticks = frames * ticks_per_frame_;
    if (!(std::abs(ticks) <= kMaxTicks)) return std::nullopt;
    return host::model::Time{std::llround(ticks)};
}

host::model::Time FrameClock::clamped_time(double frames) const {
    return {std::llround(std::clamp(frames * ticks_per_frame_, -kMaxTicks, kMaxTicks))};
}

bool FrameClock::has_whole_ticks() const {
    return std::abs(ticks_per_frame_ - std::round(ticks_per_frame_)) < 1e-9;
}

double FrameClock::slack() const {
    return (has_whole_ticks() ? 0.5 : kWholeFrameSlack) / ticks_per_frame_;
}

bool FrameClock::means(double frames, host::model::Time time) const {
    return std::abs(frames * ticks_per_frame_ - static_cast<double>(time.ticks)) <= slack() * ticks_per_frame_;
}

std::string FrameClock::text(host::model::Time time) const {
    const double exact = frames(time);
    for (int decimals = 0; decimals <= kMaxDecimals; ++decimals) {
        const std::string spelling = host::base::fixed_text(exact, decimals);
        const double ticks = read_number(spelling) * ticks_per_frame_;
        const double slack = has_whole_ticks() || decimals > 3 ? 0 : decimals == 0 ? kWholeFrameSlack : kDecimalSlack;
        const bool fits =
            std::llround(ticks) == time.ticks || std::abs(ticks - static_cast<double>(time.ticks)) <= slack;
        if (fits) return spelling == "-0" ? "0" : spelling;
    }
    std::string out;
    append_number(out, exact);
    return out;
}

}  // namespace lottie::document
