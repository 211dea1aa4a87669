// CompItem: a composition and its layers.
#include <algorithm>
#include <limits>

#include "engine/bind.h"

namespace host::script {

namespace {

template <auto Get>
constexpr auto get = guarded<read_member<&ScriptCall::self_comp, Get>>;

// layer(number, from 1 at the top), layer(name) or layer(other layer, places below it).
duk_ret_t layer(ScriptCall& call) {
    model::Comp& comp = call.self_comp();
    if (call.is_text(0)) return call.give(comp.layer_named(call.text(0)));
    int number = 0;
    if (const model::Layer* other = call.layer(0)) {
        if (&other->comp() != &comp) call.fail("the layer is in another composition");
        const std::int64_t wanted = std::int64_t{other->index()} + 1 + call.whole_number(1);
        number = static_cast<int>(std::clamp<std::int64_t>(wanted, 0, std::numeric_limits<int>::max()));
    } else {
        number = call.whole_number(0);
    }
    const int count = comp.layer_count();
    if (number < 1 || number > count) {
        call.fail("layer " + std::to_string(number) + " is out of range: the composition has " + std::to_string(count));
    }
    return call.give(&comp.layer_at(number - 1));
}

duk_ret_t selected_layers(ScriptCall& call) {
    const std::vector<model::Layer*> selected = call.self_comp().selected_layers();
    const duk_idx_t array = duk_push_array(call.ctx);
    duk_uarridx_t index = 0;
    for (const model::Layer* layer : selected) {
        call.environment.push_layer(call.ctx, layer);
        duk_put_prop_index(call.ctx, array, index++);
    }
    return 1;
}

duk_ret_t duration(ScriptCall& call) {
    return call.give(seconds(call.self_comp().duration()));
}

duk_ret_t frame_duration(ScriptCall& call) {
    return call.give(seconds(call.self_comp().frame_duration()));
}

duk_ret_t time(ScriptCall& call) {
    return call.give(seconds(call.self_comp().current_time()));
}

duk_ret_t set_time(ScriptCall& call) {
    model::Comp& comp = call.self_comp();
    comp.set_current_time(model::from_seconds(call.number(0)));
    return call.nothing();
}

constexpr ScriptMethod kMethods[] = {
    {"layer", 2, guarded<layer>},
};

constexpr ScriptProperty kProperties[] = {
    {"numLayers", get<&model::Comp::layer_count>, nullptr},
    {"selectedLayers", guarded<selected_layers>, nullptr},
    {"duration", guarded<duration>, nullptr},
    {"frameRate", get<&model::Comp::frame_rate>, nullptr},
    {"frameDuration", guarded<frame_duration>, nullptr},
    {"time", guarded<time>, guarded<set_time>},
};

constexpr ScriptClass kComp = {ClassId::comp_item, "CompItem", ClassId::picture_item, nullptr, kMethods, kProperties};

}  // namespace

void define_comp(duk_context* ctx) {
    ScriptEnvironment::of(ctx).define_class(ctx, kComp);
}

}  // namespace host::script
