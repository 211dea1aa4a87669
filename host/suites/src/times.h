// Time conversion: ticks inside the host, value and scale outside.
#pragma once

#include "A.h"
#include "model/layer.h"
#include "model/time.h"

namespace host::suites {

// Which time a call means.
enum class TimeMode { layer, comp };

// Throws bad_argument for a scale of 0.
model::Time from_plugin(const A_Time& time);
// In the time scale of the layer's composition, rounded; throws not_allowed if the value needs more than 32 bits.
A_Time to_plugin(model::Time time, const model::Layer& layer);

// Between the time a call means and composition time. Durations ignore offset and direction.
model::Time to_comp_time(model::Time time, TimeMode mode, const model::Layer& layer);
model::Time from_comp_time(model::Time time, TimeMode mode, const model::Layer& layer);
model::Time to_comp_duration(model::Time duration, TimeMode mode, const model::Layer& layer);
model::Time from_comp_duration(model::Time duration, TimeMode mode, const model::Layer& layer);
// Between the time a call means and keyframe time: composition time minus the layer's offset.
model::Time to_stream_time(model::Time time, TimeMode mode, const model::Layer& layer);
model::Time from_stream_time(model::Time time, TimeMode mode, const model::Layer& layer);

}  // namespace host::suites
