// Sets fields of a keyframe as HostRules::keyframe_setters_disturb_each_other says.
#pragma once

#include "model/host_rules.h"
#include "model/value.h"

namespace host::model {

// The caller checks `dimension`. Under the rule both sides become bezier.
void set_ease(Keyframe& keyframe, std::size_t dimension, Ease in, Ease out, const HostRules& rules);

// Under the rule the spatial auto-bezier flag is cleared.
void set_tangents(Keyframe& keyframe, const Value& in, const Value& out, const HostRules& rules);

}  // namespace host::model
