// Copying transform streams, with their keyframes, from one layer to another.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "EX_Util_streams.h"

namespace {

// Adds the source's keyframes, times and values, in one pass.
A_Err add_keyframes(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                    AEGP_StreamRefH destination, A_long* keyframe_count) {
    A_Err err = A_Err_NONE;
    AEGP_AddKeyframesInfoH batch = nullptr;

    ERR(suites.KeyframeSuite4()->AEGP_GetStreamNumKFs(source, keyframe_count));
    ERR(suites.KeyframeSuite4()->AEGP_StartAddKeyframes(destination, &batch));
    for (A_long i = 0; i < *keyframe_count; ++i) {
        A_Time time = {};
        A_long index_in_batch = 0;  // not used: the values go in by the loop's own count
        AEGP_StreamValue2 value = {};
        ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeTime(source, i, AEGP_LTimeMode_CompTime, &time));
        ERR(suites.KeyframeSuite4()->AEGP_AddKeyframes(batch, AEGP_LTimeMode_CompTime, &time, &index_in_batch));
        ERR(suites.KeyframeSuite4()->AEGP_GetNewKeyframeValue(info->plugin_id, source, i, &value));
        ERR(suites.KeyframeSuite4()->AEGP_SetAddKeyframe(batch, i, &value));
        ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    }
    ERR(suites.KeyframeSuite4()->AEGP_EndAddKeyframes(true, batch));
    return err;
}

// When no flag is set, the destination keeps the flags that the host gave it.
A_Err copy_flags(AEGP_SuiteHandler& suites, AEGP_StreamRefH source, AEGP_StreamRefH destination, A_long index) {
    A_Err err = A_Err_NONE;
    AEGP_KeyframeFlags flags = AEGP_KeyframeFlag_NONE;

    ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeFlags(source, index, &flags));
    if (flags != AEGP_KeyframeFlag_NONE) {
        for (int bit = 0; bit < 5; ++bit) {
            const AEGP_KeyframeFlags flag = 1 << bit;
            ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeFlag(destination, index, flag, (flags & flag) != 0));
        }
    }
    return err;
}

A_Err copy_eases(AEGP_SuiteHandler& suites, AEGP_StreamRefH source, AEGP_StreamRefH destination, A_long index) {
    A_Err err = A_Err_NONE;
    A_short dimensions = 0;

    ERR(suites.KeyframeSuite4()->AEGP_GetStreamTemporalDimensionality(source, &dimensions));
    for (A_long dimension = 0; dimension < dimensions; ++dimension) {
        AEGP_KeyframeEase in = {};
        AEGP_KeyframeEase out = {};
        ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeTemporalEase(source, index, dimension, &in, &out));
        ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeTemporalEase(destination, index, dimension, &in, &out));
    }
    return err;
}

// Copies interpolation, flags, eases and tangents, from each source keyframe to the destination's of the same index.
A_Err copy_keyframe_attributes(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                               AEGP_StreamRefH destination, A_long keyframe_count) {
    A_Err err = A_Err_NONE;
    AEGP_StreamType type = AEGP_StreamType_NO_DATA;

    ERR(suites.StreamSuite4()->AEGP_GetStreamType(source, &type));
    for (A_long i = 0; i < keyframe_count; ++i) {
        ERR(copy_interpolation(suites, source, i, destination, i));
        ERR(copy_flags(suites, source, destination, i));
        ERR(copy_eases(suites, source, destination, i));
        if (is_spatial(type)) ERR(copy_spatial_tangents(info, suites, source, i, destination, i));
    }
    return err;
}

}  // namespace

A_Err match_transform(const PluginInfo* info, AEGP_LayerH destination, AEGP_LayerH source, unsigned char* changed) {
    // Rotation and Z rotation are one stream, which is therefore copied twice.
    constexpr AEGP_LayerStream kStreams[] = {
        AEGP_LayerStream_ANCHORPOINT, AEGP_LayerStream_POSITION, AEGP_LayerStream_SCALE,
        AEGP_LayerStream_ROTATION,    AEGP_LayerStream_ROTATE_Z, AEGP_LayerStream_OPACITY,
        AEGP_LayerStream_TIME_REMAP,  AEGP_LayerStream_ROTATE_X, AEGP_LayerStream_ROTATE_Y,
        AEGP_LayerStream_ORIENTATION,
    };
    A_Err err = A_Err_NONE;

    for (const AEGP_LayerStream stream : kStreams) ERR(match_keyframes(info, destination, source, stream, changed));
    return err;
}

A_Err match_keyframes(const PluginInfo* info, AEGP_LayerH destination, AEGP_LayerH source, int stream,
                      unsigned char* changed) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_Time in_point = {};
    AEGP_StreamRefH source_stream = nullptr;
    AEGP_StreamRefH destination_stream = nullptr;
    AEGP_StreamValue2 value = {};
    A_Boolean time_varying = false;

    // The stream's number stands where a time mode is asked for. The value is only used when the stream has no
    // keyframes, and then the time does not matter.
    const AEGP_LTimeMode time_mode = static_cast<AEGP_LTimeMode>(stream);

    ERR(suites.LayerSuite4()->AEGP_GetLayerInPoint(source, AEGP_LTimeMode_CompTime, &in_point));
    ERR(suites.StreamSuite4()->AEGP_GetNewLayerStream(info->plugin_id, source, stream, &source_stream));
    ERR(suites.StreamSuite4()->AEGP_GetNewStreamValue(info->plugin_id, source_stream, time_mode, &in_point, true,
                                                      &value));
    ERR(suites.StreamSuite4()->AEGP_GetNewLayerStream(info->plugin_id, destination, stream, &destination_stream));
    ERR(suites.StreamSuite4()->AEGP_IsStreamTimevarying(source_stream, &time_varying));
    if (time_varying) {
        A_long keyframe_count = 0;
        *changed = 1;
        ERR(add_keyframes(info, suites, source_stream, destination_stream, &keyframe_count));
        ERR(copy_keyframe_attributes(info, suites, source_stream, destination_stream, keyframe_count));
    } else {
        ERR(suites.StreamSuite4()->AEGP_SetStreamValue(info->plugin_id, destination_stream, &value));
    }
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    ERR(suites.StreamSuite4()->AEGP_DisposeStream(source_stream));
    ERR(suites.StreamSuite4()->AEGP_DisposeStream(destination_stream));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
