// The plug-in's binary: found, loaded, entered by name, unloaded.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "AE_GeneralPlug.h"
#include "base/module.h"

namespace host::runner {

// Why a file is no plug-in; what() is one sentence that names the file.
class LoadError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Owns one loaded module. Everything that a plug-in registered points into it, so it outlives every Session that uses
// it.
class PluginModule {
  public:
    static constexpr const char* kUsualEntryPoint = "EntryPointFunc";

    // Throws LoadError: the file is missing, is no loadable module, or exports no such function.
    explicit PluginModule(const std::filesystem::path& file, const std::string& entry_point = kUsualEntryPoint);

    AEGP_PluginInitFunc entry_point() const { return entry_point_; }
    // The file's name without folder and extension: what the host calls the plug-in in messages.
    const std::string& name() const { return name_; }

  private:
    base::Module library_;
    AEGP_PluginInitFunc entry_point_;
    std::string name_;
};

}  // namespace host::runner
