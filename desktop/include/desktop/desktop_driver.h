// Dialogs and message boxes as windows on the desktop.
#pragma once

#include <memory>
#include <stdexcept>

#include "scriptui/dialog_driver.h"

namespace desktop {

// There is no desktop to show windows on; what() is one sentence.
class NoDesktop : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Shows each dialog as a window, passes on what the person does and shows what scripts change, until it is closed. To
// be made and used on the main thread; starts the toolkit unless the program has done so.
class DesktopDialogs : public host::scriptui::DialogDriver {
  public:
    // Throws NoDesktop. The check costs a moment: the toolkit would end the process.
    DesktopDialogs();
    ~DesktopDialogs() override;

    // Lets pass what a handler throws when its script has used up its time.
    void drive(host::scriptui::Window& window) override;
    void show(const host::scriptui::Alert& alert) override;
    const host::scriptui::TextMeasure& text_measure() const override;

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace desktop
