// Copying the pre-comp's layers into the composition that holds it. The script call copyToComp does it, because it
// carries a layer with all its properties, keyframes, effects and expressions.
#include <memory>
#include <string>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "string_util.h"

namespace {

constexpr char kHeader[] = "var tempName = \"\"; var allNames = [];";
constexpr char kRememberName[] = "tempName = app.project.item(%i).layer(%i).name; allNames.push(tempName);";
constexpr char kAssignName[] = "app.project.item(%i).layer(%i).name = tempName;";
constexpr char kCopyToComp[] = "app.project.item(%i).layer(%i).copyToComp(app.project.item(%i));";
// Never run: expressions are repaired after each rename, by fix_all_expressions.
[[maybe_unused]] constexpr char kFixExpressions[] =
    "for (var i = 0; i < allNames.length; i++) "
    "{app.project.autoFixExpressions(allNames[i], \"%s_\" + allNames[i]);}";

using ScriptLine = std::unique_ptr<char[]>;

std::string copy_script(A_long layer_count, int precomp_index, int parent_index) {
    std::string script = kHeader;
    for (int j = 1; j <= layer_count; ++j) {
        script += ScriptLine(sprintf(kRememberName, 2, precomp_index, j)).get();
        // The layer keeps its name: assigning it makes it the layer's own, which the copy then carries too.
        script += ScriptLine(sprintf(kAssignName, 2, precomp_index, j)).get();
        script += ScriptLine(sprintf(kCopyToComp, 3, precomp_index, j, parent_index)).get();
        script += ScriptLine(sprintf(kAssignName, 2, precomp_index, j)).get();
    }
    return script;
}

// The smallest index of a selected layer, -1 when none is selected.
A_Err topmost_selected_layer(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_CompH comp, A_long* topmost) {
    A_Err err = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;
    A_u_long count = 0;

    *topmost = -1;
    ERR(suites.CompSuite4()->AEGP_GetNewCollectionFromCompSelection(info->plugin_id, comp, &selection));
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(selection, &count));
    for (A_u_long i = 0; i < count; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(selection, i, &item));
        if (is_layer_item(item)) {
            A_long index = 0;
            ERR(suites.LayerSuite5()->AEGP_GetLayerIndex(item.u.layer.layerH, &index));
            if (*topmost == -1 || index < *topmost) *topmost = index;
        }
    }
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    return err;
}

}  // namespace

A_Err copy_layers_to_parent(const PluginInfo* info, AEGP_LayerH precompLayer, char* /*prefix*/,
                            AEGP_Collection2H* newLayers) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_CompH parent_comp = nullptr;
    AEGP_ItemH parent_item = nullptr;
    AEGP_ItemH precomp_item = nullptr;
    AEGP_CompH precomp_comp = nullptr;
    A_long layer_count = 0;
    int parent_index = 0;
    int precomp_index = 0;

    ERR(suites.LayerSuite5()->AEGP_GetLayerParentComp(precompLayer, &parent_comp));
    ERR(suites.CompSuite4()->AEGP_GetItemFromComp(parent_comp, &parent_item));
    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(precompLayer, &precomp_item));
    ERR(suites.CompSuite4()->AEGP_GetCompFromItem(precomp_item, &precomp_comp));
    ERR(suites.LayerSuite5()->AEGP_GetCompNumLayers(precomp_comp, &layer_count));
    ERR(find_item_index(info, parent_item, &parent_index));
    ERR(find_item_index(info, precomp_item, &precomp_index));

    const std::string script = copy_script(layer_count, precomp_index, parent_index);
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(info->plugin_id, script.c_str(), false, nullptr, nullptr));

    // The copies land above the layer that is still selected; with nothing selected, at the top.
    A_long topmost = -1;
    ERR(topmost_selected_layer(info, suites, parent_comp, &topmost));
    const bool no_selection = topmost == -1;
    for (A_long k = 1; k <= layer_count; ++k) {
        const A_long index = no_selection ? k - 1 : topmost - k;
        AEGP_LayerH layer = nullptr;
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(parent_comp, index, &layer));
        if (info->options->fix_random_expressions) {
            ERR(add_random_seed_to_all_expressions(info, layer, layer_count - k));
        }
        const AEGP_CollectionItemV2 item = layer_item(layer);
        ERR(suites.CollectionSuite2()->AEGP_CollectionPushBack(*newLayers, &item));
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err find_item_index(const PluginInfo* info, AEGP_ItemH item, int* index) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_long target_id = -1;
    AEGP_ProjectH project = nullptr;
    AEGP_ItemH current = nullptr;

    ERR(suites.ItemSuite5()->AEGP_GetItemID(item, &target_id));
    ERR(suites.ProjSuite5()->AEGP_GetProjectByIndex(0, &project));
    ERR(suites.ItemSuite6()->AEGP_GetFirstProjItem(project, &current));
    // The first item is the root folder, which scripts do not number: the steps taken from it are the number.
    for (int steps = 0; err == A_Err_NONE; ++steps) {
        A_long id = -1;
        ERR(suites.ItemSuite6()->AEGP_GetItemID(current, &id));
        if (err == A_Err_NONE && id == target_id) {
            *index = steps;
            break;
        }
        AEGP_ItemH next = nullptr;
        ERR(suites.ItemSuite6()->AEGP_GetNextProjItem(project, current, &next));
        if (next == nullptr) break;
        current = next;
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
