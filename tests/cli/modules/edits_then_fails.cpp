// A plug-in whose command hides the first layer, says so in a box, and then fails.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* S_basic = nullptr;
AEGP_PluginID S_id = 0;
AEGP_Command S_command = 0;

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_LayerH layer = nullptr;
    *handledPB = true;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &layer));
    ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    ERR(suites.UtilitySuite6()->AEGP_ReportInfo(S_id, "half way"));
    ERR(7);
    return err;
}

A_Err update_menu_hook(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) {
    return AEGP_SuiteHandler(S_basic).CommandSuite1()->AEGP_EnableCommand(S_command);
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    S_basic = pica_basicP;
    S_id = id;
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_command));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_command, "Half Way", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    return err;
}
