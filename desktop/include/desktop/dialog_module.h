// Windows as a module of their own: a program that shows none neither links nor loads the toolkit.
#pragma once

#include <functional>
#include <string>

#include "desktop/picture_dialogs.h"
#include "scriptui/dialog_driver.h"

namespace desktop {

// The file's name; it stands beside this program's other parts and belongs to the same build.
inline constexpr const char* kModuleFile = "dialog_window.so";

// What the module exports. Both give null and one sentence in `problem` when it cannot be done.
inline constexpr const char* kOpenDesktop = "open_desktop_dialogs";
using OpenDesktop = host::scriptui::DialogDriver* (*)(std::string& problem);  // delete it after use

inline constexpr const char* kDrawPicture = "draw_dialog_picture";
// Runs `show_dialog` with a driver that draws; it shall run whatever shows the dialog.
using DrawPicture = bool (*)(const PictureOrder& order,
                             const std::function<void(host::scriptui::DialogDriver&)>& show_dialog,
                             std::string& problem);

}  // namespace desktop
