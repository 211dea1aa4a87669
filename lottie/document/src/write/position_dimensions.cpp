// A position as dimensions that are animated separately.
#include "write/position_dimensions.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "shared/ease.h"

namespace lottie::document {

using host::model::Keyframe;
using host::model::StreamData;
using host::model::StreamType;

bool has_expressions(const JsonTree& tree, const JsonNode& position) {
    return std::any_of(kDimensionKeys.begin(), kDimensionKeys.end(), [&](std::string_view key) {
        const JsonNode* expression = tree.member(tree.member(&position, key), "x");
        return expression != nullptr && expression->kind == JsonKind::string;
    });
}

bool has_tangents(const StreamData& position) {
    return std::any_of(position.keyframes.begin(), position.keyframes.end(), [](const Keyframe& key) {
        return key.tangent_in != host::model::Value{} || key.tangent_out != host::model::Value{};
    });
}

Dimensions separate(const StreamData& position) {
    Dimensions dimensions;
    const std::vector<Keyframe> all = position.keyframes.to_vector();
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        StreamData& data = dimensions[d];
        data.static_value.n[0] = all.empty() ? position.static_value.n[d] : all.front().value.n[d];
        const bool moves = std::any_of(all.begin(), all.end(),
                                       [&](const Keyframe& key) { return key.value.n[d] != data.static_value.n[0]; });
        if (!moves) continue;
        std::vector<Keyframe> own = all;
        for (Keyframe& key : own) key.value = {{key.value.n[d], 0, 0, 0}};
        for (std::size_t i = 0; i + 1 < all.size(); ++i) {
            const double share = measure(StreamType::one_d, 0, own[i], own[i + 1]).change /
                                 measure(StreamType::three_d_spatial, 0, all[i], all[i + 1]).change;
            own[i].ease_out[0].speed *= share;
            own[i + 1].ease_in[0].speed *= share;
        }
        data.keyframes = own;
    }
    return dimensions;
}

}  // namespace lottie::document
