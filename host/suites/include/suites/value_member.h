// Which member of a stream value's union holds the value.
#pragma once

#include <cstdint>

#include "AE_GeneralPlug.h"

namespace host::suites {

enum class ValueMember : std::uint8_t { none, one_d, two_d, three_d, color, layer_id, mask_id };

// none: the host knows no numbers for the type (masks, markers, texts and the like).
ValueMember value_member(AEGP_StreamType type);

}  // namespace host::suites
