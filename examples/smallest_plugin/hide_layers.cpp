// A whole plug-in: the command "Hide Layers" in the Layer menu switches off the video of the selected layers.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* sP = nullptr;
AEGP_PluginID S_my_id = 0;
AEGP_Command S_hide_cmd = 0;

A_Err hide_selected_layers() {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_Collection2H selection = nullptr;
    A_u_long count = 0;

    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup("Hide Layers"));
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.CompSuite11()->AEGP_GetNewCollectionFromCompSelection(S_my_id, comp, &selection));
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(selection, &count));
    for (A_u_long i = 0; i < count; ++i) {
        AEGP_CollectionItemV2 picked = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(selection, i, &picked));
        ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(picked.u.layer.layerH, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    }
    if (selection != nullptr) ERR2(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    ERR2(suites.UtilitySuite6()->AEGP_EndUndoGroup());
    return err;
}

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) try {
    if (command != S_hide_cmd) return A_Err_NONE;
    *handledPB = true;
    return hide_selected_layers();
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err update_menu_hook(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) try {
    return AEGP_SuiteHandler(sP).CommandSuite1()->AEGP_EnableCommand(S_hide_cmd);
} catch (A_Err missing_suite) {
    return missing_suite;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) try {
    sP = pica_basicP;
    S_my_id = id;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;

    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_hide_cmd));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_hide_cmd, "Hide Layers", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
