// Re-applying one layer's effects to another layer.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "EX_Util_streams.h"

namespace {

A_Err copy_static_value(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                        AEGP_StreamRefH destination) {
    A_Err err = A_Err_NONE;
    const A_Time zero = {0, 1};
    AEGP_StreamValue2 value = {};

    ERR(suites.StreamSuite4()->AEGP_GetNewStreamValue(info->plugin_id, source, AEGP_LTimeMode_LayerTime, &zero, true,
                                                      &value));
    ERR(suites.StreamSuite4()->AEGP_SetStreamValue(info->plugin_id, destination, &value));
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    return err;
}

A_Err copy_keyframe_value(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                          AEGP_KeyframeIndex source_index, AEGP_StreamRefH destination,
                          AEGP_KeyframeIndex destination_index) {
    A_Err err = A_Err_NONE;
    AEGP_StreamValue2 value = {};

    ERR(suites.KeyframeSuite4()->AEGP_GetNewKeyframeValue(info->plugin_id, source, source_index, &value));
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeValue(destination, destination_index, &value));
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    return err;
}

// Sets all five flags, whatever they are, after a call for no flag at all.
A_Err copy_all_flags(AEGP_SuiteHandler& suites, AEGP_StreamRefH source, AEGP_KeyframeIndex source_index,
                     AEGP_StreamRefH destination, AEGP_KeyframeIndex destination_index) {
    constexpr AEGP_KeyframeFlags kFlags[] = {
        AEGP_KeyframeFlag_TEMPORAL_CONTINUOUS,
        AEGP_KeyframeFlag_TEMPORAL_AUTOBEZIER,
        AEGP_KeyframeFlag_SPATIAL_CONTINUOUS,
        AEGP_KeyframeFlag_SPATIAL_AUTOBEZIER,
        AEGP_KeyframeFlag_ROVING,
    };
    A_Err err = A_Err_NONE;
    AEGP_KeyframeFlags flags = AEGP_KeyframeFlag_NONE;

    ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeFlags(source, source_index, &flags));
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeFlag(destination, destination_index, AEGP_KeyframeFlag_NONE,
                                                      flags == AEGP_KeyframeFlag_NONE));
    for (const AEGP_KeyframeFlags flag : kFlags) {
        // The masked bit itself is the truth value.
        ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeFlag(destination, destination_index, flag,
                                                          static_cast<A_Boolean>(flags & flag)));
    }
    return err;
}

// Only the last dimension's ease, unlike the transform's copy.
A_Err copy_last_ease(AEGP_SuiteHandler& suites, AEGP_StreamRefH source, AEGP_KeyframeIndex source_index,
                     AEGP_StreamRefH destination, AEGP_KeyframeIndex destination_index) {
    A_Err err = A_Err_NONE;
    A_short dimensions = 0;
    AEGP_KeyframeEase in = {};
    AEGP_KeyframeEase out = {};

    ERR(suites.KeyframeSuite4()->AEGP_GetStreamTemporalDimensionality(source, &dimensions));
    ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeTemporalEase(source, source_index, dimensions - 1, &in, &out));
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeTemporalEase(destination, destination_index, dimensions - 1, &in,
                                                              &out));
    return err;
}

A_Err copy_keyframe(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                    AEGP_KeyframeIndex source_index, AEGP_StreamRefH destination) {
    A_Err err = A_Err_NONE;
    A_Time time = {};
    AEGP_KeyframeIndex index = 0;
    AEGP_StreamType type = AEGP_StreamType_NO_DATA;

    ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeTime(source, source_index, AEGP_LTimeMode_CompTime, &time));
    ERR(suites.KeyframeSuite4()->AEGP_InsertKeyframe(destination, AEGP_LTimeMode_CompTime, &time, &index));
    ERR(copy_keyframe_value(info, suites, source, source_index, destination, index));
    ERR(copy_all_flags(suites, source, source_index, destination, index));
    ERR(copy_interpolation(suites, source, source_index, destination, index));
    ERR(suites.StreamSuite4()->AEGP_GetStreamType(source, &type));
    if (is_spatial(type)) ERR(copy_spatial_tangents(info, suites, source, source_index, destination, index));
    ERR(copy_last_ease(suites, source, source_index, destination, index));
    return err;
}

A_Err copy_keyframes(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                     AEGP_StreamRefH destination) {
    A_Err err = A_Err_NONE;
    A_long keyframe_count = 0;

    ERR(suites.KeyframeSuite4()->AEGP_GetStreamNumKFs(source, &keyframe_count));
    for (A_long i = 0; i < keyframe_count; ++i) ERR(copy_keyframe(info, suites, source, i, destination));
    return err;
}

