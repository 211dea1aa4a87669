// How much shows along the edge of a nest's frame where it cuts layers one by one that lie over one another.
#include "frame_seams.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "looks/seam.h"
#include "seam_error.h"
#include "sight.h"
#include "visibility.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kPieces = 16;  // of each side

// How far a straight line at that place comes into its row of pixels; nothing where that is not known.
std::optional<double> filled_part(const Unnesting& u, Point from, Point to) {
    const bool is_whole_picture = u.stack().id.empty();
    const bool is_upright = std::abs(from.x - to.x) < kNothing;
    if (!is_whole_picture || (!is_upright && std::abs(from.y - to.y) >= kNothing)) return std::nullopt;
    const double at = (is_upright ? from.x : from.y) / seam_pixel(u.stack().width);
    return at - std::floor(at);
}

// Some players cut groups at whole pixels, but layers in the midst of one. In others a layer shows through one above it
// by the part of a pixel that the latter fills, times the part that it does not.
SeamError error_along(const std::optional<double>& filled, double contrast) {
    SeamError error;
    if (filled) {
        error.add(std::min(*filled, 1 - *filled), contrast, 1);
        return error;
    }
    constexpr int kSamples = 16;
    for (int i = 0; i < kSamples; ++i) {
        const double part = (i + 0.5) / kSamples;
        error.add(part * (1 - part), contrast, 1.0 / kSamples);
    }
    return error;
}

}  // namespace

FrameSeams::FrameSeams(Unnesting& unnesting) : u_(unnesting) {
    for (std::size_t inner = 0; inner < u_.inside().size(); ++inner) {
        if (!u_.held_cut().frame[inner]) continue;
        Palette colors;
        colors.add(u_.inside().layer(inner));
        cut_.push_back({inner, u_.comparison().surveys().palette().contrast_to(colors)});
    }
}

double FrameSeams::share_at(double frame) {
    const double inner_frame = u_.inner_frame(frame);
    const Matrix place = u_.stack_placement().world(u_.nest_place(), frame);
    struct Seen {
        Hull hull;
        Contrast contrast;
    };
    std::vector<Seen> seen;
    for (const CutLayer& layer : cut_) {
        if (!is_seen(u_.inside().layer(layer.inner), inner_frame)) continue;
        seen.push_back({mapped(u_.inside_survey().reach_in_stack(layer.inner, inner_frame), place), layer.contrast});
        u_.comparison().spend(seen.back().hull.size() * kPieces);
    }
    if (seen.empty()) return 0;
    const double w = u_.nest().width;
    const double h = u_.nest().height;
    const std::array<Point, 5> corners = {place.map({0, 0}), place.map({w, 0}), place.map({w, h}), place.map({0, h}),
                                          place.map({0, 0})};
    double share = 0;
    for (std::size_t side = 0; side < 4; ++side) {
        const Point a = corners[side];
        const Point b = corners[side + 1];
        const auto filled = filled_part(u_, a, b);
        const double length = std::hypot(b.x - a.x, b.y - a.y) / kPieces;
        for (std::size_t i = 0; i < kPieces; ++i) {
            const double at = (static_cast<double>(i) + 0.5) / kPieces;
            const Point p{a.x + at * (b.x - a.x), a.y + at * (b.y - a.y)};
            if (!(p.x > 0 && p.y > 0 && p.x < u_.stack().width && p.y < u_.stack().height)) continue;
            Contrast contrast{0, 0, 0};
            std::size_t count = 0;
            for (const Seen& layer : seen) {
                if (!is_within(layer.hull, p)) continue;
                contrast = larger(contrast, layer.contrast);
                ++count;
            }
            if (count < (filled ? 1 : 2)) continue;
            share += seam_error_share(u_.stack(), length, error_along(filled, contrast.most), contrast);
        }
    }
    return share;
}

}  // namespace lottie::looks
