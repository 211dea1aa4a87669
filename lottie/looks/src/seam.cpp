// Where layers that fade one by one meet, so that they look as if they faded as one.
#include "looks/seam.h"

#include <algorithm>
#include <cmath>

#include "visibility.h"

namespace lottie::looks {
namespace {

constexpr double kLeastLength = 1e-6;  // pixels
constexpr double kSharpest = 0.5;     // of 2: where sides meet at a sharp corner it moves no further than this leads to
constexpr double kMostOfSize = 0.25;  // of a path's narrower side

PlanePoint minus(PlanePoint a, PlanePoint b) {
    return {a.x - b.x, a.y - b.y};
}

double length(PlanePoint arrow) {
    return std::hypot(arrow.x, arrow.y);
}

// The first of the arrows that leads anywhere, at length 1.
PlanePoint direction(std::initializer_list<PlanePoint> arrows) {
    for (const PlanePoint& arrow : arrows) {
        const double size = length(arrow);
        if (size > kLeastLength) return {arrow.x / size, arrow.y / size};
    }
    return {};
}

// Twice the area of the polygon through vertices and handles: positive if it turns from x to y.
double turn_of(const MovingPath::Vertices& path) {
    std::vector<PlanePoint> points;
    for (std::size_t i = 0; i < path.at.size(); ++i) {
        const PlanePoint p = path.at[i];
        points.push_back({p.x + path.in[i].x, p.y + path.in[i].y});
        points.push_back(p);
        points.push_back({p.x + path.out[i].x, p.y + path.out[i].y});
    }
    double sum = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PlanePoint& a = points[i];
        const PlanePoint& b = points[(i + 1) % points.size()];
        sum += a.x * b.y - a.y * b.x;
    }
    return sum;
}

double narrower_side(const std::vector<PlanePoint>& points) {
    const auto [left, right] =
        std::minmax_element(points.begin(), points.end(), [](PlanePoint a, PlanePoint b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(points.begin(), points.end(), [](PlanePoint a, PlanePoint b) { return a.y < b.y; });
    return std::min(right->x - left->x, bottom->y - top->y);
}

PlanePoint scaled(PlanePoint handle, double before, double now) {
    const double factor = before > kLeastLength ? now / before : 1;
    return {handle.x * factor, handle.y * factor};
}

// All sides moved inward; handles grow shorter as their sides do.
MovingPath::Vertices shrunk(const MovingPath::Vertices& path, double by) {
    const std::size_t count = path.at.size();
    const double inward = turn_of(path) > 0 ? 1 : -1;
    MovingPath::Vertices result = path;
    for (std::size_t i = 0; i < count; ++i) {
        const PlanePoint next = minus(path.at[(i + 1) % count], path.at[i]);
        const PlanePoint last = minus(path.at[i], path.at[(i + count - 1) % count]);
        const PlanePoint from = direction({{-path.in[i].x, -path.in[i].y}, last, next});
        const PlanePoint to = direction({path.out[i], next, last});
        const double sharpness = std::max(1 + from.x * to.x + from.y * to.y, kSharpest);
        result.at[i].x -= inward * by * (from.y + to.y) / sharpness;
        result.at[i].y += inward * by * (from.x + to.x) / sharpness;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t next = (i + 1) % count;
        const double before = length(minus(path.at[next], path.at[i]));
        const double now = length(minus(result.at[next], result.at[i]));
        result.out[i] = scaled(path.out[i], before, now);
        result.in[next] = scaled(path.in[next], before, now);
    }
    return result;
}

// Where the side from a vertex to the next one is, a part of the way along it, and how it runs on from there.
struct SidePoint {
    PlanePoint at;
    PlanePoint along;
};

SidePoint side_point(const MovingPath::Vertices& path, std::size_t i, double u) {
    const std::size_t next = (i + 1) % path.at.size();
    const PlanePoint a = path.at[i];
    const PlanePoint d = path.at[next];
    const PlanePoint b{a.x + path.out[i].x, a.y + path.out[i].y};
    const PlanePoint c{d.x + path.in[next].x, d.y + path.in[next].y};
    const double v = 1 - u;
    const auto mix = [&](double p, double q, double r, double s) {
        return v * v * v * p + 3 * v * v * u * q + 3 * v * u * u * r + u * u * u * s;
    };
    const auto slope = [&](double p, double q, double r, double s) {
        return v * v * (q - p) + 2 * v * u * (r - q) + u * u * (s - r);
    };
    return {{mix(a.x, b.x, c.x, d.x), mix(a.y, b.y, c.y, d.y)}, {slope(a.x, b.x, c.x, d.x), slope(a.y, b.y, c.y, d.y)}};
}

// Whether all sides came to lie further in by about as much. Those of jagged or tightly wound curves do not.
bool is_evenly_shrunk(const MovingPath::Vertices& path, const MovingPath::Vertices& now, double by) {
    constexpr double kUneven = 0.35;  // of what they are to move by
    constexpr double kShortest = 4;   // times that; shorter sides hardly show
    const double inward = turn_of(path) > 0 ? 1 : -1;
    for (std::size_t i = 0; i < path.at.size(); ++i) {
        if (length(minus(path.at[(i + 1) % path.at.size()], path.at[i])) < kShortest * by) continue;
        for (const double u : {0.25, 0.5, 0.75}) {
            const SidePoint before = side_point(path, i, u);
            const double speed = length(before.along);
            if (speed <= kLeastLength) return false;
            const PlanePoint moved = minus(side_point(now, i, u).at, before.at);
            const double distance = inward * (moved.y * before.along.x - moved.x * before.along.y) / speed;
            if (std::abs(distance - by) > kUneven * by) return false;
        }
    }
    return true;
}

}  // namespace

// With the lower layer taken back by d of a pixel, what lies below shows by (1 - a(1 + d)/2)^2 - (1 - a) too much where
// it shows most, and by a(1 - a)d too little where it shows least: this d makes both the same.
double seam_width(double opacity) {
    const double a = opacity;
    const double u = (2 - a - std::sqrt((2 - a) * (2 - 2 * a))) / a;
    return 2 * u - 1;
}

std::optional<MovingPath::Vertices> within_seam(const MovingPath::Vertices& path, double opacity, double pixel) {
    if (path.at.size() < 2) return std::nullopt;
    const double by = std::min(seam_width(opacity) * pixel, kMostOfSize * narrower_side(path.at));
    auto now = shrunk(path, by);
    return is_evenly_shrunk(path, now, by) ? std::optional(std::move(now)) : std::nullopt;
}

double seam_pixel(double composition_width) {
    return composition_width / kPictureWidth;
}

}  // namespace lottie::looks
