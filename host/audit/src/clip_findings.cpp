// Layers that the nest's frame cut off.
#include <algorithm>
#include <array>
#include <cmath>

#include "bounds.h"
#include "findings.h"

namespace host::audit {
namespace {

constexpr double kSliver = 1;           // pixels: what anti-aliasing smears anyway
constexpr double kUnseenShare = 0.001;  // of a picture: so much may differ between pictures that look equal

// The parts of `box` outside `frame`.
std::array<Box, 4> outside(const Box& box, const Box& frame) {
    const Box middle{std::max(box.left, frame.left), box.top, std::min(box.right, frame.right), box.bottom};
    return {Box{box.left, box.top, std::min(box.right, frame.left), box.bottom},
            Box{std::max(box.left, frame.right), box.top, box.right, box.bottom},
            Box{middle.left, box.top, middle.right, std::min(box.bottom, frame.top)},
            Box{middle.left, std::max(box.top, frame.bottom), middle.right, box.bottom}};
}

// What of a layer newly comes into view when the nest's frame does not cut it off, in pixels of the outer composition.
struct Overhang {
    double width = 0;  // of its narrower side
    double area = 0;
};

Overhang overhang(Unnesting& u, std::size_t inner, double frame) {
    Overhang all;
    if (!u.inside().layers[inner].draws()) return all;
    const auto box = u.extents().in_stack(u.inside(), inner, u.inner_frame(frame));
    if (!box) return all;
    const Matrix& outer = u.stack_placement().world(u.nest_place(), frame);
    const Box view{0, 0, u.stack().width, u.stack().height};
    for (const Box& part : outside(*box, {0, 0, u.nest().width, u.nest().height})) {
        if (part.is_empty()) continue;
        const Box seen = cut(mapped(part, outer), view);
        if (seen.is_empty()) continue;
        const double width = seen.right - seen.left;
        const double height = seen.bottom - seen.top;
        all.width = std::max(all.width, std::min(width, height));
        all.area += width * height;
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
    if (worst.width == 0) return;
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

}  // namespace host::audit
