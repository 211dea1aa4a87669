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
    const auto first = std::find(host.calls.begin(), host.calls.end(), "Stream4.IsStreamTimevarying(nest.blur#1)");
    const auto last = std::find(host.calls.begin(), host.calls.end(), "Stream4.CanVaryOverTime(nest.blur#1)");
    EXPECT_THAT(
        std::vector<std::string>(first, last),
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
    fake::Stream* slider = blur(1)->parameters[1];
    key(slider, AEGP_StreamType_OneD, 1, 0);
    slider->keyframes.push_back(slider->keyframes[0]);
    slider->keyframes[1].time = {4, 10};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetKeyframeInterpolation"),
                ElementsAre("Keyframe4.SetKeyframeInterpolation(above.new5#1, 0, 2, 3)",
                            "Keyframe4.SetKeyframeInterpolation(above.new5#1, 0, 2, 3)"));
    EXPECT_EQ(host.count_of("GetStreamType(nest.blur#1)"), 2) << "read again for every keyframe";
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
    const auto first = std::find(host.calls.begin(), host.calls.end(), "Stream4.CanVaryOverTime(nest.blur#1)");
    EXPECT_THAT(std::vector<std::string>(first, first + 9),
                ElementsAre("Stream4.CanVaryOverTime(nest.blur#1)", "Stream4.GetExpression(7, nest.blur#1)",
                            "Memory1.LockMemHandle(memory1)", "Stream4.SetExpression(7, above.new5#1, wiggle(1,2))",
                            "Memory1.UnlockMemHandle(memory1)", "Memory1.FreeMemHandle(memory1)",
                            "Stream4.GetExpressionState(7, nest.blur#1)",
                            "Stream4.SetExpressionState(7, above.new5#1, true)", "Stream4.DisposeStream(nest.blur#1)"));
}

TEST_F(Effects, disabled_expression_stays_disabled) {
    fake::Stream* slider = blur(1)->parameters[1];
    slider->has_expression = true;
    slider->expression = "1";
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetExpressionState(7, above.new5#1, false)"), 1);
}

TEST_F(Effects, parameter_that_cannot_vary_is_not_asked_for_an_expression) {
    blur(1)->parameters[1]->can_vary = false;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Expression"), 0);
}

TEST_F(Effects, state_is_carried_over_under_the_active_mask) {
    blur(0)->flags = AEGP_EffectFlags_AUDIO_TOO;
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetEffectFlags(above.new5, 1, 4)"), 1);
    EXPECT_EQ(above->effects.front()->flags, 0);
}

TEST_F(Effects, come_in_order_and_beside_those_already_there) {
    host.add_effect(above, "blur", 5, 1);
    blur(0);
    host.add_effect(nest, "glow", 6, 1);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("ApplyEffect"),
                ElementsAre("Effect3.ApplyEffect(7, above, 5)", "Effect3.ApplyEffect(7, above, 6)"));
    EXPECT_EQ(above->effects.size(), 3u);
}

TEST_F(Effects, copying_to_one_layer_ends_at_the_first_failure) {
    fake::Effect* effect = blur(2);
    key(effect->parameters[1], AEGP_StreamType_ThreeD_SPATIAL, 1, 3);
    effect->parameters[2]->has_expression = true;
    expect_faults_end_it([&] { return copy(); });
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
