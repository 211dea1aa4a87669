// Modules that are part of the program, where none can be loaded.
#pragma once

#include <span>
#include <string_view>

namespace host::base {

struct LinkedModule {
    std::string_view file;      // the name that the module's file would have
    std::string_view function;  // the one that it exports
    void (*address)();
};

// Defined by the program.
std::span<const LinkedModule> linked_modules();

}  // namespace host::base
