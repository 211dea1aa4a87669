// The outlines that a shape layer paints at a frame.
#pragma once

#include <vector>

#include "json.h"
#include "matrix.h"

namespace lottie::looks {

struct Outline {
    std::vector<Point> points;  // along the curve, close enough together to hold it
    double growth = 0;          // how far paint reaches beyond them, pixels
    bool is_closed = false;
};

// One path property, in its own coordinates; no points when there is none.
Outline path_outline(const Json* path, double frame);

// What fills and strokes leave of the shapes, groups, trims and repeaters included, in the layer's coordinates. Paths
// that nothing paints are left out.
std::vector<Outline> painted_outlines(Json::ConstArray shapes, double frame);

}  // namespace lottie::looks
