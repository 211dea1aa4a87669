// Giving the copies the place in time that they had when seen through the pre-comp layer.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

namespace {

// Time values wrap around at 32 bits, each sum and difference by itself.
A_long wrapping_sum(A_long a, A_long b) {
    return static_cast<A_long>(static_cast<A_u_long>(a) + static_cast<A_u_long>(b));
}

A_long wrapping_difference(A_long a, A_long b) {
    return static_cast<A_long>(static_cast<A_u_long>(a) - static_cast<A_u_long>(b));
}

}  // namespace

A_Err match_precomp_timing(const PluginInfo* info, AEGP_LayerH precompLayer, std::vector<int> layers) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_Time precomp_in_layer = {};
    A_Time precomp_in_comp = {};
    A_Time precomp_duration = {};
    A_Time precomp_offset = {};
    AEGP_CompH parent_comp = nullptr;

    ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(precompLayer, AEGP_LTimeMode_LayerTime, &precomp_in_layer));
    ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(precompLayer, AEGP_LTimeMode_CompTime, &precomp_in_comp));
    ERR(suites.LayerSuite5()->AEGP_GetLayerDuration(precompLayer, AEGP_LTimeMode_CompTime, &precomp_duration));
    ERR(suites.LayerSuite5()->AEGP_GetLayerOffset(precompLayer, &precomp_offset));
    ERR(suites.LayerSuite5()->AEGP_GetLayerParentComp(precompLayer, &parent_comp));

    const A_long count = static_cast<A_long>(layers.size());
    for (A_long i = 0; i < count; ++i) {
        AEGP_LayerH layer = nullptr;
        A_Time in_comp = {};
        A_Time in_layer = {};
        A_Time duration_comp = {};
        A_Time duration_layer = {};
        A_Time offset = {};

        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(parent_comp, i, &layer));
        ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(layer, AEGP_LTimeMode_CompTime, &in_comp));
        ERR(suites.LayerSuite5()->AEGP_GetLayerDuration(layer, AEGP_LTimeMode_CompTime, &duration_comp));
        ERR(suites.LayerSuite5()->AEGP_GetLayerOffset(layer, &offset));

        offset.value = wrapping_sum(precomp_offset.value, offset.value);
        ERR(suites.LayerSuite5()->AEGP_SetLayerOffset(layer, &offset));

        ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(layer, AEGP_LTimeMode_LayerTime, &in_layer));
        ERR(suites.LayerSuite5()->AEGP_GetLayerDuration(layer, AEGP_LTimeMode_LayerTime, &duration_layer));

        // The head: the in-point read before the shift is the one compared.
        if (in_comp.value < precomp_in_comp.value) {
            const A_long cut = wrapping_difference(precomp_in_layer.value, in_layer.value);
            duration_layer.value = wrapping_difference(duration_layer.value, cut);
            ERR(suites.LayerSuite5()->AEGP_SetLayerInPointAndDuration(layer, AEGP_LTimeMode_CompTime, &precomp_in_comp,
                                                                      &duration_layer));
        }

        // The tail: the in-point is read again, the duration is still the one from before the head was trimmed.
        ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(layer, AEGP_LTimeMode_CompTime, &in_comp));
        const A_long out = wrapping_sum(in_comp.value, duration_comp.value);
        const A_long precomp_out = wrapping_sum(precomp_in_comp.value, precomp_duration.value);
        if (out > precomp_out) {
            A_Time rest = precomp_duration;
            const A_long gap = wrapping_difference(in_comp.value, precomp_in_comp.value);
            rest.value = wrapping_difference(precomp_duration.value, gap);
            ERR(suites.LayerSuite5()->AEGP_SetLayerInPointAndDuration(layer, AEGP_LTimeMode_CompTime, &in_comp, &rest));
        }
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
