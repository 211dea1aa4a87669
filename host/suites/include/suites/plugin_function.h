// The functions of a plug-in that the host calls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace host::suites {

enum class PluginFunction : std::uint8_t { entry_point, update_menu_hook, command_hook, idle_hook, death_hook };
inline constexpr std::size_t kPluginFunctionCount = 5;

// "entry_point"
constexpr std::string_view name_of(PluginFunction function) {
    constexpr std::string_view kNames[kPluginFunctionCount] = {"entry_point", "update_menu_hook", "command_hook",
                                                               "idle_hook", "death_hook"};
    return kNames[static_cast<std::size_t>(function)];
}

}  // namespace host::suites
