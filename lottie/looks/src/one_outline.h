// Layers whose picture is one area within a hard edge, as mattes mostly are.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "json.h"
#include "layer.h"
#include "matrix.h"

namespace lottie::looks {

struct OneOutline {
    const Json* path = nullptr;  // a path property
    Matrix place;                // from its coordinates to the layer's
    bool is_closed = true;
    std::shared_ptr<const JsonDocument> made = nullptr;  // what the path lies in if the file has no such path
};

using Outlines = std::vector<OneOutline>;

// Nothing for a layer that may draw anything else, or that is not opaque all over at all times.
std::optional<OneOutline> one_outline(const SceneLayer& layer);
// All the areas that a layer fills, which may be transparent at times by the layer's own
// opacity and by nothing else. None for a layer that may draw anything else.
Outlines outlines_at_any_opacity(const SceneLayer& layer);

}  // namespace lottie::looks
