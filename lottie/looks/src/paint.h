// Fills and strokes of shape layers.
#pragma once

#include <vector>

#include "json.h"
#include "property.h"

namespace lottie::looks {

// The first fill or stroke, plain or a gradient; null if there is none.
const Json* first_paint(Json::ConstArray shapes);

// All that it shows over time, a gradient the colors between those; none if they cannot be told.
std::vector<Values> colors_of(const Json& paint);

// Whether it fills all within its paths' outlines, and shows nothing through.
bool is_opaque_fill(const Json& item);

}  // namespace lottie::looks
