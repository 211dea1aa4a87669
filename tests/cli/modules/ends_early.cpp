// A plug-in whose command does nothing, unless the first layer has a telling name: "crash" and "leave" end the process.
#include <cstdlib>
#include <cstring>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* S_basic = nullptr;
AEGP_Command S_command = 0;

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_LayerH layer = nullptr;
    A_char name[AEGP_MAX_LAYER_NAME_SIZE] = {};
    *handledPB = true;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &layer));
    ERR(suites.LayerSuite5()->AEGP_GetLayerName(layer, name, nullptr));
    if (std::strcmp(name, "crash") == 0) std::abort();
    if (std::strcmp(name, "leave") == 0) std::_Exit(0);
    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup("nothing much"));
    ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    ERR(suites.UtilitySuite6()->AEGP_EndUndoGroup());
    return err;
}

A_Err update_menu_hook(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) {
    return AEGP_SuiteHandler(S_basic).CommandSuite1()->AEGP_EnableCommand(S_command);
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    S_basic = pica_basicP;
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_command));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_command, "Ends Early", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    return err;
}
