// Clearing parents by script, which does not move the layers on screen.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

A_Err reset_unparented_layers(const PluginInfo* info, AEGP_CompH parentComp, std::vector<int> parents) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    int item_index = -1;
    std::string script;

    const A_long count = static_cast<A_long>(parents.size());
    for (A_long i = 0; i < count; ++i) {
        if (parents[static_cast<std::size_t>(i)] != -1) continue;
        AEGP_ItemH item = nullptr;
        A_Boolean selected = false;
        AEGP_LayerH layer = nullptr;

        ERR(suites.CompSuite11()->AEGP_GetItemFromComp(parentComp, &item));
        ERR(suites.ItemSuite1()->AEGP_IsItemSelected(item, &selected));
        if (selected) {
            script = "app.project.activeItem";
        } else {
            ERR(find_item_index(info, item, &item_index));
            script = "app.project.item(" + std::to_string(item_index) + ")";
        }
        script += ".layer(" + std::to_string(i + 1) + ").parent = null; ";

        // A layer that is missing stops the walk here; the handle is not needed.
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(parentComp, i, &layer));
        ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(info->plugin_id, script.c_str(), false, nullptr, nullptr));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
