// Applying effects anew, with parameters, keyframes and expressions.
#include <algorithm>

#include "operation_test.h"

class Effects : public OperationTest {
  protected:
    A_Err copy() { return copy_effects_to_layer(&info, fake::handle(nest), fake::handle(above)); }

    // An effect of the pre-comp layer with its input layer and so many parameters.
    fake::Effect* blur(int parameters) { return host.add_effect(nest, "blur", 5, parameters + 1); }

    static void key(fake::Stream* stream, AEGP_StreamType type, A_short dimensions, AEGP_KeyframeFlags flags) {
        stream->type = type;
        stream->dimensions = dimensions;
        stream->time_varying = true;
        fake::Keyframe keyframe;
        keyframe.time = {10, 10};
        keyframe.value = 3;
        keyframe.flags = flags;
        keyframe.in = AEGP_KeyInterp_BEZIER;
        keyframe.out = AEGP_KeyInterp_HOLD;
        for (int dimension = 0; dimension < dimensions; ++dimension) {
            keyframe.in_eases.push_back(dimension + 0.25);
            keyframe.out_eases.push_back(dimension + 0.5);
        }
        keyframe.in_tangent = 1;
        keyframe.out_tangent = 2;
        stream->keyframes = {keyframe};
    }

    // From the first call whose line is the one to the last before the other.
    std::vector<std::string> calls_from(const std::string& first, const std::string& end) {
        const auto start = std::find(host.calls.begin(), host.calls.end(), first);
        return {start, std::find(start, host.calls.end(), end)};
    }

    std::vector<std::string> calls_about_the_value() {
        return calls_from("Stream4.IsStreamTimevarying(nest.blur#1)", "Stream4.CanVaryOverTime(nest.blur#1)");
    }

    std::vector<std::string> calls_about_the_expression() {
        return calls_from("Stream4.CanVaryOverTime(nest.blur#1)", "Stream4.DisposeStream(nest.blur#1)");
    }
};

TEST_F(Effects, without_any_cost_one_call) {
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Effect3.GetLayerNumEffects(nest)"));
}

TEST_F(Effects, static_parameter_is_copied_and_the_input_layer_is_not) {
    blur(1)->parameters[1]->value = 8;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(
        host.calls,
        ElementsAre("Effect3.GetLayerNumEffects(nest)", "Effect3.GetLayerEffectByIndex(7, nest, 0)",
                    "Effect3.GetInstalledKeyFromLayerEffect(nest.blur)", "Effect3.ApplyEffect(7, above, 5)",
                    "Effect3.GetEffectFlags(nest.blur)", "Effect3.SetEffectFlags(above.new5, 1, 1)",
                    "Stream4.GetEffectNumParamStreams(nest.blur)", "Stream4.GetNewEffectStreamByIndex(7, nest.blur, 1)",
                    "Stream4.GetNewEffectStreamByIndex(7, above.new5, 1)", "Stream4.IsStreamTimevarying(nest.blur#1)",
                    "Stream4.GetNewStreamValue(7, nest.blur#1, mode 0, 0/1, pre-expression)",
                    "Stream4.SetStreamValue(7, above.new5#1, 8)", "Stream4.DisposeStreamValue(8)",
                    "Stream4.CanVaryOverTime(nest.blur#1)", "Stream4.GetExpression(7, nest.blur#1)",
                    "Stream4.GetExpressionState(7, nest.blur#1)", "Stream4.SetExpressionState(7, above.new5#1, false)",
                    "Stream4.DisposeStream(nest.blur#1)", "Stream4.DisposeStream(above.new5#1)",
                    "Effect3.DisposeEffect(nest.blur)", "Effect3.DisposeEffect(above.new5)"));
}

