// Layers that the nest's frame cut off.
#include <algorithm>
#include <array>
#include <cmath>

#include "bounds.h"
#include "findings.h"

namespace lottie::looks {
namespace {

constexpr double kSliver = 1;           // pixels: what anti-aliasing smears anyway
constexpr double kUnseenShare = 0.001;  // of a picture: so much may differ between pictures that look equal

// The parts of `hull` outside `frame`.
std::array<Hull, 4> outside(const Hull& hull, const Box& frame) {
    const Box all = around(hull);
    const double left = std::max(all.left, frame.left);
    const double right = std::min(all.right, frame.right);
    const std::array<Box, 4> sides = {Box{all.left, all.top, std::min(all.right, frame.left), all.bottom},
                                      Box{std::max(all.left, frame.right), all.top, all.right, all.bottom},
                                      Box{left, all.top, right, std::min(all.bottom, frame.top)},
                                      Box{left, std::max(all.top, frame.bottom), right, all.bottom}};
    std::array<Hull, 4> parts;
    std::transform(sides.begin(), sides.end(), parts.begin(), [&](const Box& box) { return cut(hull, hull_of(box)); });
    return parts;
}

// What of a layer newly comes into view when the nest's frame does not cut it off, in pixels of the outer composition.
struct Overhang {
    double width = 0;  // of its narrower side
    double area = 0;
};

Overhang overhang(Unnesting& u, std::size_t inner, double frame) {
    Overhang all;
    if (!u.inside().layers[inner].draws()) return all;
    const Hull hull = u.extents().in_stack(u.inside(), inner, u.inner_frame(frame));
    const Matrix& outer = u.stack_placement().world(u.nest_place(), frame);
    const Hull view = hull_of(Box{0, 0, u.stack().width, u.stack().height});
    for (const Hull& part : outside(hull, {0, 0, u.nest().width, u.nest().height})) {
        const Hull seen = cut(mapped(part, outer), view);
        const Box box = around(seen);
        all.width = std::max(all.width, std::min(box.right - box.left, box.bottom - box.top));
        all.area += area(seen);
    }
    return all;
}

// All layers together, over all frames.
struct Worst {
    double width = 0;
    double width_frame = 0;
    std::size_t layer = 0;
    double share = 0;  // of the outer composition's area
    std::optional<double> first_frame;
    std::size_t layers = 0;
};

Worst search(Unnesting& u) {
    Worst worst;
    std::vector<bool> is_counted(u.inside().layers.size(), false);
    for (const double frame : u.nest_frames()) {
        double area = 0;
        for (std::size_t inner = 0; inner < u.inside().layers.size(); ++inner) {
            if (!u.copy_of(inner)) continue;
            const Overhang one = overhang(u, inner, frame);
            area += one.area;
            if (one.width > kSliver) {
                if (!worst.first_frame) worst.first_frame = frame;
                if (!is_counted[inner]) ++worst.layers;
                is_counted[inner] = true;
            }
            if (one.width > worst.width) worst.width = one.width, worst.width_frame = frame, worst.layer = inner;
        }
        worst.share = std::max(worst.share, area / std::max(1.0, u.stack().width * u.stack().height));
    }
    return worst;
}

}  // namespace

void find_clip_changes(Unnesting& u) {
    const Worst worst = search(u);
    if (worst.width <= kNothing) return;
    const SceneLayer& layer = u.inside().layers[worst.layer];
    const std::string frame_size = plain(u.nest().width) + " x " + plain(u.nest().height);
    if (worst.layers == 0 || worst.share <= kUnseenShare) {
        u.add({Reason::clip, Weight::slight,
               "layer " + quoted(layer.name) + " reaches over the edge of the nest's frame (" + frame_size +
                   ") by less than the eye sees",
               "", layer.name, "w", worst.width_frame});
        return;
    }
    u.add({Reason::clip, Weight::change,
           "the nest's frame (" + frame_size + ") cuts " + layers_named(layer.name, worst.layers) + " off, by " +
               plain(std::round(worst.width)) + " pixels at frame " + plain(worst.width_frame) +
               "; un-nested, nothing does",
           "cut the layers with a mask or a matte inside the composition", layer.name, "w", worst.first_frame});
}

}  // namespace lottie::looks
