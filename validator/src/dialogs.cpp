// Works the dialogs of a plug-in in place of a person.
#include "dialogs.h"

#include <stdexcept>

namespace validator {
namespace {

using host::scriptui::DialogDriver;
using host::scriptui::DialogError;
using host::scriptui::Element;
using host::scriptui::ElementType;
using host::scriptui::Window;

bool is_yes(const std::string& value) {
    return value == "true" || value == "on" || value == "yes" || value == "1";
}

class Accepting : public DialogDriver {
  public:
    explicit Accepting(const std::vector<Answer>& answers) : answers_(answers) {}

    void drive(Window& window) override {
        for (const Answer& answer : answers_) give(answer, window);
        press(window, &Window::press_enter);
        press(window, &Window::press_escape);
    }

  private:
    static void press(Window& window, void (Window::*key)()) {
        try {
            if (window.is_open()) (window.*key)();
        } catch (const DialogError&) {
            // Closed as by its close box.
        }
    }

    static void give(const Answer& answer, Window& window) {
        try {
            Element& control = window.control(answer.control);
            const bool is_switch =
                control.type() == ElementType::checkbox || control.type() == ElementType::radio_button;
            if (!is_switch)
                window.type_text(control, answer.value);
            else if (control.value() != is_yes(answer.value))
                window.click(control);
        } catch (const DialogError&) {
            // Another dialog has it.
        }
    }

    std::vector<Answer> answers_;
};

class Switching : public Accepting {
  public:
    Switching() : Accepting({}) {}

    void drive(Window& window) override {
        std::vector<Element*> switches;
        collect(window, switches);
        for (Element* element : switches) {
            const bool is_set = element->type() == ElementType::radio_button && element->value();
            if (window.is_open() && element->takes_input() && !is_set) window.click(*element);
        }
        Accepting::drive(window);
    }

  private:
    static void collect(const Element& element, std::vector<Element*>& switches) {
        for (const auto& child : element.children()) {
            if (child->has_value()) switches.push_back(child.get());
            collect(*child, switches);
        }
    }
};

class Cancelling : public DialogDriver {
  public:
    void drive(Window& window) override { window.close_box(); }
};

}  // namespace

Answer answer_from(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) throw std::invalid_argument("'" + text + "' is not CONTROL=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

std::unique_ptr<DialogDriver> accept_dialogs(const std::vector<Answer>& answers) {
    return std::make_unique<Accepting>(answers);
}

std::unique_ptr<DialogDriver> accept_switched_dialogs() {
    return std::make_unique<Switching>();
}

std::unique_ptr<DialogDriver> cancel_dialogs() {
    return std::make_unique<Cancelling>();
}

}  // namespace validator
