// Suites of the fake host: streams, keyframes, effects.
#include "fake_host.h"

namespace fake {

namespace {

using Arguments = std::vector<std::string>;

Stream& stream_of(AEGP_StreamRefH stream) {
    return *object<Stream>(stream);
}

Keyframe& keyframe_of(AEGP_StreamRefH stream, AEGP_KeyframeIndex index) {
    return stream_of(stream).keyframes.at(static_cast<std::size_t>(index));
}

void write_value(double number_value, AEGP_StreamRefH stream, AEGP_StreamValue2* value) {
    value->streamH = stream;
    value->val.one_d = number_value;
    host().opened(entry_of(*value));
}

constexpr double kInfluence = 0.1;

AEGP_KeyframeEase ease_of(double speed) {
    return {speed, speed * kInfluence};
}

std::string ease_text(const AEGP_KeyframeEase& ease) {
    return number(ease.speedF) + (ease.influenceF == ease.speedF * kInfluence ? "" : " with another influence");
}

void put(std::vector<double>& eases, A_long dimension, double speed) {
    const auto place = static_cast<std::size_t>(dimension);
    if (eases.size() <= place) eases.resize(place + 1);
    eases[place] = speed;
}

// A keyframe takes the place of one at the same time.
std::size_t put(std::vector<Keyframe>& keyframes, const Keyframe& keyframe) {
    std::size_t place = 0;
    while (place < keyframes.size() && keyframes[place].time.value < keyframe.time.value) ++place;
    const auto position = keyframes.begin() + static_cast<std::ptrdiff_t>(place);
    if (position != keyframes.end() && position->time.value == keyframe.time.value) {
        *position = keyframe;
    } else {
        keyframes.insert(position, keyframe);
    }
    return place;
}

A_Err is_stream_legal(AEGP_LayerH layer, AEGP_LayerStream number_of_stream, A_Boolean* legal) {
    return host().call("Stream4.IsStreamLegal", {text_of(layer), number(number_of_stream)},
                       [&] { *legal = object<Layer>(layer)->legal_streams.contains(number_of_stream); });
}

A_Err can_vary_over_time(AEGP_StreamRefH stream, A_Boolean* can_vary) {
    return host().call("Stream4.CanVaryOverTime", {text_of(stream)}, [&] { *can_vary = stream_of(stream).can_vary; });
}

A_Err get_new_layer_stream(AEGP_PluginID id, AEGP_LayerH layer, AEGP_LayerStream number_of_stream,
                           AEGP_StreamRefH* stream) {
    return host().call("Stream4.GetNewLayerStream", {number(id), text_of(layer), number(number_of_stream)}, [&] {
        *stream = handle(host().layer_stream(object<Layer>(layer), number_of_stream));
        host().opened("stream " + text_of(*stream));
    });
}

A_Err get_effect_num_param_streams(AEGP_EffectRefH effect, A_long* count) {
    return host().call("Stream4.GetEffectNumParamStreams", {text_of(effect)},
                       [&] { *count = static_cast<A_long>(object<Effect>(effect)->parameters.size()); });
}

A_Err get_new_effect_stream_by_index(AEGP_PluginID id, AEGP_EffectRefH effect, PF_ParamIndex index,
                                     AEGP_StreamRefH* stream) {
    return host().call("Stream4.GetNewEffectStreamByIndex", {number(id), text_of(effect), number(index)}, [&] {
        *stream = handle(object<Effect>(effect)->parameters.at(static_cast<std::size_t>(index)));
        host().opened("stream " + text_of(*stream));
    });
}

A_Err dispose_stream(AEGP_StreamRefH stream) {
    return host().call("Stream4.DisposeStream", {text_of(stream)}, [&] { host().closed("stream " + text_of(stream)); });
}

A_Err is_stream_timevarying(AEGP_StreamRefH stream, A_Boolean* varying) {
    return host().call("Stream4.IsStreamTimevarying", {text_of(stream)},
                       [&] { *varying = stream_of(stream).time_varying; });
}

A_Err get_stream_type(AEGP_StreamRefH stream, AEGP_StreamType* type) {
    return host().call("Stream4.GetStreamType", {text_of(stream)}, [&] { *type = stream_of(stream).type; });
}

A_Err get_new_stream_value(AEGP_PluginID id, AEGP_StreamRefH stream, AEGP_LTimeMode mode, const A_Time* time,
                           A_Boolean pre_expression, AEGP_StreamValue2* value) {
    const Arguments arguments = {number(id), text_of(stream), "mode " + number(A_long{mode}), text_of(*time),
                                 pre_expression ? "pre-expression" : "post-expression"};
    return host().call("Stream4.GetNewStreamValue", arguments,
                       [&] { write_value(stream_of(stream).value, stream, value); });
}

A_Err dispose_stream_value(AEGP_StreamValue2* value) {
    return host().call("Stream4.DisposeStreamValue", {text_of(*value)}, [&] { host().closed(entry_of(*value)); });
}

A_Err set_stream_value(AEGP_PluginID id, AEGP_StreamRefH stream, AEGP_StreamValue2* value) {
    return host().call("Stream4.SetStreamValue", {number(id), text_of(stream), text_of(*value)},
                       [&] { stream_of(stream).value = value->val.one_d; });
}

A_Err get_expression_state(AEGP_PluginID id, AEGP_StreamRefH stream, A_Boolean* enabled) {
    return host().call("Stream4.GetExpressionState", {number(id), text_of(stream)},
                       [&] { *enabled = stream_of(stream).expression_enabled; });
}

A_Err set_expression_state(AEGP_PluginID id, AEGP_StreamRefH stream, A_Boolean enabled) {
    return host().call("Stream4.SetExpressionState", {number(id), text_of(stream), enabled ? "true" : "false"},
                       [&] { stream_of(stream).expression_enabled = enabled != 0; });
}

A_Err get_expression(AEGP_PluginID id, AEGP_StreamRefH stream, AEGP_MemHandle* expression) {
    return host().call("Stream4.GetExpression", {number(id), text_of(stream)}, [&] {
        const Stream& asked = stream_of(stream);
        *expression = asked.has_expression ? handle(host().add_memory(asked.expression)) : nullptr;
        if (asked.has_expression) host().opened(text_of(*expression));
    });
}

A_Err set_expression(AEGP_PluginID id, AEGP_StreamRefH stream, const A_char* expression) {
    return host().call("Stream4.SetExpression", {number(id), text_of(stream), expression}, [&] {
        stream_of(stream).has_expression = true;
        stream_of(stream).expression = expression;
        stream_of(stream).expression_given = expression;
    });
}

A_Err get_stream_num_kfs(AEGP_StreamRefH stream, A_long* count) {
    return host().call("Keyframe4.GetStreamNumKFs", {text_of(stream)}, [&] {
        *count = stream_of(stream).type == AEGP_StreamType_NO_DATA
                     ? A_long{AEGP_NumKF_NO_DATA}
                     : static_cast<A_long>(stream_of(stream).keyframes.size());
    });
}

A_Err get_keyframe_time(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_LTimeMode mode, A_Time* time) {
    const Arguments arguments = {text_of(stream), number(index), mode == AEGP_LTimeMode_CompTime ? "comp" : "layer"};
    return host().call("Keyframe4.GetKeyframeTime", arguments, [&] { *time = keyframe_of(stream, index).time; });
}

A_Err insert_keyframe(AEGP_StreamRefH stream, AEGP_LTimeMode mode, const A_Time* time, AEGP_KeyframeIndex* index) {
    const Arguments arguments = {text_of(stream), mode == AEGP_LTimeMode_CompTime ? "comp" : "layer", text_of(*time)};
    return host().call("Keyframe4.InsertKeyframe", arguments, [&] {
        Keyframe keyframe;
        keyframe.time = *time;
        *index = static_cast<AEGP_KeyframeIndex>(put(stream_of(stream).keyframes, keyframe));
    });
}

A_Err get_new_keyframe_value(AEGP_PluginID id, AEGP_StreamRefH stream, AEGP_KeyframeIndex index,
                             AEGP_StreamValue2* value) {
    return host().call("Keyframe4.GetNewKeyframeValue", {number(id), text_of(stream), number(index)},
                       [&] { write_value(keyframe_of(stream, index).value, stream, value); });
}

A_Err set_keyframe_value(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, const AEGP_StreamValue2* value) {
    return host().call("Keyframe4.SetKeyframeValue", {text_of(stream), number(index), text_of(*value)},
                       [&] { keyframe_of(stream, index).value = value->val.one_d; });
}

A_Err get_stream_temporal_dimensionality(AEGP_StreamRefH stream, A_short* dimensions) {
    return host().call("Keyframe4.GetStreamTemporalDimensionality", {text_of(stream)},
                       [&] { *dimensions = stream_of(stream).dimensions; });
}

A_Err get_new_keyframe_spatial_tangents(AEGP_PluginID id, AEGP_StreamRefH stream, AEGP_KeyframeIndex index,
                                        AEGP_StreamValue2* in, AEGP_StreamValue2* out) {
    return host().call("Keyframe4.GetNewKeyframeSpatialTangents", {number(id), text_of(stream), number(index)}, [&] {
        write_value(keyframe_of(stream, index).in_tangent, stream, in);
        write_value(keyframe_of(stream, index).out_tangent, stream, out);
    });
}

A_Err set_keyframe_spatial_tangents(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, const AEGP_StreamValue2* in,
                                    const AEGP_StreamValue2* out) {
    const Arguments arguments = {text_of(stream), number(index), text_of(*in), text_of(*out)};
    return host().call("Keyframe4.SetKeyframeSpatialTangents", arguments, [&] {
        keyframe_of(stream, index).in_tangent = in->val.one_d;
        keyframe_of(stream, index).out_tangent = out->val.one_d;
    });
}

A_Err get_keyframe_temporal_ease(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, A_long dimension,
                                 AEGP_KeyframeEase* in, AEGP_KeyframeEase* out) {
    const Arguments arguments = {text_of(stream), number(index), number(dimension)};
    return host().call("Keyframe4.GetKeyframeTemporalEase", arguments, [&] {
        if (dimension < 0) return A_Err_PARAMETER;
        const Keyframe& keyframe = keyframe_of(stream, index);
        *in = ease_of(keyframe.in_eases.at(static_cast<std::size_t>(dimension)));
        *out = ease_of(keyframe.out_eases.at(static_cast<std::size_t>(dimension)));
        return A_Err_NONE;
    });
}

A_Err set_keyframe_temporal_ease(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, A_long dimension,
                                 const AEGP_KeyframeEase* in, const AEGP_KeyframeEase* out) {
    const Arguments arguments = {text_of(stream), number(index), number(dimension), ease_text(*in), ease_text(*out)};
    return host().call("Keyframe4.SetKeyframeTemporalEase", arguments, [&] {
        put(keyframe_of(stream, index).in_eases, dimension, in->speedF);
        put(keyframe_of(stream, index).out_eases, dimension, out->speedF);
    });
}

A_Err get_keyframe_flags(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_KeyframeFlags* flags) {
    return host().call("Keyframe4.GetKeyframeFlags", {text_of(stream), number(index)},
                       [&] { *flags = keyframe_of(stream, index).flags; });
}

A_Err set_keyframe_flag(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_KeyframeFlags flag, A_Boolean value) {
    const Arguments arguments = {text_of(stream), number(index), number(flag), number(A_long{value})};
    return host().call("Keyframe4.SetKeyframeFlag", arguments, [&] {
        AEGP_KeyframeFlags& flags = keyframe_of(stream, index).flags;
        flags = value ? flags | flag : flags & ~flag;
    });
}

A_Err get_keyframe_interpolation(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_KeyframeInterpolationType* in,
                                 AEGP_KeyframeInterpolationType* out) {
    return host().call("Keyframe4.GetKeyframeInterpolation", {text_of(stream), number(index)}, [&] {
        *in = keyframe_of(stream, index).in;
        *out = keyframe_of(stream, index).out;
    });
}

A_Err set_keyframe_interpolation(AEGP_StreamRefH stream, AEGP_KeyframeIndex index, AEGP_KeyframeInterpolationType in,
                                 AEGP_KeyframeInterpolationType out) {
    const Arguments arguments = {text_of(stream), number(index), number(in), number(out)};
    return host().call("Keyframe4.SetKeyframeInterpolation", arguments, [&] {
        keyframe_of(stream, index).in = in;
        keyframe_of(stream, index).out = out;
    });
}

A_Err start_add_keyframes(AEGP_StreamRefH stream, AEGP_AddKeyframesInfoH* batch) {
    return host().call("Keyframe4.StartAddKeyframes", {text_of(stream)}, [&] {
        *batch = handle(host().add_batch(object<Stream>(stream)));
        host().opened(text_of(*batch));
    });
}

// The index given back is not the loop's, so that its use would show.
A_Err add_keyframes(AEGP_AddKeyframesInfoH batch, AEGP_LTimeMode mode, const A_Time* time, A_long* index) {
    const Arguments arguments = {text_of(batch), mode == AEGP_LTimeMode_CompTime ? "comp" : "layer", text_of(*time)};
    return host().call("Keyframe4.AddKeyframes", arguments, [&] {
        Keyframe keyframe;
        keyframe.time = *time;
        object<Batch>(batch)->keyframes.push_back(keyframe);
        *index = 1000;
    });
}

A_Err set_add_keyframe(AEGP_AddKeyframesInfoH batch, A_long index, const AEGP_StreamValue2* value) {
    return host().call("Keyframe4.SetAddKeyframe", {text_of(batch), number(index), text_of(*value)}, [&] {
        object<Batch>(batch)->keyframes.at(static_cast<std::size_t>(index)).value = value->val.one_d;
    });
}

A_Err end_add_keyframes(A_Boolean add, AEGP_AddKeyframesInfoH batch) {
    return host().call("Keyframe4.EndAddKeyframes", {add ? "true" : "false", text_of(batch)}, [&] {
        const Batch& ended = *object<Batch>(batch);
        for (const Keyframe& keyframe : ended.keyframes) put(ended.stream->keyframes, keyframe);
        host().closed(text_of(batch));
    });
}

A_Err get_layer_num_effects(AEGP_LayerH layer, A_long* count) {
    return host().call("Effect3.GetLayerNumEffects", {text_of(layer)},
                       [&] { *count = static_cast<A_long>(object<Layer>(layer)->effects.size()); });
}

A_Err get_layer_effect_by_index(AEGP_PluginID id, AEGP_LayerH layer, AEGP_EffectIndex index, AEGP_EffectRefH* effect) {
    return host().call("Effect3.GetLayerEffectByIndex", {number(id), text_of(layer), number(index)}, [&] {
        *effect = handle(object<Layer>(layer)->effects.at(static_cast<std::size_t>(index)));
        host().opened("effect " + text_of(*effect));
    });
}

A_Err get_installed_key_from_layer_effect(AEGP_EffectRefH effect, AEGP_InstalledEffectKey* key) {
    return host().call("Effect3.GetInstalledKeyFromLayerEffect", {text_of(effect)},
                       [&] { *key = object<Effect>(effect)->key; });
}

A_Err get_effect_flags(AEGP_EffectRefH effect, AEGP_EffectFlags* flags) {
    return host().call("Effect3.GetEffectFlags", {text_of(effect)}, [&] { *flags = object<Effect>(effect)->flags; });
}

A_Err set_effect_flags(AEGP_EffectRefH effect, AEGP_EffectFlags mask, AEGP_EffectFlags flags) {
    return host().call("Effect3.SetEffectFlags", {text_of(effect), number(mask), number(flags)}, [&] {
        object<Effect>(effect)->flags = (object<Effect>(effect)->flags & ~mask) | (flags & mask);
    });
}

A_Err dispose_effect(AEGP_EffectRefH effect) {
    return host().call("Effect3.DisposeEffect", {text_of(effect)}, [&] { host().closed("effect " + text_of(effect)); });
}

// Every applied effect has three parameters besides its input layer.
A_Err apply_effect(AEGP_PluginID id, AEGP_LayerH layer, AEGP_InstalledEffectKey key, AEGP_EffectRefH* effect) {
    return host().call("Effect3.ApplyEffect", {number(id), text_of(layer), number(key)}, [&] {
        *effect = handle(host().add_effect(object<Layer>(layer), "new" + number(key), key, 4));
        host().opened("effect " + text_of(*effect));
    });
}

}  // namespace

void add_stream_suites(SuiteTables& tables) {
    auto& stream = tables.add<AEGP_StreamSuite4>("AEGP Stream Suite 9");
    stream.AEGP_IsStreamLegal = is_stream_legal;
    stream.AEGP_CanVaryOverTime = can_vary_over_time;
    stream.AEGP_GetNewLayerStream = get_new_layer_stream;
    stream.AEGP_GetEffectNumParamStreams = get_effect_num_param_streams;
    stream.AEGP_GetNewEffectStreamByIndex = get_new_effect_stream_by_index;
    stream.AEGP_DisposeStream = dispose_stream;
    stream.AEGP_IsStreamTimevarying = is_stream_timevarying;
    stream.AEGP_GetStreamType = get_stream_type;
    stream.AEGP_GetNewStreamValue = get_new_stream_value;
    stream.AEGP_DisposeStreamValue = dispose_stream_value;
    stream.AEGP_SetStreamValue = set_stream_value;
    stream.AEGP_GetExpressionState = get_expression_state;
    stream.AEGP_SetExpressionState = set_expression_state;
    stream.AEGP_GetExpression = get_expression;
    stream.AEGP_SetExpression = set_expression;

    auto& keyframe = tables.add<AEGP_KeyframeSuite4>("AEGP Keyframe Suite 4");
    keyframe.AEGP_GetStreamNumKFs = get_stream_num_kfs;
    keyframe.AEGP_GetKeyframeTime = get_keyframe_time;
    keyframe.AEGP_InsertKeyframe = insert_keyframe;
    keyframe.AEGP_GetNewKeyframeValue = get_new_keyframe_value;
    keyframe.AEGP_SetKeyframeValue = set_keyframe_value;
    keyframe.AEGP_GetStreamTemporalDimensionality = get_stream_temporal_dimensionality;
    keyframe.AEGP_GetNewKeyframeSpatialTangents = get_new_keyframe_spatial_tangents;
    keyframe.AEGP_SetKeyframeSpatialTangents = set_keyframe_spatial_tangents;
    keyframe.AEGP_GetKeyframeTemporalEase = get_keyframe_temporal_ease;
    keyframe.AEGP_SetKeyframeTemporalEase = set_keyframe_temporal_ease;
    keyframe.AEGP_GetKeyframeFlags = get_keyframe_flags;
    keyframe.AEGP_SetKeyframeFlag = set_keyframe_flag;
    keyframe.AEGP_GetKeyframeInterpolation = get_keyframe_interpolation;
    keyframe.AEGP_SetKeyframeInterpolation = set_keyframe_interpolation;
    keyframe.AEGP_StartAddKeyframes = start_add_keyframes;
    keyframe.AEGP_AddKeyframes = add_keyframes;
    keyframe.AEGP_SetAddKeyframe = set_add_keyframe;
    keyframe.AEGP_EndAddKeyframes = end_add_keyframes;

    auto& effect = tables.add<AEGP_EffectSuite3>("AEGP Effect Suite 3");
    effect.AEGP_GetLayerNumEffects = get_layer_num_effects;
    effect.AEGP_GetLayerEffectByIndex = get_layer_effect_by_index;
    effect.AEGP_GetInstalledKeyFromLayerEffect = get_installed_key_from_layer_effect;
    effect.AEGP_GetEffectFlags = get_effect_flags;
    effect.AEGP_SetEffectFlags = set_effect_flags;
    effect.AEGP_DisposeEffect = dispose_effect;
    effect.AEGP_ApplyEffect = apply_effect;
}

}  // namespace fake
