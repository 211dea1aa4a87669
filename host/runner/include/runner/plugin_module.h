// Loads a plug-in's binary.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "AE_GeneralPlug.h"
#include "base/module.h"

namespace host::runner {

// The file is not a plug-in; what() is one sentence that names it.
class LoadError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A loaded module. Everything that the plug-in registers points into it, so it must outlive all sessions that use it.
class PluginModule {
  public:
    static constexpr const char* kUsualEntryPoint = "EntryPointFunc";

    // Throws LoadError if the file is missing, is not a loadable module, or does not export the function.
    explicit PluginModule(const std::filesystem::path& file, const std::string& entry_point = kUsualEntryPoint);

    AEGP_PluginInitFunc entry_point() const { return entry_point_; }
    // The file's name without folder and extension, used in messages.
    const std::string& name() const { return name_; }

  private:
    base::Module library_;
    AEGP_PluginInitFunc entry_point_;
    std::string name_;
};

}  // namespace host::runner
