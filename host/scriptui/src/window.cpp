// A modal dialog: user input and events.
#include "scriptui/window.h"

#include <algorithm>
#include <utility>

#include "base/unicode.h"

namespace host::scriptui {

namespace {

std::string label(const Element& element) {
    const std::string& words = element.name().empty() ? element.text() : element.name();
    return std::string(type_name(element.type())) + " \"" + words + "\"";
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

// Where the character that begins at `i` ends, in UTF-8; damaged text counts byte by byte.
std::size_t next_character(std::string_view text, std::size_t i) {
    ++i;
    while (i < text.size() && base::continues_character(text[i])) ++i;
    return i;
}

}  // namespace

Window::Window(EventSink& events) : Element(ElementType::window, *this, nullptr), events_(events) {}

Element& Window::control(std::string_view name_or_text) const {
    Element* found = find_named(name_or_text);
    if (found == nullptr) found = find_with_text(name_or_text);
    if (found == nullptr) {
        throw DialogError("The dialog \"" + text() + "\" has no control \"" + std::string(name_or_text) + "\".");
    }
    return *found;
}

void Window::check_input(const Element& control) const {
    if (!open_) throw DialogError("The dialog \"" + text() + "\" is not open.");
    if (!control.takes_input()) throw DialogError("The " + label(control) + " is disabled or hidden.");
}

void Window::check_takes_text(const Element& control) const {
    if (control.type() != ElementType::edit_text || control.is_read_only()) {
        throw DialogError("The " + label(control) + " takes no text.");
    }
    check_input(control);
}

void Window::click(Element& control) {
    check_input(control);
    move_focus(&control);
    check_input(control);
    switch (control.type()) {
        case ElementType::checkbox:
            control.set_value(!control.value());
            break;
        case ElementType::radio_button:
            control.set_value(true);
            break;
        case ElementType::button:
            break;
        case ElementType::edit_text:
            return;
        default:
            throw DialogError("The " + label(control) + " cannot be clicked.");
    }
    notify(control, Event::click);
}

void Window::type_text(Element& edit_text, std::string_view text) {
    check_takes_text(edit_text);
    move_focus(&edit_text);
    check_input(edit_text);
    // The first key replaces the old text.
    std::size_t typed = 0;
    do {
        typed = text.empty() ? 0 : next_character(text, typed);
        enter(edit_text, std::string(text.substr(0, typed)));
    } while (typed < text.size() && open_);
}

void Window::edit(Element& edit_text, std::string text) {
    check_takes_text(edit_text);
    move_focus(&edit_text);
    check_input(edit_text);
    enter(edit_text, std::move(text));
}

void Window::enter(Element& edit_text, std::string text) {
    typed_in_ = &edit_text;
    edit_text.set_text(std::move(text));
    events_.fire(edit_text, Event::changing);
}

void Window::press_enter() {
    check_input(*this);
    if (focus_ != nullptr && focus_->is_multiline() && !focus_->is_read_only() && focus_->takes_input()) {
        enter(*focus_, focus_->text() + '\n');
        return;
    }
    commit_typing();
    Element* element = default_element();
    if (open_ && element != nullptr && element->takes_input()) notify(*element, Event::click);
}

void Window::press_escape() {
    check_input(*this);
    Element* element = cancel_element();
    if (element == nullptr) {
        close(kDialogCancelled);
    } else if (element->takes_input()) {
        notify(*element, Event::click);
    }
}

void Window::close_box() {
    if (!open_) throw DialogError("The dialog \"" + text() + "\" is not open.");
    close(kDialogCancelled);
}

void Window::open() {
    open_ = true;
    result_ = 0;
    typed_in_ = nullptr;
    events_.fire(*this, Event::show);
}

void Window::close(int result) {
    if (!open_ || closing_) return;
    closing_ = true;
    struct Reset {
        bool& flag;
        ~Reset() { flag = false; }
    } const reset{closing_};
    if (events_.fire(*this, Event::close) != EventSink::Answer::refused) close_without_asking(result);
}

void Window::close_without_asking(int result) {
    result_ = result;
    open_ = false;
}

void Window::notify(Element& control, Event event) {
    const EventSink::Answer answer = events_.fire(control, event);
    if (event != Event::click || answer != EventSink::Answer::no_handler) return;
    if (&control == default_element()) {
        close(kDialogOk);
    } else if (&control == cancel_element()) {
        close(kDialogCancelled);
    }
}

void Window::move_focus(Element* to) {
    if (typed_in_ != to) commit_typing();
    focus_ = to;
}

void Window::commit_typing() {
    if (Element* changed = std::exchange(typed_in_, nullptr)) events_.fire(*changed, Event::change);
}

Element* Window::default_element() const {
    return default_element_ != nullptr ? default_element_ : standard_button("ok");
}

Element* Window::cancel_element() const {
    return cancel_element_ != nullptr ? cancel_element_ : standard_button("cancel");
}

Element* Window::standard_button(std::string_view role) const {
    const Element* found = nullptr;
    for_each([&](const Element& element) {
        if (found == nullptr && element.type() == ElementType::button &&
            (equal_ignoring_case(element.name(), role) || equal_ignoring_case(element.text(), role))) {
            found = &element;
        }
    });
    return const_cast<Element*>(found);
}

}  // namespace host::scriptui
