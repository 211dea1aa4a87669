// Curves as points along them.
#pragma once

#include <vector>

#include "hull.h"

namespace lottie::looks {

inline constexpr int kSteps = 12;  // points of a curve between two vertices

struct Outline {
    std::vector<Point> points;  // along the curve, close enough together to hold it
    double growth = 0;          // how far paint reaches beyond them, pixels
    bool is_closed = false;
};

double distance(Point a, Point b);
double length_of(const Outline& outline);
// The part between two lengths from the beginning, if there is any.
void append_part(const Outline& outline, double from, double to, std::vector<Outline>& parts);

Outline ellipse(Point center, double half_width, double half_height);
Outline rectangle(Point center, double half_width, double half_height);

// The smallest polygon around the outlines and what they grow by.
Hull around(const std::vector<Outline>& outlines);

}  // namespace lottie::looks
