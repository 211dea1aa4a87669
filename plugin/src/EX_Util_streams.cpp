// Interpolation and tangents of one keyframe.
#include "EX_Util_streams.h"

#include "AE_Macros.h"

bool is_spatial(AEGP_StreamType type) {
    return type == AEGP_StreamType_TwoD_SPATIAL || type == AEGP_StreamType_ThreeD_SPATIAL;
}

A_Err copy_interpolation(AEGP_SuiteHandler& suites, AEGP_StreamRefH source, AEGP_KeyframeIndex source_index,
                         AEGP_StreamRefH destination, AEGP_KeyframeIndex destination_index) {
    A_Err err = A_Err_NONE;
    AEGP_KeyframeInterpolationType in = AEGP_KeyInterp_NONE;
    AEGP_KeyframeInterpolationType out = AEGP_KeyInterp_NONE;

    ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeInterpolation(source, source_index, &in, &out));
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeInterpolation(destination, destination_index, in, out));
    return err;
}

A_Err copy_spatial_tangents(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                            AEGP_KeyframeIndex source_index, AEGP_StreamRefH destination,
                            AEGP_KeyframeIndex destination_index) {
    A_Err err = A_Err_NONE;
    AEGP_StreamValue2 in = {};
    AEGP_StreamValue2 out = {};

    ERR(suites.KeyframeSuite4()->AEGP_GetNewKeyframeSpatialTangents(info->plugin_id, source, source_index, &in, &out));
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeSpatialTangents(destination, destination_index, &in, &out));
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&in));
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&out));
    return err;
}
