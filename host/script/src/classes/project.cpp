// app.project: the items of the project.
#include "engine/bind.h"

namespace host::script {

namespace {

// Items are numbered from 1 across all folders; the root folder has no number.
duk_ret_t item(ScriptCall& call) {
    const int number = call.whole_number(0);
    const int count = call.environment.project.item_count();
    if (number < 1 || number > count) {
        call.fail("item " + std::to_string(number) + " is out of range: the project has " + std::to_string(count));
    }
    return call.give(&call.environment.project.item_by_number(number));
}

duk_ret_t auto_fix_expressions(ScriptCall& call) {
    const std::string old_text = call.text(0);
    const std::string new_text = call.text(1);
    call.environment.project.auto_fix_expressions(old_text, new_text);
    return call.nothing();
}

duk_ret_t num_items(ScriptCall& call) {
    return call.give(call.environment.project.item_count());
}

duk_ret_t active_item(ScriptCall& call) {
    return call.give(call.environment.project.active_item());
}

duk_ret_t root_folder(ScriptCall& call) {
    return call.give(&call.environment.project.root_folder());
}

constexpr ScriptMethod kMethods[] = {
    {"item", 1, guarded<item>},
    {"autoFixExpressions", 2, guarded<auto_fix_expressions>},
};

constexpr ScriptProperty kProperties[] = {
    {"numItems", guarded<num_items>, nullptr},
    {"activeItem", guarded<active_item>, nullptr},
    {"rootFolder", guarded<root_folder>, nullptr},
};

constexpr ScriptClass kProject = {ClassId::project, nullptr, {}, nullptr, kMethods, kProperties};

}  // namespace

void define_project(duk_context* ctx) {
    ScriptEnvironment::of(ctx).define_class(ctx, kProject);
}

}  // namespace host::script
