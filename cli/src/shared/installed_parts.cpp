// The files that the command needs beside itself: in a build tree and where it is installed.
#include "shared/installed_parts.h"

#include <cstdlib>

#include "base/module.h"
#include "cli/shared/failure.h"

namespace cli {

namespace fs = std::filesystem;

fs::path installation_folder() {
    return host::base::program_file().parent_path().parent_path();
}

fs::path find_part(const char* variable, const fs::path& built, const fs::path& installed, const std::string& what,
                   const std::string& advice) {
    if (const char* chosen = std::getenv(variable); chosen != nullptr && *chosen != '\0') return chosen;
    const fs::path folder = installation_folder();
    for (const fs::path& part : {built, installed}) {
        std::error_code error;
        if (fs::exists(folder / part, error)) return folder / part;
    }
    throw Failure(ExitCode::failed, what + " is neither at '" + (folder / built).string() + "' nor at '" +
                                        (folder / installed).string() + "': " + advice);
}

fs::path find_plugin() {
    return find_part("EXFLATE_PLUGIN", "plugin/Exflate.so", "lib/exflate/Exflate.so", "the plug-in",
                     "set EXFLATE_PLUGIN to its file");
}

host::runner::PluginModule load_plugin() {
    const fs::path file = find_plugin();
    try {
        return host::runner::PluginModule(file);
    } catch (const host::runner::LoadError& error) {
        throw Failure(ExitCode::failed, error.what());
    }
}

}  // namespace cli
