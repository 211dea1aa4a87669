// The selected layers, and which of them are pre-comp layers.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

A_Err get_selected_layers(const PluginInfo* info, AEGP_Collection2H* selection) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;

    ERR(suites.ItemSuite1()->AEGP_GetActiveItem(&item));
    if (item != nullptr) {
        AEGP_ItemType type = AEGP_ItemType_NONE;
        ERR(suites.ItemSuite1()->AEGP_GetItemType(item, &type));
        if (type == AEGP_ItemType_COMP) {
            AEGP_CompH comp = nullptr;
            ERR(suites.CompSuite4()->AEGP_GetCompFromItem(item, &comp));
            ERR(suites.CompSuite4()->AEGP_GetNewCollectionFromCompSelection(info->plugin_id, comp, selection));
        }
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err is_layer_precomp(const PluginInfo* info, AEGP_CollectionItemV2* item, unsigned char* is_precomp) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;

    *is_precomp = 0;
    if (is_layer_item(*item)) {
        const AEGP_LayerH layer = item->u.layer.layerH;
        AEGP_ObjectType object_type = AEGP_ObjectType_NONE;
        ERR(suites.LayerSuite5()->AEGP_GetLayerObjectType(layer, &object_type));
        if (object_type == AEGP_ObjectType_AV) {
            AEGP_ItemH source = nullptr;
            AEGP_ItemType type = AEGP_ItemType_NONE;
            ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(layer, &source));
            ERR(suites.ItemSuite1()->AEGP_GetItemType(source, &type));
            *is_precomp = type == AEGP_ItemType_COMP;
        }
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
