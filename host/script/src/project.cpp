// app.project: the items of the project.
#include "bind.h"

namespace host::script {

namespace {

duk_ret_t item(Call& call);
duk_ret_t auto_fix_expressions(Call& call);
duk_ret_t num_items(Call& call);
duk_ret_t active_item(Call& call);
duk_ret_t root_folder(Call& call);

constexpr Method kMethods[] = {
    {"item", 1, guarded<item>},
    {"autoFixExpressions", 2, guarded<auto_fix_expressions>},
};

constexpr Property kProperties[] = {
    {"numItems", guarded<num_items>, nullptr},
    {"activeItem", guarded<active_item>, nullptr},
    {"rootFolder", guarded<root_folder>, nullptr},
};

constexpr ClassTable kProject = {ClassId::project, nullptr, {}, nullptr, kMethods, kProperties};

// Items are numbered from 1 through all folders; the root folder has no number.
duk_ret_t item(Call& call) {
    const int number = call.whole_number(0);
    const int count = call.host.project.item_count();
    if (number < 1 || number > count) {
        call.fail("item " + std::to_string(number) + " is out of range: the project has " + std::to_string(count));
    }
    return call.give(&call.host.project.item_by_number(number));
}

duk_ret_t auto_fix_expressions(Call& call) {
    const std::string old_text = call.text(0);
    const std::string new_text = call.text(1);
    call.host.project.auto_fix_expressions(old_text, new_text);
    return call.nothing();
}

duk_ret_t num_items(Call& call) {
    return call.give(call.host.project.item_count());
}

duk_ret_t active_item(Call& call) {
    return call.give(call.host.project.active_item());
}

duk_ret_t root_folder(Call& call) {
    return call.give(&call.host.project.root_folder());
}

}  // namespace

void define_project(duk_context* ctx) {
    Host::of(ctx).define_class(ctx, kProject);
}

}  // namespace host::script
