// Works the dialogs of a plug-in in place of a person.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "scriptui/dialog_driver.h"

namespace validator {

// What shall stand in a control: "Prefix=fx", "Delete source=true".
struct Answer {
    std::string control;  // its name or its text
    std::string value;
};

// Throws std::invalid_argument with a sentence.
Answer answer_from(const std::string& text);

// Gives the answers to whichever dialogs have such controls, then presses Enter, and Escape where that does not do it.
std::unique_ptr<host::scriptui::DialogDriver> accept_dialogs(const std::vector<Answer>& answers);

// Closes every dialog unanswered.
std::unique_ptr<host::scriptui::DialogDriver> cancel_dialogs();
// Sets every switch the other way first.
std::unique_ptr<host::scriptui::DialogDriver> accept_switched_dialogs();

}  // namespace validator
