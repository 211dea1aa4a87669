// The module with the windows: a program that shows none neither links nor loads the toolkit.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scriptui/dialog_driver.h"

namespace desktop {

struct PictureRequest {
    std::string file;                             // a PNG file
    double scale = 1;                             // of the display: dots per pixel of the layout
    std::vector<host::scriptui::Action> actions;  // performed before drawing, in whichever dialogs open
};

// The file's name; installed with this program's other parts, from the same build.
inline constexpr const char* kModuleFile = "dialog_window.so";

// What the module exports. Both return null or false, and one sentence in `problem`, on failure.
inline constexpr const char* kOpenDesktop = "open_desktop_dialogs";
using OpenDesktop = host::scriptui::DialogDriver* (*)(std::string& problem);  // the caller deletes it

inline constexpr const char* kDrawPicture = "draw_dialog_picture";
// Calls `show_dialog` with a driver that draws; it runs whatever shows the dialog.
using DrawPicture = bool (*)(const PictureRequest& request,
                             const std::function<void(host::scriptui::DialogDriver&)>& show_dialog,
                             std::string& problem);

}  // namespace desktop
