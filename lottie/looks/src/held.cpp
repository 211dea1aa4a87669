// Whether the layers that came out of a nest hold what it did to them as a group.
#include "held.h"

#include <algorithm>
#include <cmath>

#include "scatter.h"

namespace lottie::looks {
namespace {

constexpr double kSameOpacity = 0.1;  // percent: a quarter of a step of a channel
constexpr std::size_t kStepsPerPair = 20;
constexpr double kSmallOverlap = 0.25;  // square pixels of the nest
constexpr double kLargeShare = 0.05;    // of the outer composition; the measured difference is below 2 of 255

bool is_seen(const Unnesting& u, std::size_t inner, double frame) {
    const SceneLayer& layer = u.inside().layer(inner);
    return layer.draws() && layer.is_on(frame) && layer.transform().opacity.at(frame)[0] > 0;
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

}  // namespace

FadeLoss fade_loss(Unnesting& u) {
    const Property& nest = u.nest().transform().opacity;
    if (nest.has_expression()) return FadeLoss::not_taken;
    const bool is_single = u.inside().size() == 1;  // drawn as it is by every player
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
        if (const FadeLoss loss = loss_by_fading(u, frame); loss != FadeLoss::none) return loss;
    }
    return FadeLoss::none;
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

}  // namespace lottie::looks
