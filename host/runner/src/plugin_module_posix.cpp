// Loading a plug-in's binary with the POSIX dynamic linker.
#include <dlfcn.h>

#include <bit>

#include "runner/plugin_module.h"

namespace host::runner {
namespace {

// The linker's own words for its last failure.
std::string linker_message() {
    const char* message = dlerror();
    return message != nullptr ? message : "unknown error";
}

}  // namespace

PluginModule::PluginModule(const std::filesystem::path& file, const std::string& entry_point)
    : name_(file.stem().string()) {
    std::error_code error;
    // Absolute, so that a bare file name is never looked up in the system's library folders.
    const std::filesystem::path absolute = std::filesystem::absolute(file, error);
    if (error || !std::filesystem::exists(absolute, error)) {
        throw LoadError("there is no plug-in at '" + file.string() + "'");
    }
    library_ = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library_ == nullptr) {
        throw LoadError("'" + file.string() + "' is not a loadable plug-in (" + linker_message() + ")");
    }
    void* symbol = dlsym(library_, entry_point.c_str());
    if (symbol == nullptr) {
        dlclose(library_);
        throw LoadError("'" + file.string() + "' is not a plug-in: it exports no function named " + entry_point);
    }
    entry_point_ = std::bit_cast<AEGP_PluginInitFunc>(symbol);
}

PluginModule::~PluginModule() {
    dlclose(library_);
}

}  // namespace host::runner
