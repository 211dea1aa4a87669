// The value between two keyframes.
#pragma once

#include "model/value.h"

namespace host::model {

// a.time <= t < b.time
Value interpolate(StreamType type, const Keyframe& a, const Keyframe& b, Time t);

}  // namespace host::model
