// How much the seams show along which faded layers were cut.
#include "seam_share.h"

#include <algorithm>
#include <cmath>

#include "looks/seam.h"
#include "palette.h"

namespace lottie::looks {
namespace {

constexpr double kSeenStep = 8.0 / 255;     // of a channel; pixels beyond it are counted
constexpr double kUnseenMean = 0.05 / 255;  // of the whole picture

bool is_within(const Hull& hull, Point p) {
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

// How much of the edge of a layer lies over layers below it and is not covered by others: the seam along which those
// below were cut. `seen` is in their order, top to bottom.
double seam_length(Unnesting& u, const std::vector<SeenLayer>& seen, std::size_t layer) {
    constexpr std::size_t kPieces = 16;  // of a side of its hull
    const Hull& hull = seen[layer].hull;
    const auto has = [](Point p) { return [p](const SeenLayer& other) { return is_within(other.hull, p); }; };
    const auto upper_end = seen.begin() + static_cast<std::ptrdiff_t>(layer);
    double length = 0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Point& a = hull[i];
        const Point& b = hull[(i + 1) % hull.size()];
        std::size_t pieces = 0;
        u.comparison().spend(kPieces * seen.size());
        for (std::size_t k = 0; k < kPieces; ++k) {
            const double at = (static_cast<double>(k) + 0.5) / kPieces;
            const Point p{a.x + at * (b.x - a.x), a.y + at * (b.y - a.y)};
            pieces += std::none_of(seen.begin(), upper_end, has(p)) && std::any_of(upper_end + 1, seen.end(), has(p));
        }
        length += std::hypot(b.x - a.x, b.y - a.y) * static_cast<double>(pieces) / kPieces;
    }
    return length;
}

// What is wrong along a seam.
struct SeamError {
    double mean = 0;    // of the pixels that both layers fill in part, where the contrast is 1
    double beyond = 0;  // the share of them that is off by more than kSeenStep
};

SeamError error_along(double opacity, double contrast) {
    constexpr int kSamples = 32;
    const double width = seam_width(opacity);
    SeamError error;
    // What lies below shows by that much more or less where the upper layer fills a part of a pixel and the lower one
    // lacks another.
    const auto add = [&](double filled, double taken) {
        const double off = std::abs((1 - opacity * filled) * (1 - opacity + opacity * taken) - (1 - opacity));
        error.mean += off / kSamples;
        error.beyond += (off * contrast > kSeenStep ? 1.0 : 0.0) / kSamples;
    };
    for (int i = 0; i < kSamples; ++i) {
        const double filled = (i + 0.5) / kSamples;
        add(filled, std::max(0.0, filled - width));
        add(1, std::min(1.0, 1 - (width - filled)));  // the pixel beside it
    }
    return error;
}

}  // namespace

double seam_share(Unnesting& u, const std::vector<SeenLayer>& layers, double opacity) {
    double length = 0;
    Contrast contrast{0, 0};
    for (std::size_t i = 0; i < layers.size(); ++i) {
        length += seam_length(u, layers, i);
        const Contrast one = u.comparison().surveys().palette().contrast_to(u.inside().layer(layers[i].inner));
        contrast = {std::max(contrast.most, one.most), std::max(contrast.mean, one.mean)};
    }
    const double share = length * seam_pixel(u.stack().width) / (u.stack().width * u.stack().height);
    const SeamError error = error_along(opacity, contrast.most);
    return share * std::max(error.mean * contrast.mean / kUnseenMean, error.beyond / kUnseenShare);
}

}  // namespace lottie::looks
