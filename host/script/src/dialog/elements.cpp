// The script classes of controls and containers.
#include <algorithm>

#include "dialog/dialog_classes.h"
#include "text.h"

namespace host::script {

namespace {

duk_ret_t notify(Call& call);
duk_ret_t type(Call& call);
duk_ret_t name(Call& call);
duk_ret_t text(Call& call);
duk_ret_t set_text(Call& call);
duk_ret_t enabled(Call& call);
duk_ret_t set_enabled(Call& call);
duk_ret_t visible(Call& call);
duk_ret_t set_visible(Call& call);
duk_ret_t active(Call& call);
duk_ret_t set_active(Call& call);
duk_ret_t parent(Call& call);
duk_ret_t window(Call& call);
duk_ret_t alignment(Call& call);
duk_ret_t set_alignment(Call& call);
duk_ret_t add(Call& call);
duk_ret_t find_element(Call& call);
duk_ret_t children(Call& call);
duk_ret_t orientation(Call& call);
duk_ret_t set_orientation(Call& call);
duk_ret_t align_children(Call& call);
duk_ret_t set_align_children(Call& call);
duk_ret_t spacing(Call& call);
duk_ret_t set_spacing(Call& call);
duk_ret_t value(Call& call);
duk_ret_t set_value(Call& call);

constexpr Method kElementMethods[] = {
    {"notify", 1, guarded<notify>},
};

constexpr Property kElementProperties[] = {
    {"type", guarded<type>, nullptr},
    {"name", guarded<name>, nullptr},
    {"text", guarded<text>, guarded<set_text>},
    {"enabled", guarded<enabled>, guarded<set_enabled>},
    {"visible", guarded<visible>, guarded<set_visible>},
    {"active", guarded<active>, guarded<set_active>},
    {"parent", guarded<parent>, nullptr},
    {"window", guarded<window>, nullptr},
    {"alignment", guarded<alignment>, guarded<set_alignment>},
    {"preferredSize", guarded<get_preferred_size>, guarded<set_preferred_size>},
    {"size", guarded<get_size>, guarded<set_size>},
    {"location", guarded<get_location>, guarded<set_location>},
    {"bounds", guarded<get_bounds>, guarded<set_bounds>},
};

constexpr Method kContainerMethods[] = {
    {"add", 4, guarded<add>},
    {"findElement", 1, guarded<find_element>},
};

constexpr Property kContainerProperties[] = {
    {"children", guarded<children>, nullptr},
    {"orientation", guarded<orientation>, guarded<set_orientation>},
    {"alignChildren", guarded<align_children>, guarded<set_align_children>},
    {"spacing", guarded<spacing>, guarded<set_spacing>},
    {"margins", guarded<get_margins>, guarded<set_margins>},
};

constexpr Property kValueProperties[] = {
    {"value", guarded<value>, guarded<set_value>},
};

// Bases before what is built on them.
constexpr ClassTable kClasses[] = {
    {ClassId::element, nullptr, {}, nullptr, kElementMethods, kElementProperties},
    {ClassId::container, nullptr, ClassId::element, nullptr, kContainerMethods, kContainerProperties},
    {ClassId::group, nullptr, ClassId::container, nullptr, {}, {}},
    {ClassId::panel, nullptr, ClassId::container, nullptr, {}, {}},
    {ClassId::static_text, nullptr, ClassId::element, nullptr, {}, {}},
    {ClassId::edit_text, nullptr, ClassId::element, nullptr, {}, {}},
    {ClassId::button, nullptr, ClassId::element, nullptr, {}, {}},
    {ClassId::checkbox, nullptr, ClassId::element, nullptr, {}, kValueProperties},
    {ClassId::radio_button, nullptr, ClassId::element, nullptr, {}, kValueProperties},
};

constexpr const char* kElements =
    DUK_HIDDEN_SYMBOL("elements");  // on containers: an array that keeps the children's objects
constexpr const char* kWindow = DUK_HIDDEN_SYMBOL("window");  // on elements: keeps the window's object

constexpr std::string_view kOrientations[] = {"row", "column", "stack"};
constexpr std::string_view kAligns[] = {"left", "center", "right", "fill", "top", "bottom"};
constexpr std::pair<std::string_view, Event> kNotifications[] = {
    {"onClick", Event::click}, {"onChange", Event::change}, {"onChanging", Event::changing},
    {"onShow", Event::show},   {"onClose", Event::close},
};

ClassId class_of(ElementType type) {
    switch (type) {
        case ElementType::window:
            return ClassId::window;
        case ElementType::group:
            return ClassId::group;
        case ElementType::panel:
            return ClassId::panel;
        case ElementType::static_text:
            return ClassId::static_text;
        case ElementType::edit_text:
            return ClassId::edit_text;
        case ElementType::button:
            return ClassId::button;
        case ElementType::checkbox:
            return ClassId::checkbox;
        case ElementType::radio_button:
            break;
    }
    return ClassId::radio_button;
}

Element& self_container(Call& call) {
    Element& element = call.self_element();
    if (!element.is_container()) call.fail("called on something that is no container");
    return element;
}

// The place of a word among known ones, whatever its case.
template <std::size_t N>
std::size_t index_of_word(Call& call, const char* what, duk_idx_t i, const std::string_view (&words)[N]) {
    const std::string word = call.text(i);
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (std::size_t n = 0; n < N; ++n) {
        if (std::ranges::equal(word, words[n], {}, lower)) return n;
    }
    call.fail(std::string("unknown ") + what + " \"" + word + "\"");
}

Align align_argument(Call& call, duk_idx_t i, bool may_be_horizontal, bool may_be_vertical) {
    const auto align = static_cast<Align>(index_of_word(call, "alignment", i, kAligns));
    const bool is_horizontal_only = align == Align::left || align == Align::right;
    const bool is_vertical_only = align == Align::top || align == Align::bottom;
    if ((is_horizontal_only && !may_be_horizontal) || (is_vertical_only && !may_be_vertical)) {
        call.fail("an alignment in two words is horizontal, then vertical");
    }
    return align;
}

Alignment alignment_argument(Call& call) {
    if (!duk_is_array(call.ctx, 0)) return {align_argument(call, 0, true, true), {}};
    if (duk_get_length(call.ctx, 0) != 2) call.fail("an alignment is one word or an array of two");
    Alignment alignment;
    duk_get_prop_index(call.ctx, 0, 0);
    alignment.first = align_argument(call, -1, true, false);
    duk_get_prop_index(call.ctx, 0, 1);
    alignment.second = align_argument(call, -1, false, true);
    return alignment;
}

duk_ret_t give_alignment(Call& call, const Alignment& alignment) {
    const std::string_view first = kAligns[static_cast<std::size_t>(alignment.first)];
    if (!alignment.second) return call.give(first);
    const duk_idx_t array = duk_push_array(call.ctx);
    push_text(call.ctx, first);
    duk_put_prop_index(call.ctx, array, 0);
    push_text(call.ctx, kAligns[static_cast<std::size_t>(*alignment.second)]);
    duk_put_prop_index(call.ctx, array, 1);
    return 1;
}

// As if the user had caused the event: the usual one of the control, or the one named.
duk_ret_t notify(Call& call) {
    Element& element = call.self_element();
    Event event = element.type() == ElementType::edit_text ? Event::change : Event::click;
    if (call.given(0)) {
        const std::string name = call.text(0);
        const auto* found = std::ranges::find(kNotifications, name, &std::pair<std::string_view, Event>::first);
        if (found == std::end(kNotifications)) call.fail("unknown event \"" + name + "\"");
        event = found->second;
    }
    element.window().notify(element, event);
    return call.nothing();
}

duk_ret_t type(Call& call) {
    const Element& element = call.self_element();
    return call.give(element.type() == ElementType::window ? std::string_view("dialog") : type_name(element.type()));
}

duk_ret_t name(Call& call) {
    return call.give(std::string_view(call.self_element().name()));
}

duk_ret_t text(Call& call) {
    return call.give(std::string_view(call.self_element().text()));
}

duk_ret_t set_text(Call& call) {
    Element& element = call.self_element();
    element.set_text(call.text(0));
    return call.nothing();
}

duk_ret_t enabled(Call& call) {
    return call.give(call.self_element().is_enabled());
}

duk_ret_t set_enabled(Call& call) {
    Element& element = call.self_element();
    element.set_enabled(call.boolean(0));
    return call.nothing();
}

duk_ret_t visible(Call& call) {
    return call.give(call.self_element().is_visible());
}

duk_ret_t set_visible(Call& call) {
    Element& element = call.self_element();
    element.set_visible(call.boolean(0));
    return call.nothing();
}

duk_ret_t active(Call& call) {
    const Element& element = call.self_element();
    return call.give(element.window().focus() == &element);
}

duk_ret_t set_active(Call& call) {
    Element& element = call.self_element();
    Window& window = element.window();
    if (call.boolean(0)) {
        window.set_focus(&element);
    } else if (window.focus() == &element) {
        window.set_focus(nullptr);
    }
    return call.nothing();
}

duk_ret_t parent(Call& call) {
    push_element(call, call.self_element().parent());
    return 1;
}

duk_ret_t window(Call& call) {
    push_element(call, &call.self_element().window());
    return 1;
}

duk_ret_t alignment(Call& call) {
    const auto& alignment = call.self_element().layout().alignment;
    return alignment ? give_alignment(call, *alignment) : call.nothing();
}

duk_ret_t set_alignment(Call& call) {
    Element& element = call.self_element();
    element.layout().alignment = alignment_argument(call);
    return call.nothing();
}

// add(type, bounds, text, {name, ...}); containers have no text to speak of, so theirs may be left out.
duk_ret_t add(Call& call) {
    Element& container = self_container(call);
    const std::string wanted = call.text(0);
    const auto type = element_type(wanted);
    if (!type || type == ElementType::window) call.fail("dialogs have no element of type \"" + wanted + "\"");
    const bool text_is_left_out = duk_is_object(call.ctx, 2) != 0;
    const Creation creation = read_creation(call, 1, text_is_left_out ? -1 : 2, text_is_left_out ? 2 : 3);
    count_new_element(call);
    Element& element = container.add_child(*type);
    creation.apply_to(element);
    attach_object(call, element);
    return 1;
}

duk_ret_t find_element(Call& call) {
    const Element& container = self_container(call);
    push_element(call, container.find_named(call.text(0)));
    return 1;
}

// Makes the element's object, on top of the stack, a property of another object under the element's name. A name never
// hides a property that is there already.
void set_under_name(Call& call, duk_idx_t owner, const Element& element) {
    if (element.name().empty()) return;
    push_text(call.ctx, element.name());
    if (duk_has_prop(call.ctx, owner)) return;
    push_text(call.ctx, element.name());
    duk_dup(call.ctx, -2);
    duk_put_prop(call.ctx, owner);
}

// A new array each time, so that scripts cannot take elements out; with the names of the children as properties.
duk_ret_t children(Call& call) {
    const Element& container = self_container(call);
    const duk_idx_t array = duk_push_array(call.ctx);
    duk_uarridx_t index = 0;
    for (const auto& child : container.children()) {
        push_element(call, child.get());
        set_under_name(call, array, *child);
        duk_put_prop_index(call.ctx, array, index++);
    }
    return 1;
}

duk_ret_t orientation(Call& call) {
    return call.give(kOrientations[static_cast<std::size_t>(self_container(call).layout().orientation)]);
}

duk_ret_t set_orientation(Call& call) {
    Element& container = self_container(call);
    container.layout().orientation = static_cast<Orientation>(index_of_word(call, "orientation", 0, kOrientations));
    return call.nothing();
}

duk_ret_t align_children(Call& call) {
    return give_alignment(call, self_container(call).layout().align_children);
}

duk_ret_t set_align_children(Call& call) {
    Element& container = self_container(call);
    container.layout().align_children = alignment_argument(call);
    return call.nothing();
}

duk_ret_t spacing(Call& call) {
    return call.give(self_container(call).layout().spacing);
}

duk_ret_t set_spacing(Call& call) {
    Element& container = self_container(call);
    container.layout().spacing = call.number(0);
    return call.nothing();
}

Element& self_with_value(Call& call) {
    Element& element = call.self_element();
    if (!element.has_value()) call.fail("called on an element without a value");
    return element;
}

duk_ret_t value(Call& call) {
    return call.give(self_with_value(call).value());
}

duk_ret_t set_value(Call& call) {
    Element& element = self_with_value(call);
    element.set_value(call.boolean(0));
    return call.nothing();
}

}  // namespace

void push_element(Call& call, const Element* element) {
    call.host.push_object(call.ctx, Kind::element, element != nullptr ? class_of(element->type()) : ClassId::element,
                          element);
}

Element* element_argument(Call& call, duk_idx_t i) {
    return static_cast<Element*>(target_of(call.ctx, i, Kind::element));
}

void count_new_element(Call& call) {
    if (call.host.dialog_elements >= kMostElements) {
        // Windows are garbage in circles. What has a finalizer goes in the second round.
        duk_gc(call.ctx, 0);
        duk_gc(call.ctx, 0);
        if (call.host.dialog_elements >= kMostElements) call.fail("too many dialog elements");
    }
    ++call.host.dialog_elements;
}

void attach_object(Call& call, Element& element) {
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

Creation read_creation(Call& call, duk_idx_t bounds, duk_idx_t text, duk_idx_t properties) {
    Creation creation;
    if (call.given(bounds)) creation.bounds = bounds_argument(call, bounds);
    if (text >= 0 && call.given(text)) creation.text = call.text(text);
    if (!duk_is_object(call.ctx, properties)) return creation;
    duk_get_prop_string(call.ctx, properties, "name");
    if (call.given(-1)) creation.name = call.text(-1);
    duk_get_prop_string(call.ctx, properties, "multiline");
    creation.is_multiline = call.boolean(-1);
    duk_get_prop_string(call.ctx, properties, "readonly");
    creation.is_read_only = call.boolean(-1);
    duk_pop_3(call.ctx);
    return creation;
}

void Creation::apply_to(Element& element) const {
    element.set_text(text);
    element.set_name(name);
    element.set_multiline(is_multiline);
    element.set_read_only(is_read_only);
    if (!bounds) return;
    const auto [left, top, right, bottom] = *bounds;
    element.layout().location = {left, top};
    element.layout().size = {right - left, bottom - top};
}

void define_elements(duk_context* ctx) {
    for (const ClassTable& table : kClasses) Host::of(ctx).define_class(ctx, table);
}

}  // namespace host::script
