// Works the plug-in's options dialog in place of a person.
#pragma once

#include "cli/shared/dialog_answers.h"
#include "scriptui/dialog_driver.h"

namespace cli {

// Sets every control as wanted, whatever the dialog remembered, and presses "Ok". A dialog without those
// controls ends with an error of its script.
class DialogOperator : public host::scriptui::DialogDriver {
  public:
    explicit DialogOperator(DialogAnswers answers) : answers_(std::move(answers)) {}

    void drive(host::scriptui::Window& window) override;

  private:
    DialogAnswers answers_;
};

}  // namespace cli
