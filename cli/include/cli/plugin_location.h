// Where the plug-in's module lies.
#pragma once

#include <filesystem>

namespace cli {

// The module named by EXFLATE_PLUGIN, else the one beside this command: ../plugin in a build tree, ../lib/exflate when
// installed. Throws Failure (failed) when neither is there.
std::filesystem::path find_plugin();

}  // namespace cli
