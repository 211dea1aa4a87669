// Operates the controls of a dialog while a script shows it.
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
    bool is_error = false;  // shown with the error icon
};

class DialogDriver {
  public:
    virtual ~DialogDriver() = default;
    // Called once the window is open. If it is still open on return, it is closed as by its close box. The window's
    // functions run script handlers. An exception closes the dialog and becomes a script error.
    virtual void drive(Window& window) = 0;
    // Called for each message box; returns when it is dismissed. Does nothing by default.
    virtual void show(const Alert& alert);
    // For laying out dialogs; estimated by default.
    virtual const TextMeasure& text_measure() const;
};

struct Action {
    enum class Kind { click, type, key_enter, key_escape, close_box };
    Kind kind;
    std::string control = {};  // click and type: the control's name or text
    std::string text = {};     // type
};

// Performs queued actions in whichever dialogs open. When they run out, an open dialog is cancelled.
class ScriptedDriver : public DialogDriver {
  public:
    ScriptedDriver() = default;
    explicit ScriptedDriver(std::vector<Action> actions);

    void add(Action action) { actions_.push_back(std::move(action)); }
    std::size_t actions_left() const { return actions_.size(); }
    // Sentences about actions that failed. Each cancelled its dialog and dropped the remaining actions.
    const std::vector<std::string>& problems() const { return problems_; }

    void drive(Window& window) override;

  private:
    std::deque<Action> actions_;
    std::vector<std::string> problems_;
};

}  // namespace host::scriptui
