// Whether layers that fade one by one look as the nest did that faded as a group.
#include "fading.h"

#include <algorithm>
#include <cmath>

#include "covering.h"
#include "cut_work.h"
#include "dark_ground.h"
#include "scatter.h"
#include "seam_share.h"
#include "sight.h"

namespace lottie::looks {
namespace {

constexpr double kSameOpacity = 0.1;  // percent: a quarter of a step of a channel
constexpr std::size_t kStepsPerPair = 100;
constexpr std::size_t kStepsPerOutline = 100;
constexpr double kSmallOverlap = 0.25;      // square pixels of the nest
constexpr double kUnseenMean = 0.05 / 255;  // of the whole picture
constexpr double kSeenStep = 6.0 / 255;     // of a part of it
constexpr double kFaintestStep = 0.5 / 255;
constexpr double kUnseenFaintShare = 0.005;  // that may differ by less, for in what is black each step tells
constexpr double kNearlyOpaque = 0.95;       // what is black is no darker than a few steps then
constexpr double kLargeShare = 0.045;        // of the outer composition; the measured difference is below 2.2 of 255

// The share of what may go unseen that a part of the picture takes in which so many pieces, each with that opacity, are
// drawn one over another.
double show_through_share(const Unnesting& u, double pixels, std::size_t pieces, double opacity) {
    const double excess = 1 - std::pow(1 - opacity, static_cast<double>(pieces)) - opacity;
    const double share = pixels / (u.stack().width * u.stack().height);
    const double most = excess > kSeenStep ? kUnseenShare : excess > kFaintestStep ? kUnseenFaintShare : 1;
    return std::max(share * excess / kUnseenMean, share / most);
}

// The same of a black part, which comes out a step brighter or darker.
double black_share(const Unnesting& u, double pixels, double opacity) {
    constexpr double kSteady = 6.5;  // what the measure of likeness adds to the squares of brightness, in steps
    const double level = 255 * (1 - opacity) / 2;  // over a medium ground
    const double unlikeness = 1 / (2 * level * (level + 1) + 1 + kSteady);
    return pixels / (u.stack().width * u.stack().height) * unlikeness / kUnseenUnlikeness;
}

struct Fading {
    FadeLoss loss = FadeLoss::none;
    double unseen = 0;
};

// What comes of fading the pictures one by one at one frame; what adds most to it gives it its name.
class FadingSum {
  public:
    void add(FadeLoss loss, double share) {
        sum_ += share;
        if (share > most_) most_ = share, largest_ = loss;
    }
    Fading total() const { return sum_ > 1 ? Fading{largest_, sum_} : Fading{FadeLoss::none, sum_}; }

  private:
    double sum_ = 0;
    double most_ = 0;
    FadeLoss largest_ = FadeLoss::none;
};

Fading fading_at(Unnesting& u, std::size_t frame_index, double unseen_before) {
    const double outer_frame = u.nest_frames()[frame_index];
    const double frame = u.inner_frame(outer_frame);
    const double opacity = u.nest().transform().opacity.at(outer_frame)[0] / 100;
    const Matrix place = u.stack_placement().world(u.nest_place(), outer_frame);
    const Hull view = hull_of(Box{0, 0, u.stack().width, u.stack().height});
    bool is_any_cut = false;
    FadingSum sum;
    std::vector<SeenLayer> above;
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        if (!is_seen(u.inside().layer(inner), frame)) continue;
        const Hull hull = u.inside_survey().reach_in_stack(inner, frame);
        const Hull seen = cut(mapped(hull, place), view);
        if (area(seen) <= 0) continue;
        u.comparison().spend(kStepsPerOutline);
        const std::size_t paints = paint_count(u.inside().layer(inner));
        if (paints > 1) sum.add(FadeLoss::several_paints, show_through_share(u, area(seen), paints, opacity));
        if (opacity > kNearlyOpaque && is_black(u.inside().layer(inner)))
            sum.add(FadeLoss::darker, black_share(u, area(seen), opacity));
        u.comparison().spend(kStepsPerPair * above.size());
        for (const SeenLayer& other : above) {
            const Hull& other_hull = u.inside_survey().reach_in_stack(other.inner, frame);
            u.comparison().spend(steps_to_cut(hull, other_hull));
            if (!may_show_through(hull, other_hull)) continue;
            if (u.covering().takes_away(inner, other.inner, frame_index)) {
                is_any_cut = true;
            } else {
                const std::size_t pieces = paints + paint_count(u.inside().layer(other.inner));
                sum.add(FadeLoss::overlap, show_through_share(u, area(cut(seen, other.hull)), pieces, opacity));
            }
        }
        if (const Fading so_far = sum.total(); so_far.loss != FadeLoss::none) return so_far;
        above.push_back({inner, seen});
    }
    if (is_any_cut) sum.add(FadeLoss::seams, seam_share(u, above, outer_frame, unseen_before));
    const Fading total = sum.total();
    if (total.loss != FadeLoss::none) return total;
    if (!above.empty() && is_scattered(u, frame)) return {FadeLoss::scattered};
    const bool is_large = is_large_fade(u.stack_survey(), u.nest_place(), u.inside_survey(), outer_frame, frame);
    return {is_large ? FadeLoss::rounding : FadeLoss::none, total.unseen};
}

// Whether an expression may lead a layer over another one.
bool is_any_led(Unnesting& u, double frame) {
    std::size_t seen = 0;
    bool is_any = false;
    u.comparison().spend(u.inside().size());
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        if (!is_seen(u.inside().layer(inner), frame)) continue;
        ++seen;
        is_any = is_any || u.inside_survey().is_drawn_otherwise(inner);
    }
    return is_any && seen > 1;
}

}  // namespace

