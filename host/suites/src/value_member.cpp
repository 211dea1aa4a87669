// Which member of a stream value's union holds the value.
#include "suites/value_member.h"

namespace host::suites {

ValueMember value_member(AEGP_StreamType type) {
    switch (type) {
        case AEGP_StreamType_ThreeD_SPATIAL:
        case AEGP_StreamType_ThreeD:
            return ValueMember::three_d;
        case AEGP_StreamType_TwoD_SPATIAL:
        case AEGP_StreamType_TwoD:
            return ValueMember::two_d;
        case AEGP_StreamType_OneD:
            return ValueMember::one_d;
        case AEGP_StreamType_COLOR:
            return ValueMember::color;
        case AEGP_StreamType_LAYER_ID:
            return ValueMember::layer_id;
        case AEGP_StreamType_MASK_ID:
            return ValueMember::mask_id;
        default:
            return ValueMember::none;
    }
}

}  // namespace host::suites
