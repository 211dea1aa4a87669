// Handles of the file's easing curves and the model's speeds and influences.
#include "shared/ease.h"

#include <cmath>

namespace lottie::document {
namespace {

using host::model::Ease;
using host::model::Interpolation;
using host::model::Keyframe;
using host::model::Value;

constexpr int kPathSamples = 200;
constexpr double kNoChange = 1e-7;
constexpr double kMinInfluence = 1e-12;
constexpr double kRounding = 1e9;
constexpr double kMaxSpeed = 1e100;  // and what follows from it is finite

double rounded(double number) {
    return std::round(number * kRounding) / kRounding;
}

double distance(const Value& a, const Value& b, std::size_t dimensions) {
    double sum = 0;
    for (std::size_t d = 0; d < dimensions; ++d) sum += (b.n[d] - a.n[d]) * (b.n[d] - a.n[d]);
    return std::sqrt(sum);
}

double path_length(const Keyframe& from, const Keyframe& to, std::size_t dimensions) {
    if (from.tangent_out == Value{} && to.tangent_in == Value{}) return distance(from.value, to.value, dimensions);
    double length = 0;
    Value last = from.value;
    for (int i = 1; i <= kPathSamples; ++i) {
        const double u = static_cast<double>(i) / kPathSamples;
        const double w = 1 - u;
        Value here;
        for (std::size_t d = 0; d < dimensions; ++d) {
            here.n[d] = w * w * w * from.value.n[d] + 3 * w * w * u * (from.value.n[d] + from.tangent_out.n[d]) +
                        3 * w * u * u * (to.value.n[d] + to.tangent_in.n[d]) + u * u * u * to.value.n[d];
        }
        length += distance(last, here, dimensions);
        last = here;
    }
    return length;
}

// `x` is the share of the time that the handle reaches over, `y` the share of the change.
Ease ease_of(double x, double y, const SegmentMeasure& segment) {
    const double influence = x == 0 && y != 0 ? kMinInfluence : x;
    return {influence == 0 ? 0 : y / influence * segment.change / segment.seconds, influence};
}

double y_of(const Ease& ease, Interpolation side, const SegmentMeasure& segment) {
    if (side != Interpolation::bezier) return ease.influence;
    return ease.speed * ease.influence * segment.seconds / segment.change;
}

}  // namespace

SegmentMeasure measure(host::model::StreamType type, std::size_t dimension, const Keyframe& from, const Keyframe& to) {
    const auto dimensions = static_cast<std::size_t>(host::model::value_dimensions(type));
    const bool has_one_ease = dimensions > 1 && host::model::temporal_dimensions(type) == 1;
    const double change =
        has_one_ease ? path_length(from, to, dimensions) : to.value.n[dimension] - from.value.n[dimension];
    const bool moves = std::abs(change) >= kNoChange;
    return {host::model::seconds(to.time - from.time), moves ? change : 1, moves};
}

Ease ease_out(EaseHandle handle, const SegmentMeasure& segment) {
    return ease_of(handle.x, handle.y, segment);
}

Ease ease_in(EaseHandle handle, const SegmentMeasure& segment) {
    return ease_of(1 - handle.x, 1 - handle.y, segment);
}

bool can_hold(const SegmentMeasure& segment, const Ease& out, const Ease& in) {
    const auto holds = [&segment](const Ease& ease) {
        return std::abs(ease.speed) < kMaxSpeed && std::abs(ease.influence) < kMaxSpeed &&
               std::abs(y_of(ease, Interpolation::bezier, segment)) < kMaxSpeed;
    };
    return std::abs(segment.change) < kMaxSpeed && holds(out) && holds(in);
}

EaseHandle handle_out(const Ease& ease, Interpolation side, const SegmentMeasure& segment) {
    return {rounded(ease.influence), rounded(y_of(ease, side, segment))};
}

EaseHandle handle_in(const Ease& ease, Interpolation side, const SegmentMeasure& segment) {
    return {rounded(1 - ease.influence), rounded(1 - y_of(ease, side, segment))};
}

}  // namespace lottie::document
