// Where a layer's streams stand in the file, for reader and writer alike.
#pragma once

#include <array>
#include <string_view>

#include "document/json_tree.h"
#include "model/layer.h"
#include "model/stream.h"

namespace lottie::document {

struct StreamPlace {
    std::string_view group;  // member of the layer that holds it; empty for the layer itself
    std::string_view key;
    int number;  // of the layer stream
    host::model::StreamType type;
    int ix;     // the property's number in the application
    int needs;  // 0 always, 2 or 3: only on 2D or 3D layers
};

inline constexpr int kZoomStream = 11;

// In the order in which exporters write the members of a group.
inline constexpr std::array<StreamPlace, 12> kStreamPlaces{{
    {"ks", "o", host::model::kOpacity, host::model::StreamType::one_d, 11, 0},
    {"ks", "r", host::model::kRotation, host::model::StreamType::one_d, 10, 2},
    {"ks", "rx", host::model::kRotateX, host::model::StreamType::one_d, 8, 3},
    {"ks", "ry", host::model::kRotateY, host::model::StreamType::one_d, 9, 3},
    {"ks", "rz", host::model::kRotation, host::model::StreamType::one_d, 10, 3},
    {"ks", "or", host::model::kOrientation, host::model::StreamType::three_d_spatial, 7, 3},
    {"ks", "p", host::model::kPosition, host::model::StreamType::three_d_spatial, 2, 0},
    {"ks", "a", host::model::kAnchorPoint, host::model::StreamType::three_d_spatial, 1, 0},
    {"ks", "s", host::model::kScale, host::model::StreamType::three_d, 6, 0},
    {"", "tm", host::model::kTimeRemapStream, host::model::StreamType::one_d, 2, 0},
    {"", "pe", kZoomStream, host::model::StreamType::one_d, 1, 0},
    {"au", "lv", host::model::kAudioLevels, host::model::StreamType::two_d, 1, 0},
}};

// Null for a stream that such a layer has no place for.
const StreamPlace* place_of(int number, bool is_3d);
// Null if it is missing. Some files call the rotation of a 3D layer "r", or that of a 2D layer "rz".
const JsonNode* node_at(const JsonTree& tree, const StreamPlace& place);

host::model::Value default_value(int number);

inline constexpr std::array<std::string_view, 3> kDimensionKeys = {"x", "y", "z"};

// Whether the node is {"s": true, "x": ..., "y": ...}: a position whose dimensions are animated separately.
bool is_separated(const JsonTree& tree, const JsonNode* position);

// How many numbers the property's values have in the file; 0 if it has no readable value.
std::size_t count_numbers(const JsonTree& tree, const JsonNode* property);

}  // namespace lottie::document
