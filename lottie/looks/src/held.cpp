// Whether the layers that came out of a nest hold what it did to them as a group.
#include "held.h"

#include <algorithm>
#include <cmath>

#include "effects.h"
#include "scatter.h"
#include "sight.h"

namespace lottie::looks {
namespace {

// Effects spread beyond what they act on, and the frame cuts that off.
bool frame_is_around_all(Unnesting& u, double outer_frame) {
    constexpr double kEdge = 0.5;  // square pixels
    const Hull frame = mapped(hull_of(Box{0, 0, u.nest().width, u.nest().height}),
                              u.stack_placement().world(u.nest_place(), outer_frame));
    const Hull view = hull_of(Box{0, 0, u.stack().width, u.stack().height});
    return area(cut(view, frame)) >= area(view) - kEdge;
}

bool is_only_shifted(const Matrix& place) {
    const Point origin = place.map({0, 0});
    const Point right = place.map({1, 0});
    const Point down = place.map({0, 1});
    const auto is_one = [](double x, double y) { return std::abs(x - 1) < 1e-6 && std::abs(y) < 1e-6; };
    return is_one(right.x - origin.x, right.y - origin.y) && is_one(down.y - origin.y, down.x - origin.x);
}

// An effect makes of the layer what it made of a picture with that layer alone; of edges only nearly, and texts have
// many.
bool is_whole_and_plain(Unnesting& u, std::size_t inner, double frame) {
    const SceneLayer& layer = u.inside().layer(inner);
    return layer.transform().opacity.at(frame)[0] >= 100 && !layer.has_masks && !u.inside().matte(inner) &&
           !layer.transform().opacity.has_expression() && !u.inside_survey().is_drawn_otherwise(inner) &&
           layer.blend_mode == 0 && !layer.is_3d && layer.type != LayerType::text && is_one_picture(layer) &&
           !is_picture_changed(layer) && is_only_shifted(u.inside_placement().world(inner, frame));
}

}  // namespace

bool holds_blend_mode(Unnesting& u) {
    for (const double frame : u.nest_frames()) {
        const double inner_frame = u.inner_frame(frame);
        std::size_t seen = 0;
        u.comparison().spend(u.copies().size());
        for (const Copy& copy : u.copies()) {
            const SceneLayer& inner = u.inner(copy);
            if (!inner.draws() || !inner.is_on(inner_frame)) continue;
            const bool is_taken = inner.blend_mode == 0 && u.copied(copy).blend_mode == u.nest().blend_mode;
            if (!is_taken || u.inside().matte(copy.inner) || ++seen > 1) return false;
        }
    }
    return true;
}

bool holds_effects(Unnesting& u) {
    const auto effects = u.nest().array("ef");
    if (u.nest().has_masks || u.nest().is_3d || u.stack_survey().is_led(u.nest_place()) ||
        std::any_of(effects.begin(), effects.end(), is_worked_out))
        return false;
    for (const double frame : u.nest_frames()) {
        if (!frame_is_around_all(u, frame)) return false;
        const double inner_frame = u.inner_frame(frame);
        std::size_t seen = 0;
        u.comparison().spend(u.inside().size());
        for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
            if (!is_seen(u.inside().layer(inner), inner_frame)) continue;
            if (++seen > 1 || !is_whole_and_plain(u, inner, inner_frame)) return false;
        }
    }
    return true;
}

}  // namespace lottie::looks