TEST_F(Effects, keyframe_is_inserted_at_the_index_that_the_host_gives) {
    key(blur(1)->parameters[1], AEGP_StreamType_TwoD_SPATIAL, 2, AEGP_KeyframeFlag_ROVING | 1);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(
        calls_about_the_value(),
        ElementsAre(
            "Stream4.IsStreamTimevarying(nest.blur#1)", "Keyframe4.GetStreamNumKFs(nest.blur#1)",
            "Keyframe4.GetKeyframeTime(nest.blur#1, 0, comp)", "Keyframe4.InsertKeyframe(above.new5#1, comp, 10/10)",
            "Keyframe4.GetNewKeyframeValue(7, nest.blur#1, 0)", "Keyframe4.SetKeyframeValue(above.new5#1, 0, 3)",
            "Stream4.DisposeStreamValue(3)", "Keyframe4.GetKeyframeFlags(nest.blur#1, 0)",
            "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 0, 0)", "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 1, 1)",
            "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 2, 0)", "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 4, 0)",
            "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 8, 0)", "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 16, 16)",
            "Keyframe4.GetKeyframeInterpolation(nest.blur#1, 0)",
            "Keyframe4.SetKeyframeInterpolation(above.new5#1, 0, 2, 3)", "Stream4.GetStreamType(nest.blur#1)",
            "Keyframe4.GetNewKeyframeSpatialTangents(7, nest.blur#1, 0)",
            "Keyframe4.SetKeyframeSpatialTangents(above.new5#1, 0, 1, 2)", "Stream4.DisposeStreamValue(1)",
            "Stream4.DisposeStreamValue(2)", "Keyframe4.GetStreamTemporalDimensionality(nest.blur#1)",
            "Keyframe4.GetKeyframeTemporalEase(nest.blur#1, 0, 1)",
            "Keyframe4.SetKeyframeTemporalEase(above.new5#1, 0, 1, 1.25, 1.5)"));
}

TEST_F(Effects, keyframes_use_the_hosts_index_when_it_differs_from_their_own) {
    // The two source keyframes come in falling order, so the second lands in front.
    fake::Stream* point = blur(1)->parameters[1];
    key(point, AEGP_StreamType_TwoD_SPATIAL, 1, 0);
    point->keyframes.push_back(point->keyframes[0]);
    point->keyframes[1].time = {4, 10};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(
        calls_from("Keyframe4.GetKeyframeTime(nest.blur#1, 1, comp)", "Stream4.CanVaryOverTime(nest.blur#1)"),
        ElementsAre(
            "Keyframe4.GetKeyframeTime(nest.blur#1, 1, comp)", "Keyframe4.InsertKeyframe(above.new5#1, comp, 4/10)",
            "Keyframe4.GetNewKeyframeValue(7, nest.blur#1, 1)", "Keyframe4.SetKeyframeValue(above.new5#1, 0, 3)",
            "Stream4.DisposeStreamValue(3)", "Keyframe4.GetKeyframeFlags(nest.blur#1, 1)",
            "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 0, 1)", "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 1, 0)",
            "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 2, 0)", "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 4, 0)",
            "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 8, 0)", "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 16, 0)",
            "Keyframe4.GetKeyframeInterpolation(nest.blur#1, 1)",
            "Keyframe4.SetKeyframeInterpolation(above.new5#1, 0, 2, 3)", "Stream4.GetStreamType(nest.blur#1)",
            "Keyframe4.GetNewKeyframeSpatialTangents(7, nest.blur#1, 1)",
            "Keyframe4.SetKeyframeSpatialTangents(above.new5#1, 0, 1, 2)", "Stream4.DisposeStreamValue(1)",
            "Stream4.DisposeStreamValue(2)", "Keyframe4.GetStreamTemporalDimensionality(nest.blur#1)",
            "Keyframe4.GetKeyframeTemporalEase(nest.blur#1, 1, 0)",
            "Keyframe4.SetKeyframeTemporalEase(above.new5#1, 0, 0, 0.25, 0.5)"));
    EXPECT_EQ(host.count_of("GetStreamType(nest.blur#1)"), 2) << "read again for every keyframe";
}

TEST_F(Effects, parameter_that_varies_without_keyframes_gets_no_value) {
    blur(1)->parameters[1]->time_varying = true;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(calls_about_the_value(),
                ElementsAre("Stream4.IsStreamTimevarying(nest.blur#1)", "Keyframe4.GetStreamNumKFs(nest.blur#1)"));
}

TEST_F(Effects, negative_keyframe_count_inserts_nothing) {
    key(blur(1)->parameters[1], AEGP_StreamType_NO_DATA, 1, 0);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetKeyframeTime"), 0);
}

TEST_F(Effects, flags_are_given_as_their_masked_bits) {
    // 0x20 is none of the five, but not nothing.
    for (const AEGP_KeyframeFlags flags : {0x0, 0x1, 0x2, 0x4, 0x8, 0x10, 0x1F, 0x20}) {
        host.forget_calls();
        nest->effects.clear();
        key(blur(1)->parameters[1], AEGP_StreamType_OneD, 1, flags);
        EXPECT_EQ(copy(), A_Err_NONE);
        std::vector<std::string> expected;
        for (const int flag : {0, 1, 2, 4, 8, 16}) {
            const int value = flag == 0 ? (flags == 0 ? 1 : 0) : flags & flag;
            expected.push_back("Keyframe4.SetKeyframeFlag(above.new5#1, 0, " + std::to_string(flag) + ", " +
                               std::to_string(value) + ")");
        }
        EXPECT_EQ(host.calls_of("SetKeyframeFlag("), expected) << flags;
    }
}

