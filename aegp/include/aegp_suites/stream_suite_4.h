// Streams, version 4: expressions are 8-bit text.
#pragma once

#include "AE_Effect.h"
#include "aegp_types/handles.h"
#include "aegp_types/keyframe.h"
#include "aegp_types/layer.h"
#include "aegp_types/stream.h"

typedef struct AEGP_StreamSuite4 {
    A_Err (*AEGP_IsStreamLegal)(AEGP_LayerH layerH, AEGP_LayerStream which_stream, A_Boolean* is_legalP);
    A_Err (*AEGP_CanVaryOverTime)(AEGP_StreamRefH streamH, A_Boolean* can_varyPB);
    A_Err (*AEGP_GetValidInterpolations)(AEGP_StreamRefH streamH, AEGP_KeyInterpolationMask* valid_interpolationsP);
    A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                    AEGP_StreamRefH* streamPH);
    A_Err (*AEGP_GetEffectNumParamStreams)(AEGP_EffectRefH effect_refH, A_long* num_paramsPL);
    A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
                                            PF_ParamIndex param_index, AEGP_StreamRefH* streamPH);
    A_Err (*AEGP_GetNewMaskStream)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH mask_refH, AEGP_MaskStream which_stream,
                                   AEGP_StreamRefH* mask_streamPH);
    A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH streamH);
    A_Err (*AEGP_GetStreamName)(AEGP_PluginID pluginID, AEGP_StreamRefH streamH, A_Boolean force_englishB,
                                AEGP_MemHandle* utf_stream_namePH);
    A_Err (*AEGP_GetStreamUnitsText)(AEGP_StreamRefH streamH, A_Boolean force_englishB, A_char* unitsZ);
    A_Err (*AEGP_GetStreamProperties)(AEGP_StreamRefH streamH, AEGP_StreamFlags* flagsP, A_FpLong* minP0,
                                      A_FpLong* maxP0);
    A_Err (*AEGP_IsStreamTimevarying)(AEGP_StreamRefH streamH, A_Boolean* is_timevaryingPB);
    A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH streamH, AEGP_StreamType* stream_typeP);
    A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH, AEGP_LTimeMode time_mode,
                                    const A_Time* timePT, A_Boolean pre_expressionB, AEGP_StreamValue2* valueP);
    A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue2* valueP);
    A_Err (*AEGP_SetStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH, AEGP_StreamValue2* valueP);
    A_Err (*AEGP_GetLayerStreamValue)(AEGP_LayerH layerH, AEGP_LayerStream which_stream, AEGP_LTimeMode time_mode,
                                      const A_Time* timePT, A_Boolean pre_expressionB, AEGP_StreamVal2* stream_valP,
                                      AEGP_StreamType* stream_typeP0);
    A_Err (*AEGP_GetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH, A_Boolean* enabledPB);
    A_Err (*AEGP_SetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH, A_Boolean enabledB);
    A_Err (*AEGP_GetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH, AEGP_MemHandle* expressionHZ);
    A_Err (*AEGP_SetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH, const A_char* expressionP);
    A_Err (*AEGP_DuplicateStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     AEGP_StreamRefH* dup_streamPH);
} AEGP_StreamSuite4;
