// The script classes of controls, and what they share with containers.
#include <algorithm>

#include "dialog/dialog_classes.h"

namespace host::script {

namespace {

template <auto Get>
constexpr auto get = guarded<read_member<&ScriptCall::self_element, Get>>;
template <auto Set, auto Argument>
constexpr auto set = guarded<write_member<&ScriptCall::self_element, Set, Argument>>;

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

// Fires an event as if the user had caused it: the control's usual one, or the one named.
duk_ret_t notify(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    scriptui::Event event =
        element.type() == scriptui::ElementType::edit_text ? scriptui::Event::change : scriptui::Event::click;
    if (call.given(0)) {
        const std::string name = call.text(0);
        const auto* found = std::find(std::begin(kHandlerNames), std::end(kHandlerNames), name);
        if (found == std::end(kHandlerNames)) call.fail("unknown event \"" + name + "\"");
        event = static_cast<scriptui::Event>(found - std::begin(kHandlerNames));
    }
    element.window().notify(element, event);
    return call.nothing();
}

duk_ret_t type(ScriptCall& call) {
    const scriptui::Element& element = call.self_element();
    return call.give(element.type() == scriptui::ElementType::window ? std::string_view("dialog")
                                                                     : scriptui::type_name(element.type()));
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

duk_ret_t set_characters(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.set_characters(std::max(0, call.whole_number(0)));
    return call.nothing();
}

constexpr ScriptMethod kElementMethods[] = {
    {"notify", 1, guarded<notify>},
};

constexpr ScriptProperty kElementProperties[] = {
    {"type", guarded<type>, nullptr},
    {"name", get<&scriptui::Element::name>, nullptr},
    {"text", get<&scriptui::Element::text>, set<&scriptui::Element::set_text, &ScriptCall::text>},
    {"enabled", get<&scriptui::Element::is_enabled>, set<&scriptui::Element::set_enabled, &ScriptCall::boolean>},
    {"visible", get<&scriptui::Element::is_visible>, set<&scriptui::Element::set_visible, &ScriptCall::boolean>},
    {"active", guarded<active>, guarded<set_active>},
    {"parent", guarded<parent>, nullptr},
    {"window", guarded<window>, nullptr},
    {"helpTip", get<&scriptui::Element::help_tip>, set<&scriptui::Element::set_help_tip, &ScriptCall::text>},
    {"alignment", guarded<get_alignment>, guarded<set_alignment>},
    {"preferredSize", guarded<get_measure<Measure::preferred_size>>, guarded<set_measure<Measure::preferred_size>>},
    {"minimumSize", guarded<get_measure<Measure::minimum_size>>, guarded<set_measure<Measure::minimum_size>>},
    {"maximumSize", guarded<get_measure<Measure::maximum_size>>, guarded<set_measure<Measure::maximum_size>>},
    {"size", guarded<get_measure<Measure::size>>, guarded<set_measure<Measure::size>>},
    {"location", guarded<get_measure<Measure::location>>, guarded<set_measure<Measure::location>>},
    {"bounds", guarded<get_measure<Measure::bounds>>, guarded<set_measure<Measure::bounds>>},
};

constexpr ScriptProperty kValueProperties[] = {
    {"value", guarded<value>, guarded<set_value>},
};

constexpr ScriptProperty kTextProperties[] = {
    {"justify", guarded<get_justify>, guarded<set_justify>},
};

constexpr ScriptProperty kEditTextProperties[] = {
    {"justify", guarded<get_justify>, guarded<set_justify>},
    {"characters", get<&scriptui::Element::characters>, guarded<set_characters>},
};

// Base classes first.
constexpr ScriptClass kClasses[] = {
    {ClassId::element, nullptr, {}, nullptr, kElementMethods, kElementProperties},
    {ClassId::static_text, nullptr, ClassId::element, nullptr, {}, kTextProperties},
    {ClassId::edit_text, nullptr, ClassId::element, nullptr, {}, kEditTextProperties},
    {ClassId::button, nullptr, ClassId::element, nullptr, {}, {}},
    {ClassId::checkbox, nullptr, ClassId::element, nullptr, {}, kValueProperties},
    {ClassId::radio_button, nullptr, ClassId::element, nullptr, {}, kValueProperties},
};

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
