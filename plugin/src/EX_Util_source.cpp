// Who uses a source, and deleting a layer together with its own.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

namespace {

// Adds to *count the layers of the composition whose source has the id; ends at the first failing call.
A_Err count_layers_with_source(AEGP_SuiteHandler& suites, AEGP_ItemH comp_item, A_long source_id, int* count) {
    A_Err err = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    A_long layer_count = 0;

    ERR(suites.CompSuite7()->AEGP_GetCompFromItem(comp_item, &comp));
    ERR(suites.LayerSuite7()->AEGP_GetCompNumLayers(comp, &layer_count));
    for (A_long i = 0; i < layer_count && err == A_Err_NONE; ++i) {
        AEGP_LayerH layer = nullptr;
        AEGP_ItemH source = nullptr;
        A_long id = -1;  // what a layer without a source counts as
        ERR(suites.LayerSuite7()->AEGP_GetCompLayerByIndex(comp, i, &layer));
        ERR(suites.LayerSuite7()->AEGP_GetLayerSourceItem(layer, &source));
        if (source != nullptr) ERR(suites.ItemSuite8()->AEGP_GetItemID(source, &id));
        if (err == A_Err_NONE && id == source_id) ++*count;
    }
    return err;
}

}  // namespace

A_Err item_use_count(const PluginInfo* info, AEGP_ItemH item, int* count) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ProjectH project = nullptr;
    AEGP_ItemH current = nullptr;
    A_long target_id = -1;
    int total = 0;

    ERR(suites.ProjSuite6()->AEGP_GetProjectByIndex(0, &project));
    ERR(suites.ItemSuite8()->AEGP_GetFirstProjItem(project, &current));
    ERR(suites.ItemSuite8()->AEGP_GetItemID(item, &target_id));
    while (current != nullptr && err == A_Err_NONE) {
        AEGP_ItemType type = AEGP_ItemType_NONE;
        AEGP_ItemH next = nullptr;
        ERR(suites.ItemSuite8()->AEGP_GetItemType(current, &type));
        if (type == AEGP_ItemType_COMP) ERR(count_layers_with_source(suites, current, target_id, &total));
        ERR(suites.ItemSuite8()->AEGP_GetNextProjItem(project, current, &next));
        current = next;
    }
    *count = total;
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err delete_layer_and_source(const PluginInfo* info, AEGP_LayerH layer) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ItemH source = nullptr;

    ERR(suites.LayerSuite4()->AEGP_GetLayerSourceItem(layer, &source));
    // The layer first, so that the item is no longer in use when it goes.
    ERR(suites.LayerSuite4()->AEGP_DeleteLayer(layer));
    ERR(suites.ItemSuite1()->AEGP_DeleteItem(source));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
