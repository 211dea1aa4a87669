// A container's `layout`: element.layout.layout(true) lays out the window again.
#include "dialog/dialog_classes.h"
#include "scriptui/lay_out.h"

namespace host::script {

namespace {

constexpr const char* kContainer = DUK_HIDDEN_SYMBOL("container");

duk_ret_t layout(ScriptCall& call) {
    duk_push_this(call.ctx);
    if (!duk_is_object(call.ctx, -1)) call.fail("called on something that is not a layout");
    duk_get_prop_string(call.ctx, -1, kContainer);
    const scriptui::Element* container = element_argument(call, -1);
    if (container == nullptr) call.fail("called on something that is not a layout");
    scriptui::lay_out(container->window(), call.environment.driver.text_measure());
    return call.nothing();
}

// Always lays out the whole window: a container's size affects the others.
constexpr ScriptMethod kMethods[] = {
    {"layout", 1, guarded<layout>},
    {"resize", 0, guarded<layout>},
};

constexpr ScriptClass kLayoutManager = {ClassId::layout_manager, nullptr, {}, nullptr, kMethods, {}};

}  // namespace

duk_ret_t get_layout(ScriptCall& call) {
    const scriptui::Element& container = self_container(call);
    const duk_idx_t manager = duk_push_object(call.ctx);
    push_element(call, &container);
    duk_put_prop_string(call.ctx, manager, kContainer);
    call.environment.push_prototype(call.ctx, ClassId::layout_manager);
    duk_set_prototype(call.ctx, manager);
    return 1;
}

void define_layout(duk_context* ctx) {
    ScriptEnvironment::of(ctx).define_class(ctx, kLayoutManager);
}

}  // namespace host::script
