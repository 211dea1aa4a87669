// Loads the module with windows for the plug-in's dialog, on demand.
#pragma once

#include <functional>
#include <memory>

#include "desktop/dialog_module.h"
#include "scriptui/dialog_driver.h"

namespace cli {

// Shows dialogs and alerts on the desktop. Throws Failure: usage when this build has no windows, failed when there is
// no desktop.
std::unique_ptr<host::scriptui::DialogDriver> open_dialog_windows();

// Draws what `show_dialog` brings up. Throws Failure: usage when this build has no windows or an action cannot be done,
// failed when the picture cannot be written.
void draw_dialog_picture(const desktop::PictureRequest& order,
                         const std::function<void(host::scriptui::DialogDriver&)>& show_dialog);

}  // namespace cli
