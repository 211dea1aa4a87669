// Times on their way in and out: ticks inside, value and scale outside.
#pragma once

#include "A.h"
#include "model/layer.h"
#include "model/time.h"

namespace host::suites {

// The clock in which a call speaks of times.
enum class TimeMode { layer, comp };

// Throws bad_argument for a scale of 0, which is no time at all.
model::Time from_plugin(const A_Time& time);
// In ticks of the layer's composition, rounded to the nearest; throws not_allowed if the value needs more than 32 bits.
A_Time to_plugin(model::Time time, const model::Layer& layer);

// Between the clock of a call and the composition's. Durations know no offset and no direction.
model::Time to_comp_time(model::Time time, TimeMode mode, const model::Layer& layer);
model::Time from_comp_time(model::Time time, TimeMode mode, const model::Layer& layer);
model::Time to_comp_duration(model::Time duration, TimeMode mode, const model::Layer& layer);
model::Time from_comp_duration(model::Time duration, TimeMode mode, const model::Layer& layer);
// Between the clock of a call and the one of keyframes: composition time from the layer's offset on.
model::Time to_stream_time(model::Time time, TimeMode mode, const model::Layer& layer);
model::Time from_stream_time(model::Time time, TimeMode mode, const model::Layer& layer);

}  // namespace host::suites