TEST_F(Effects, only_spatial_parameters_get_tangents) {
    for (int type = AEGP_StreamType_ThreeD_SPATIAL; type <= AEGP_StreamType_TEXT_DOCUMENT; ++type) {
        host.forget_calls();
        nest->effects.clear();
        key(blur(1)->parameters[1], type, 1, 0);
        EXPECT_EQ(copy(), A_Err_NONE);
        EXPECT_EQ(host.count_of("Tangents"), type == 3 || type == 1 ? 2 : 0) << type;
        EXPECT_EQ(host.count_of("SetKeyframeTemporalEase"), 1) << type;
    }
}

TEST_F(Effects, only_the_last_dimension_gets_its_ease) {
    key(blur(1)->parameters[1], AEGP_StreamType_ThreeD, 3, 0);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("TemporalEase"),
                ElementsAre("Keyframe4.GetKeyframeTemporalEase(nest.blur#1, 0, 2)",
                            "Keyframe4.SetKeyframeTemporalEase(above.new5#1, 0, 2, 2.25, 2.5)"));
}

TEST_F(Effects, keyed_parameter_is_the_same_afterwards) {
    fake::Stream* point = blur(1)->parameters[1];
    key(point, AEGP_StreamType_TwoD_SPATIAL, 1, AEGP_KeyframeFlag_SPATIAL_CONTINUOUS | AEGP_KeyframeFlag_ROVING);
    point->keyframes.push_back(point->keyframes[0]);
    point->keyframes[1].time = {40, 10};
    point->keyframes[1].value = 4;
    point->keyframes[1].flags = 0;
    EXPECT_EQ(copy(), A_Err_NONE);
    ASSERT_EQ(point->keyframes.size(), 2u);
    expect_same(above->effects.front()->parameters[1]->keyframes, point->keyframes);
}

TEST_F(Effects, keyframe_without_flags_says_so_in_the_first_of_six_calls) {
    key(blur(1)->parameters[1], AEGP_StreamType_OneD, 1, 0);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetKeyframeFlag("), 6);
    EXPECT_EQ(host.calls_of("SetKeyframeFlag(").front(), "Keyframe4.SetKeyframeFlag(above.new5#1, 0, 0, 1)");
    EXPECT_EQ(host.count_of("Tangents"), 0) << "a slider is not spatial";
}

TEST_F(Effects, dimensionality_zero_asks_for_dimension_minus_one) {
    key(blur(1)->parameters[1], AEGP_StreamType_OneD, 0, 0);
    EXPECT_EQ(copy(), A_Err_PARAMETER);
    EXPECT_EQ(host.calls.back(), "Keyframe4.GetKeyframeTemporalEase(nest.blur#1, 0, -1)");
}

TEST_F(Effects, expression_goes_over_with_its_switch) {
    fake::Stream* slider = blur(1)->parameters[1];
    slider->has_expression = true;
    slider->expression = "wiggle(1,2)";
    slider->expression_enabled = true;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(
        calls_about_the_expression(),
        ElementsAre("Stream4.CanVaryOverTime(nest.blur#1)", "Stream4.GetExpression(7, nest.blur#1)",
                    "Memory1.LockMemHandle(memory1)", "Stream4.SetExpression(7, above.new5#1, wiggle(1,2))",
                    "Memory1.UnlockMemHandle(memory1)", "Memory1.FreeMemHandle(memory1)",
                    "Stream4.GetExpressionState(7, nest.blur#1)", "Stream4.SetExpressionState(7, above.new5#1, true)"));
}

TEST_F(Effects, expression_goes_over_as_the_host_holds_it) {
    fake::Stream* slider = blur(1)->parameters[1];
    slider->has_expression = true;
    slider->expression = "\xd8\x01";
    const void* locked = nullptr;
    host.on_call = [&](const std::string& line) {
        if (line.starts_with("Stream4.SetExpression(")) locked = host.memory_locked_last;
    };
    EXPECT_EQ(copy(), A_Err_NONE);
    ASSERT_NE(locked, nullptr);
    EXPECT_EQ(above->effects.front()->parameters[1]->expression_given, locked) << "not a text of its own";
}

TEST_F(Effects, switch_goes_over_without_an_expression_too) {
    blur(1)->parameters[1]->expression_enabled = true;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(
        calls_about_the_expression(),
        ElementsAre("Stream4.CanVaryOverTime(nest.blur#1)", "Stream4.GetExpression(7, nest.blur#1)",
                    "Stream4.GetExpressionState(7, nest.blur#1)", "Stream4.SetExpressionState(7, above.new5#1, true)"));
}

TEST_F(Effects, keyed_parameter_takes_its_expression_along) {
    fake::Stream* slider = blur(1)->parameters[1];
    key(slider, AEGP_StreamType_OneD, 1, 0);
    slider->has_expression = true;
    slider->expression = "value*2";
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("InsertKeyframe"), 1);
    EXPECT_EQ(host.count_of("SetExpression(7, above.new5#1, value*2)"), 1);
}

