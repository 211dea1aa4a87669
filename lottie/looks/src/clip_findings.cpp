// Layers that the nest's frame cut off.
#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "cut_work.h"
#include "expression_reach.h"
#include "findings.h"
#include "frame_seams.h"
#include "sight.h"
#include "words.h"

namespace lottie::looks {
namespace {

// The likeness of pictures is that of blocks of so many pixels; so much of the area may lie in blocks that differ.
constexpr double kBlock = 8;
constexpr double kUnseenBlocks = 0.002;
constexpr double kSeen = 2;  // where all that goes unseen adds up to 1
// Pixels: of frames that are this close the first is told, for the last digits of sines differ from machine to machine.
constexpr double kLevel = 1e-6;

// Pixels that anti-aliasing smears anyway.
double sliver(const Stack& stack) {
    return std::min(1.0, stack.width / kPictureWidth);
}

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
    double width = 0;   // of its narrower side
    double unseen = 0;  // the share that it takes of what nobody sees; more than 1 is seen
};

double unseen_share(const Stack& stack, const Hull& part) {
    const Box box = around(part);
    const double whole = std::max(1.0, stack.width * stack.height);
    const double block = kBlock * stack.width / kPictureWidth;
    const double near = (box.right - box.left + block) * (box.bottom - box.top + block);
    return std::max(area(part) / whole / kUnseenShare, near / whole / kUnseenBlocks);
}

bool is_within(const Hull& hull, const Box& frame) {
    if (hull.size() < 3) return true;
    const Box box = around(hull);
    return box.left >= frame.left && box.right <= frame.right && box.top >= frame.top && box.bottom <= frame.bottom;
}

Overhang overhang(const Unnesting& u, const Hull& hull, double frame) {
    Overhang all;
    const Box inner_frame{0, 0, u.nest().width, u.nest().height};
    if (is_within(hull, inner_frame)) return all;
    // Players differ in where things lie in depth, or by expressions, so there all of it counts as in view.
    const bool is_flat = !u.stack_survey().is_seen_in_depth(u.nest_place()) && !u.stack_survey().is_led(u.nest_place());
    const Matrix outer = is_flat ? u.stack_placement().world(u.nest_place(), frame) : Matrix();
    const Hull view = hull_of(Box{0, 0, u.stack().width, u.stack().height});
    for (const Hull& part : outside(hull, inner_frame)) {
        const Hull seen = is_flat ? cut(mapped(part, outer), view) : part;
        const Box box = around(seen);
        const double width = std::min(box.right - box.left, box.bottom - box.top);
        all.width = std::max(all.width, width);
        if (width > sliver(u.stack())) all.unseen += unseen_share(u.stack(), seen);
    }
    return all;
}

// All layers together, over all frames.
struct Worst {
    double width = 0;
    double width_frame = 0;
    std::size_t layer = 0;
    double unseen = 0;
    std::optional<double> first_frame;
    std::size_t layers = 0;
};

// A layer inside, by its place, that reaches over the edge at some frame.
struct Reaching {
    std::size_t inner;
    bool is_placed_by_expression;
};

// Of those that stand still one look tells.
std::vector<Reaching> layers_to_search(const Unnesting& u, const std::vector<double>& inner_frames) {
    std::vector<Reaching> layers;
    const Box frame{0, 0, u.nest().width, u.nest().height};
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        const SceneLayer& layer = u.inside().layer(inner);
        if (!u.copy_of(inner) || !layer.draws()) continue;
        if (u.inside_survey().reach_stands_still(inner)) {
            const auto on = std::find_if(inner_frames.begin(), inner_frames.end(),
                                         [&layer](double inner_frame) { return layer.is_on(inner_frame); });
            if (on == inner_frames.end() || is_within(u.inside_survey().reach_in_stack(inner, *on), frame)) continue;
        }
        layers.push_back({inner, is_placed_by_expression(u, {inner, *u.copy_of(inner)})});
    }
    return layers;
}

// Whether the composition's frame cuts off what the nest's did.
bool is_hidden_anyway(const Unnesting& u, const Reaching& layer, double frame) {
    return layer.is_placed_by_expression && is_out_of_sight(u, {layer.inner, *u.copy_of(layer.inner)}, frame);
}

Worst search(Unnesting& u) {
    Worst worst;
    const HeldCut& held = u.held_cut();
    std::vector<double> inner_frames;
    for (const double frame : u.nest_frames()) inner_frames.push_back(u.inner_frame(frame));
    const std::vector<Reaching> layers = layers_to_search(u, inner_frames);
    std::vector<bool> is_counted(u.inside().size(), false);
    const Box inner_frame{0, 0, u.nest().width, u.nest().height};
    for (std::size_t i = 0; i < inner_frames.size(); ++i) {
        const double frame = u.nest_frames()[i];
        const auto mask = held.masks ? mask_reach(u.nest(), frame) : std::nullopt;
        double unseen = 0;
        for (const Reaching& layer : layers) {
            const std::size_t inner = layer.inner;
            if (held.frame[inner] || u.inside_survey().surely_lies_within(inner, inner_frames[i], inner_frame))
                continue;
            Hull reach = u.inside_survey().reach_in_stack(inner, inner_frames[i]);
            if (mask) {
                u.comparison().spend(steps_to_cut(reach, *mask));
                reach = cut(reach, *mask);
            }
            Overhang one = is_hidden_anyway(u, layer, frame) ? Overhang{} : overhang(u, reach, frame);
            // Where players differ in where the layer lies, they differ in how much of it is to be seen there. What an
            // expression moves is taken to lie where the file says.
            const bool is_certain =
                u.inside_survey().has_reliable_placement(inner) || u.inside_survey().is_moved_by_expression(inner);
            const bool is_over = one.width > (is_certain ? sliver(u.stack()) : kNothing);
            if (is_over && !is_certain) one.unseen = kSeen;
            unseen += one.unseen;
            if (is_over) {
                if (!worst.first_frame) worst.first_frame = frame;
                if (!is_counted[inner]) ++worst.layers;
                is_counted[inner] = true;
            }
            if (one.width > worst.width + kLevel)
                worst.width = one.width, worst.width_frame = frame, worst.layer = inner;
        }
        worst.unseen = std::max(worst.unseen, unseen);
    }
    return worst;
}

