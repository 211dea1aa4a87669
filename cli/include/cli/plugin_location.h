// Where the plug-in's module lies, and getting it.
#pragma once

#include <filesystem>

#include "runner/plugin_module.h"

namespace cli {

// The module named by EXFLATE_PLUGIN, else the one beside this command: ../plugin in a build tree, ../lib/exflate when
// installed. Throws Failure (failed) when neither is there.
std::filesystem::path find_plugin();

// That module, loaded. Throws Failure (failed).
host::runner::PluginModule load_plugin();

}  // namespace cli
