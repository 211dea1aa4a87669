// The entry point and the menu callback.
#include "Exflate.h"

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "Exflate_Strings.h"
#include "PluginInfo.h"

SPBasicSuite* sP = nullptr;
AEGP_PluginID S_my_id = 0;
AEGP_Command S_Exflate_cmd = 0;

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long /*major_versionL*/,
                                          A_long /*minor_versionL*/, AEGP_PluginID aegp_plugin_id,
                                          AEGP_GlobalRefcon* /*global_refconP*/) try {
    sP = pica_basicP;
    S_my_id = aegp_plugin_id;

    A_Err err = A_Err_NONE;
    A_Err err2 = A_Err_NONE;
    AEGP_SuiteHandler suites(sP);

    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_Exflate_cmd));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_Exflate_cmd, GetStringPtr(StrID_MenuSelectPrecomp),
                                                       AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(S_my_id, AEGP_HP_BeforeAE, AEGP_Command_ALL, CommandHook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(S_my_id, UpdateMenuHook, nullptr));

    if (err != A_Err_NONE) {
        ERR2(suites.UtilitySuite3()->AEGP_ReportInfo(S_my_id, GetStringPtr(StrID_Problems)));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
} catch (...) {
    return A_Err_GENERIC;
}

A_Err UpdateMenuHook(AEGP_GlobalRefcon /*plugin_refconP*/, AEGP_UpdateMenuRefcon /*refconP*/,
                     AEGP_WindowType /*active_window*/) try {
    const PluginInfo info = {sP, S_my_id, nullptr};
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;

    ERR(get_selected_layers(&info, &selection));
    if (selection == nullptr) return err;

    A_u_long count = 0;
    unsigned char found = 0;
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(selection, &count));
    for (A_u_long i = 0; i < count && err == A_Err_NONE && !found; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(selection, i, &item));
        ERR(is_layer_precomp(&info, &item, &found));
    }
    if (found) {
        ERR(suites.CommandSuite1()->AEGP_SetMenuCommandName(S_Exflate_cmd, GetStringPtr(StrID_MenuExflate)));
        ERR(suites.CommandSuite1()->AEGP_EnableCommand(S_Exflate_cmd));
    } else {
        ERR(suites.CommandSuite1()->AEGP_SetMenuCommandName(S_Exflate_cmd, GetStringPtr(StrID_MenuSelectPrecomp)));
        ERR(suites.CommandSuite1()->AEGP_DisableCommand(S_Exflate_cmd));
    }
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
} catch (...) {
    return A_Err_GENERIC;
}
