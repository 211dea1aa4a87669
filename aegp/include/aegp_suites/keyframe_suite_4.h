// Keyframes. Changing their number makes the indices of the others stale.
#pragma once

#include "aegp_types/handles.h"
#include "aegp_types/keyframe.h"
#include "aegp_types/layer.h"
#include "aegp_types/stream.h"

typedef struct AEGP_KeyframeSuite4 {
    A_Err (*AEGP_GetStreamNumKFs)(AEGP_StreamRefH streamH, A_long* num_kfsPL);
    A_Err (*AEGP_GetKeyframeTime)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index, AEGP_LTimeMode time_mode,
                                  A_Time* timePT);
    A_Err (*AEGP_InsertKeyframe)(AEGP_StreamRefH streamH, AEGP_LTimeMode time_mode, const A_Time* timePT,
                                 AEGP_KeyframeIndex* key_indexP);
    A_Err (*AEGP_DeleteKeyframe)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index);
    A_Err (*AEGP_GetNewKeyframeValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                      AEGP_KeyframeIndex key_index, AEGP_StreamValue2* valueP);
    A_Err (*AEGP_SetKeyframeValue)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index,
                                   const AEGP_StreamValue2* valueP);
    A_Err (*AEGP_GetStreamValueDimensionality)(AEGP_StreamRefH streamH, A_short* value_dimPS);
    A_Err (*AEGP_GetStreamTemporalDimensionality)(AEGP_StreamRefH streamH, A_short* temporal_dimPS);
    A_Err (*AEGP_GetNewKeyframeSpatialTangents)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                                AEGP_KeyframeIndex key_index, AEGP_StreamValue2* in_tanP0,
                                                AEGP_StreamValue2* out_tanP0);
    A_Err (*AEGP_SetKeyframeSpatialTangents)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index,
                                             const AEGP_StreamValue2* in_tanP0, const AEGP_StreamValue2* out_tanP0);
    A_Err (*AEGP_GetKeyframeTemporalEase)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index, A_long dimensionL,
                                          AEGP_KeyframeEase* in_easeP0, AEGP_KeyframeEase* out_easeP0);
    A_Err (*AEGP_SetKeyframeTemporalEase)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index, A_long dimensionL,
                                          const AEGP_KeyframeEase* in_easeP0, const AEGP_KeyframeEase* out_easeP0);
    A_Err (*AEGP_GetKeyframeFlags)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index, AEGP_KeyframeFlags* flagsP);
    A_Err (*AEGP_SetKeyframeFlag)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index, AEGP_KeyframeFlags flag,
                                  A_Boolean true_falseB);
    A_Err (*AEGP_GetKeyframeInterpolation)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index,
                                           AEGP_KeyframeInterpolationType* in_interpP0,
                                           AEGP_KeyframeInterpolationType* out_interpP0);
    A_Err (*AEGP_SetKeyframeInterpolation)(AEGP_StreamRefH streamH, AEGP_KeyframeIndex key_index,
                                           AEGP_KeyframeInterpolationType in_interp,
                                           AEGP_KeyframeInterpolationType out_interp);
    A_Err (*AEGP_StartAddKeyframes)(AEGP_StreamRefH streamH, AEGP_AddKeyframesInfoH* akPH);
    A_Err (*AEGP_AddKeyframes)(AEGP_AddKeyframesInfoH akH, AEGP_LTimeMode time_mode, const A_Time* timePT,
                               A_long* key_indexPL);
    A_Err (*AEGP_SetAddKeyframe)(AEGP_AddKeyframesInfoH akH, A_long key_indexL, const AEGP_StreamValue2* valueP);
    A_Err (*AEGP_EndAddKeyframes)(A_Boolean addB, AEGP_AddKeyframesInfoH akH);
} AEGP_KeyframeSuite4;
