// Dimensions of the stream types.
#include "model/value.h"

namespace host::model {

int value_dimensions(StreamType t) {
    switch (t) {
        case StreamType::three_d_spatial:
        case StreamType::three_d:
            return 3;
        case StreamType::two_d_spatial:
        case StreamType::two_d:
            return 2;
        case StreamType::color:
            return 4;
        case StreamType::one_d:
        case StreamType::layer_id:
        case StreamType::mask_id:
            return 1;
        case StreamType::no_data:
        case StreamType::arbitrary:
        case StreamType::marker:
        case StreamType::mask:
        case StreamType::text_document:
            return 0;
    }
    return 0;
}

int temporal_dimensions(StreamType t) {
    switch (t) {
        case StreamType::no_data:
            return 0;
        case StreamType::two_d:
            return 2;
        case StreamType::three_d:
            return 3;
        default:
            return 1;
    }
}

}  // namespace host::model
