// The shell of the small plug-ins: one command, always enabled, that hides the selected layers in one undo group. Each
// plug-in is its own way of running that command.
#pragma once

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

static SPBasicSuite* sP = nullptr;
static AEGP_PluginID S_my_id = 0;
static AEGP_Command S_hide_cmd = 0;

// What each plug-in writes.
A_Err run(A_Boolean* handledPB);

inline A_Err get_selection(AEGP_SuiteHandler& suites, AEGP_Collection2H* selection) {
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.CompSuite11()->AEGP_GetNewCollectionFromCompSelection(S_my_id, comp, selection));
    return err;
}

inline A_Err hide_layers(AEGP_SuiteHandler& suites, AEGP_Collection2H layers) {
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = 0; i < count; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i, &item));
        ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(item.u.layer.layerH, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    }
    return err;
}

// The finishing touch: nobody minds if it fails. Comes after the selection was disposed of.
inline A_Err finish() try {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_MemHandle result = nullptr;
    void* text = nullptr;
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, "'done';", false, &result, nullptr));
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(result, &text));
    ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(result));
    ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(result));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

inline A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                          A_Boolean* handledPB) {
    return command == S_hide_cmd ? run(handledPB) : static_cast<A_Err>(A_Err_NONE);
}

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    sP = pica_basicP;
    S_my_id = id;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_hide_cmd));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_hide_cmd, "Hide", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.CommandSuite1()->AEGP_EnableCommand(S_hide_cmd));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    return err;
}