A_Err copy_expression(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                      AEGP_StreamRefH destination) {
    A_Err err = A_Err_NONE;
    A_Boolean can_vary = false;

    ERR(suites.StreamSuite4()->AEGP_CanVaryOverTime(source, &can_vary));
    if (can_vary) {
        AEGP_MemHandle expression = nullptr;
        void* text = nullptr;
        A_Boolean enabled = false;
        ERR(suites.StreamSuite4()->AEGP_GetExpression(info->plugin_id, source, &expression));
        if (expression != nullptr) {
            ERR(suites.MemorySuite1()->AEGP_LockMemHandle(expression, &text));
            // The text goes back as it came, whatever its encoding.
            ERR(suites.StreamSuite4()->AEGP_SetExpression(info->plugin_id, destination,
                                                          static_cast<const A_char*>(text)));
            ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(expression));
            ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(expression));
        }
        ERR(suites.StreamSuite4()->AEGP_GetExpressionState(info->plugin_id, source, &enabled));
        ERR(suites.StreamSuite4()->AEGP_SetExpressionState(info->plugin_id, destination, enabled));
    }
    return err;
}

A_Err copy_parameter(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_EffectRefH source_effect,
                     AEGP_EffectRefH destination_effect, PF_ParamIndex parameter) {
    A_Err err = A_Err_NONE;
    AEGP_StreamRefH source = nullptr;
    AEGP_StreamRefH destination = nullptr;
    A_Boolean time_varying = false;

    ERR(suites.StreamSuite4()->AEGP_GetNewEffectStreamByIndex(info->plugin_id, source_effect, parameter, &source));
    ERR(suites.StreamSuite4()->AEGP_GetNewEffectStreamByIndex(info->plugin_id, destination_effect, parameter,
                                                              &destination));
    ERR(suites.StreamSuite4()->AEGP_IsStreamTimevarying(source, &time_varying));
    if (time_varying) {
        ERR(copy_keyframes(info, suites, source, destination));
    } else {
        ERR(copy_static_value(info, suites, source, destination));
    }
    ERR(copy_expression(info, suites, source, destination));
    ERR(suites.StreamSuite4()->AEGP_DisposeStream(source));
    ERR(suites.StreamSuite4()->AEGP_DisposeStream(destination));
    return err;
}

A_Err copy_effect(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_LayerH source, AEGP_EffectIndex index,
                  AEGP_LayerH destination) {
    A_Err err = A_Err_NONE;
    AEGP_EffectRefH source_effect = nullptr;
    AEGP_EffectRefH destination_effect = nullptr;
    AEGP_InstalledEffectKey key = AEGP_InstalledEffectKey_NONE;
    AEGP_EffectFlags flags = AEGP_EffectFlags_NONE;
    A_long parameter_count = 0;

    ERR(suites.EffectSuite3()->AEGP_GetLayerEffectByIndex(info->plugin_id, source, index, &source_effect));
    ERR(suites.EffectSuite3()->AEGP_GetInstalledKeyFromLayerEffect(source_effect, &key));
    ERR(suites.EffectSuite3()->AEGP_ApplyEffect(info->plugin_id, destination, key, &destination_effect));
    ERR(suites.EffectSuite3()->AEGP_GetEffectFlags(source_effect, &flags));
    ERR(suites.EffectSuite3()->AEGP_SetEffectFlags(destination_effect, AEGP_EffectFlags_ACTIVE, flags));
    ERR(suites.StreamSuite4()->AEGP_GetEffectNumParamStreams(source_effect, &parameter_count));
    // Parameter 0 is the effect's own input layer.
    for (PF_ParamIndex i = 1; i < parameter_count; ++i) {
        ERR(copy_parameter(info, suites, source_effect, destination_effect, i));
    }
    ERR(suites.EffectSuite3()->AEGP_DisposeEffect(source_effect));
    ERR(suites.EffectSuite3()->AEGP_DisposeEffect(destination_effect));
    return err;
}

}  // namespace

A_Err copy_effects_to_all_layers(const PluginInfo* info, AEGP_LayerH source, AEGP_Collection2H layers) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    AEGP_CollectionItemV2 item = {};  // outside the loop: when reading fails, the last item read is handled again

    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = 0; i < count; ++i) {
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i, &item));
        // A layer that refuses an effect does not stop the others from getting theirs.
        if (is_layer_item(item)) (void)copy_effects_to_layer(info, source, item.u.layer.layerH);
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err copy_effects_to_layer(const PluginInfo* info, AEGP_LayerH source, AEGP_LayerH destination) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_long effect_count = 0;

    ERR(suites.EffectSuite3()->AEGP_GetLayerNumEffects(source, &effect_count));
    for (A_long i = 0; i < effect_count; ++i) ERR(copy_effect(info, suites, source, i, destination));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
