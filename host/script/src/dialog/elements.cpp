// The script classes of controls, and what they have in common with containers.
#include <algorithm>

#include "dialog/dialog_classes.h"

namespace host::script {

namespace {

duk_ret_t notify(ScriptCall& call);
duk_ret_t type(ScriptCall& call);
duk_ret_t name(ScriptCall& call);
duk_ret_t text(ScriptCall& call);
duk_ret_t set_text(ScriptCall& call);
duk_ret_t enabled(ScriptCall& call);
duk_ret_t set_enabled(ScriptCall& call);
duk_ret_t visible(ScriptCall& call);
duk_ret_t set_visible(ScriptCall& call);
duk_ret_t active(ScriptCall& call);
duk_ret_t set_active(ScriptCall& call);
duk_ret_t parent(ScriptCall& call);
duk_ret_t window(ScriptCall& call);
duk_ret_t value(ScriptCall& call);
duk_ret_t set_value(ScriptCall& call);
duk_ret_t help_tip(ScriptCall& call);
duk_ret_t set_help_tip(ScriptCall& call);
duk_ret_t characters(ScriptCall& call);
duk_ret_t set_characters(ScriptCall& call);

constexpr ScriptMethod kElementMethods[] = {
    {"notify", 1, guarded<notify>},
};

constexpr ScriptProperty kElementProperties[] = {
    {"type", guarded<type>, nullptr},
    {"name", guarded<name>, nullptr},
    {"text", guarded<text>, guarded<set_text>},
    {"enabled", guarded<enabled>, guarded<set_enabled>},
    {"visible", guarded<visible>, guarded<set_visible>},
    {"active", guarded<active>, guarded<set_active>},
    {"parent", guarded<parent>, nullptr},
    {"window", guarded<window>, nullptr},
    {"helpTip", guarded<help_tip>, guarded<set_help_tip>},
    {"alignment", guarded<get_alignment>, guarded<set_alignment>},
    {"preferredSize", guarded<get_preferred_size>, guarded<set_preferred_size>},
    {"minimumSize", guarded<get_minimum_size>, guarded<set_minimum_size>},
    {"maximumSize", guarded<get_maximum_size>, guarded<set_maximum_size>},
    {"size", guarded<get_size>, guarded<set_size>},
    {"location", guarded<get_location>, guarded<set_location>},
    {"bounds", guarded<get_bounds>, guarded<set_bounds>},
};

constexpr ScriptProperty kValueProperties[] = {
    {"value", guarded<value>, guarded<set_value>},
};

constexpr ScriptProperty kTextProperties[] = {
    {"justify", guarded<get_justify>, guarded<set_justify>},
};

constexpr ScriptProperty kEditTextProperties[] = {
    {"justify", guarded<get_justify>, guarded<set_justify>},
    {"characters", guarded<characters>, guarded<set_characters>},
};

// Bases before what is built on them.
constexpr ScriptClass kClasses[] = {
    {ClassId::element, nullptr, {}, nullptr, kElementMethods, kElementProperties},
    {ClassId::static_text, nullptr, ClassId::element, nullptr, {}, kTextProperties},
    {ClassId::edit_text, nullptr, ClassId::element, nullptr, {}, kEditTextProperties},
    {ClassId::button, nullptr, ClassId::element, nullptr, {}, {}},
    {ClassId::checkbox, nullptr, ClassId::element, nullptr, {}, kValueProperties},
    {ClassId::radio_button, nullptr, ClassId::element, nullptr, {}, kValueProperties},
};

constexpr std::pair<std::string_view, scriptui::Event> kNotifications[] = {
    {"onClick", scriptui::Event::click},       {"onChange", scriptui::Event::change},
    {"onChanging", scriptui::Event::changing}, {"onShow", scriptui::Event::show},
    {"onClose", scriptui::Event::close},
};

ClassId class_of(scriptui::ElementType type) {
    switch (type) {
        case scriptui::ElementType::window:
            return ClassId::window;
        case scriptui::ElementType::group:
            return ClassId::group;
        case scriptui::ElementType::panel:
            return ClassId::panel;
        case scriptui::ElementType::static_text:
            return ClassId::static_text;
        case scriptui::ElementType::edit_text:
            return ClassId::edit_text;
        case scriptui::ElementType::button:
            return ClassId::button;
        case scriptui::ElementType::checkbox:
            return ClassId::checkbox;
        case scriptui::ElementType::radio_button:
            break;
    }
    return ClassId::radio_button;
}

// As if the user had caused the event: the usual one of the control, or the one named.
duk_ret_t notify(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    scriptui::Event event =
        element.type() == scriptui::ElementType::edit_text ? scriptui::Event::change : scriptui::Event::click;
    if (call.given(0)) {
        const std::string name = call.text(0);
        const auto* found =
            std::ranges::find(kNotifications, name, &std::pair<std::string_view, scriptui::Event>::first);
        if (found == std::end(kNotifications)) call.fail("unknown event \"" + name + "\"");
        event = found->second;
    }
    element.window().notify(element, event);
    return call.nothing();
}

duk_ret_t type(ScriptCall& call) {
    const scriptui::Element& element = call.self_element();
    return call.give(element.type() == scriptui::ElementType::window ? std::string_view("dialog")
                                                                     : scriptui::type_name(element.type()));
}

duk_ret_t name(ScriptCall& call) {
    return call.give(std::string_view(call.self_element().name()));
}

duk_ret_t text(ScriptCall& call) {
    return call.give(std::string_view(call.self_element().text()));
}

duk_ret_t set_text(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.set_text(call.text(0));
    return call.nothing();
}

duk_ret_t enabled(ScriptCall& call) {
    return call.give(call.self_element().is_enabled());
}

duk_ret_t set_enabled(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.set_enabled(call.boolean(0));
    return call.nothing();
}

duk_ret_t visible(ScriptCall& call) {
    return call.give(call.self_element().is_visible());
}

duk_ret_t set_visible(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.set_visible(call.boolean(0));
    return call.nothing();
}

duk_ret_t active(ScriptCall& call) {
    const scriptui::Element& element = call.self_element();
    return call.give(element.window().focus() == &element);
}

duk_ret_t set_active(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    scriptui::Window& window = element.window();
    if (call.boolean(0)) {
        window.set_focus(&element);
    } else if (window.focus() == &element) {
        window.set_focus(nullptr);
    }
    return call.nothing();
}

duk_ret_t parent(ScriptCall& call) {
    push_element(call, call.self_element().parent());
    return 1;
}

duk_ret_t window(ScriptCall& call) {
    push_element(call, &call.self_element().window());
    return 1;
}

scriptui::Element& self_with_value(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    if (!element.has_value()) call.fail("called on an element without a value");
    return element;
}

duk_ret_t value(ScriptCall& call) {
    return call.give(self_with_value(call).value());
}

duk_ret_t set_value(ScriptCall& call) {
    scriptui::Element& element = self_with_value(call);
    element.set_value(call.boolean(0));
    return call.nothing();
}

duk_ret_t help_tip(ScriptCall& call) {
    return call.give(std::string_view(call.self_element().help_tip()));
}

duk_ret_t set_help_tip(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.set_help_tip(call.text(0));
    return call.nothing();
}

duk_ret_t characters(ScriptCall& call) {
    return call.give(call.self_element().characters());
}

duk_ret_t set_characters(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.set_characters(std::max(0, call.whole_number(0)));
    return call.nothing();
}

}  // namespace

void push_element(ScriptCall& call, const scriptui::Element* element) {
    call.environment.push_object(call.ctx, TargetKind::element,
                                 element != nullptr ? class_of(element->type()) : ClassId::element, element);
}

scriptui::Element* element_argument(ScriptCall& call, duk_idx_t i) {
    return static_cast<scriptui::Element*>(target_of(call.ctx, i, TargetKind::element));
}

void define_elements(duk_context* ctx) {
    for (const ScriptClass& table : kClasses) ScriptEnvironment::of(ctx).define_class(ctx, table);
}

}  // namespace host::script
