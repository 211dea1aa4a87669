// What is wrong along seams, where several layers fill parts of the same pixels.
#pragma once

#include "hull.h"
#include "palette.h"
#include "scene.h"

namespace lottie::looks {

// Of the pixels along one.
struct SeamError {
    double mean = 0;    // where the contrast is 1
    double beyond = 0;  // the share of them that is off by more than the eye sees in a pixel
    double square = 0;  // mean of the squares, where the contrast is 1

    // Adds a share of the pixels, which are off by that much where the contrast is 1.
    void add(double off, double contrast, double share);
};

// The share of what may go unseen, 1 being all of it, that a seam takes of that length in pixels of the composition.
double seam_error_share(const Stack& stack, double length, const SeamError& error, const Contrast& contrast);

// Whether the point lies within a convex polygon.
bool is_within(const Hull& hull, Point p);

}  // namespace lottie::looks
