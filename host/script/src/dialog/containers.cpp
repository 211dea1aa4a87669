// The script classes of containers, and how they get new elements.
#include <algorithm>

#include "dialog/dialog_classes.h"
#include "text.h"

namespace host::script {

namespace {

constexpr const char* kElements =
    DUK_HIDDEN_SYMBOL("elements");  // on containers: an array that keeps the children's objects
constexpr const char* kWindow = DUK_HIDDEN_SYMBOL("window");  // on elements: keeps the window's object

int depth_of(const scriptui::Element& element) {
    int depth = 0;
    for (const scriptui::Element* above = element.parent(); above != nullptr; above = above->parent()) ++depth;
    return depth;
}

// add(type, bounds, text, {name, ...}); containers rarely have a text, so it may be omitted.
duk_ret_t add(ScriptCall& call) {
    scriptui::Element& container = self_container(call);
    const std::string wanted = call.text(0);
    const auto type = scriptui::element_type(wanted);
    if (!type || type == scriptui::ElementType::window) call.fail("dialogs have no element of type \"" + wanted + "\"");
    const bool text_is_left_out = duk_is_object(call.ctx, 2) != 0;
    const Creation creation = read_creation(call, 1, text_is_left_out ? -1 : 2, text_is_left_out ? 2 : 3);
    if (depth_of(container) >= kMaxDepth) call.fail("dialog elements are nested too deeply");
    count_new_element(call);
    scriptui::Element& element = container.add_child(*type);
    creation.apply_to(element);
    attach_object(call, element);
    return 1;
}

duk_ret_t find_element(ScriptCall& call) {
    const scriptui::Element& container = self_container(call);
    push_element(call, container.find_named(call.text(0)));
    return 1;
}

bool has_own_property(ScriptCall& call, duk_idx_t object, const std::string& name) {
    push_text(call.ctx, name);
    duk_get_prop_desc(call.ctx, object, 0);
    const bool has = duk_is_object(call.ctx, -1) != 0;
    duk_pop(call.ctx);
    return has;
}

// Makes the element's object, on top of the stack, a property of `owner` under the element's name. A name never hides
// an existing property, except one that only reports that it is not supported.
void set_under_name(ScriptCall& call, duk_idx_t owner, const scriptui::Element& element) {
    if (element.name().empty()) return;
    const bool may_hide = is_missing_member(element.name()) && !has_own_property(call, owner, element.name());
    push_text(call.ctx, element.name());
    if (duk_has_prop(call.ctx, owner) && !may_hide) return;
    push_text(call.ctx, element.name());
    duk_dup(call.ctx, -2);
    duk_def_prop(
        call.ctx, owner,
        DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_WRITABLE | DUK_DEFPROP_SET_ENUMERABLE | DUK_DEFPROP_SET_CONFIGURABLE);
}

// A new array each time, so scripts cannot remove elements; the children's names are properties of it.
duk_ret_t children(ScriptCall& call) {
    const scriptui::Element& container = self_container(call);
    const duk_idx_t array = duk_push_array(call.ctx);
    duk_uarridx_t index = 0;
    for (const auto& child : container.children()) {
        push_element(call, child.get());
        set_under_name(call, array, *child);
        duk_put_prop_index(call.ctx, array, index++);
    }
    return 1;
}

duk_ret_t spacing(ScriptCall& call) {
    return call.give(self_container(call).layout().spacing);
}

duk_ret_t set_spacing(ScriptCall& call) {
    scriptui::Element& container = self_container(call);
    container.layout().spacing = call.number(0);
    return call.nothing();
}

// Creation properties that are accepted as long as they are false.
constexpr std::string_view kMustBeFalse[] = {"borderless",     "independent", "maximizeButton",
                                             "minimizeButton", "noecho",      "resizeable"};

// One of the creation properties: its name and, on top of the stack, its value.
void read_property(ScriptCall& call, Creation& creation) {
    const std::string key = call.text(-2);
    if (key == "name") {
        if (call.given(-1)) creation.name = call.text(-1);
    } else if (key == "multiline") {
        creation.is_multiline = call.boolean(-1);
    } else if (key == "readonly") {
        creation.is_read_only = call.boolean(-1);
    } else if (std::find(std::begin(kMustBeFalse), std::end(kMustBeFalse), key) == std::end(kMustBeFalse) ||
               call.boolean(-1)) {
        call.fail("the creation property \"" + key + "\" is not supported");
    }
}

constexpr ScriptMethod kContainerMethods[] = {
    {"add", 4, guarded<add>},
    {"findElement", 1, guarded<find_element>},
};

constexpr ScriptProperty kContainerProperties[] = {
    {"children", guarded<children>, nullptr},
    {"orientation", guarded<get_orientation>, guarded<set_orientation>},
    {"alignChildren", guarded<get_align_children>, guarded<set_align_children>},
    {"spacing", guarded<spacing>, guarded<set_spacing>},
    {"margins", guarded<get_measure<Measure::margins>>, guarded<set_measure<Measure::margins>>},
    {"layout", guarded<get_layout>, nullptr},
};

constexpr ScriptClass kClasses[] = {
    {ClassId::container, nullptr, ClassId::element, nullptr, kContainerMethods, kContainerProperties},
    {ClassId::group, nullptr, ClassId::container, nullptr, {}, {}},
    {ClassId::panel, nullptr, ClassId::container, nullptr, {}, {}},
};

}  // namespace

scriptui::Element& self_container(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    if (!element.is_container()) call.fail("called on something that is not a container");
    return element;
}

void count_new_element(ScriptCall& call) {
    if (call.environment.dialog_elements >= kMaxElements) {
        // Windows are garbage in cycles; objects with a finalizer go in the second round.
        duk_gc(call.ctx, 0);
        duk_gc(call.ctx, 0);
        if (call.environment.dialog_elements >= kMaxElements) call.fail("too many dialog elements");
    }
    ++call.environment.dialog_elements;
}

void attach_object(ScriptCall& call, scriptui::Element& element) {
    push_element(call, element.parent());
    const duk_idx_t parent = duk_get_top_index(call.ctx);
    push_element(call, &element);
    const duk_idx_t object = duk_get_top_index(call.ctx);

    push_element(call, &element.window());
    duk_put_prop_string(call.ctx, object, kWindow);

    if (!duk_get_prop_string(call.ctx, parent, kElements)) {
        duk_pop(call.ctx);
        duk_push_array(call.ctx);
        duk_dup_top(call.ctx);
        duk_put_prop_string(call.ctx, parent, kElements);
    }
    duk_dup(call.ctx, object);
    duk_put_prop_index(call.ctx, -2, static_cast<duk_uarridx_t>(element.parent()->children().size() - 1));
    duk_pop(call.ctx);

    set_under_name(call, parent, element);
}

Creation read_creation(ScriptCall& call, duk_idx_t bounds, duk_idx_t text, duk_idx_t properties) {
    Creation creation;
    if (call.given(bounds)) creation.bounds = bounds_argument(call, bounds);
    if (text >= 0 && call.given(text)) creation.text = call.text(text);
    if (!call.given(properties)) return creation;
    if (!duk_is_object(call.ctx, properties)) call.fail("creation properties cannot be read from that value");
    duk_enum(call.ctx, properties, 0);
    while (duk_next(call.ctx, -1, 1) != 0) {
        read_property(call, creation);
        duk_pop_2(call.ctx);
    }
    duk_pop(call.ctx);
    return creation;
}

void Creation::apply_to(scriptui::Element& element) const {
    element.set_text(text);
    element.set_name(name);
    element.set_multiline(is_multiline);
    element.set_read_only(is_read_only);
    if (!bounds) return;
    const auto [left, top, right, bottom] = *bounds;
    element.layout().location = {left, top};
    element.layout().size = {right - left, bottom - top};
}

void define_containers(duk_context* ctx) {
    for (const ScriptClass& table : kClasses) ScriptEnvironment::of(ctx).define_class(ctx, table);
}

}  // namespace host::script
