// Where the plug-in's module lies, and getting it.
#include "cli/plugin_location.h"

#include <cstdlib>

#include "cli/failure.h"

namespace cli {

namespace fs = std::filesystem;

fs::path find_plugin() {
    if (const char* chosen = std::getenv("EXFLATE_PLUGIN"); chosen != nullptr && *chosen != '\0') return chosen;
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
    const fs::path built = folder / "plugin" / "Exflate.so";
    const fs::path installed = folder / "lib" / "exflate" / "Exflate.so";
    for (const fs::path& file : {built, installed}) {
        if (fs::exists(file, error)) return file;
    }
    throw Failure(ExitCode::failed, "the plug-in is neither at '" + built.string() + "' nor at '" + installed.string() +
                                        "': set EXFLATE_PLUGIN to its file");
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
