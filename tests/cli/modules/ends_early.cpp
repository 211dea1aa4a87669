// A plug-in whose command does nothing, unless the first layer has a telling name: "crash" and "leave" end the process,
// "compute" and "sleep" never come to an end.
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "one_command_plugin.h"

namespace {

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
    for (volatile bool goes_on = std::strcmp(name, "compute") == 0; goes_on;) {
    }
    while (std::strcmp(name, "sleep") == 0) std::this_thread::sleep_for(std::chrono::hours(1));
    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup("nothing much"));
    ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    ERR(suites.UtilitySuite6()->AEGP_EndUndoGroup());
    return err;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    return offer_command(pica_basicP, id, "Ends Early", command_hook);
}
