// A modal dialog: its elements, user input and events.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "scriptui/element.h"

namespace host::scriptui {

enum class Event { click, changing, change, show, close };

// Handles the events of a window's elements.
class EventSink {
  public:
    enum class Answer { no_handler, handled, refused };  // refused: the handler returned false

    virtual ~EventSink() = default;
    virtual Answer fire(Element& element, Event event) = 0;
};

// The user's action is not possible; what() is one sentence that names the control.
class DialogError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class Window : public Element {
  public:
    explicit Window(EventSink& events);

    // User input. Handlers run before these functions return and may close the window. All throw DialogError if the
    // window is not open or the control takes no input, and what a handler throws when the script has used up its time.
    void click(Element& control);
    // Replaces the text, character by character.
    void type_text(Element& edit_text, std::string_view text);
    // Sets the text that results from one key or insertion.
    void edit(Element& edit_text, std::string text);
    // Null: removes the focus.
    void move_focus(Element* to);
    void press_enter();   // clicks the default element
    void press_escape();  // clicks the cancel element; without one, closes
    void close_box();
    // The control with that name, else the first with that text; throws DialogError.
    Element& control(std::string_view name_or_text) const;

    // For scripts
    bool is_open() const { return open_; }
    void open();             // fires the show event
    void close(int result);  // does nothing unless open; the close event's handler may refuse
    void close_without_asking(int result);
    int result() const { return result_; }
    void notify(Element& control, Event event);  // as if the user had caused the event
    Element* focus() const { return focus_; }
    void set_focus(Element* element) { focus_ = element; }
    // The elements for Enter and Esc: set by the script, else the buttons named or labelled "ok" and "cancel".
    Element* default_element() const;
    Element* cancel_element() const;
    void set_default_element(Element* element) { default_element_ = element; }
    void set_cancel_element(Element* element) { cancel_element_ = element; }

  private:
    void check_input(const Element& control) const;
    void check_takes_text(const Element& control) const;
    void enter(Element& edit_text, std::string text);
    void commit_typing();  // fires the change event of a field that was typed in
    Element* standard_button(std::string_view role) const;

    EventSink& events_;
    bool open_ = false;
    bool closing_ = false;
    int result_ = 0;
    Element* focus_ = nullptr;
    Element* typed_in_ = nullptr;
    Element* default_element_ = nullptr;
    Element* cancel_element_ = nullptr;
};

// Results of a dialog that no handler closed.
inline constexpr int kDialogOk = 1;
inline constexpr int kDialogCancelled = 2;

}  // namespace host::scriptui
