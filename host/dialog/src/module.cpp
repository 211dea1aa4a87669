// What the module exports.
#include <exception>
#include <functional>
#include <memory>

#include "dialog/desktop_dialogs.h"
#include "dialog/dialog_module.h"

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED host::script::DialogDriver* open_desktop_dialogs(std::string& problem);
EXPORTED bool draw_dialog_picture(const host::dialog::PictureOrder& order,
                                  const std::function<void(host::script::DialogDriver&)>& show_dialog,
                                  std::string& problem);

host::script::DialogDriver* open_desktop_dialogs(std::string& problem) {
    try {
        return std::make_unique<host::dialog::DesktopDialogs>().release();
    } catch (const std::exception& e) {
        problem = e.what();
        return nullptr;
    }
}

bool draw_dialog_picture(const host::dialog::PictureOrder& order,
                         const std::function<void(host::script::DialogDriver&)>& show_dialog, std::string& problem) {
    host::dialog::PictureDialogs dialogs(order);
    show_dialog(dialogs);
    problem = dialogs.problem();
    return problem.empty();
}

}  // extern "C"
