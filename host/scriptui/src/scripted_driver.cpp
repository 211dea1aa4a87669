// Performs queued actions.
#include "scriptui/dialog_driver.h"

namespace host::scriptui {

namespace {

void perform(const Action& action, Window& window) {
    switch (action.kind) {
        case Action::Kind::click:
            window.click(window.control(action.control));
            break;
        case Action::Kind::type:
            window.type_text(window.control(action.control), action.text);
            break;
        case Action::Kind::key_enter:
            window.press_enter();
            break;
        case Action::Kind::key_escape:
            window.press_escape();
            break;
        case Action::Kind::close_box:
            window.close_box();
            break;
    }
}

}  // namespace

ScriptedDriver::ScriptedDriver(std::vector<Action> actions)
    : actions_(std::make_move_iterator(actions.begin()), std::make_move_iterator(actions.end())) {}

void ScriptedDriver::drive(Window& window) {
    try {
        while (window.is_open() && !actions_.empty()) {
            const Action action = std::move(actions_.front());
            actions_.pop_front();
            perform(action, window);
        }
    } catch (const DialogError& e) {
        problems_.emplace_back(e.what());
        actions_.clear();
    }
}

}  // namespace host::scriptui
