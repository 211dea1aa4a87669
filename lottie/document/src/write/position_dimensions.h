// A position as dimensions that are animated separately.
#pragma once

#include <array>

#include "model/stream.h"
#include "shared/stream_places.h"

namespace lottie::document {

// Whether a dimension of the separated position has one.
bool has_expressions(const JsonTree& tree, const JsonNode& position);

bool has_tangents(const host::model::StreamData& position);

// A position without tangents, dimension by dimension. One that does not move has no keyframes.
using Dimensions = std::array<host::model::StreamData, 3>;
Dimensions separate(const host::model::StreamData& position);

}  // namespace lottie::document
