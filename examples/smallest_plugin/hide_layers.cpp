// A whole plug-in: the command "Hide Layers" in the Layer menu switches off the video of the selected layers.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* sP = nullptr;
AEGP_PluginID S_my_id = 0;
AEGP_Command S_hide_cmd = 0;

A_Err hide_layers(const AEGP_CollectionSuite2* collections, const AEGP_LayerSuite5* layers,
                  AEGP_Collection2H selection) {
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    ERR(collections->AEGP_GetCollectionNumItems(selection, &count));
    for (A_u_long i = 0; i < count && err == A_Err_NONE; ++i) {
        AEGP_CollectionItemV2 picked = {};
        ERR(collections->AEGP_GetCollectionItemByIndex(selection, i, &picked));
        if (picked.type != AEGP_CollectionItemType_LAYER) continue;
        ERR(layers->AEGP_SetLayerFlag(picked.u.layer.layerH, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    }
    return err;
}

// The composition that the user works in; null for none.
A_Err get_active_comp(AEGP_SuiteHandler& suites, AEGP_CompH* comp) {
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_ItemType type = AEGP_ItemType_NONE;
    *comp = nullptr;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    if (item != nullptr) ERR(suites.ItemSuite6()->AEGP_GetItemType(item, &type));
    if (type == AEGP_ItemType_COMP) ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, comp));
    return err;
}

A_Err hide_selected_layers() {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    AEGP_Collection2H selection = nullptr;

    ERR(get_active_comp(suites, &comp));
    if (err != A_Err_NONE || comp == nullptr) return err;

    // A suite that is missing makes its accessor throw. So all are asked for before anything begins that has to be
    // ended, or is handed out that has to be given back.
    const AEGP_CompSuite11* comps = suites.CompSuite11();
    const AEGP_CollectionSuite2* collections = suites.CollectionSuite2();
    const AEGP_LayerSuite5* layers = suites.LayerSuite5();
    const AEGP_UtilitySuite6* utility = suites.UtilitySuite6();

    ERR(utility->AEGP_StartUndoGroup("Hide Layers"));
    if (err != A_Err_NONE) return err;
    ERR(comps->AEGP_GetNewCollectionFromCompSelection(S_my_id, comp, &selection));
    ERR(hide_layers(collections, layers, selection));
    if (selection != nullptr) ERR2(collections->AEGP_DisposeCollection(selection));
    ERR2(utility->AEGP_EndUndoGroup());
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
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    ERR(get_active_comp(suites, &comp));
    if (comp != nullptr) ERR(suites.CommandSuite1()->AEGP_EnableCommand(S_hide_cmd));
    return err;
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
