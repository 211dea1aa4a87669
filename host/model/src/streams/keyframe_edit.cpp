// Sets fields of a keyframe.
#include "model/keyframe_edit.h"

namespace host::model {

void set_ease(Keyframe& keyframe, std::size_t dimension, Ease in, Ease out, const HostRules& rules) {
    keyframe.ease_in[dimension] = in;
    keyframe.ease_out[dimension] = out;
    if (!rules.keyframe_setters_disturb_each_other) return;
    keyframe.in = Interpolation::bezier;
    keyframe.out = Interpolation::bezier;
}

void set_tangents(Keyframe& keyframe, const Value& in, const Value& out, const HostRules& rules) {
    keyframe.tangent_in = in;
    keyframe.tangent_out = out;
    if (rules.keyframe_setters_disturb_each_other) keyframe.flags &= ~std::uint32_t{kSpatialAutoBezier};
}

}  // namespace host::model
