// Curves as points along them.
#include "outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lottie::looks {
namespace {

// From the top on.
const std::vector<Point>& unit_circle() {
    static const std::vector<Point> points = [] {
        constexpr int kPoints = 4 * kSteps;
        std::vector<Point> all;
        for (int i = 0; i <= kPoints; ++i) {
            const double angle = 2 * std::numbers::pi * i / kPoints - std::numbers::pi / 2;
            all.push_back({std::cos(angle), std::sin(angle)});
        }
        return all;
    }();
    return points;
}

}  // namespace

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

double length_of(const Outline& outline) {
    double length = 0;
    for (std::size_t i = 1; i < outline.points.size(); ++i)
        length += distance(outline.points[i - 1], outline.points[i]);
    return length;
}

void append_part(const Outline& outline, double from, double to, std::vector<Outline>& parts) {
    Outline part;
    part.growth = outline.growth;
    double passed = 0;
    const auto add_at = [&](std::size_t i, double at, double span) {
        const Point a = outline.points[i - 1];
        const Point b = outline.points[i];
        const double share = span > 0 ? (at - passed) / span : 0;
        part.points.push_back({a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)});
    };
    for (std::size_t i = 1; i < outline.points.size(); ++i) {
        const double span = distance(outline.points[i - 1], outline.points[i]);
        if (passed + span >= from && passed <= to) {
            if (part.points.empty()) add_at(i, std::max(from, passed), span);
            add_at(i, std::min(to, passed + span), span);
        }
        passed += span;
    }
    if (!part.points.empty()) parts.push_back(std::move(part));
}

Outline ellipse(Point center, double half_width, double half_height) {
    Outline outline;
    outline.is_closed = true;
    outline.points.reserve(unit_circle().size());
    for (const Point& point : unit_circle())
        outline.points.push_back({center.x + half_width * point.x, center.y + half_height * point.y});
    return outline;
}

Outline rectangle(Point center, double half_width, double half_height) {
    const double left = center.x - half_width;
    const double right = center.x + half_width;
    const double top = center.y - half_height;
    const double bottom = center.y + half_height;
    return {{{right, top}, {right, bottom}, {left, bottom}, {left, top}, {right, top}}, 0, true};
}

Hull around(const std::vector<Outline>& outlines) {
    if (outlines.size() == 1) return grown(hull_of(outlines[0].points), outlines[0].growth);
    std::vector<Point> points;
    for (const Outline& outline : outlines) {
        const Hull hull = grown(hull_of(outline.points), outline.growth);
        points.insert(points.end(), hull.begin(), hull.end());
    }
    return hull_of(std::move(points));
}

}  // namespace lottie::looks
