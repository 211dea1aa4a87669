// Recording, removing and restoring parent links.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

namespace {

constexpr int kNoParent = -1;

}  // namespace

A_Err clear_parents_in_precomp(const PluginInfo* info, AEGP_LayerH precompLayer, std::vector<int>* parents) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    A_long layer_count = 0;
    // Outside the loop: the list gets an entry for every layer, and after a failure repeats the values read last.
    AEGP_LayerH layer = nullptr;
    AEGP_LayerH parent = nullptr;
    A_long parent_index = kNoParent;

    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(precompLayer, &item));
    ERR(suites.CompSuite4()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.LayerSuite5()->AEGP_GetCompNumLayers(comp, &layer_count));
    for (A_long i = 0; i < layer_count; ++i) {
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, i, &layer));
        ERR(suites.LayerSuite5()->AEGP_GetLayerParent(layer, &parent));
        if (parent != nullptr) {
            ERR(suites.LayerSuite5()->AEGP_GetLayerIndex(parent, &parent_index));
            parents->push_back(parent_index);
            ERR(suites.LayerSuite5()->AEGP_SetLayerParent(layer, nullptr));
        } else {
            parents->push_back(kNoParent);
        }
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err reset_parents(const PluginInfo* info, AEGP_CompH comp, std::vector<int> parents) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;

    const A_long count = static_cast<A_long>(parents.size());
    for (A_long i = 0; i < count; ++i) {
        const int parent_index = parents[static_cast<std::size_t>(i)];
        if (parent_index == kNoParent) continue;
        AEGP_LayerH parent = nullptr;
        AEGP_LayerH child = nullptr;
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, parent_index, &parent));
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, i, &child));
        ERR(suites.LayerSuite5()->AEGP_SetLayerParent(child, parent));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err reset_precomp_parents(const PluginInfo* info, AEGP_LayerH precompLayer, std::vector<int> parents) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;

    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(precompLayer, &item));
    ERR(suites.CompSuite4()->AEGP_GetCompFromItem(item, &comp));
    ERR(reset_parents(info, comp, parents));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err parent_unparented_to(const PluginInfo* info, AEGP_LayerH parent, std::vector<int> parents) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_CompH comp = nullptr;

    ERR(suites.LayerSuite5()->AEGP_GetLayerParentComp(parent, &comp));
    const A_long count = static_cast<A_long>(parents.size());
    for (A_long i = 0; i < count; ++i) {
        if (parents[static_cast<std::size_t>(i)] != kNoParent) continue;
        AEGP_LayerH layer = nullptr;
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, i, &layer));
        ERR(suites.LayerSuite5()->AEGP_SetLayerParent(layer, parent));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

// ---- Not called by anything

A_Err get_comp_from_precomp(const PluginInfo* info, AEGP_LayerH precompLayer, AEGP_CompH* comp) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;

    ERR(suites.LayerSuite4()->AEGP_GetLayerSourceItem(precompLayer, &item));
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, comp));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
