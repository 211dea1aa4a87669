// Blend modes, adjustment layers, cameras and 3D layers inside.
#include <algorithm>

#include "findings.h"

namespace lottie::looks {
namespace {

constexpr int kAdjustmentLayer = 12;  // the exporter's own number

bool is_anything_visible_below(const Unnesting& u) {
    const auto& layers = u.stack().layers;
    return std::any_of(layers.begin() + static_cast<std::ptrdiff_t>(u.nest_place()) + 1, layers.end(),
                       [](const SceneLayer& layer) { return layer.draws(); });
}

// The exporter writes adjustment layers as nulls with effects.
bool is_adjustment(const SceneLayer& layer) {
    if (static_cast<int>(number_member(*layer.json, "ty", -1)) == kAdjustmentLayer) return true;
    const auto effects = array_member(*layer.json, "ef");
    return layer.type == LayerType::null && std::any_of(effects.begin(), effects.end(), [](const Json& effect) {
               const std::string match_name = text_member(effect, "mn");
               return !match_name.empty() && !match_name.ends_with(" Control") && !match_name.starts_with("Pseudo/");
           });
}

// A drawn layer that leaves the plane by itself or through a parent.
bool is_seen_in_depth(const Stack& stack, const SceneLayer& layer) {
    if (!layer.can_draw() || layer.is_hidden) return false;
    for (const SceneLayer* at = &layer;; at = &stack.layers[*at->parent]) {
        if (at->type != LayerType::camera && at->transform.is_spatial()) return true;
        if (!at->parent) return false;
    }
}

// The first layer inside that the question is true of, and how many there are.
template <class Question>
std::pair<const SceneLayer*, std::size_t> find_inside(const Unnesting& u, Question question) {
    const SceneLayer* first = nullptr;
    std::size_t count = 0;
    for (const SceneLayer& layer : u.inside().layers) {
        if (!question(layer)) continue;
        if (count++ == 0) first = &layer;
    }
    return {first, count};
}

}  // namespace

void find_inside_changes(Unnesting& u) {
    const bool is_below = is_anything_visible_below(u) && !u.nest_frames().empty();
    const auto blends = [](const SceneLayer& layer) { return layer.draws() && layer.blend_mode != 0; };
    if (const auto [layer, count] = find_inside(u, blends); layer != nullptr) {
        u.add({Reason::blend_inside,
               is_below ? Weight::change : Weight::harmless,
               layers_named(layer->name, count) + " inside " +
                   in_number(count, "has a blend mode, which ", "have blend modes, which ") +
                   (is_below ? "now also " + in_number(count, "acts", "act") + " on the layers below the nest"
                             : in_number(count, "meets", "meet") + " nothing below the nest"),
               is_below ? "keep this nest" : "",
               layer->name,
               "bm",
               {}});
    }
    if (const auto [layer, count] = find_inside(u, is_adjustment); layer != nullptr) {
        u.add({Reason::adjustment_inside,
               is_below ? Weight::change : Weight::harmless,
               layers_named(layer->name, count) + " inside " +
                   in_number(count, "is an adjustment layer, which ", "are adjustment layers, which ") +
                   (is_below ? "now also " + in_number(count, "acts", "act") + " on the layers below the nest"
                             : in_number(count, "has", "have") + " nothing below the nest to act on"),
               is_below ? "keep this nest" : "",
               layer->name,
               "ef",
               {}});
    }
    const auto is_camera = [](const SceneLayer& layer) { return layer.type == LayerType::camera; };
    const auto is_spatial = [&u](const SceneLayer& layer) { return is_seen_in_depth(u.inside(), layer); };
    const auto [spatial, spatial_count] = find_inside(u, is_spatial);
    if (const auto [camera, count] = find_inside(u, is_camera); camera != nullptr) {
        const bool matters = spatial != nullptr || u.nest().transform.is_3d ||
                             std::any_of(u.stack().layers.begin(), u.stack().layers.end(),
                                         [](const SceneLayer& layer) { return layer.transform.is_3d; });
        u.add({Reason::camera,
               matters ? Weight::change : Weight::harmless,
               "camera " + quoted(camera->name) + " inside becomes a camera of the outer composition" +
                   (matters ? "" : ", where no layer is in 3D"),
               matters ? "keep this nest" : "",
               camera->name,
               "ty",
               {}});
    }
    if (u.nest().transform.is_3d) {
        const bool leaves = u.nest().transform.is_spatial();
        u.add({Reason::three_d,
               leaves ? Weight::change : Weight::harmless,
               leaves ? "it is turned or moved in 3D: its layers take that over one by one, not as one plane"
                      : "it is a 3D layer that stays in its plane",
               leaves ? "keep this nest" : "",
               "",
               "ddd",
               {}});
    } else if (spatial != nullptr) {
        u.add({Reason::three_d,
               Weight::change,
               layers_named(spatial->name, spatial_count) + " inside " + in_number(spatial_count, "is", "are") +
                   " turned or moved in 3D and now seen with the outer composition's camera",
               "keep this nest",
               spatial->name,
               "ddd",
               {}});
    }
    const double own_rate = u.inside().frame_rate;
    if (own_rate > 0 && own_rate != u.before().frame_rate) {
        const bool keeps = u.inside().keeps_frame_rate;
        u.add({Reason::frame_rate,
               keeps ? Weight::change : Weight::harmless,
               "its composition runs at " + plain(own_rate) + " frames per second" +
                   (keeps ? " and keeps that rate; its layers, un-nested, do not"
                          : ", which players pass over and the layers lose nothing by"),
               keeps ? "keep this nest" : "",
               "",
               "fr",
               {}});
    }
}

}  // namespace lottie::looks
