// A control or container of a dialog.
#include "scriptui/element.h"

#include <algorithm>
#include <utility>

namespace host::scriptui {

namespace {

constexpr std::pair<ElementType, std::string_view> kTypeNames[] = {
    {ElementType::window, "window"},      {ElementType::group, "group"},
    {ElementType::panel, "panel"},        {ElementType::static_text, "statictext"},
    {ElementType::edit_text, "edittext"}, {ElementType::button, "button"},
    {ElementType::checkbox, "checkbox"},  {ElementType::radio_button, "radiobutton"},
};

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

Layout default_layout(ElementType type) {
    Layout layout;
    if (type == ElementType::window) layout.margins = {15, 15, 15, 15};
    if (type == ElementType::panel) layout.margins = {10, 10, 10, 10};
    if (type == ElementType::group) layout.orientation = Orientation::row;
    return layout;
}

template <class Matches>
Element* find_below(const Element& element, const Matches& matches) {
    for (const auto& child : element.children()) {
        if (matches(*child)) return child.get();
        if (Element* found = find_below(*child, matches)) return found;
    }
    return nullptr;
}

}  // namespace

std::string_view type_name(ElementType type) {
    return std::find_if(std::begin(kTypeNames), std::end(kTypeNames),
                        [&](const auto& row) { return row.first == type; })
        ->second;
}

std::optional<ElementType> element_type(std::string_view name) {
    for (const auto& [type, type_name] : kTypeNames) {
        const auto is_same = [](char a, char b) { return lower(a) == b; };
        if (std::equal(name.begin(), name.end(), type_name.begin(), type_name.end(), is_same)) return type;
    }
    return {};
}

Element::Element(ElementType type, Window& window, Element* parent)
    : type_(type), window_(window), parent_(parent), layout_(default_layout(type)) {}

Element::~Element() = default;

Element& Element::add_child(ElementType type) {
    return *children_.emplace_back(std::make_unique<Element>(type, window_, this));
}

Element* Element::find_named(std::string_view name) const {
    return find_below(*this, [&](const Element& element) { return !name.empty() && element.name_ == name; });
}

Element* Element::find_with_text(std::string_view text) const {
    return find_below(*this, [&](const Element& element) { return element.text_ == text; });
}

void Element::for_each(const std::function<void(const Element&)>& visit) const {
    visit(*this);
    for (const auto& child : children_) child->for_each(visit);
}

void Element::set_value(bool value) {
    if (value && type_ == ElementType::radio_button) {
        for (Element* mate : radio_group()) mate->value_ = false;
    }
    value_ = value;
}

bool Element::takes_input() const {
    return enabled_ && visible_ && (parent_ == nullptr || parent_->takes_input());
}

std::vector<Element*> Element::radio_group() const {
    std::vector<Element*> group;
    bool is_mine = false;
    for (const auto& sibling : parent_->children_) {
        if (sibling->type_ != ElementType::radio_button) {
            if (is_mine) break;
            group.clear();
            continue;
        }
        group.push_back(sibling.get());
        is_mine = is_mine || sibling.get() == this;
    }
    return group;
}

}  // namespace host::scriptui
