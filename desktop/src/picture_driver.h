// Draws a dialog into a picture, without a desktop.
#pragma once

#include <functional>
#include <string>

#include "desktop/dialog_module.h"

namespace desktop {

// Calls `show_dialog` with a driver that performs the actions and then draws what is open: a dialog, which is then
// cancelled, or the message box that the last action led to. Returns why there is no picture, as a sentence; empty if
// there is one. Call it on the main thread.
std::string draw_picture(const PictureRequest& request,
                         const std::function<void(host::scriptui::DialogDriver&)>& show_dialog);

}  // namespace desktop
