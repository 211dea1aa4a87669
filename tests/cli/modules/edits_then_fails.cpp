// A plug-in whose command hides the first layer, says so in a message box, and then fails.
#include "one_command_plugin.h"

namespace {

AEGP_PluginID S_id = 0;

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

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    S_id = id;
    return offer_command(pica_basicP, id, "Half Way", command_hook);
}
