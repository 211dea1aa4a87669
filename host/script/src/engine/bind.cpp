// Calls from scripts into C++: arguments, `this`, results, errors.
#include "engine/bind.h"

#include <cmath>
#include <limits>

#include "text.h"

namespace host::script {

namespace {

constexpr std::string_view kDeleted = "Object is invalid";

std::string_view engine_text(duk_context* ctx, duk_idx_t index) {
    duk_size_t size = 0;
    const char* data = duk_to_lstring(ctx, index, &size);
    return {data, size};
}

// The object behind `this`, which must be alive.
template <class T>
T& living_self(ScriptCall& call, TargetKind kind, const char* wanted) {
    duk_push_this(call.ctx);
    auto* target = static_cast<T*>(target_of(call.ctx, -1, kind));
    duk_pop(call.ctx);
    if (target == nullptr) call.fail(std::string("called on something that is not ") + wanted);
    if (!target->is_alive()) call.fail(kDeleted);
    return *target;
}

template <class T>
T* living_argument(ScriptCall& call, duk_idx_t i, TargetKind kind) {
    auto* target = static_cast<T*>(target_of(call.ctx, i, kind));
    if (target != nullptr && !target->is_alive()) call.fail(kDeleted);
    return target;
}

}  // namespace

model::Item& ScriptCall::self_item() {
    return living_self<model::Item>(*this, TargetKind::item, "an item");
}

model::Comp& ScriptCall::self_comp() {
    model::Comp* comp = self_item().comp();
    if (comp == nullptr) fail("called on something that is not a composition");
    return *comp;
}

model::Layer& ScriptCall::self_layer() {
    return living_self<model::Layer>(*this, TargetKind::layer, "a layer");
}

scriptui::Element& ScriptCall::self_element() {
    duk_push_this(ctx);
    auto* element = static_cast<scriptui::Element*>(target_of(ctx, -1, TargetKind::element));
    duk_pop(ctx);
    if (element == nullptr) fail("called on something that is not a dialog element");
    return *element;
}

double ScriptCall::number(duk_idx_t i) {
    const double value = duk_to_number(ctx, i);
    if (!std::isfinite(value)) fail("a number was expected");
    return value;
}

int ScriptCall::whole_number(duk_idx_t i) {
    const double value = number(i);
    if (value != std::trunc(value) || std::fabs(value) > std::numeric_limits<int>::max()) {
        fail("a whole number was expected");
    }
    return static_cast<int>(value);
}

std::string ScriptCall::text(duk_idx_t i) {
    return to_bytes(engine_text(ctx, i));
}

std::string ScriptCall::display_text(duk_idx_t i) {
    return to_utf8(engine_text(ctx, i));
}

model::Item* ScriptCall::item(duk_idx_t i) {
    return living_argument<model::Item>(*this, i, TargetKind::item);
}

model::Layer* ScriptCall::layer(duk_idx_t i) {
    return living_argument<model::Layer>(*this, i, TargetKind::layer);
}

model::Comp& ScriptCall::comp(duk_idx_t i) {
    model::Item* found = item(i);
    model::Comp* comp = found != nullptr ? found->comp() : nullptr;
    if (comp == nullptr) fail("a composition was expected");
    return *comp;
}

void ScriptCall::push_string(std::string_view value) {
    push_text(ctx, value);
}

}  // namespace host::script
