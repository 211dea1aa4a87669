// Blend modes, adjustment layers, cameras and 3D layers inside.
#include <algorithm>

#include "findings.h"
#include "words.h"

namespace lottie::looks {
namespace {

bool is_anything_visible_below(const Unnesting& u) {
    for (std::size_t place = u.nest_place() + 1; place < u.stack().size(); ++place) {
        if (u.stack().layer(place).draws()) return true;
    }
    return false;
}

// The exporter writes adjustment layers as nulls with effects.
bool is_adjustment(const SceneLayer& layer) {
    if (layer.is_adjustment_by_type) return true;
    if (layer.type != LayerType::null) return false;
    const auto effects = layer.array("ef");
    return std::any_of(effects.begin(), effects.end(), [](const Json& effect) {
        const std::string match_name = text_member(effect, "mn");
        return !match_name.empty() && !match_name.ends_with(" Control") && !match_name.starts_with("Pseudo/");
    });
}

// The first layer inside that the question is true of, and how many there are.
template <class Question>
std::pair<const SceneLayer*, std::size_t> find_inside(const Unnesting& u, Question question) {
    const SceneLayer* first = nullptr;
    std::size_t count = 0;
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        if (!question(inner)) continue;
        if (count++ == 0) first = &u.inside().layer(inner);
    }
    return {first, count};
}

bool is_any_in_3d(const Stack& stack) {
    for (std::size_t place = 0; place < stack.size(); ++place) {
        if (stack.layer(place).is_3d) return true;
    }
    return false;
}

// What subtracts or intersects leaves the rest of the picture, and some players mark that off anew only when the layer
// itself moves: as soon as what it hangs on does, they cut it where it lay before.
bool is_cut_where_it_lay(Unnesting& u, const Copy& copy) {
    const auto parent = u.result().parent(copy.result);
    if (!parent || !u.result_placement().moves(*parent)) return false;
    for (const Json& mask : u.copied(copy).array("masksProperties")) {
        const std::string mode = text_member(mask, "mode");
        if (mode != "n") return mode == "s" || mode == "i";
    }
    return false;
}

void find_masks_inside(Unnesting& u) {
    if (!u.stack_placement().moves(u.nest_place())) return;
    const SceneLayer* first = nullptr;
    std::size_t count = 0;
    for (const Copy& copy : u.copies()) {
        if (!u.copied(copy).has_masks || !u.inner(copy).draws() || !is_cut_where_it_lay(u, copy)) continue;
        if (count++ == 0) first = &u.inner(copy);
    }
    if (first == nullptr) return;
    u.add({Reason::mask,
           Weight::change,
           "what the " + in_number(count, "mask", "masks") + " of " + layers_named(first->name, count) +
               " cut out would not move along in some players",
           "keep this nest, or give the layer a mask that adds first",
           first->name,
           "masksProperties",
           {}});
}

}  // namespace

void find_inside_changes(Unnesting& u) {
    const bool is_below = is_anything_visible_below(u) && !u.nest_frames().empty();
    const Stack& inside = u.inside();
    const auto blends = [&](std::size_t i) { return inside.layer(i).draws() && inside.layer(i).blend_mode != 0; };
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
    if (const auto [layer, count] = find_inside(u, [&](std::size_t i) { return is_adjustment(inside.layer(i)); });
        layer != nullptr) {
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
    find_masks_inside(u);
    const auto is_camera = [&](std::size_t i) { return inside.layer(i).type == LayerType::camera; };
    const auto is_spatial = [&](std::size_t i) { return u.inside_survey().is_seen_in_depth(i); };
    const auto [spatial, spatial_count] = find_inside(u, is_spatial);
    if (const auto [camera, count] = find_inside(u, is_camera); camera != nullptr) {
        const bool matters = spatial != nullptr || u.nest().is_3d || is_any_in_3d(u.stack());
        u.add({Reason::camera,
               matters ? Weight::change : Weight::harmless,
               "camera " + quoted(camera->name) + " inside becomes a camera of the outer composition" +
                   (matters ? "" : ", where no layer is in 3D"),
               matters ? "keep this nest" : "",
               camera->name,
               "ty",
               {}});
    }
    if (u.nest().is_3d) {
        const bool leaves = u.nest().transform().is_spatial();
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
    if (own_rate > 0 && own_rate != u.comparison().before().frame_rate) {
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
