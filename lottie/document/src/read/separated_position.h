// Positions whose dimensions are animated separately, as one spatial property.
#pragma once

#include <memory>

#include "model/stream.h"
#include "read/property_reader.h"

namespace host::model {
class Layer;
}

namespace lottie::document {

// Exact when all animated dimensions have keyframes at the same times with the same eases; otherwise linear keyframes
// at every whole frame and at all their keyframes. Expressions of the dimensions stay out.
std::shared_ptr<const host::model::StreamData> read_separated_position(const ReadContext& context,
                                                                       const JsonNode& position,
                                                                       host::model::Layer& layer);

}  // namespace lottie::document
