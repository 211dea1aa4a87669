// Where the plug-in's dialog keeps what it remembers.
#include "shared/settings_file.h"

#include <cstdlib>
#include <filesystem>

namespace cli {
namespace {

namespace fs = std::filesystem;

// The value if it is an absolute path; others are ignored.
fs::path folder_from(const char* variable) {
    const char* value = std::getenv(variable);
    const fs::path folder = value != nullptr ? value : "";
    return folder.is_absolute() ? folder : fs::path();
}

fs::path configuration_folder() {
    if (const fs::path folder = folder_from("XDG_CONFIG_HOME"); !folder.empty()) return folder;
    const fs::path home = folder_from("HOME");
    return home.empty() ? home : home / ".config";
}

}  // namespace

host::script::Settings open_settings(const Console& console) {
    const fs::path folder = configuration_folder();
    if (folder.empty()) return host::script::Settings::in_memory();
    host::script::Settings settings(folder / "exflate" / "settings");
    for (const std::string& problem : settings.problems()) console.say(Console::Tone::warning, "exflate", problem);
    return settings;
}

}  // namespace cli
