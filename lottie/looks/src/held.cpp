// Whether the layers that came out of a nest hold what it did to them as a group.
#include "held.h"

#include <algorithm>
#include <cmath>

#include "dark_ground.h"
#include "effects.h"
#include "scatter.h"

namespace lottie::looks {
namespace {

constexpr double kSameOpacity = 0.1;  // percent: a quarter of a step of a channel
constexpr std::size_t kStepsPerPair = 20;
constexpr double kSmallOverlap = 0.25;  // square pixels of the nest
constexpr double kLargeShare = 0.05;    // of the outer composition; the measured difference is below 2 of 255

bool is_seen(const Unnesting& u, std::size_t inner, double frame) {
    const SceneLayer& layer = u.inside().layer(inner);
    return layer.draws() && layer.is_on(frame) && !layer.transform().opacity.is_nothing_at(frame);
}

// By which fading the pictures one by one shows at a frame.
FadeLoss loss_by_fading(Unnesting& u, double outer_frame) {
    const double frame = u.inner_frame(outer_frame);
    const Matrix place = u.stack_placement().world(u.nest_place(), outer_frame);
    const Hull view = hull_of(Box{0, 0, u.stack().width, u.stack().height});
    double covered = 0;
    std::vector<Hull> met;
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        if (!is_seen(u, inner, frame)) continue;
        const Hull hull = u.inside_survey().reach_in_stack(inner, frame);
        const Hull seen = cut(mapped(hull, place), view);
        if (area(seen) <= 0) continue;
        if (!is_one_picture(u.inside().layer(inner))) return FadeLoss::several_paints;
        u.comparison().spend(kStepsPerPair * met.size());
        for (const Hull& other : met) {
            if (area(cut(hull, other)) > kSmallOverlap) return FadeLoss::overlap;
        }
        covered += area(seen);
        met.push_back(hull);
    }
    if (covered > 0 && is_scattered(u, frame)) return FadeLoss::scattered;
    // The nest's own matte hides what lies beyond it.
    covered = std::min(covered, area(u.stack_survey().reach_in_stack(u.nest_place(), outer_frame)));
    const bool is_large = covered > kLargeShare * u.stack().width * u.stack().height;
    return is_large ? FadeLoss::rounding : FadeLoss::none;
}

// Whether an expression may lead a layer over another one.
bool is_any_led(Unnesting& u, double frame) {
    std::size_t seen = 0;
    bool is_any = false;
    u.comparison().spend(u.inside().size());
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        if (!is_seen(u, inner, frame)) continue;
        ++seen;
        is_any = is_any || u.inside_survey().is_drawn_otherwise(inner);
    }
    return is_any && seen > 1;
}

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

FadeLoss fade_loss(Unnesting& u) {
    const Property& nest = u.nest().transform().opacity;
    if (nest.has_expression()) return FadeLoss::not_taken;
    const bool is_single = u.inside().size() == 1;  // drawn as it is by every player
    bool is_ever_faded = false;
    for (const double frame : u.nest_frames()) {
        const double of_nest = nest.at(frame)[0];
        const double inner_frame = u.inner_frame(frame);
        for (const Copy& copy : u.copies()) {
            const Property& own = u.inner(copy).transform().opacity;
            const Property& now = u.copied(copy).transform().opacity;
            if (!is_seen(u, copy.inner, inner_frame) || !u.copied(copy).is_on(frame)) continue;
            if (own.has_expression() || now.has_expression()) return FadeLoss::not_taken;
            if (std::abs(own.at(inner_frame)[0] * of_nest / 100 - now.at(frame)[0]) > kSameOpacity)
                return FadeLoss::not_taken;
        }
        const bool is_faded = of_nest > 0 && of_nest < 100;
        if (!is_faded || is_single) continue;
        is_ever_faded = true;
        if (is_any_led(u, inner_frame)) return FadeLoss::overlap;
        if (const FadeLoss loss = loss_by_fading(u, frame); loss != FadeLoss::none) return loss;
    }
    return is_ever_faded && is_ground_dark(u) ? FadeLoss::darker : FadeLoss::none;
}

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
            if (!is_seen(u, inner, inner_frame)) continue;
            if (++seen > 1 || !is_whole_and_plain(u, inner, inner_frame)) return false;
        }
    }
    return true;
}

}  // namespace lottie::looks
