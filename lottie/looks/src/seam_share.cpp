// How much the seams show along which faded layers were cut.
#include "seam_share.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "cut_work.h"
#include "looks/seam.h"
#include "one_outline.h"
#include "palette.h"
#include "path.h"
#include "seam_error.h"

namespace lottie::looks {
namespace {

double length_of_side(const Hull& hull, std::size_t i) {
    const Point& a = hull[i];
    const Point& b = hull[(i + 1) % hull.size()];
    return std::hypot(b.x - a.x, b.y - a.y);
}

// How much of the edge of a layer lies over layers below it and is not covered by others: the seam along which those
// below were cut. `seen` is in their order, top to bottom.
double seam_length(Unnesting& u, const std::vector<SeenLayer>& seen, std::size_t layer) {
    constexpr double kPieces = 32;  // of the whole edge, and one at least of each side
    const Hull& hull = seen[layer].hull;
    const auto has = [](Point p) { return [p](const SeenLayer& other) { return is_within(other.hull, p); }; };
    const auto upper_end = seen.begin() + static_cast<std::ptrdiff_t>(layer);
    double whole = 0;
    for (std::size_t i = 0; i < hull.size(); ++i) whole += length_of_side(hull, i);
    if (whole <= 0) return 0;
    double length = 0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Point& a = hull[i];
        const Point& b = hull[(i + 1) % hull.size()];
        const double side = length_of_side(hull, i);
        const auto pieces = static_cast<std::size_t>(std::ceil(kPieces * side / whole));
        u.comparison().spend(pieces * seen.size());
        for (std::size_t k = 0; k < pieces; ++k) {
            const double at = (static_cast<double>(k) + 0.5) / static_cast<double>(pieces);
            const Point p{a.x + at * (b.x - a.x), a.y + at * (b.y - a.y)};
            if (std::none_of(seen.begin(), upper_end, has(p)) && std::any_of(upper_end + 1, seen.end(), has(p)))
                length += side / static_cast<double>(pieces);
        }
    }
    return length;
}

SeamError error_along(double opacity, double contrast) {
    constexpr int kSamples = 32;
    const double width = seam_width(opacity);
    SeamError error;
    // What lies below shows by that much more or less where the upper layer fills a part of a pixel and the lower one
    // lacks another.
    const auto add = [&](double filled, double taken) {
        const double off = std::abs((1 - opacity * filled) * (1 - opacity + opacity * taken) - (1 - opacity));
        error.add(off, contrast, 1.0 / kSamples);
    };
    for (int i = 0; i < kSamples; ++i) {
        const double filled = (i + 0.5) / kSamples;
        add(filled, std::max(0.0, filled - width));
        add(1, std::min(1.0, 1 - (width - filled)));  // the pixel beside it
    }
    return error;
}

// Whether the layer is opaque wherever its hull is.
bool fills_its_hull(const SceneLayer& layer, double frame) {
    constexpr double kSameShare = 0.9999;
    const auto outline = one_outline(layer);
    if (!outline) return false;
    const std::vector<Point> points = PathProperty(outline->path).at(frame).points;
    return std::abs(area(points)) >= kSameShare * area(hull_of(points));
}

// Adds the colors of a layer, of a nest those of all that it shows; `nests` are compositions that were added already.
void add_colors(Unnesting& u, Palette& palette, const SceneLayer& layer, std::set<std::string>& nests) {
    palette.add(layer);
    if (layer.type != LayerType::nest || !nests.insert(layer.source).second) return;
    const Survey* inside = u.comparison().surveys().find(layer.source);
    if (inside == nullptr) return;
    u.comparison().spend(inside->stack().size());
    for (std::size_t place = 0; place < inside->stack().size(); ++place)
        add_colors(u, palette, inside->stack().layer(place), nests);
}

// The colors that may lie below the layers at a frame of the outer composition.
Palette colors_below(Unnesting& u, const std::vector<SeenLayer>& layers, double frame) {
    constexpr double kSameShare = 0.9999;
    Hull all;
    for (const SeenLayer& layer : layers) all = united(all, layer.hull);
    Palette below;
    std::set<std::string> nests;
    for (std::size_t place = u.nest_place() + 1; place < u.stack().size(); ++place) {
        const SceneLayer& layer = u.stack().layer(place);
        u.comparison().spend(1);
        if (!layer.draws() || !layer.is_on(frame)) continue;
        const bool is_placed = u.stack_survey().has_reliable_placement(place);
        double common = 0;
        if (is_placed) {
            const Hull& reach = u.stack_survey().reach_in_stack(place, frame);
            u.comparison().spend(steps_to_cut(reach, all));
            common = area(cut(reach, all));
        }
        if (is_placed && common <= 0) continue;
        add_colors(u, below, layer, nests);
        const bool hides_all =
            common >= kSameShare * area(all) && !u.stack().matte(place) && fills_its_hull(layer, frame);
        if (hides_all) return below;
    }
    if (u.stack().id.empty()) {
        below.add_white();
    } else {
        below.add(u.comparison().surveys().palette());
    }
    return below;
}

double share_of(const Unnesting& u, double length, const std::vector<SeenLayer>& layers, double frame,
                const Palette& below) {
    Contrast contrast{0, 0, 0};
    for (const SeenLayer& layer : layers) contrast = larger(contrast, below.contrast_to(u.inside().layer(layer.inner)));
    const SeamError error = error_along(u.nest().transform().opacity.at(frame)[0] / 100, contrast.most);
    return seam_error_share(u.stack(), length, error, contrast);
}

}  // namespace

double seam_share(Unnesting& u, const std::vector<SeenLayer>& layers, double frame, double least) {
    double length = 0;
    for (std::size_t i = 0; i < layers.size(); ++i) length += seam_length(u, layers, i);
    if (length <= 0) return 0;
    const double share = share_of(u, length, layers, frame, u.comparison().surveys().palette());
    return share <= least ? share : share_of(u, length, layers, frame, colors_below(u, layers, frame));
}

}  // namespace lottie::looks
