// Values between keyframes.
#pragma once

#include "model/stream.h"
#include "model/value.h"

namespace host::model {

// a.time <= t < b.time
Value interpolate(StreamType type, const Keyframe& a, const Keyframe& b, Time t);

// Ignores the expression.
Value value_at(const StreamData& data, StreamType type, Time t);

}  // namespace host::model
