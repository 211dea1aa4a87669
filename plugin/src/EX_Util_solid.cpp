// A solid layer of the pre-comp's size and timing. Not called by anything.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

A_Err create_matching_solid(const PluginInfo* info, AEGP_LayerH precompLayer, AEGP_LayerH* newSolid) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_ItemH precomp_item = nullptr;
    A_long width = 0;
    A_long height = 0;
    AEGP_CompH parent_comp = nullptr;
    A_Time duration = {};
    A_Time in_point = {};
    A_Ratio pixel_aspect_ratio = {};
    const AEGP_ColorVal white = {1.0, 1.0, 1.0, 1.0};
    AEGP_FootageH footage = nullptr;
    AEGP_ItemH folder = nullptr;
    AEGP_ItemH solid_item = nullptr;
    AEGP_FootageInterp interpretation = {};

    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(precompLayer, &precomp_item));
    ERR(suites.ItemSuite5()->AEGP_GetItemDimensions(precomp_item, &width, &height));
    ERR(suites.LayerSuite5()->AEGP_GetLayerParentComp(precompLayer, &parent_comp));
    ERR(suites.LayerSuite5()->AEGP_GetLayerDuration(precompLayer, AEGP_LTimeMode_LayerTime, &duration));
    ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(precompLayer, AEGP_LTimeMode_CompTime, &in_point));
    ERR(suites.ItemSuite5()->AEGP_GetItemPixelAspectRatio(precomp_item, &pixel_aspect_ratio));

    ERR(suites.FootageSuite5()->AEGP_NewSolidFootage("test", width, height, &white, &footage));
    ERR(suites.ItemSuite5()->AEGP_GetItemParentFolder(precomp_item, &folder));
    ERR(suites.FootageSuite5()->AEGP_AddFootageToProject(footage, folder, &solid_item));
    ERR(suites.FootageSuite5()->AEGP_GetFootageInterpretation(solid_item, false, &interpretation));
    interpretation.pix_aspect_ratio = pixel_aspect_ratio;
    ERR(suites.FootageSuite5()->AEGP_SetFootageInterpretation(solid_item, false, &interpretation));

    ERR(suites.LayerSuite5()->AEGP_AddLayer(solid_item, parent_comp, newSolid));
    // Read in composition time, set in layer time, as for the null.
    ERR(suites.LayerSuite5()->AEGP_SetLayerInPointAndDuration(*newSolid, AEGP_LTimeMode_LayerTime, &in_point,
                                                              &duration));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
