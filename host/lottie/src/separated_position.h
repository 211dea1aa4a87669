// Positions whose dimensions are animated apart, as one spatial property.
#pragma once

#include <memory>

#include "model/stream.h"
#include "property.h"
#include "tree.h"

namespace host::model {
class Layer;
}

namespace host::lottie {

// Whether the node is {"s": true, "x": ..., "y": ...}.
bool is_separated(const Tree& tree, const Tree::Node* position);

// Exact when all animated dimensions have keyframes at the same times with the same eases; otherwise linear keyframes
// at every whole frame and at all their keyframes. Expressions of the dimensions stay out.
std::shared_ptr<const model::StreamData> read_separated_position(const ReadContext& context, const Tree::Node& position,
                                                                 model::Layer& layer);

}  // namespace host::lottie
