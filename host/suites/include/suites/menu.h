// Menu items and hooks that plug-ins registered; the session dispatches them.
#pragma once

#include <string>

#include "AE_GeneralPlug.h"

namespace host::suites {

struct MenuItem {
    AEGP_Command command;
    std::string text;  // "-" is a separator
    AEGP_MenuID menu;
    bool enabled;        // false until a hook enables it
    std::string plugin;  // the name of the plug-in that inserted it
    AEGP_PluginID plugin_id;
};

struct CommandHook {
    AEGP_PluginID plugin_id;
    AEGP_HookPriority priority;  // recorded only: every hook runs before the host's own command
    AEGP_Command command;        // AEGP_Command_ALL: called for every command
    AEGP_CommandHook function;
    AEGP_CommandRefcon refcon;
};

struct UpdateMenuHook {
    AEGP_PluginID plugin_id;
    AEGP_UpdateMenuHook function;
    AEGP_UpdateMenuRefcon refcon;
};

// Asked while nothing else is going on.
struct IdleHook {
    AEGP_PluginID plugin_id;
    AEGP_IdleHook function;
    AEGP_IdleRefcon refcon;
};

// Asked once, when the application ends.
struct DeathHook {
    AEGP_PluginID plugin_id;
    AEGP_DeathHook function;
    AEGP_DeathRefcon refcon;
};

}  // namespace host::suites
