// Stream values on their way in and out: four numbers inside, a union outside.
#pragma once

#include <string>

#include "AE_GeneralPlug.h"
#include "model/value.h"

namespace host::suites {

// Whether a value of the stream type is numbers that the host knows; masks, markers, texts and the like are not.
bool has_numbers(model::StreamType type);
// Whether values of both types lie in the union in the same way.
bool have_same_layout(model::StreamType a, model::StreamType b);

// All zero for types without numbers.
AEGP_StreamVal2 to_plugin(const model::Value& value, model::StreamType type);
// Throws bad_argument for numbers that are not finite.
model::Value from_plugin(const AEGP_StreamVal2& value, model::StreamType type);

// "(960, 540, 0)", "25", "layer id 3"
std::string describe(const AEGP_StreamVal2& value, model::StreamType type);

}  // namespace host::suites
