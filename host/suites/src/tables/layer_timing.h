// The timing functions of the layer suites.
#pragma once

#include "model/layer.h"
#include "times.h"

namespace host::suites {

A_Time in_point(model::Layer& layer, TimeMode mode);
A_Time duration(model::Layer& layer, TimeMode mode);
// Trims; offset and keyframes stay.
void set_in_point_and_duration(model::Layer& layer, TimeMode mode, const A_Time& in_point, const A_Time& duration);
// The composition time of layer time 0, which for a trimmed layer is not its in-point.
A_Time offset(model::Layer& layer);
// Moves the whole layer.
void set_offset(model::Layer& layer, const A_Time& offset);

}  // namespace host::suites
