// Dialogs and message boxes as windows on the desktop.
#pragma once

#include <memory>
#include <stdexcept>

#include "script/dialog_driver.h"

namespace host::dialog {

// There is no desktop to show windows on; what() is one sentence.
class NoDesktop : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Shows each dialog as a window, passes on what the person does and shows what scripts change, until it is closed. To
// be made and used on the main thread; starts the toolkit unless the program has done so.
class DesktopDialogs : public script::DialogDriver {
  public:
    // Throws NoDesktop. The check costs a moment: the toolkit would end the process.
    DesktopDialogs();
    ~DesktopDialogs() override;

    // Lets pass what a handler throws when its script has used up its time.
    void drive(script::Window& window) override;
    void show(const script::Alert& alert) override;
    const script::TextMeasure& text_measure() const override;

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace host::dialog
