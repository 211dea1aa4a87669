// Convex polygons, and the upright rectangles around them.
#pragma once

#include <limits>
#include <vector>

#include "matrix.h"

namespace lottie::looks {

struct Box {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    friend bool operator==(const Box&, const Box&) = default;
};

// Around nothing: what is united with it is itself.
inline constexpr Box kNoBox = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
Box united(const Box& a, const Box& b);
// Around what a box becomes.
Box mapped(const Box& box, const Matrix& matrix);

// Corners in order around it; fewer than three hold nothing.
using Hull = std::vector<Point>;

// The smallest one that holds the points; points that are no finite numbers are left out.
Hull hull_of(std::vector<Point> points);
Hull hull_of(const Box& box);  // empty if the box is
Hull united(const Hull& a, const Hull& b);
Hull cut(const Hull& a, const Hull& b);
// What `a` covers when its origin goes over all of `b`.
Hull sum(const Hull& a, const Hull& b);
// Reaches further by that much in each direction, and by hardly more.
Hull grown(const Hull& hull, double by);
Hull mapped(const Hull& hull, const Matrix& matrix);

double area(const Hull& hull);
// All sides 0 around nothing.
Box around(const Hull& hull);

}  // namespace lottie::looks
