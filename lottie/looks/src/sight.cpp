// Copies that an expression places, and that players without expressions show neither before nor after.
#include "sight.h"

#include "effects.h"
#include "expression_use.h"

namespace lottie::looks {
namespace {

const Json* position_of(const SceneLayer& layer) {
    const Json* transform = layer.json("ks");
    return transform == nullptr ? nullptr : member(*transform, "p");
}

bool is_outside(const Hull& hull, double width, double height) {
    const Box box = around(hull);
    return area(hull) > 0 && (box.right <= 0 || box.bottom <= 0 || box.left >= width || box.top >= height);
}

}  // namespace

bool is_seen(const SceneLayer& layer, double frame) {
    return layer.draws() && layer.is_on(frame) && !layer.transform().opacity.is_nothing_at(frame);
}

bool is_placed_by_expression(const SceneLayer& layer) {
    const Json* position = position_of(layer);
    const Json* text = position == nullptr ? nullptr : member(*position, "x");
    if (text == nullptr || !text->IsString() || layer.parent || layer.is_3d || layer.is_auto_oriented) return false;
    return is_independent_of_own_value({text->GetString(), text->GetStringLength()}, layer.name);
}

bool is_placed_by_expression(const Unnesting& u, const Copy& copy) {
    return is_placed_by_expression(u.inner(copy)) && is_placed_by_expression(u.copied(copy)) &&
           !is_picture_changed(u.inner(copy)) && !u.stack_survey().is_seen_in_depth(u.nest_place());
}

bool is_out_of_sight(const Unnesting& u, const Copy& copy, double frame) {
    const double inner_frame = u.inner_frame(frame);
    if (!is_outside(u.inside_survey().reach_in_stack(copy.inner, inner_frame), u.nest().width, u.nest().height))
        return false;
    const Hull after =
        mapped(u.inside_survey().reach(copy.inner, inner_frame), u.result_placement().world(copy.result, frame));
    return is_outside(after, u.stack().width, u.stack().height);
}

}  // namespace lottie::looks
