// Members of the application's dialog elements that ours lack: using one is an error. Missing methods need no help,
// since calling them is an error anyway.
#include <algorithm>

#include "dialog/dialog_classes.h"

namespace host::script {

namespace {

struct Missing {
    ClassId class_id;
    std::string_view member;
};

constexpr Missing kMissing[] = {
    {ClassId::element, "frameBounds"},  {ClassId::element, "frameLocation"}, {ClassId::element, "frameSize"},
    {ClassId::element, "graphics"},     {ClassId::element, "indent"},        {ClassId::element, "onActivate"},
    {ClassId::element, "onDeactivate"}, {ClassId::element, "onDraw"},        {ClassId::element, "onShortcutKey"},
    {ClassId::element, "properties"},   {ClassId::element, "shortcutKey"},   {ClassId::element, "textselection"},
    {ClassId::element, "windowBounds"}, {ClassId::window, "maximized"},      {ClassId::window, "minimized"},
    {ClassId::window, "onMove"},        {ClassId::window, "onMoving"},       {ClassId::window, "onResize"},
    {ClassId::window, "onResizing"},    {ClassId::window, "opacity"},
};

duk_ret_t complain(duk_context* ctx) {
    const std::string_view member = kMissing[duk_get_current_magic(ctx)].member;
    fail(ctx, "\"" + std::string(member) + "\" of dialog elements is not supported");
}

}  // namespace

bool is_missing_member(std::string_view name) {
    return std::any_of(std::begin(kMissing), std::end(kMissing),
                       [name](const Missing& missing) { return missing.member == name; });
}

void define_missing(duk_context* ctx) {
    for (std::size_t i = 0; i < std::size(kMissing); ++i) {
        ScriptEnvironment::of(ctx).push_prototype(ctx, kMissing[i].class_id);
        duk_push_lstring(ctx, kMissing[i].member.data(), kMissing[i].member.size());
        for (int arity = 0; arity < 2; ++arity) {  // the getter, then the setter
            duk_push_c_function(ctx, complain, arity);
            duk_set_magic(ctx, -1, static_cast<duk_int_t>(i));
        }
        duk_def_prop(ctx, -4, DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_HAVE_SETTER | DUK_DEFPROP_CLEAR_ENUMERABLE);
        duk_pop(ctx);
    }
}

}  // namespace host::script
