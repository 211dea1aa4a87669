// How far layers lie from where they lay.
#include "displacement.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "comparison.h"

namespace lottie::looks {
namespace {

double distance(const Hull& hull, const Matrix& a, const Matrix& b) {
    double furthest = 0;
    for (const Point& corner : hull) {
        const Point p = a.map(corner);
        const Point q = b.map(corner);
        const double apart = std::hypot(p.x - q.x, p.y - q.y);
        furthest = std::isfinite(apart) ? std::max(furthest, apart) : std::max(furthest, 1e9);
    }
    return furthest;
}

double length_around(const Hull& hull) {
    double length = 0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Point& a = hull[i];
        const Point& b = hull[(i + 1) % hull.size()];
        length += std::hypot(b.x - a.x, b.y - a.y);
    }
    return length;
}

double blurred(const Stack& stack, const Hull& hull, double distance) {
    constexpr double kSharp = 0.03;  // pixels; less changes no pixel by 8 of 255, even between black and white
    const double scale = std::min(1.0, kPictureWidth / std::max(1.0, stack.width));
    if (distance * scale <= kSharp || distance > kUnseen) return 0;
    const Hull seen = cut(hull, hull_of(Box{0, 0, stack.width, stack.height}));
    return length_around(seen) / scale / std::max(1.0, stack.width * stack.height) / kUnseenShare;
}

}  // namespace

bool are_alike(const Matrix& a, const Matrix& b) {
    if (a == b && a.is_finite()) return true;
    constexpr double kFar = 1e5;  // pixels; no picture reaches further
    return distance(hull_of(Box{-kFar, -kFar, kFar, kFar}), a, b) < kNothing / 100;
}

bool surely_lies_alike(const Matrix& a, const Matrix& b, Survey& survey, std::size_t place, double frame) {
    const auto is_within = [&](const Box& box) { return distance(hull_of(box), a, b) < kNothing / 2; };
    // What the extent is where it cannot be told; to ask about it first costs little.
    if (!is_within(Box{0, 0, survey.stack().width, survey.stack().height})) return false;
    const auto box = survey.box_around_reach(place, frame);
    return box && is_within(*box);
}

Hull extent(Survey& survey, std::size_t place, double frame) {
    const Hull& hull = survey.reach(place, frame);
    return area(hull) > 0 ? hull : hull_of(Box{0, 0, survey.stack().width, survey.stack().height});
}

Offset offset_between(const Matrix& before, const Matrix& after, const Hull& hull, const Stack& stack) {
    const double apart = distance(hull, before, after);
    return {apart, blurred(stack, mapped(hull, after), apart)};
}

void measure(std::vector<Measured>& layers, const std::vector<double>& frames,
             const std::function<Offset(std::size_t, double)>& offset_at) {
    std::vector<std::size_t> open(layers.size());
    std::iota(open.begin(), open.end(), 0);
    for (const double frame : frames) {
        if (open.empty()) return;
        std::erase_if(open, [&](std::size_t i) {
            Measured& one = layers[i];
            const Offset offset = offset_at(i, frame);
            if (offset.distance < 0) return false;
            if (offset.distance > kUnseen && !one.frame) one.frame = frame;
            one.distance = std::max(one.distance, offset.distance);
            one.blurred = std::max(one.blurred, offset.blurred);
            return !one.moves;
        });
    }
}

void Displacement::add(const Measured& one) {
    blurred += one.blurred;
    if (one.frame && (layers++ == 0 || *one.frame < frame)) frame = *one.frame;
    // Of layers that lie equally far off the first is told; rounding does not decide.
    if (one.distance > distance + 1e-6) distance = one.distance, layer = one.layer;
}

}  // namespace lottie::looks
