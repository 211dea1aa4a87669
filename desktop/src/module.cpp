// The functions that the module exports.
#include <exception>
#include <functional>
#include <memory>

#include "desktop/desktop_driver.h"
#include "desktop/dialog_module.h"
#include "picture_driver.h"

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED host::scriptui::DialogDriver* open_desktop_dialogs(std::string& problem);
EXPORTED bool draw_dialog_picture(const desktop::PictureRequest& request,
                                  const std::function<void(host::scriptui::DialogDriver&)>& show_dialog,
                                  std::string& problem);

host::scriptui::DialogDriver* open_desktop_dialogs(std::string& problem) {
    try {
        return desktop::make_desktop_driver().release();
    } catch (const std::exception& e) {
        problem = e.what();
        return nullptr;
    }
}

bool draw_dialog_picture(const desktop::PictureRequest& request,
                         const std::function<void(host::scriptui::DialogDriver&)>& show_dialog, std::string& problem) {
    problem = desktop::draw_picture(request, show_dialog);
    return problem.empty();
}

}  // extern "C"
