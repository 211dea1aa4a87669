// Convex polygons, and the upright rectangles around them.
#include "hull.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace lottie::looks {
namespace {

// Positive when `c` lies on the inner side of the edge from `a` to `b`.
double side(Point a, Point b, Point c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

Point crossing(Point p, Point q, double side_p, double side_q) {
    const double part = side_p / (side_p - side_q);
    return {p.x + (q.x - p.x) * part, p.y + (q.y - p.y) * part};
}

// Adds the points to one half of the outline, leaving out those that lie within it.
template <class Points>
void add_half(Hull& hull, const Points& points) {
    const std::size_t first = hull.size();
    for (const Point& point : points) {
        while (hull.size() >= first + 2 && side(hull[hull.size() - 2], hull.back(), point) <= 0) hull.pop_back();
        hull.push_back(point);
    }
    hull.pop_back();  // the other half begins with it
}

std::size_t lowest(const Hull& hull) {
    const auto is_lower = [](Point a, Point b) { return a.y < b.y || (a.y == b.y && a.x < b.x); };
    return static_cast<std::size_t>(std::min_element(hull.begin(), hull.end(), is_lower) - hull.begin());
}

// Of points that go around once: rounding leaves dents between those that lie close together or in a line.
Hull without_dents(Hull points) {
    std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(lowest(points)), points.end());
    Hull hull;
    const auto is_dent = [&hull](Point next) { return side(hull[hull.size() - 2], hull.back(), next) <= 0; };
    for (const Point& point : points) {
        while (hull.size() >= 2 && is_dent(point)) hull.pop_back();
        hull.push_back(point);
    }
    while (hull.size() >= 3 && is_dent(hull.front())) hull.pop_back();
    return hull;
}

// `hull`, moved from one point to another, and all that it covers on the way.
Hull swept(const Hull& hull, Point from, Point to) {
    Hull points;
    points.reserve(hull.size() + 2);
    const auto leads = [&](std::size_t edge) {
        const Point& p = hull[edge];
        const Point& q = hull[(edge + 1) % hull.size()];
        return (to.x - from.x) * (q.y - p.y) - (to.y - from.y) * (q.x - p.x) > 0;
    };
    bool led = leads(hull.size() - 1);
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Point start{hull[i].x + from.x, hull[i].y + from.y};
        const Point end{hull[i].x + to.x, hull[i].y + to.y};
        points.push_back(led ? end : start);
        if (leads(i) == led) continue;
        led = !led;
        points.push_back(led ? end : start);
    }
    return without_dents(std::move(points));
}

constexpr double kLeastArea = 1e-6;  // square pixels
constexpr double kLeastSide = 1e-9;  // pixels; rounding turns shorter ones anywhere