TEST_F(Effects, disabled_expression_stays_disabled) {
    fake::Stream* slider = blur(1)->parameters[1];
    slider->has_expression = true;
    slider->expression = "1";
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetExpression(7, above.new5#1, 1)"), 1);
    EXPECT_EQ(host.count_of("SetExpressionState(7, above.new5#1, false)"), 1);
}

TEST_F(Effects, parameter_that_cannot_vary_is_not_asked_for_an_expression) {
    blur(1)->parameters[1]->can_vary = false;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(calls_about_the_expression(), ElementsAre("Stream4.CanVaryOverTime(nest.blur#1)"));
}

TEST_F(Effects, state_is_carried_over_under_the_active_mask) {
    blur(0)->flags = AEGP_EffectFlags_AUDIO_TOO;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetEffectFlags(above.new5, 1, 4)"), 1);
    EXPECT_EQ(above->effects.front()->flags, 0);
}

TEST_F(Effects, that_are_on_come_on) {
    blur(0)->flags = AEGP_EffectFlags_ACTIVE | AEGP_EffectFlags_AUDIO_TOO;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetEffectFlags(above.new5, 1, 5)"), 1);
    EXPECT_EQ(above->effects.front()->flags, AEGP_EffectFlags_ACTIVE);
}

TEST_F(Effects, come_in_order_and_beside_those_already_there) {
    host.add_effect(above, "blur", 5, 1);
    blur(0);
    host.add_effect(nest, "glow", 6, 0);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Effect3.GetLayerNumEffects(nest)", "Effect3.GetLayerEffectByIndex(7, nest, 0)",
                            "Effect3.GetInstalledKeyFromLayerEffect(nest.blur)", "Effect3.ApplyEffect(7, above, 5)",
                            "Effect3.GetEffectFlags(nest.blur)", "Effect3.SetEffectFlags(above.new5, 1, 1)",
                            "Stream4.GetEffectNumParamStreams(nest.blur)", "Effect3.DisposeEffect(nest.blur)",
                            "Effect3.DisposeEffect(above.new5)", "Effect3.GetLayerEffectByIndex(7, nest, 1)",
                            "Effect3.GetInstalledKeyFromLayerEffect(nest.glow)", "Effect3.ApplyEffect(7, above, 6)",
                            "Effect3.GetEffectFlags(nest.glow)", "Effect3.SetEffectFlags(above.new6, 1, 1)",
                            "Stream4.GetEffectNumParamStreams(nest.glow)", "Effect3.DisposeEffect(nest.glow)",
                            "Effect3.DisposeEffect(above.new6)"));
    ASSERT_EQ(above->effects.size(), 3u);
    EXPECT_EQ(above->effects[0]->key, 5);
    EXPECT_EQ(above->effects[1]->key, 5) << "a second instance";
    EXPECT_EQ(nest->effects.size(), 2u);
}

TEST_F(Effects, parameters_are_visited_from_the_first_behind_the_input_layer_to_the_last) {
    blur(3);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("GetNewEffectStreamByIndex"),
                ElementsAre("Stream4.GetNewEffectStreamByIndex(7, nest.blur, 1)",
                            "Stream4.GetNewEffectStreamByIndex(7, above.new5, 1)",
                            "Stream4.GetNewEffectStreamByIndex(7, nest.blur, 2)",
                            "Stream4.GetNewEffectStreamByIndex(7, above.new5, 2)",
                            "Stream4.GetNewEffectStreamByIndex(7, nest.blur, 3)",
                            "Stream4.GetNewEffectStreamByIndex(7, above.new5, 3)"));
}

