// What lies inside a layer: expressions, keyframes, and whether it changes over time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scene.h"

namespace lottie::looks {

struct Expression {
    std::string property;  // path in the layer's object, such as "ks.p"
    std::string_view text;
};

// In the order of the file, the same for a layer and its copy.
std::vector<Expression> expressions(const Json& layer);

// Times of every keyframe inside but in `left_out`, a property object, in the order of the file. Text documents count;
// a keyed property with equal values too.
std::vector<double> key_times(const Json& layer, const Json* left_out = nullptr);

// Whether players may draw the layer's own picture differently at two frames: keyframes, expressions, or a nested
// composition with layers that change, come or go. Its transform and opacity count.
bool changes_over_time(const Scene& scene, const SceneLayer& layer);

}  // namespace lottie::looks