// Whether the nest's frame leaves out a part of the outer composition.
bool is_anything_cut(const Unnesting& u, double frame) {
    constexpr double kEdge = 0.5;  // square pixels
    if (u.stack_survey().is_seen_in_depth(u.nest_place()) || u.stack_survey().is_led(u.nest_place())) return true;
    const Hull inner_frame = hull_of(Box{0, 0, u.nest().width, u.nest().height});
    const Hull view = hull_of(Box{0, 0, u.stack().width, u.stack().height});
    return area(cut(view, mapped(inner_frame, u.stack_placement().world(u.nest_place(), frame)))) < area(view) - kEdge;
}

std::vector<double> frames_that_cut(const Unnesting& u) {
    std::vector<double> frames;
    std::copy_if(u.nest_frames().begin(), u.nest_frames().end(), std::back_inserter(frames),
                 [&u](double frame) { return is_anything_cut(u, frame); });
    return frames;
}

// The first of the frames at which an expression may move or grow a layer over the edge.
std::optional<double> first_led_over_the_edge(Unnesting& u, std::size_t inner, const std::vector<double>& frames) {
    ExpressionReach reaches(u.inside_survey(), inner);
    for (const double frame : frames) {
        u.comparison().spend(1);
        const double at = u.inner_frame(frame);
        const SceneLayer& layer = u.inside().layer(inner);
        if (!layer.is_on(at) || layer.transform().opacity.is_nothing_at(at)) continue;
        const auto reach = reaches.at(at);
        if (!reach || overhang(u, *reach, frame).width > sliver(u.stack())) return frame;
    }
    return std::nullopt;
}

// Whether there is something to say.
bool find_led_layers(Unnesting& u) {
    std::optional<std::vector<double>> frames;
    for (const Copy& copy : u.copies()) {
        if (!u.inner(copy).draws() || u.held_cut().frame[copy.inner] ||
            !u.inside_survey().is_drawn_otherwise(copy.inner))
            continue;
        if (!frames) frames = frames_that_cut(u);
        const auto frame = first_led_over_the_edge(u, copy.inner, *frames);
        if (!frame) continue;
        u.add({Reason::clip, Weight::change,
               "an expression may draw layer " + quoted(u.inner(copy).name) + " over the edge of the nest's frame (" +
                   plain(u.nest().width) + " x " + plain(u.nest().height) + "), which cuts it off there",
               "bake the expression to keyframes", u.inner(copy).name, "w", frame});
        return true;
    }
    return false;
}

std::string pixels(double width) {
    const double whole = std::round(width);
    return whole < 1 ? "less than 1 pixel" : whole == 1 ? "1 pixel" : plain(whole) + " pixels";
}

// Whether there is something to say.
bool find_frame_seams(Unnesting& u) {
    FrameSeams seams(u);
    double most = 0;
    for (const double frame : u.nest_frames()) {
        most = std::max(most, seams.share_at(frame));
        if (most <= 1) continue;
        u.add({Reason::clip, Weight::change,
               "the nest's frame (" + plain(u.nest().width) + " x " + plain(u.nest().height) +
                   ") ends between pixels, and layers that it cuts one by one look different along its edges",
               "cut the layers with a mask or a matte inside the composition", "", "w", frame});
        return true;
    }
    u.add_unseen(most);
    return false;
}

}  // namespace

void find_clip_changes(Unnesting& u) {
    if (find_led_layers(u) || find_frame_seams(u)) return;
    const Worst worst = search(u);
    if (worst.width <= kNothing) return;
    const SceneLayer& layer = u.inside().layer(worst.layer);
    const std::string frame_size = plain(u.nest().width) + " x " + plain(u.nest().height);
    if (worst.unseen <= 1) {
        u.add_unseen(worst.unseen);
        u.add({Reason::clip, Weight::slight,
               "layer " + quoted(layer.name) + " reaches over the edge of the nest's frame (" + frame_size +
                   ") by less than the eye sees",
               "", layer.name, "w", worst.width_frame});
        return;
    }
    u.add({Reason::clip, Weight::change,
           "the nest's frame (" + frame_size + ") cuts " + layers_named(layer.name, worst.layers) + " off, by " +
               pixels(worst.width) + " at frame " + timeline_frame(worst.width_frame) + "; un-nested, nothing does",
           "cut the layers with a mask or a matte inside the composition", layer.name, "w", worst.first_frame});
}

}  // namespace lottie::looks
