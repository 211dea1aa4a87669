// Loading modules with the POSIX dynamic linker.
#include "base/module.h"

#include <dlfcn.h>

#include <utility>

namespace host::base {

namespace fs = std::filesystem;

Module::Module(const fs::path& file, Unloading unloading) {
    std::error_code error;
    // Absolute, so that a bare file name is never looked up in the system's library folders.
    const fs::path absolute = fs::absolute(file, error);
    const int flags = RTLD_NOW | RTLD_LOCAL | (unloading == Unloading::never ? RTLD_NODELETE : 0);
    handle_ = error ? nullptr : ::dlopen(absolute.c_str(), flags);
    if (handle_ != nullptr) return;
    const char* reason = error ? nullptr : ::dlerror();
    throw ModuleError(reason != nullptr ? reason : "unknown error");
}

Module::~Module() {
    if (handle_ != nullptr) ::dlclose(handle_);
}

Module::Module(Module&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

void* Module::symbol(const std::string& name) const {
    return ::dlsym(handle_, name.c_str());
}

fs::path program_file() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

}  // namespace host::base
