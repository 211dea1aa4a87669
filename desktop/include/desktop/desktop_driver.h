// Shows dialogs and message boxes as windows on the desktop.
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

// A driver that shows each dialog as a window until it is closed. Create and use it on the main thread; it starts the
// toolkit unless the program has done so. Throws NoDesktop; checking for that takes a moment, because the toolkit would
// end the process. drive() throws what a handler throws when its script has used up its time.
std::unique_ptr<host::scriptui::DialogDriver> make_desktop_driver();

}  // namespace desktop
