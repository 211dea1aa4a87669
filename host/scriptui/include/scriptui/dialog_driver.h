// Who works the controls of a dialog while a script shows it.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "scriptui/text_measure.h"
#include "scriptui/window.h"

namespace host::scriptui {

// A message box.
struct Alert {
    std::string message;
    std::string title;
    bool is_error = false;  // the script asked for the error's picture
};

class DialogDriver {
  public:
    virtual ~DialogDriver() = default;
    // Called once the window is open; returns when it is closed, or leaves it open, which closes it as its close box
    // does. Scripts run inside the window's user functions. An exception ends the dialog and becomes an error of the
    // script.
    virtual void drive(Window& window) = 0;
    // Called for each message box; returns when it is dismissed: at once where nobody looks.
    virtual void show(const Alert& alert);
    // With what dialogs are laid out.
    virtual const TextMeasure& text_measure() const;
};

struct Action {
    enum class Kind { click, type, key_enter, key_escape, close_box };
    Kind kind;
    std::string control = {};  // click and type: the control's name or text
    std::string text = {};     // type
};

// Works through a queue of actions, whichever dialogs they come to; an open dialog without an action left is cancelled.
class ScriptedDriver : public DialogDriver {
  public:
    ScriptedDriver() = default;
    explicit ScriptedDriver(std::vector<Action> actions);

    void add(Action action) { actions_.push_back(std::move(action)); }
    std::size_t actions_left() const { return actions_.size(); }
    // Actions that could not be done, as sentences. Each cancelled its dialog and took the rest of the queue with it.
    const std::vector<std::string>& problems() const { return problems_; }

    void drive(Window& window) override;

  private:
    std::deque<Action> actions_;
    std::vector<std::string> problems_;
};

}  // namespace host::scriptui
