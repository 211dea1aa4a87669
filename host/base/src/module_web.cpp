// Modules in WebAssembly: what is linked into the program.
#include <utility>

#include "base/linked_module.h"
#include "base/module.h"
#include "linked_module_name.h"
#include "web_imports.h"

namespace host::base {
namespace {

const LinkedModule* find(const std::filesystem::path& file) {
    for (const LinkedModule& module : linked_modules()) {
        if (file.filename() == module.file) return &module;
    }
    return nullptr;
}

}  // namespace

bool is_linked_module(const std::filesystem::path& file) {
    return find(file) != nullptr;
}

Module::Module(const std::filesystem::path& file, Unloading /*unloading*/)
    : handle_(const_cast<LinkedModule*>(find(file))) {
    if (handle_ == nullptr) throw ModuleError("WebAssembly loads no modules; the plug-in is part of the program");
}

Module::~Module() = default;

Module::Module(Module&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

void* Module::symbol(const std::string& name) const {
    const auto* module = static_cast<const LinkedModule*>(handle_);
    return module->function == name ? reinterpret_cast<void*>(module->address) : nullptr;
}

std::filesystem::path program_file() {
    web_program_file();
    return web_answer();
}

}  // namespace host::base
