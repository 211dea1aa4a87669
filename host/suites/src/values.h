// Conversion of stream values: four numbers inside the host, a union outside.
#pragma once

#include <string>

#include "AE_GeneralPlug.h"
#include "model/value.h"

namespace host::suites {

// Whether the host knows the type's values as numbers; not those of masks, markers, text and the like.
bool has_numbers(model::StreamType type);
// Whether values of both types use the same member of the union.
bool have_same_layout(model::StreamType a, model::StreamType b);

// All zero for types without numbers.
AEGP_StreamVal2 to_plugin(const model::Value& value, model::StreamType type);
// Throws bad_argument for numbers that are not finite.
model::Value from_plugin(const AEGP_StreamVal2& value, model::StreamType type);

// "(960, 540, 0)", "25", "layer id 3"
std::string describe(const AEGP_StreamVal2& value, model::StreamType type);

}  // namespace host::suites
