// Loads the module with windows for the plug-in's dialog, on demand.
#include "shared/dialog_window.h"

#include <filesystem>
#include <string>

#include "base/files.h"
#include "base/module.h"
#include "cli/shared/failure.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

namespace fs = std::filesystem;
namespace dialog = desktop;

// Beside this command: ../desktop in a build tree, ../lib/exflate when installed.
fs::path find_module() {
    const fs::path folder = installation_folder();
    for (const fs::path& place : {folder / "desktop", folder / "lib" / "exflate"}) {
        const fs::path file = place / dialog::kModuleFile;
        if (host::base::kind_of(file) != host::base::FileKind::none) return file;
    }
    throw Failure(ExitCode::usage,
                  "there is no dialog window beside this command (Debian: install exflate-dialog): answer the "
                  "dialog with its flags instead");
}

// A function of the module. It stays loaded, as the toolkit cannot be unloaded.
template <class Function>
Function module_function(const char* name) {
    const fs::path file = find_module();
    try {
        const host::base::Module module(file, host::base::Module::Unloading::never);
        if (const auto function = module.function<Function>(name)) return function;
    } catch (const host::base::ModuleError& reason) {
        throw Failure(ExitCode::failed, std::string("the dialog window cannot be loaded: ") + reason.what());
    }
    throw Failure(ExitCode::failed, "'" + file.string() + "' belongs to another build");
}

}  // namespace

std::unique_ptr<host::scriptui::DialogDriver> open_dialog_windows() {
    std::string problem;
    std::unique_ptr<host::scriptui::DialogDriver> windows(
        module_function<dialog::OpenDesktop>(dialog::kOpenDesktop)(problem));
    if (windows == nullptr) throw Failure(ExitCode::failed, problem);
    return windows;
}

void draw_dialog_picture(const dialog::PictureRequest& order,
                         const std::function<void(host::scriptui::DialogDriver&)>& show_dialog) {
    std::string problem;
    if (!module_function<dialog::DrawPicture>(dialog::kDrawPicture)(order, show_dialog, problem)) {
        throw Failure(ExitCode::failed, problem);
    }
}

}  // namespace cli
