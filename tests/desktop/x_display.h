// A display of its own for a test, with a real mouse and keyboard, and programs that run on it.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

struct _XDisplay;

namespace dialog_test {

class XDisplay {
  public:
    XDisplay();  // throws std::runtime_error when the server does not start
    ~XDisplay();
    XDisplay(const XDisplay&) = delete;

    const std::string& name() const { return name_; }  // for DISPLAY

    // Waits until a window with that title has the focus and returns its number; empty when none comes up.
    std::string wait_for_window(const std::string& title, const std::string& other_than = "") const;
    bool has_window(const std::string& title) const;
    void press(const std::string& key) const;  // such as "Return" and "shift+Tab"
    void type(const std::string& text) const;
    // Moves the mouse there in the window, presses and lets go.
    void click(const std::string& window, int x, int y) const;
    // As a window manager does when its close box is clicked.
    void ask_to_close(const std::string& window) const;
    // Programs that still use the display end with an error. Nothing else can be done with it afterwards.
    void take_away();

  private:
    std::string xdotool(const std::vector<std::string>& arguments) const;  // what it prints, in one line

    void set_keyboard_up();

    pid_t server_ = -1;
    std::string name_;
    _XDisplay* connection_ = nullptr;  // the server forgets everything with its last client
};

}  // namespace dialog_test
