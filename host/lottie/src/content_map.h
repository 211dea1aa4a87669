// Where a layer's streams stand in the file, for reader and writer alike.
#pragma once

#include <array>
#include <string_view>

#include "model/layer.h"
#include "model/stream.h"
#include "tree.h"

namespace host::lottie {

struct StreamPlace {
    std::string_view group;  // member of the layer that holds it; empty for the layer itself
    std::string_view key;
    int number;  // of the layer stream
    model::StreamType type;
    int ix;     // the property's number in the application
    int needs;  // 0 always, 2 or 3: only on 2D or 3D layers
};

inline constexpr int kZoomStream = 11;

// In the order in which exporters write the members of a group.
inline constexpr std::array<StreamPlace, 12> kStreamPlaces{{
    {"ks", "o", model::kOpacity, model::StreamType::one_d, 11, 0},
    {"ks", "r", model::kRotation, model::StreamType::one_d, 10, 2},
    {"ks", "rx", model::kRotateX, model::StreamType::one_d, 8, 3},
    {"ks", "ry", model::kRotateY, model::StreamType::one_d, 9, 3},
    {"ks", "rz", model::kRotation, model::StreamType::one_d, 10, 3},
    {"ks", "or", model::kOrientation, model::StreamType::three_d_spatial, 7, 3},
    {"ks", "p", model::kPosition, model::StreamType::three_d_spatial, 2, 0},
    {"ks", "a", model::kAnchorPoint, model::StreamType::three_d_spatial, 1, 0},
    {"ks", "s", model::kScale, model::StreamType::three_d, 6, 0},
    {"", "tm", model::kTimeRemapStream, model::StreamType::one_d, 2, 0},
    {"", "pe", kZoomStream, model::StreamType::one_d, 1, 0},
    {"au", "lv", model::kAudioLevels, model::StreamType::two_d, 1, 0},
}};

// Null for a stream that such a layer has no place for.
const StreamPlace* place_of(int number, bool is_3d);
// Null if it is missing. Some files call the rotation of a 3D layer "r", or that of a 2D layer "rz".
const Tree::Node* node_at(const Tree& tree, const StreamPlace& place);

model::Value default_value(int number);

}  // namespace host::lottie
