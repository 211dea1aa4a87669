// Which member of a stream's value holds.
#pragma once

#include <cstdint>

#include "AE_GeneralPlug.h"
#include "journal/value.h"

namespace host::journal {

enum class Shape : std::uint8_t { none, one_d, two_d, three_d, color, layer_id, mask_id };

Shape shape_of(AEGP_StreamType type);
// Of a value as a journal tells it.
Shape shape_of(const Value& value);

}  // namespace host::journal