bool are_finite(const std::vector<Point>& points) {
    return std::all_of(points.begin(), points.end(), [](Point p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

}  // namespace

Box united(const Box& a, const Box& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

Box mapped(const Box& box, const Matrix& matrix) {
    Box all = kNoBox;
    for (const Point& corner : {Point{box.left, box.top}, Point{box.right, box.top}, Point{box.left, box.bottom},
                                Point{box.right, box.bottom}}) {
        const Point p = matrix.map(corner);
        all = united(all, {p.x, p.y, p.x, p.y});
    }
    return all;
}

Hull hull_of(std::vector<Point> points) {
    std::erase_if(points, [](Point p) { return !std::isfinite(p.x) || !std::isfinite(p.y); });
    std::sort(points.begin(), points.end(), [](Point a, Point b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    const auto last =
        std::unique(points.begin(), points.end(), [](Point a, Point b) { return a.x == b.x && a.y == b.y; });
    points.erase(last, points.end());
    if (points.size() < 2) return points;
    Hull hull;
    add_half(hull, points);
    std::reverse(points.begin(), points.end());
    add_half(hull, points);
    return hull;
}

Hull hull_of(const Box& box) {
    if (box.right <= box.left || box.bottom <= box.top) return {};
    Hull corners = {{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
    return are_finite(corners) ? corners : hull_of(std::move(corners));
}

Hull united(const Hull& a, const Hull& b) {
    std::vector<Point> points = a;
    points.insert(points.end(), b.begin(), b.end());
    return hull_of(std::move(points));
}

Hull cut(const Hull& a, const Hull& b) {
    if (a.size() < 3 || b.size() < 3) return {};
    Hull rest = a;
    Hull next;
    std::vector<double> sides;
    for (std::size_t i = 0; i < b.size(); ++i) {
        const Point from = b[i];
        const Point to = b[(i + 1) % b.size()];
        if (std::abs(to.x - from.x) < kLeastSide && std::abs(to.y - from.y) < kLeastSide) continue;
        sides.clear();
        for (const Point& p : rest) sides.push_back(side(from, to, p));
        if (std::none_of(sides.begin(), sides.end(), [](double one) { return !(one >= 0); })) continue;
        next.clear();
        for (std::size_t k = 0; k < rest.size(); ++k) {
            const std::size_t after = k + 1 == rest.size() ? 0 : k + 1;
            if (sides[k] >= 0) next.push_back(rest[k]);
            if ((sides[k] > 0 && sides[after] < 0) || (sides[k] < 0 && sides[after] > 0)) {
                next.push_back(crossing(rest[k], rest[after], sides[k], sides[after]));
            }
        }
        rest.swap(next);
    }
    return hull_of(std::move(rest));
}

Hull sum(const Hull& a, const Hull& b) {
    Hull points;
    if (a.size() >= 3 && (b.size() == 1 || b.size() == 2)) return swept(a, b.front(), b.back());
    if (area(a) < kLeastArea || area(b) < kLeastArea) {
        for (const Point& p : a) {
            for (const Point& q : b) points.push_back({p.x + q.x, p.y + q.y});
        }
        return hull_of(std::move(points));
    }
    // The edges of both, in the order of their directions.
    points.reserve(a.size() + b.size());
    const std::size_t first_a = lowest(a);
    const std::size_t first_b = lowest(b);
    for (std::size_t i = 0, k = 0; i < a.size() || k < b.size();) {
        const Point p = a[(first_a + i) % a.size()];
        const Point q = b[(first_b + k) % b.size()];
        points.push_back({p.x + q.x, p.y + q.y});
        const Point next_p = a[(first_a + i + 1) % a.size()];
        const Point next_q = b[(first_b + k + 1) % b.size()];
        const double turn = (next_p.x - p.x) * (next_q.y - q.y) - (next_p.y - p.y) * (next_q.x - q.x);
        const bool is_a_next = k == b.size() || (i < a.size() && !(turn < 0));  // it may be no number
        const bool is_b_next = i == a.size() || (k < b.size() && turn <= 0);
        i += is_a_next ? 1 : 0;
        k += is_b_next ? 1 : 0;
    }
    return without_dents(std::move(points));
}

Hull grown(const Hull& hull, double by) {
    if (by <= 0) return hull;
    constexpr int kCorners = 8;  // of the polygon around a circle
    constexpr double kTurn = std::numbers::pi / kCorners;
    const double reach = by / std::cos(kTurn);
    Hull circle;
    for (int i = 0; i < kCorners; ++i) {
        const double angle = kTurn * (2 * i + 1);
        circle.push_back({reach * std::cos(angle), reach * std::sin(angle)});
    }
    return sum(hull, circle);
}

Hull mapped(const Hull& hull, const Matrix& matrix) {
    Hull points;
    points.reserve(hull.size());
    for (const Point& corner : hull) points.push_back(matrix.map(corner));
    // What lies on the outline stays there, unless nothing is left of the area.
    const double enclosed = area(points);
    if (!are_finite(points) || std::abs(enclosed) < kLeastArea) return hull_of(std::move(points));
    if (enclosed < 0) std::reverse(points.begin(), points.end());
    return points;
}

double area(const Hull& hull) {
    double twice = 0;
    for (std::size_t i = 2; i < hull.size(); ++i) twice += side(hull[0], hull[i - 1], hull[i]);
    return twice / 2;
}

Box around(const Hull& hull) {
    if (hull.empty()) return {};
    Box box{hull[0].x, hull[0].y, hull[0].x, hull[0].y};
    for (const Point& p : hull) {
        box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y)};
    }
    return box;
}

}  // namespace lottie::looks
