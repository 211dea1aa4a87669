// Loading modules, and where this program lies.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace host::base {

// A module that cannot be loaded; what() is the system's reason.
class ModuleError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class Module {
  public:
    enum class Unloading { with_object, never };  // never: for what does not survive it

    // Throws ModuleError.
    explicit Module(const std::filesystem::path& file, Unloading unloading = Unloading::with_object);
    ~Module();
    Module(Module&& other) noexcept;
    Module& operator=(Module&&) = delete;

    // The function of this name; null if the module exports none.
    template <class Function>
    Function function(const std::string& name) const {
        return reinterpret_cast<Function>(symbol(name));
    }

  private:
    void* symbol(const std::string& name) const;
    void* handle_;
};

// The file of the running program; empty if the system does not tell.
std::filesystem::path program_file();

}  // namespace host::base
