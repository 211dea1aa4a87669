// Values of streams, and keyframes.
#pragma once

#include <array>
#include <cstdint>

#include "model/time.h"

namespace host::model {

// Numbered as in the C interface.
enum class StreamType {
    no_data = 0,
    three_d_spatial = 1,
    three_d = 2,
    two_d_spatial = 3,
    two_d = 4,
    one_d = 5,
    color = 6,
    arbitrary = 7,
    marker = 8,
    layer_id = 9,
    mask_id = 10,
    mask = 11,
    text_document = 12,
};

constexpr bool is_spatial(StreamType t) {
    return t == StreamType::three_d_spatial || t == StreamType::two_d_spatial;
}
int value_dimensions(StreamType t);     // numbers used in a Value: 0 to 4
int temporal_dimensions(StreamType t);  // eases per side of a keyframe: spatial 1, 2D 2, 3D 3, no data 0, else 1

// Up to four numbers, depending on the stream type. Units: pixels, percent, degrees, seconds (time remap); colours are
// red, green, blue, alpha in 0..1; a layer or mask id is in n[0], 0 for none.
struct Value {
    std::array<double, 4> n{};
    friend bool operator==(const Value&, const Value&) = default;
};

enum class Interpolation { none = 0, linear = 1, bezier = 2, hold = 3 };

enum KeyframeFlag : std::uint32_t {
    kTemporalContinuous = 0x1,
    kTemporalAutoBezier = 0x2,
    kSpatialContinuous = 0x4,
    kSpatialAutoBezier = 0x8,
    kRoving = 0x10,
};

// Speed in units per second, influence as a share (0..1) of the segment's time.
struct Ease {
    double speed = 0;
    double influence = 1.0 / 6;
    friend bool operator==(const Ease&, const Ease&) = default;
};

struct Keyframe {
    Time time;  // composition time minus the layer's offset, not divided by stretch; does not change when the layer
                // moves
    Value value;
    Interpolation in = Interpolation::linear;
    Interpolation out = Interpolation::linear;
    std::uint32_t flags = 0;
    std::array<Ease, 3> ease_in{};  // per temporal dimension
    std::array<Ease, 3> ease_out{};
    Value tangent_in;  // spatial streams: pixels from the keyframe's value
    Value tangent_out;
    friend bool operator==(const Keyframe&, const Keyframe&) = default;
};

}  // namespace host::model
