// A layer of an animation as players see it.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "layer_part.h"
#include "path.h"
#include "property.h"
#include "shape_content.h"
#include "transform.h"

namespace lottie::looks {

enum class LayerType { nest = 0, solid = 1, image = 2, null = 3, shape = 4, text = 5, camera = 13, other = -1 };

// What its text says; links to other layers are its stack's. Everything beyond the plain members is read when asked
// for.
class SceneLayer {
  public:
    // Reads the value that `reader` is at. Parts that one of its counterparts, which may be null, has with the same
    // text become its as well, with what was worked out of them. Throws std::runtime_error for anything but an object.
    using Counterparts = std::array<const SceneLayer*, 3>;
    SceneLayer(TextReader& reader, const Counterparts& counterparts, const std::shared_ptr<Arena>& arena);

    LayerType type = LayerType::other;
    bool is_adjustment_by_type = false;
    std::string name;
    std::string source;            // asset id
    std::string color;             // of a solid, such as "#ff0000"
    std::optional<double> number;  // that other layers know it by
    std::optional<double> parent;  // numbers of other layers
    std::optional<double> matte;
    double in = 0;  // frames of the composition it is in; seen from `in` on, up to but not at `out`
    double out = 0;
    double start = 0;
    double stretch = 1;
    double width = 0;  // of a nest or solid
    double height = 0;
    int matte_mode = 0;
    int blend_mode = 0;
    bool is_hidden = false;
    bool is_matte_source = false;
    bool is_3d = false;
    bool is_auto_oriented = false;
    bool is_collapsed = false;
    bool has_motion_blur = false;
    bool runs_while_off = false;  // a nest whose layers some players keep in step for expressions
    bool has_masks = false;

    std::string_view text() const { return text_; }
    // Whether players draw it at some time, by its kind and switches.
    bool draws() const { return !is_hidden && !is_matte_source && can_draw(); }
    bool can_draw() const { return type != LayerType::null && type != LayerType::camera && type != LayerType::other; }
    bool is_on(double frame) const { return in <= frame && frame < out; }
    // A nest's clock: the frame of its composition that it shows at a frame of the one it is in.
    double inner_frame(double frame, double frame_rate) const;
    // Whether it changes by keyframes and expressions of its own. Its transform and opacity count.
    bool changes_by_itself() const;

    const std::vector<std::shared_ptr<const LayerPart>>& parts() const { return parts_; }
    const LayerPart* part(std::string_view key) const;  // null if there is none
    const Json* json(std::string_view key) const;
    Json::ConstArray array(std::string_view key) const;  // empty for anything else

    const Transform& transform() const;
    bool has_same_transform(const SceneLayer& other) const { return transform_ == other.transform_; }
    const std::optional<Property>& time_remap() const { return time_remap_; }  // seconds
    bool time_remap_has_expression() const { return time_remap_ && time_remap_->has_expression(); }
    const ShapeContent& shapes() const;
    const std::vector<MaskContent>& masks() const;  // none unless `has_masks`

  private:
    // Layers that agree in all that it is made of share it.
    struct LazyTransform {
        std::shared_ptr<const LayerPart> part;  // null without a "ks"
        std::optional<Transform> value;
    };

    // Likewise in their shapes.
    struct LazyShapes {
        std::shared_ptr<const LayerPart> part;  // null without any
        std::optional<ShapeContent> value;
    };

    void read_member(const std::string& key, std::string_view value);
    std::shared_ptr<const LayerPart> shared_part(std::string_view key) const;  // null if there is none
    void set_transform(const Counterparts& counterparts);
    void set_shapes(const Counterparts& counterparts);

    std::shared_ptr<const Arena> arena_;  // its text may lie there, even if all of its parts are its original's
    std::string_view text_;
    std::vector<std::shared_ptr<const LayerPart>> parts_;
    std::shared_ptr<LazyTransform> transform_;
    std::optional<Property> time_remap_;
    std::shared_ptr<LazyShapes> shapes_;
    mutable std::optional<std::vector<MaskContent>> masks_;
};

}  // namespace lottie::looks
