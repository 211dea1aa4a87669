// Begins and ends of layers that the file spells finer than a tick.
#include "shared/verbatim_times.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "document/json_text.h"

namespace lottie::document {
namespace {

double usual(const FrameClock& clock, host::model::Time time) {
    return read_number(clock.text(time));
}

std::string text(const FrameClock& clock, host::model::Time time, double frames) {
    if (frames == usual(clock, time)) return clock.text(time);
    std::string out;
    append_number(out, frames);
    return out;
}

}  // namespace

bool VerbatimTimes::is_noisy(const FrameClock& clock, double frames) {
    if (frames == std::round(frames)) return false;
    const std::optional<host::model::Time> time = clock.time(frames);
    return time && usual(clock, *time) != frames;
}

VerbatimTimes::VerbatimTimes(std::vector<double> frames) : frames_(std::move(frames)) {
    std::sort(frames_.begin(), frames_.end());
    frames_.erase(std::unique(frames_.begin(), frames_.end()), frames_.end());
    frames_.shrink_to_fit();
}

std::optional<double> VerbatimTimes::spelled(const FrameClock& clock, host::model::Time time) const {
    const auto first = std::lower_bound(frames_.begin(), frames_.end(), clock.frames(time) - clock.slack());
    const auto last = std::find_if(first, frames_.end(), [&](double each) { return !clock.means(each, time); });
    if (first == last) return std::nullopt;
    return last - first == 1 ? *first : usual(clock, time);
}

double VerbatimTimes::exact(const FrameClock& clock, host::model::Time time) const {
    return spelled(clock, time).value_or(usual(clock, time));
}

std::string VerbatimTimes::begin_text(const FrameClock& clock, host::model::Time time, double moved) const {
    std::optional<double> begin = spelled(clock, time);
    if (!frames_.empty() && clock.means(moved, time)) begin = std::max(begin.value_or(moved), moved);
    return text(clock, time, begin.value_or(usual(clock, time)));
}

std::string VerbatimTimes::end_text(const FrameClock& clock, host::model::Time time, double moved) const {
    std::optional<double> end = spelled(clock, time);
    if (!frames_.empty() && clock.means(moved, time)) end = std::min(end.value_or(moved), moved);
    return text(clock, time, end.value_or(usual(clock, time)));
}

}  // namespace lottie::document
