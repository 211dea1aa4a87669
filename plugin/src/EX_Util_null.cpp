// The null layer that stands in for the pre-comp layer.
#include <string>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "string_util.h"

A_Err create_matching_null(const PluginInfo* info, AEGP_LayerH precompLayer, AEGP_LayerH* newNull) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    std::wstring precomp_name;
    A_UTF16Char null_name[260] = {};  // a layer name has at most 31 characters
    AEGP_ItemH precomp_item = nullptr;
    A_Ratio pixel_aspect_ratio = {};
    AEGP_CompH parent_comp = nullptr;
    A_Time duration = {};
    A_Time in_point = {};
    AEGP_ItemH null_item = nullptr;
    AEGP_FootageInterp interpretation = {};
    A_Boolean is_3d = false;

    ERR(get_layer_name_w(info, precompLayer, &precomp_name));
    const std::wstring name = L"{{" + precomp_name + L"_exflate}}";
    copyConvertStringLiteralIntoUTF16(name.c_str(), null_name);

    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(precompLayer, &precomp_item));
    ERR(suites.ItemSuite5()->AEGP_GetItemPixelAspectRatio(precomp_item, &pixel_aspect_ratio));
    ERR(suites.LayerSuite5()->AEGP_GetLayerParentComp(precompLayer, &parent_comp));
    ERR(suites.LayerSuite5()->AEGP_GetLayerDuration(precompLayer, AEGP_LTimeMode_LayerTime, &duration));
    ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(precompLayer, AEGP_LTimeMode_CompTime, &in_point));
    ERR(suites.CompSuite11()->AEGP_CreateNullInComp(null_name, parent_comp, &duration, newNull));
    // Read in composition time, set in layer time: the new null starts at 0, where both agree.
    ERR(suites.LayerSuite5()->AEGP_SetLayerInPointAndDuration(*newNull, AEGP_LTimeMode_LayerTime, &in_point,
                                                              &duration));

    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(*newNull, &null_item));
    ERR(suites.FootageSuite5()->AEGP_GetFootageInterpretation(null_item, false, &interpretation));
    interpretation.pix_aspect_ratio = pixel_aspect_ratio;
    ERR(suites.FootageSuite5()->AEGP_SetFootageInterpretation(null_item, false, &interpretation));

    ERR(suites.LayerSuite5()->AEGP_IsLayer3D(precompLayer, &is_3d));
    ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(*newNull, AEGP_LayerFlag_LAYER_IS_3D, is_3d));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
