// The global `app`: the project, settings and undo groups.
#include "engine/bind.h"

namespace host::script {

namespace {

duk_ret_t begin_undo_group(ScriptCall& call) {
    call.environment.project.undo().begin_group(call.given(0) ? call.text(0) : std::string());
    ++call.environment.open_undo_groups;
    return call.nothing();
}

// Groups that a plug-in or an earlier script opened are not this script's to close.
duk_ret_t end_undo_group(ScriptCall& call) {
    if (call.environment.open_undo_groups == 0) call.fail("endUndoGroup() without beginUndoGroup()");
    call.environment.project.undo().end_group();
    --call.environment.open_undo_groups;
    return call.nothing();
}

void define_member(duk_context* ctx, duk_idx_t object, const char* name) {
    duk_push_string(ctx, name);
    duk_insert(ctx, -2);
    duk_def_prop(ctx, object, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_ENUMERABLE);
}

constexpr ScriptMethod kMethods[] = {
    {"beginUndoGroup", 1, guarded<begin_undo_group>},
    {"endUndoGroup", 0, guarded<end_undo_group>},
};

constexpr ScriptClass kApp = {ClassId::app, nullptr, {}, nullptr, kMethods, {}};

}  // namespace

void define_app(duk_context* ctx) {
    ScriptEnvironment& environment = ScriptEnvironment::of(ctx);
    environment.define_class(ctx, kApp);
    define_project(ctx);
    define_settings(ctx);

    environment.push_object(ctx, TargetKind::app, ClassId::app, &environment);
    const duk_idx_t app = duk_get_top_index(ctx);
    environment.push_object(ctx, TargetKind::project, ClassId::project, &environment.project);
    define_member(ctx, app, "project");
    environment.push_object(ctx, TargetKind::settings, ClassId::settings, &environment.settings);
    define_member(ctx, app, "settings");
    duk_put_global_string(ctx, "app");
}

}  // namespace host::script