TEST_F(Effects, parameters_of_every_type_go_the_same_way) {
    std::vector<std::string> usual;
    for (int type = AEGP_StreamType_NO_DATA; type <= AEGP_StreamType_TEXT_DOCUMENT; ++type) {
        host.forget_calls();
        nest->effects.clear();
        blur(1)->parameters[1]->type = type;
        EXPECT_EQ(copy(), A_Err_NONE);
        if (usual.empty()) usual = host.calls;
        EXPECT_EQ(host.calls, usual) << type;
    }
    EXPECT_EQ(usual.size(), 21u);
}

TEST_F(Effects, are_asked_for_with_the_plug_ins_id) {
    info.plugin_id = 31;
    fake::Effect* effect = blur(2);
    key(effect->parameters[1], AEGP_StreamType_TwoD_SPATIAL, 1, 0);
    effect->parameters[2]->has_expression = true;
    EXPECT_EQ(copy(), A_Err_NONE);
    for (const char* call :
         {"GetLayerEffectByIndex(31,", "ApplyEffect(31,", "GetNewEffectStreamByIndex(31, nest.blur, 1)",
          "GetNewEffectStreamByIndex(31, above.new5, 1)", "GetNewKeyframeValue(31,",
          "GetNewKeyframeSpatialTangents(31,", "GetNewStreamValue(31,", "SetStreamValue(31,",
          "GetExpression(31, nest.blur#2)", "SetExpression(31,", "GetExpressionState(31, nest.blur#2)",
          "SetExpressionState(31, above.new5#2"}) {
        EXPECT_EQ(host.count_of(call), 1) << call;
    }
}

// ---- Failures

TEST_F(Effects, copying_to_one_layer_ends_at_the_first_failure) {
    fake::Effect* effect = blur(2);
    key(effect->parameters[1], AEGP_StreamType_ThreeD_SPATIAL, 1, 3);
    effect->parameters[1]->keyframes.push_back(effect->parameters[1]->keyframes[0]);
    effect->parameters[2]->has_expression = true;
    host.add_effect(nest, "glow", 6, 2);
    expect_faults_end_it([&] { return copy(); });
}

TEST_F(Effects, everything_is_given_back_on_success) {
    fake::Effect* effect = blur(2);
    key(effect->parameters[1], AEGP_StreamType_ThreeD_SPATIAL, 1, 3);
    effect->parameters[2]->has_expression = true;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.open, IsEmpty());
}

TEST_F(Effects, failure_leaves_undisposed_what_is_held_then) {
    fake::Stream* slider = blur(1)->parameters[1];
    slider->value = 8;
    slider->has_expression = true;
    const auto operation = [&] { return copy(); };
    const std::string old_effect = "effect nest.blur", new_effect = "effect above.new5";
    const std::string old_stream = "stream nest.blur#1", new_stream = "stream above.new5#1";
    const std::vector<std::string> effects = {old_effect, new_effect};
    const std::vector<std::string> streams = {old_effect, new_effect, old_stream, new_stream};
    const auto streams_and = [&](std::vector<std::string> more) {
        more.insert(more.begin(), streams.begin(), streams.end());
        return more;
    };
    expect_left_open("GetLayerNumEffects", {}, operation);
    expect_left_open("GetInstalledKeyFromLayerEffect", {old_effect}, operation);
    expect_left_open("ApplyEffect", {old_effect}, operation);
    expect_left_open("SetEffectFlags", effects, operation);
    expect_left_open("GetEffectNumParamStreams", effects, operation);
    expect_left_open("ByIndex(7, above.new5, 1", {old_effect, new_effect, old_stream}, operation);
    expect_left_open("GetNewStreamValue", streams, operation);
    expect_left_open("SetStreamValue", streams_and({"value 8 of nest.blur#1"}), operation);
    expect_left_open("LockMemHandle(memory1", streams_and({"memory1"}), operation);
    expect_left_open("SetExpression(", streams_and({"memory2", "lock of memory2"}), operation);
    expect_left_open("FreeMemHandle(memory3", streams_and({"memory3"}), operation);
    expect_left_open("SetExpressionState", streams, operation);
    expect_left_open("DisposeStream(nest", streams, operation);
    expect_left_open("DisposeStream(above", {old_effect, new_effect, new_stream}, operation);
    expect_left_open("DisposeEffect(nest", effects, operation);
    expect_left_open("DisposeEffect(above", {new_effect}, operation);

    key(slider, AEGP_StreamType_TwoD_SPATIAL, 1, 0);
    expect_left_open("SetKeyframeValue", streams_and({"value 3 of nest.blur#1"}), operation);
    expect_left_open("SetKeyframeFlag", streams, operation);
    expect_left_open("SetKeyframeSpatialTangents", streams_and({"value 1 of nest.blur#1", "value 2 of nest.blur#1"}),
                     operation);
    expect_left_open("SetKeyframeTemporalEase", streams, operation);
}

