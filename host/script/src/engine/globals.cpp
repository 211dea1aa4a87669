// The global object: the standard objects that scripts see, and the host's own functions.
#include <algorithm>
#include <string_view>

#include "engine/bind.h"

namespace host::script {

namespace {

// The application's language is an old one. Everything newer in the engine is removed, so scripts bring their own JSON
// and cannot build strings or objects that the engine reserves for itself.
constexpr std::string_view kStandardObjects[] = {"Array",
                                                 "Boolean",
                                                 "Date",
                                                 "Error",
                                                 "EvalError",
                                                 "Function",
                                                 "Infinity",
                                                 "Math",
                                                 "NaN",
                                                 "Number",
                                                 "Object",
                                                 "RangeError",
                                                 "ReferenceError",
                                                 "RegExp",
                                                 "String",
                                                 "SyntaxError",
                                                 "TypeError",
                                                 "URIError",
                                                 "decodeURI",
                                                 "decodeURIComponent",
                                                 "encodeURI",
                                                 "encodeURIComponent",
                                                 "escape",
                                                 "eval",
                                                 "isFinite",
                                                 "isNaN",
                                                 "parseFloat",
                                                 "parseInt",
                                                 "undefined",
                                                 "unescape"};

duk_ret_t alert(ScriptCall& call) {
    if (duk_is_undefined(call.ctx, 0)) call.fail("alert() needs a message");
    scriptui::Alert shown{call.display_text(0), "Script Alert"};
    if (call.given(1)) shown.title = call.display_text(1);
    shown.is_error = call.boolean(2);
    const RunClock::Switched waiting(call.environment.heap.clock(), false);
    call.environment.show(shown);
    return call.nothing();
}

duk_ret_t is_valid(ScriptCall& call) {
    if (const auto* item = static_cast<model::Item*>(target_of(call.ctx, 0, TargetKind::item))) {
        return call.give(item->is_alive());
    }
    if (const auto* layer = static_cast<model::Layer*>(target_of(call.ctx, 0, TargetKind::layer))) {
        return call.give(layer->is_alive());
    }
    return call.give(duk_is_object(call.ctx, 0) != 0);
}

// Runs whenever anything is thrown; records the line of the innermost statement.
duk_ret_t note_line(duk_context* ctx) {
    ScriptEnvironment& environment = ScriptEnvironment::of(ctx);
    environment.throw_line = 0;
    for (duk_int_t level = -1; environment.throw_line == 0; --level) {
        duk_inspect_callstack_entry(ctx, level);
        if (!duk_is_object(ctx, -1)) break;
        duk_get_prop_string(ctx, -1, "lineNumber");
        environment.throw_line = duk_get_int_default(ctx, -1, 0);
        duk_pop_2(ctx);
    }
    duk_dup(ctx, 0);
    return 1;
}

void note_lines_of_errors(duk_context* ctx) {
    duk_get_global_string(ctx, "Duktape");
    duk_push_c_function(ctx, note_line, 1);
    duk_put_prop_string(ctx, -2, "errThrow");
    duk_pop(ctx);
}

void remove_all_but_standard_objects(duk_context* ctx) {
    duk_push_global_object(ctx);
    duk_enum(ctx, -1, DUK_ENUM_INCLUDE_NONENUMERABLE | DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (duk_next(ctx, -1, 0)) {
        const std::string_view name = duk_get_string(ctx, -1);
        if (std::find(std::begin(kStandardObjects), std::end(kStandardObjects), name) == std::end(kStandardObjects)) {
            duk_del_prop(ctx, -3);
        } else {
            duk_pop(ctx);
        }
    }
    duk_pop_2(ctx);
}

constexpr ScriptMethod kFunctions[] = {
    {"alert", 3, guarded<alert>},
    {"isValid", 1, guarded<is_valid>},
};

}  // namespace

void define_globals(duk_context* ctx) {
    note_lines_of_errors(ctx);
    remove_all_but_standard_objects(ctx);
    for (const ScriptMethod& function : kFunctions) {
        duk_push_c_function(ctx, function.function, function.arity);
        duk_put_global_string(ctx, function.name);
    }
}

}  // namespace host::script
