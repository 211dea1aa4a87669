// The questions asked about an un-nesting; each adds its findings.
#pragma once

#include <optional>
#include <vector>

#include "expression_tally.h"
#include "unnesting.h"

namespace lottie::looks {

// A layer that stayed in the stack and lost its link to another, or hangs on one that did.
struct Unhitched {
    std::size_t layer;               // place in the stack before
    std::optional<std::size_t> cut;  // where the chain is cut: the layer itself or its nearest such ancestor
    double distance = 0;             // that it lies off, at most, pixels
    std::optional<double> frame;     // the first at which the eye sees it
    double blurred = 0;              // see displacement.h
};

// What happened to layers that belong to no nest: found once for all nests of a run.
struct SharedFindings {
    explicit SharedFindings(Comparison& comparison);

    std::vector<std::size_t> without_matte;  // places before, of layers whose matte is another now
    std::optional<Finding> order;
    std::vector<Unhitched> unhitched;
    ExpressionTally expressions;
};

std::vector<std::size_t> find_lost_mattes(const Comparison& comparison);
std::optional<Finding> find_order_change(const Comparison& comparison);
std::vector<Unhitched> find_unhitched(Comparison& comparison);
ExpressionTally find_expression_changes_beside(Comparison& comparison);

// Opacity, masks, mattes, blend mode, effects, layer styles and switches of the nest as a whole.
void find_group_changes(Unnesting& unnesting);
// What fades around the nest's composition.
void find_fading_around(Unnesting& unnesting);
// Layers that the nest's frame cut off.
void find_clip_changes(Unnesting& unnesting);
// Blend modes, adjustment layers, cameras and 3D layers inside.
void find_inside_changes(Unnesting& unnesting);
// Clock and visibility: time remap, stretch, starts, trims.
void find_time_changes(Unnesting& unnesting);
// Where the copies and all other layers lie.
void find_place_changes(Unnesting& unnesting, const SharedFindings& shared);
// Expressions that place the copies, or read how they are placed; a part of that.
void find_place_expressions(Unnesting& unnesting);
// Mattes, stack order, layers that were not copied, use of the source.
void find_link_changes(Unnesting& unnesting, const SharedFindings& shared);
// What expressions compute and whom they name.
void find_expression_changes(Unnesting& unnesting, const SharedFindings& shared);

}  // namespace lottie::looks
