// What is wrong along seams, where several layers fill parts of the same pixels.
#include "seam_error.h"

#include <algorithm>
#include <cmath>

#include "looks/seam.h"
#include "visibility.h"

namespace lottie::looks {
namespace {

constexpr double kSeenStep = 8.0 / 255;               // of a channel; pixels beyond it are counted
constexpr double kUnseenBeyond = 0.7 * kUnseenShare;  // measured: up to a tenth more of them are than is estimated
constexpr double kUnseenMean = 0.05 / 255;            // of the whole picture

// How much less alike the pictures are, as told in blocks of 8 x 8 pixels, for each pixel of a seam through a plain
// area.
double unlikeness(double square) {
    constexpr double kBlock = 8;
    constexpr double kSteady = 0.03 * 0.03;   // what the measure adds to the variance of a block
    constexpr double kBlocksPerLength = 1.3;  // that a seam of a block's length runs through, as it may lie askew
    const double variance = square / kBlock;
    return kBlock * kBlocksPerLength * variance / (kSteady + variance);
}

}  // namespace

void SeamError::add(double off, double contrast, double share) {
    mean += off * share;
    square += off * off * share;
    beyond += off * contrast > kSeenStep ? share : 0;
}

double seam_error_share(const Stack& stack, double length, const SeamError& error, const Contrast& contrast) {
    const double share = length * seam_pixel(stack.width) / (stack.width * stack.height);
    return share * std::max({error.mean * contrast.mean / kUnseenMean, error.beyond / kUnseenBeyond,
                             unlikeness(error.square * contrast.luma * contrast.luma) / kUnseenUnlikeness});
}

bool is_within(const Hull& hull, Point p) {
    if (hull.size() < 3) return false;
    const auto side = [&](std::size_t i) {
        const Point& a = hull[i];
        const Point& b = hull[(i + 1) % hull.size()];
        return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
    };
    const bool turns_left = side(0) > 0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        if ((side(i) > 0) != turns_left) return false;
    }
    return true;
}

}  // namespace lottie::looks
