// Finds the files that come with the command, in a build tree or an installation.
#include "shared/installed_parts.h"

#include <cstdlib>

#include "base/files.h"
#include "base/module.h"
#include "cli/shared/failure.h"

namespace cli {

namespace fs = std::filesystem;

fs::path installation_folder() {
    return host::base::program_file().parent_path().parent_path();
}

namespace {

constexpr const char* kPluginVariable = "EXFLATE_PLUGIN";

bool is_set(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

fs::path find_part(const char* variable, const fs::path& built, const fs::path& installed, const std::string& what,
                   const std::string& advice) {
    if (is_set(variable)) return std::getenv(variable);
    const fs::path folder = installation_folder();
    for (const fs::path& part : {built, installed}) {
        if (host::base::kind_of(folder / part) != host::base::FileKind::none) return folder / part;
    }
    const Failure failure(ExitCode::failed,
                          what + " is neither here nor at '" + (folder / installed).string() + "': " + advice);
    throw failure.of((folder / built).string());
}

bool is_plugin_chosen() {
    return is_set(kPluginVariable);
}

fs::path find_plugin() {
    return find_part(kPluginVariable, "plugin/Exflate.so", "lib/exflate/Exflate.so", "the plug-in",
                     "set EXFLATE_PLUGIN to its file");
}

host::runner::PluginModule load_plugin() {
    const fs::path file = find_plugin();
    if (host::base::kind_of(file) == host::base::FileKind::none) {
        const Failure failure(ExitCode::failed,
                              "there is no such plug-in: set EXFLATE_PLUGIN to its file, or unset it");
        throw failure.of(file.string());
    }
    try {
        return host::runner::PluginModule(file);
    } catch (const host::runner::LoadError& error) {
        throw Failure(ExitCode::failed, error.what());
    }
}

}  // namespace cli