TEST_F(Effects, applied_before_a_failure_stay_with_their_keyframes) {
    key(blur(1)->parameters[1], AEGP_StreamType_OneD, 1, 0);
    host.fail_on = "SetKeyframeTemporalEase";
    EXPECT_EQ(copy(), fake::Host::kInjected);
    ASSERT_EQ(above->effects.size(), 1u);
    EXPECT_EQ(above->effects.front()->parameters[1]->keyframes.size(), 1u);
}

TEST_F(Effects, use_one_version_of_each_suite_and_no_options) {
    info.options = nullptr;
    fake::Effect* effect = blur(1);
    key(effect->parameters[1], AEGP_StreamType_OneD, 1, 0);
    effect->parameters[1]->has_expression = true;
    fake::Collection* layers = host.add_collection("layers", {a});
    EXPECT_THAT(suites_of([&] { return copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)); }),
                ElementsAre("AEGP Collection Suite 2", "AEGP Effect Suite 3", "AEGP Keyframe Suite 4",
                            "AEGP Memory Suite 1", "AEGP Stream Suite 9"));
}

// ---- A collection of layers

TEST_F(Effects, go_to_each_layer_of_the_collection_in_turn) {
    fake::Collection* layers = host.add_collection("layers", {c, a});
    blur(0);
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), A_Err_NONE);
    EXPECT_THAT(host.calls_of("Collection2"), ElementsAre("Collection2.GetCollectionNumItems(layers)",
                                                          "Collection2.GetCollectionItemByIndex(layers, 0)",
                                                          "Collection2.GetCollectionItemByIndex(layers, 1)"));
    EXPECT_THAT(host.calls_of("ApplyEffect"),
                ElementsAre("Effect3.ApplyEffect(7, c, 5)", "Effect3.ApplyEffect(7, a, 5)"));
}

TEST_F(Effects, none_leave_every_layer_of_the_collection_unchanged) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetLayerNumEffects(nest)"), 2);
    EXPECT_EQ(host.calls.size(), 5u);
}

TEST_F(Effects, go_nowhere_when_the_collection_is_empty_or_cannot_be_counted) {
    blur(0);
    fake::Collection* layers = host.add_collection("layers", {});
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), nullptr), A_Err_PARAMETER);
    EXPECT_EQ(host.calls.size(), 2u);
}

TEST_F(Effects, failure_on_one_layer_does_not_stop_the_others) {
    blur(0);
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    host.fail_on = "ApplyEffect(7, b";
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(host.count_of("ApplyEffect"), 3);
}

TEST_F(Effects, missing_suite_for_the_layers_is_ignored_too) {
    blur(0);
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.refused = {"AEGP Effect Suite 3"};
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetCollectionItemByIndex"), 2);
    host.refused = {"AEGP Collection Suite 2"};
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), 516);
}

TEST_F(Effects, items_that_are_no_layers_are_passed_over) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    layers->items[0].type = AEGP_CollectionItemType_EFFECT;
    blur(0);
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), A_Err_NONE);
    EXPECT_THAT(host.calls_of("ApplyEffect"), ElementsAre("Effect3.ApplyEffect(7, b, 5)"));
}

TEST_F(Effects, unreadable_item_repeats_the_last_one_to_the_end) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    host.fail_on = "GetCollectionItemByIndex(layers, 1)";
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), fake::Host::kInjected);
    EXPECT_THAT(
        host.calls,
        ElementsAre("Collection2.GetCollectionNumItems(layers)", "Collection2.GetCollectionItemByIndex(layers, 0)",
                    "Effect3.GetLayerNumEffects(nest)", "Collection2.GetCollectionItemByIndex(layers, 1)",
                    "Effect3.GetLayerNumEffects(nest)", "Effect3.GetLayerNumEffects(nest)"));
}

TEST_F(Effects, unreadable_first_item_is_no_layer) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.fail_on = "GetCollectionItemByIndex(layers, 0)";
    EXPECT_EQ(copy_effects_to_all_layers(&info, fake::handle(nest), fake::handle(layers)), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 2u);
}
