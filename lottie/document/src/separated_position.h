// Positions whose dimensions are animated apart, as one spatial property.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "model/stream.h"
#include "property.h"
#include "tree.h"

namespace host::model {
class Layer;
}

namespace lottie::document {

inline constexpr std::array<std::string_view, 3> kDimensionKeys = {"x", "y", "z"};

// Whether the node is {"s": true, "x": ..., "y": ...}.
bool is_separated(const Tree& tree, const Tree::Node* position);

// Exact when all animated dimensions have keyframes at the same times with the same eases; otherwise linear keyframes
// at every whole frame and at all their keyframes. Expressions of the dimensions stay out.
std::shared_ptr<const host::model::StreamData> read_separated_position(const ReadContext& context,
                                                                       const Tree::Node& position,
                                                                       host::model::Layer& layer);

// Whether a dimension has one.
bool has_expressions(const Tree& tree, const Tree::Node& position);

bool has_tangents(const host::model::StreamData& position);

// The other way round: a position without tangents, dimension by dimension. One that does not move has no keyframes.
using Dimensions = std::array<host::model::StreamData, 3>;
Dimensions separate(const host::model::StreamData& position);

}  // namespace lottie::document
