// What the module exports.
#include <exception>
#include <functional>
#include <memory>

#include "desktop/desktop_dialogs.h"
#include "desktop/dialog_module.h"

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED host::scriptui::DialogDriver* open_desktop_dialogs(std::string& problem);
EXPORTED bool draw_dialog_picture(const desktop::PictureOrder& order,
                                  const std::function<void(host::scriptui::DialogDriver&)>& show_dialog,
                                  std::string& problem);

host::scriptui::DialogDriver* open_desktop_dialogs(std::string& problem) {
    try {
        return std::make_unique<desktop::DesktopDialogs>().release();
    } catch (const std::exception& e) {
        problem = e.what();
        return nullptr;
    }
}

bool draw_dialog_picture(const desktop::PictureOrder& order,
                         const std::function<void(host::scriptui::DialogDriver&)>& show_dialog, std::string& problem) {
    desktop::PictureDialogs dialogs(order);
    show_dialog(dialogs);
    problem = dialogs.problem();
    return problem.empty();
}

}  // extern "C"
