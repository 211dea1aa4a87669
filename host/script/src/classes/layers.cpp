// Layers of every kind.
#include "engine/bind.h"

namespace host::script {

namespace {

template <auto Get>
constexpr auto get = guarded<read_member<&ScriptCall::self_layer, Get>>;
template <auto Set, auto Argument>
constexpr auto set = guarded<write_member<&ScriptCall::self_layer, Set, Argument>>;

duk_ret_t copy_to_comp(ScriptCall& call) {
    model::Layer& original = call.self_layer();
    call.comp(0).copy_layer_here(original);
    return call.nothing();
}

// The layer to move next to, which must be in the same composition.
model::Layer& neighbour(ScriptCall& call, const model::Layer& moved) {
    model::Layer* other = call.layer(0);
    if (other == nullptr) call.fail("a layer was expected");
    if (&other->comp() != &moved.comp()) call.fail("the layer is in another composition");
    return *other;
}

duk_ret_t move_after(ScriptCall& call) {
    model::Layer& layer = call.self_layer();
    const model::Layer& other = neighbour(call, layer);
    if (&other == &layer) return call.nothing();
    layer.move_to(layer.index() < other.index() ? other.index() : other.index() + 1);
    return call.nothing();
}

duk_ret_t move_before(ScriptCall& call) {
    model::Layer& layer = call.self_layer();
    const model::Layer& other = neighbour(call, layer);
    if (&other == &layer) return call.nothing();
    layer.move_to(layer.index() < other.index() ? other.index() - 1 : other.index());
    return call.nothing();
}

duk_ret_t move_to_beginning(ScriptCall& call) {
    call.self_layer().move_to(0);
    return call.nothing();
}

duk_ret_t move_to_end(ScriptCall& call) {
    call.self_layer().move_to(-1);
    return call.nothing();
}

duk_ret_t remove(ScriptCall& call) {
    call.self_layer().remove();
    return call.nothing();
}

void change_parent(ScriptCall& call, model::Parenting parenting) {
    model::Layer& child = call.self_layer();
    model::Layer* new_parent = call.layer(0);
    if (new_parent == nullptr && call.given(0)) call.fail("a layer or null was expected");
    if (new_parent != child.parent()) child.set_parent(new_parent, parenting);
}

duk_ret_t set_parent_with_jump(ScriptCall& call) {
    change_parent(call, model::Parenting::keep_local_values);
    return call.nothing();
}

duk_ret_t is_name_set(ScriptCall& call) {
    return call.give(!call.self_layer().own_name().empty());
}

duk_ret_t index(ScriptCall& call) {
    return call.give(call.self_layer().index() + 1);
}

duk_ret_t containing_comp(ScriptCall& call) {
    return call.give(&call.self_layer().comp());
}

duk_ret_t set_parent(ScriptCall& call) {
    if (duk_is_undefined(call.ctx, 0)) call.fail("a layer or null was expected");
    change_parent(call, model::Parenting::keep_place);
    return call.nothing();
}

duk_ret_t null_layer(ScriptCall& call) {
    return call.give(call.self_layer().has_flag(model::kIsNull));
}

duk_ret_t in_point(ScriptCall& call) {
    return call.give(seconds(call.self_layer().in_point()));
}

// The out-point stays.
duk_ret_t set_in_point(ScriptCall& call) {
    model::Layer& layer = call.self_layer();
    const model::Time in = model::from_seconds(call.number(0));
    layer.set_in_point_and_duration(in, layer.in_point() + layer.duration() - in);
    return call.nothing();
}

duk_ret_t out_point(ScriptCall& call) {
    const model::Layer& layer = call.self_layer();
    return call.give(seconds(layer.in_point() + layer.duration()));
}

duk_ret_t set_out_point(ScriptCall& call) {
    model::Layer& layer = call.self_layer();
    layer.set_in_point_and_duration(layer.in_point(), model::from_seconds(call.number(0)) - layer.in_point());
    return call.nothing();
}

duk_ret_t start_time(ScriptCall& call) {
    return call.give(seconds(call.self_layer().offset()));
}

duk_ret_t set_start_time(ScriptCall& call) {
    model::Layer& layer = call.self_layer();
    layer.set_offset(model::from_seconds(call.number(0)));
    return call.nothing();
}

template <model::LayerFlag Flag>
duk_ret_t flag(ScriptCall& call) {
    return call.give(call.self_layer().has_flag(Flag));
}

template <model::LayerFlag Flag>
duk_ret_t set_flag(ScriptCall& call) {
    model::Layer& layer = call.self_layer();
    layer.set_flag(Flag, call.boolean(0));
    return call.nothing();
}

constexpr ScriptMethod kMethods[] = {
    {"copyToComp", 1, guarded<copy_to_comp>},
    {"moveAfter", 1, guarded<move_after>},
    {"moveBefore", 1, guarded<move_before>},
    {"moveToBeginning", 0, guarded<move_to_beginning>},
    {"moveToEnd", 0, guarded<move_to_end>},
    {"remove", 0, guarded<remove>},
    {"setParentWithJump", 1, guarded<set_parent_with_jump>},
};

constexpr ScriptProperty kProperties[] = {
    {"name", get<&model::Layer::display_name>, set<&model::Layer::rename, &ScriptCall::text>},
    {"isNameSet", guarded<is_name_set>, nullptr},
    {"id", get<&model::Layer::id>, nullptr},
    {"index", guarded<index>, nullptr},
    {"containingComp", guarded<containing_comp>, nullptr},
    {"parent", get<&model::Layer::parent>, guarded<set_parent>},
    {"inPoint", guarded<in_point>, guarded<set_in_point>},
    {"outPoint", guarded<out_point>, guarded<set_out_point>},
    {"startTime", guarded<start_time>, guarded<set_start_time>},
    {"enabled", guarded<flag<model::kVideoActive>>, guarded<set_flag<model::kVideoActive>>},
    {"locked", guarded<flag<model::kLocked>>, guarded<set_flag<model::kLocked>>},
    {"shy", guarded<flag<model::kShy>>, guarded<set_flag<model::kShy>>},
    {"solo", guarded<flag<model::kSolo>>, guarded<set_flag<model::kSolo>>},
    {"nullLayer", guarded<null_layer>, nullptr},
};

constexpr ScriptProperty kAvProperties[] = {
    {"source", get<&model::Layer::source>, nullptr},
    {"threeDLayer", guarded<flag<model::kIs3D>>, guarded<set_flag<model::kIs3D>>},
    {"adjustmentLayer", guarded<flag<model::kAdjustment>>, guarded<set_flag<model::kAdjustment>>},
    {"collapseTransformation", guarded<flag<model::kCollapse>>, guarded<set_flag<model::kCollapse>>},
    {"motionBlur", guarded<flag<model::kMotionBlur>>, guarded<set_flag<model::kMotionBlur>>},
};

// Base classes first.
constexpr ScriptClass kClasses[] = {
    {ClassId::layer, nullptr, {}, nullptr, kMethods, kProperties},
    {ClassId::av_layer, "AVLayer", ClassId::layer, nullptr, {}, kAvProperties},
    {ClassId::text_layer, "TextLayer", ClassId::av_layer, nullptr, {}, {}},
    {ClassId::shape_layer, "ShapeLayer", ClassId::av_layer, nullptr, {}, {}},
    {ClassId::camera_layer, "CameraLayer", ClassId::layer, nullptr, {}, {}},
    {ClassId::light_layer, "LightLayer", ClassId::layer, nullptr, {}, {}},
};

}  // namespace

void define_layers(duk_context* ctx) {
    for (const ScriptClass& table : kClasses) ScriptEnvironment::of(ctx).define_class(ctx, table);
}

}  // namespace host::script
