// The plug-in's binary: found, loaded, entered by name, unloaded.
#include "runner/plugin_module.h"

#include "base/files.h"

namespace host::runner {
namespace {

namespace fs = std::filesystem;

base::Module load(const fs::path& file) {
    if (base::kind_of(file) == base::FileKind::none) throw LoadError("there is no plug-in at '" + file.string() + "'");
    try {
        return base::Module(file);
    } catch (const base::ModuleError& reason) {
        throw LoadError("'" + file.string() + "' is not a loadable plug-in (" + reason.what() + ")");
    }
}

}  // namespace

PluginModule::PluginModule(const fs::path& file, const std::string& entry_point)
    : library_(load(file)),
      entry_point_(library_.function<AEGP_PluginInitFunc>(entry_point)),
      name_(file.stem().string()) {
    if (entry_point_ == nullptr)
        throw LoadError("'" + file.string() + "' is not a plug-in: it exports no function named " + entry_point);
}

}  // namespace host::runner
