// Finds the files that come with the command, in a build tree or an installation.
#pragma once

#include <filesystem>
#include <string>

#include "runner/plugin_module.h"

namespace cli {

// The folder above the command's own.
std::filesystem::path installation_folder();

// The file that the environment variable names, else the first of the two paths under installation_folder() that
// exists. Throws Failure (failed) of the first: "`what` is neither here nor at B: `advice`".
std::filesystem::path find_part(const char* variable, const std::filesystem::path& built,
                                const std::filesystem::path& installed, const std::string& what,
                                const std::string& advice);

// The module named by EXFLATE_PLUGIN, else the one that was built or installed with the command. Throws Failure
// (failed).
std::filesystem::path find_plugin();

// Whether EXFLATE_PLUGIN names one.
bool is_plugin_chosen();

// That module, loaded. Throws Failure (failed).
host::runner::PluginModule load_plugin();

}  // namespace cli
