// The frame of a plug-in with one command at the end of the Layer menu, always enabled. For the one source of a module.
#pragma once

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

static SPBasicSuite* S_basic = nullptr;
static AEGP_Command S_command = 0;

// What the entry point does; its result is the entry point's.
static A_Err offer_command(SPBasicSuite* basic, AEGP_PluginID id, const A_char* title, AEGP_CommandHook hook) {
    S_basic = basic;
    AEGP_SuiteHandler suites(S_basic);
    const auto enable = [](AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) -> A_Err {
        return AEGP_SuiteHandler(S_basic).CommandSuite1()->AEGP_EnableCommand(S_command);
    };
    A_Err err = A_Err_NONE;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_command));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_command, title, AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, hook, nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, enable, nullptr));
    return err;
}
