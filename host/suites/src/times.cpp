// Converts times.
#include "times.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "model/comp.h"
#include "model/error.h"

namespace host::suites {

namespace {

// value x factor / divisor, halves away from zero. The product must fit 64 bits.
std::int64_t scaled(std::int64_t value, std::int64_t factor, std::int64_t divisor) {
    const std::int64_t product = value * factor;
    const std::int64_t half = product < 0 ? -(divisor / 2) : divisor / 2;
    return (product + half) / divisor;
}

model::Time stretched(model::Time time, double factor) {
    return {std::llround(static_cast<double>(time.ticks) * factor)};
}

}  // namespace

model::Time from_plugin(const A_Time& time) {
    if (time.scale == 0) throw model::Error(model::ErrorKind::bad_argument, "The time's scale is 0.");
    return {scaled(time.value, model::kTicksPerSecond, time.scale)};
}

A_Time to_plugin(model::Time time, const model::Layer& layer) {
    const std::int64_t scale = layer.comp().time_scale();
    const double value = static_cast<double>(time.ticks) * static_cast<double>(scale) / model::kTicksPerSecond;
    if (std::abs(value) >= 2147483647.5 || scale < 1 || scale > std::numeric_limits<A_u_long>::max())
        throw model::Error(model::ErrorKind::not_allowed, "A time of " + std::to_string(model::seconds(time)) +
                                                              " seconds in ticks of 1/" + std::to_string(scale) +
                                                              " needs more than 32 bits.");
    return {static_cast<A_long>(scaled(time.ticks, scale, model::kTicksPerSecond)), static_cast<A_u_long>(scale)};
}

model::Time to_comp_time(model::Time time, TimeMode mode, const model::Layer& layer) {
    return mode == TimeMode::comp ? time : layer.to_comp_time(time);
}

model::Time from_comp_time(model::Time time, TimeMode mode, const model::Layer& layer) {
    return mode == TimeMode::comp ? time : layer.to_layer_time(time);
}

model::Time to_comp_duration(model::Time duration, TimeMode mode, const model::Layer& layer) {
    return mode == TimeMode::comp ? duration : stretched(duration, std::abs(layer.stretch()));
}

model::Time from_comp_duration(model::Time duration, TimeMode mode, const model::Layer& layer) {
    return mode == TimeMode::comp ? duration : stretched(duration, 1 / std::abs(layer.stretch()));
}

model::Time to_stream_time(model::Time time, TimeMode mode, const model::Layer& layer) {
    return to_comp_time(time, mode, layer) - layer.offset();
}

model::Time from_stream_time(model::Time time, TimeMode mode, const model::Layer& layer) {
    return from_comp_time(time + layer.offset(), mode, layer);
}

}  // namespace host::suites
