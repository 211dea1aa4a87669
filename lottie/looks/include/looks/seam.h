// Where layers that fade one by one meet, so that they look as if they faded as one.
#pragma once

#include <optional>

#include "looks/evaluation.h"

namespace lottie::looks {

// What is to be taken from a layer that a closed path covers while both are drawn with an opacity between 0 and 1.
// Along the edge runs a row of pixels that both fill in part: if the two met there exactly, what lies below would show
// between them; if they overlapped by more, the lower one would show through. So the lower one reaches a part of a
// `pixel` below the upper one, the more so the less transparent they are; no pixel is then off by more than 11 of 255.
// Nothing for a path that cannot be shrunk evenly by moving its vertices.
std::optional<MovingPath::Vertices> within_seam(const MovingPath::Vertices& path, double opacity, double pixel);

// By how much of a pixel.
double seam_width(double opacity);

// The width of a pixel of the picture as looks are judged, in pixels of a composition so wide.
double seam_pixel(double composition_width);

}  // namespace lottie::looks
