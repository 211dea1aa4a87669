// The state of one engine: the project and the ports, the classes, and the objects that scripts hold.
#include "engine/environment.h"

#include "dialog/dialog_classes.h"
#include "text.h"

namespace host::script {

namespace {

// Hidden properties: scripts can neither name nor enumerate them. Macros, because the engine looks up literals faster.
#define HOST_TARGET DUK_HIDDEN_SYMBOL("target")
#define HOST_KIND DUK_HIDDEN_SYMBOL("kind")
#define HOST_PROPERTY_NAME DUK_HIDDEN_SYMBOL("name")

constexpr duk_uarridx_t kRecentObjects = 32;

duk_ret_t forget_finalized(duk_context* ctx) {
    // The object may merely inherit its target; forget_object() compares, so that is harmless.
    duk_get_prop_literal(ctx, 0, HOST_TARGET);
    if (const void* target = duk_get_pointer(ctx, -1))
        ScriptEnvironment::of(ctx).forget_object(target, duk_get_heapptr(ctx, 0));
    return 0;
}

duk_ret_t refuse_to_construct(duk_context* ctx) {
    fail(ctx, "objects of this class cannot be made with new");
}

duk_ret_t refuse_to_assign(duk_context* ctx) {
    duk_push_current_function(ctx);
    duk_get_prop_literal(ctx, -1, HOST_PROPERTY_NAME);
    fail(ctx, std::string("\"") + duk_safe_to_string(ctx, -1) + "\" is read-only");
}

void define_property(duk_context* ctx, duk_idx_t object, const ScriptProperty& property) {
    duk_push_string(ctx, property.name);
    duk_push_c_function(ctx, property.get, 0);
    duk_push_c_function(ctx, property.set != nullptr ? property.set : refuse_to_assign, 1);
    if (property.set == nullptr) {
        duk_push_string(ctx, property.name);
        duk_put_prop_literal(ctx, -2, HOST_PROPERTY_NAME);
    }
    duk_def_prop(ctx, object, DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_HAVE_SETTER | DUK_DEFPROP_SET_ENUMERABLE);
}

ClassId class_of(const model::Item& item) {
    switch (item.type()) {
        case model::ItemType::folder:
            return ClassId::folder_item;
        case model::ItemType::comp:
            return ClassId::comp_item;
        case model::ItemType::footage:
            break;
    }
    return ClassId::footage_item;
}

ClassId class_of(const model::Layer& layer) {
    switch (layer.kind()) {
        case model::LayerKind::light:
            return ClassId::light_layer;
        case model::LayerKind::camera:
            return ClassId::camera_layer;
        case model::LayerKind::text:
            return ClassId::text_layer;
        case model::LayerKind::vector:
            return ClassId::shape_layer;
        case model::LayerKind::av:
            break;
    }
    return ClassId::av_layer;
}

}  // namespace

ScriptEnvironment::ScriptEnvironment(model::Project& the_project, Settings& the_settings,
                                     scriptui::DialogDriver& the_driver,
                                     std::function<void(const scriptui::Alert&)> the_on_alert, const Limits& limits)
    : project(the_project),
      settings(the_settings),
      driver(the_driver),
      on_alert(std::move(the_on_alert)),
      heap(limits, *this),
      handlers_(std::make_unique<HandlerCaller>(*this)) {}

// Finalizers run while the heap closes, and use the members declared after it.
ScriptEnvironment::~ScriptEnvironment() {
    heap.close();
}

void ScriptEnvironment::show(const scriptui::Alert& alert) {
    if (on_alert) on_alert(alert);
    driver.show(alert);
}

void ScriptEnvironment::begin_run() {
    throw_line = 0;
    heap.begin_run();
}

void ScriptEnvironment::end_run() {
    heap.end_run();
    for (; open_undo_groups > 0; --open_undo_groups) project.undo().end_group();
}

void ScriptEnvironment::define_class(duk_context* ctx, const ScriptClass& table) {
    const duk_idx_t prototype = duk_push_object(ctx);
    for (const ScriptProperty& property : table.properties) define_property(ctx, prototype, property);
    for (const ScriptMethod& method : table.methods) {
        duk_push_string(ctx, method.name);
        duk_push_c_function(ctx, method.function, method.arity);
        duk_def_prop(ctx, prototype, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_WRITABLE | DUK_DEFPROP_SET_CONFIGURABLE);
    }
    if (table.base) {
        push_prototype(ctx, *table.base);
        duk_set_prototype(ctx, prototype);
    }
    if (table.name != nullptr) {
        duk_push_c_function(ctx, table.construct != nullptr ? table.construct : refuse_to_construct, DUK_VARARGS);
        duk_push_string(ctx, "prototype");
        duk_dup(ctx, prototype);
        duk_def_prop(ctx, -3, DUK_DEFPROP_HAVE_VALUE);
        duk_push_string(ctx, "constructor");
        duk_dup(ctx, -2);
        duk_def_prop(ctx, prototype, DUK_DEFPROP_HAVE_VALUE);
        duk_put_global_string(ctx, table.name);
    }
    // The stash keeps the prototype alive; the pointer is for quick access.
    prototypes_[static_cast<std::size_t>(table.id)] = duk_get_heapptr(ctx, prototype);
    duk_push_global_stash(ctx);
    duk_dup(ctx, prototype);
    duk_put_prop_index(ctx, -2, static_cast<duk_uarridx_t>(table.id));
    duk_pop_2(ctx);
}

void ScriptEnvironment::push_prototype(duk_context* ctx, ClassId class_id) {
    duk_push_heapptr(ctx, prototypes_[static_cast<std::size_t>(class_id)]);
}

void ScriptEnvironment::push_object(duk_context* ctx, TargetKind kind, ClassId class_id, const void* target) {
    if (target == nullptr) {
        duk_push_null(ctx);
        return;
    }
    if (const auto known = objects_.find(target); known != objects_.end()) {
        duk_push_heapptr(ctx, known->second);
        return;
    }
    const duk_idx_t object = duk_push_object(ctx);
    duk_push_int(ctx, static_cast<int>(kind));
    duk_put_prop_literal(ctx, object, HOST_KIND);
    duk_push_pointer(ctx, const_cast<void*>(target));
    duk_put_prop_literal(ctx, object, HOST_TARGET);
    push_prototype(ctx, class_id);
    duk_set_prototype(ctx, object);
    // On the object itself: a script may replace the prototype.
    duk_push_heapptr(ctx, finalizer_);
    duk_set_finalizer(ctx, object);
    objects_.emplace(target, duk_get_heapptr(ctx, object));
    if (kind == TargetKind::item || kind == TargetKind::layer) keep_recent(ctx, object);
}

// Scripts keep asking for the same few layers and compositions without holding on to them.
void ScriptEnvironment::keep_recent(duk_context* ctx, duk_idx_t object) {
    duk_push_heapptr(ctx, recent_);
    duk_dup(ctx, object);
    duk_put_prop_index(ctx, -2, next_recent_++ % kRecentObjects);
    duk_pop(ctx);
}

void ScriptEnvironment::define_object_cache(duk_context* ctx) {
    duk_push_global_stash(ctx);
    duk_push_c_function(ctx, forget_finalized, 1);
    finalizer_ = duk_get_heapptr(ctx, -1);
    duk_put_prop_literal(ctx, -2, "finalizer");
    duk_push_array(ctx);
    recent_ = duk_get_heapptr(ctx, -1);
    duk_put_prop_literal(ctx, -2, "recent");
    duk_pop(ctx);
}

void ScriptEnvironment::push_item(duk_context* ctx, const model::Item* item) {
    push_object(ctx, TargetKind::item, item != nullptr ? class_of(*item) : ClassId::item, item);
}

void ScriptEnvironment::push_layer(duk_context* ctx, const model::Layer* layer) {
    push_object(ctx, TargetKind::layer, layer != nullptr ? class_of(*layer) : ClassId::layer, layer);
}

void ScriptEnvironment::forget_object(const void* target, const void* heap_object) {
    const auto known = objects_.find(target);
    if (known == objects_.end() || known->second != heap_object) return;
    objects_.erase(known);
    if (const auto window = windows.find(target); window != windows.end()) {
        // The elements' objects are garbage too, but new elements may get these addresses before they are finalized.
        window->second->for_each([&](const scriptui::Element& element) {
            objects_.erase(&element);
            --dialog_elements;
        });
        windows.erase(window);
    }
}

void* target_of(duk_context* ctx, duk_idx_t index, TargetKind kind) {
    if (!duk_is_object(ctx, index)) return nullptr;
    duk_get_prop_literal(ctx, index, HOST_KIND);
    const bool matches = duk_get_int_default(ctx, -1, 0) == static_cast<int>(kind);
    duk_pop(ctx);
    if (!matches) return nullptr;
    duk_get_prop_literal(ctx, index, HOST_TARGET);
    void* target = duk_get_pointer(ctx, -1);
    duk_pop(ctx);
    return target;
}

void fail(duk_context* ctx, std::string_view sentence) {
    const std::string message = to_engine(sentence);
    duk_push_error_object_raw(ctx, DUK_ERR_ERROR, nullptr, 0, "%s", message.c_str());
    (void)duk_throw(ctx);
    throw ScriptEnded();  // duk_throw() does not return
}

}  // namespace host::script
