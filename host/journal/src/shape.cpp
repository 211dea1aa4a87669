// Which member of a stream's value holds.
#include "shape.h"

#include <algorithm>

namespace host::journal {

Shape shape_of(AEGP_StreamType type) {
    switch (type) {
        case AEGP_StreamType_ThreeD_SPATIAL:
        case AEGP_StreamType_ThreeD:
            return Shape::three_d;
        case AEGP_StreamType_TwoD_SPATIAL:
        case AEGP_StreamType_TwoD:
            return Shape::two_d;
        case AEGP_StreamType_OneD:
            return Shape::one_d;
        case AEGP_StreamType_COLOR:
            return Shape::color;
        case AEGP_StreamType_LAYER_ID:
            return Shape::layer_id;
        case AEGP_StreamType_MASK_ID:
            return Shape::mask_id;
        default:
            return Shape::none;
    }
}

Shape shape_of(const Value& value) {
    const auto has = [&value](const char* field) {
        return std::any_of(value.parts.begin(), value.parts.end(),
                           [field](const Value& v) { return v.field == field; });
    };
    if (has("z")) return Shape::three_d;
    if (has("x")) return Shape::two_d;
    if (has("one_d")) return Shape::one_d;
    if (has("color")) return Shape::color;
    if (has("layer_id")) return Shape::layer_id;
    if (has("mask_id")) return Shape::mask_id;
    return Shape::none;
}

}  // namespace host::journal