bool may_show_through(const Hull& a, const Hull& b) {
    const Box x = around(a);
    const Box y = around(b);
    const bool is_apart = x.right <= y.left || y.right <= x.left || x.bottom <= y.top || y.bottom <= x.top;
    return !is_apart && area(cut(a, b)) > kSmallOverlap;
}

bool is_large_fade(Survey& stack, std::size_t nest, Survey& inside, double frame, double inner_frame) {
    const Matrix place = stack.placement().world(nest, frame);
    const Hull view = hull_of(Box{0, 0, stack.stack().width, stack.stack().height});
    double covered = 0;
    for (std::size_t layer = 0; layer < inside.stack().size(); ++layer) {
        if (!is_seen(inside.stack().layer(layer), inner_frame)) continue;
        stack.spend(kStepsPerOutline);
        covered += area(cut(mapped(inside.reach_in_stack(layer, inner_frame), place), view));
    }
    // The nest's own matte hides what lies beyond it.
    covered = std::min(covered, area(stack.reach_in_stack(nest, frame)));
    return covered > kLargeShare * area(view);
}

FadeLoss fade_loss(Unnesting& u) {
    const Property& nest = u.nest().transform().opacity;
    if (nest.has_expression()) return FadeLoss::not_taken;
    const bool is_single = u.inside().size() == 1;  // drawn as it is by every player
    bool is_ever_faded = false;
    double unseen = 0;
    for (std::size_t i = 0; i < u.nest_frames().size(); ++i) {
        const double frame = u.nest_frames()[i];
        const double of_nest = nest.at(frame)[0];
        const double inner_frame = u.inner_frame(frame);
        for (const Copy& copy : u.copies()) {
            const Property& own = u.inner(copy).transform().opacity;
            const Property& now = u.copied(copy).transform().opacity;
            if (!is_seen(u.inner(copy), inner_frame) || !u.copied(copy).is_on(frame)) continue;
            if (own.has_expression() || now.has_expression()) return FadeLoss::not_taken;
            if (std::abs(own.at(inner_frame)[0] * of_nest / 100 - now.at(frame)[0]) > kSameOpacity)
                return FadeLoss::not_taken;
        }
        const bool is_faded = of_nest > 0 && of_nest < 100;
        if (!is_faded || is_single) continue;
        is_ever_faded = true;
        if (is_any_led(u, inner_frame)) return FadeLoss::overlap;
        const Fading fading = fading_at(u, i, unseen);
        if (fading.loss != FadeLoss::none) return fading.loss;
        unseen = std::max(unseen, fading.unseen);
    }
    u.add_unseen(unseen);
    return is_ever_faded && is_ground_dark(u) ? FadeLoss::darker : FadeLoss::none;
}

}  // namespace lottie::looks
