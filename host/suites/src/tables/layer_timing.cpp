// In-point, duration, offset.
#include "tables/layer_timing.h"

namespace host::suites {

A_Time in_point(model::Layer& layer, TimeMode mode) {
    return to_plugin(from_comp_time(layer.in_point(), mode, layer), layer);
}

A_Time duration(model::Layer& layer, TimeMode mode) {
    return to_plugin(from_comp_duration(layer.duration(), mode, layer), layer);
}

void set_in_point_and_duration(model::Layer& layer, TimeMode mode, const A_Time& in_point, const A_Time& duration) {
    layer.set_in_point_and_duration(to_comp_time(from_plugin(in_point), mode, layer),
                                    to_comp_duration(from_plugin(duration), mode, layer));
}

A_Time offset(model::Layer& layer) {
    return to_plugin(layer.offset(), layer);
}

void set_offset(model::Layer& layer, const A_Time& offset) {
    layer.set_offset(from_plugin(offset));
}

}  // namespace host::suites
