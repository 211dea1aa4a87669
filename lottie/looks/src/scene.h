// Compositions and layers of an animation, with their links resolved as players do.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"
#include "matrix.h"
#include "property.h"

namespace lottie::looks {

enum class LayerType { nest = 0, solid = 1, image = 2, null = 3, shape = 4, text = 5, camera = 13, other = -1 };

struct Transform {
    explicit Transform(const Json& layer);

    // The layer's own matrix. Separate from its parents'.
    Matrix at(double frame) const;
    bool is_animated() const;  // opacity left aside
    bool has_expression() const;
    // Whether it leaves the plane at any time.
    bool is_spatial() const;

    Property anchor, position, scale, rotation, turn_x, turn_y, orientation, opacity;
    bool is_3d = false;
    bool is_auto_oriented = false;
};

struct SceneLayer {
    explicit SceneLayer(const Json& layer);

    // Whether players draw it at some time, by its kind and switches.
    bool draws() const { return !is_hidden && !is_matte_source && can_draw(); }
    // A nest's clock: the frame of its composition that it shows at a frame of the one it is in.
    double inner_frame(double frame, double frame_rate) const;
    bool can_draw() const { return type != LayerType::null && type != LayerType::camera && type != LayerType::other; }

    const Json* json;
    LayerType type = LayerType::other;
    std::string name;
    std::string source;            // asset id
    std::optional<double> number;  // that other layers know it by
    double in = 0;                 // frames of the composition it is in; seen from `in` on, up to but not at `out`
    double out = 0;
    double start = 0;
    double stretch = 1;
    double width = 0;  // of a nest, solid or image
    double height = 0;
    bool is_hidden = false;
    bool is_matte_source = false;
    int matte_mode = 0;
    int blend_mode = 0;
    std::optional<std::size_t> parent;  // places in the stack
    std::optional<std::size_t> matte;
    std::optional<Property> time_remap;  // seconds
    Transform transform;
};

// Whether the layer is on at the frame of its composition, opacity left aside.
inline bool is_on(const SceneLayer& layer, double frame) {
    return layer.in <= frame && frame < layer.out;
}

struct Stack {
    std::string id;  // empty for the main composition
    std::string name;
    double width = 0;
    double height = 0;
    double first_frame = 0;  // at which anything of it can be seen
    double end_frame = 0;    // exclusive
    double frame_rate = 0;   // its own; 0 if the file does not say
    bool keeps_frame_rate = false;
    std::vector<SceneLayer> layers;  // 0 = top
};

struct Scene {
    explicit Scene(std::string_view text);

    const Stack& main() const { return stacks.front(); }
    const Stack* find(std::string_view id) const;  // null if there is none
    const Json* asset(std::string_view id) const;

    std::size_t byte_count;
    rapidjson::Document document;
    double frame_rate = 30;
    std::vector<Stack> stacks;  // the main one first
    std::map<std::string, std::size_t, std::less<>> stack_by_id;
    std::map<std::string, const Json*, std::less<>> asset_by_id;
};

}  // namespace lottie::looks
