// Stack order and the 3D switch. Every move shifts the other layers' indices, so the direction of each walk matters.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

A_Err move_layers_to_top(const PluginInfo* info, AEGP_Collection2H layers) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_u_long count = 0;

    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = 0; i < count; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i, &item));
        if (is_layer_item(item)) ERR(suites.LayerSuite5()->AEGP_ReorderLayer(item.u.layer.layerH, 0));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err move_layers_to_index(const PluginInfo* info, AEGP_Collection2H layers, int index) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_u_long count = 0;

    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = count; i > 0; --i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i - 1, &item));
        if (is_layer_item(item)) ERR(suites.LayerSuite5()->AEGP_ReorderLayer(item.u.layer.layerH, index));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err set_all_layers_to_3D(const PluginInfo* info, AEGP_Collection2H layers) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_u_long count = 0;

    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = 0; i < count; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i, &item));
        if (is_layer_item(item)) {
            ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(item.u.layer.layerH, AEGP_LayerFlag_LAYER_IS_3D, true));
        }
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

// ---- Not called by anything

A_Err order_layers_to_top(const PluginInfo* info, AEGP_CompH comp, int index, int count) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;

    for (int i = 0; i < count; ++i) {
        AEGP_LayerH layer = nullptr;
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, index, &layer));
        ERR(suites.LayerSuite5()->AEGP_ReorderLayer(layer, 0));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
