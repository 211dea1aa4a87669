// Copying transform streams with their keyframes.
#include <algorithm>

#include "operation_test.h"

class Transform : public OperationTest {
  protected:
    A_Err match(int stream) {
        return match_keyframes(&info, fake::handle(above), fake::handle(nest), stream, &changed);
    }

    fake::Stream* keyed(AEGP_LayerStream number, AEGP_StreamType type, A_short dimensions,
                        const std::vector<A_long>& times) {
        fake::Stream* stream = host.layer_stream(nest, number);
        stream->type = type;
        stream->dimensions = dimensions;
        stream->time_varying = true;
        stream->keyframes.clear();
        for (const A_long time : times) {
            fake::Keyframe keyframe;
            keyframe.time = {time, 10};
            keyframe.value = time * 2.0;
            for (A_short dimension = 0; dimension < dimensions; ++dimension) {
                keyframe.in_eases.push_back(time + dimension + 0.25);
                keyframe.out_eases.push_back(time + dimension + 0.5);
            }
            keyframe.in_tangent = -time;
            keyframe.out_tangent = time;
            stream->keyframes.push_back(keyframe);
        }
        return stream;
    }

    A_Err match_all() { return match_transform(&info, fake::handle(above), fake::handle(nest), &changed); }

    // The calls between reading whether the stream varies and giving back its value: what is done with it.
    std::vector<std::string> calls_about_keyframes(const std::string& number) {
        auto first =
            std::find(host.calls.begin(), host.calls.end(), "Stream4.IsStreamTimevarying(nest/" + number + ")");
        auto last = std::find(host.calls.rbegin(), host.calls.rend(), "Stream4.DisposeStream(nest/" + number + ")");
        return {first + 1, last.base() - 2};
    }

    unsigned char changed = 0;
};

TEST_F(Transform, static_value_is_copied_with_the_streams_number_as_time_mode) {
    nest->in_comp = {30, 10};
    host.layer_stream(nest, 4)->value = 55;
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(changed, 0);
    EXPECT_THAT(host.calls, ElementsAre("Layer4.GetLayerInPoint(nest, comp)", "Stream4.GetNewLayerStream(7, nest, 4)",
                                        "Stream4.GetNewStreamValue(7, nest/4, mode 4, 30/10, pre-expression)",
                                        "Stream4.GetNewLayerStream(7, above, 4)", "Stream4.IsStreamTimevarying(nest/4)",
                                        "Stream4.SetStreamValue(7, above/4, 55)", "Stream4.DisposeStreamValue(55)",
                                        "Stream4.DisposeStream(nest/4)", "Stream4.DisposeStream(above/4)"));
}

TEST_F(Transform, keyframes_of_a_spatial_stream_come_with_flags_eases_and_tangents) {
    fake::Stream* position = keyed(1, AEGP_StreamType_ThreeD_SPATIAL, 1, {10, 20});
    position->keyframes[0].in = AEGP_KeyInterp_BEZIER;
    position->keyframes[0].out = AEGP_KeyInterp_HOLD;
    position->keyframes[1].flags = AEGP_KeyframeFlag_SPATIAL_CONTINUOUS | AEGP_KeyframeFlag_ROVING;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(changed, 1);
    EXPECT_THAT(
        host.calls,
        ElementsAre(
            "Layer4.GetLayerInPoint(nest, comp)", "Stream4.GetNewLayerStream(7, nest, 1)",
            "Stream4.GetNewStreamValue(7, nest/1, mode 1, 0/1, pre-expression)",
            "Stream4.GetNewLayerStream(7, above, 1)", "Stream4.IsStreamTimevarying(nest/1)",
            // times and values
            "Keyframe4.GetStreamNumKFs(nest/1)", "Keyframe4.StartAddKeyframes(above/1)",
            "Keyframe4.GetKeyframeTime(nest/1, 0, comp)", "Keyframe4.AddKeyframes(batch1, comp, 10/10)",
            "Keyframe4.GetNewKeyframeValue(7, nest/1, 0)", "Keyframe4.SetAddKeyframe(batch1, 0, 20)",
            "Stream4.DisposeStreamValue(20)", "Keyframe4.GetKeyframeTime(nest/1, 1, comp)",
            "Keyframe4.AddKeyframes(batch1, comp, 20/10)", "Keyframe4.GetNewKeyframeValue(7, nest/1, 1)",
            "Keyframe4.SetAddKeyframe(batch1, 1, 40)", "Stream4.DisposeStreamValue(40)",
            "Keyframe4.EndAddKeyframes(true, batch1)",
            // attributes
            "Stream4.GetStreamType(nest/1)", "Keyframe4.GetKeyframeInterpolation(nest/1, 0)",
            "Keyframe4.SetKeyframeInterpolation(above/1, 0, 2, 3)", "Keyframe4.GetKeyframeFlags(nest/1, 0)",
            "Keyframe4.GetStreamTemporalDimensionality(nest/1)", "Keyframe4.GetKeyframeTemporalEase(nest/1, 0, 0)",
            "Keyframe4.SetKeyframeTemporalEase(above/1, 0, 0, 10.25, 10.5)",
            "Keyframe4.GetNewKeyframeSpatialTangents(7, nest/1, 0)",
            "Keyframe4.SetKeyframeSpatialTangents(above/1, 0, -10, 10)", "Stream4.DisposeStreamValue(-10)",
            "Stream4.DisposeStreamValue(10)", "Keyframe4.GetKeyframeInterpolation(nest/1, 1)",
            "Keyframe4.SetKeyframeInterpolation(above/1, 1, 1, 1)", "Keyframe4.GetKeyframeFlags(nest/1, 1)",
            "Keyframe4.SetKeyframeFlag(above/1, 1, 1, 0)", "Keyframe4.SetKeyframeFlag(above/1, 1, 2, 0)",
            "Keyframe4.SetKeyframeFlag(above/1, 1, 4, 1)", "Keyframe4.SetKeyframeFlag(above/1, 1, 8, 0)",
            "Keyframe4.SetKeyframeFlag(above/1, 1, 16, 1)", "Keyframe4.GetStreamTemporalDimensionality(nest/1)",
            "Keyframe4.GetKeyframeTemporalEase(nest/1, 1, 0)",
            "Keyframe4.SetKeyframeTemporalEase(above/1, 1, 0, 20.25, 20.5)",
            "Keyframe4.GetNewKeyframeSpatialTangents(7, nest/1, 1)",
            "Keyframe4.SetKeyframeSpatialTangents(above/1, 1, -20, 20)", "Stream4.DisposeStreamValue(-20)",
            "Stream4.DisposeStreamValue(20)",
            //
            "Stream4.DisposeStreamValue(0)", "Stream4.DisposeStream(nest/1)", "Stream4.DisposeStream(above/1)"));
}

TEST_F(Transform, streams_number_is_narrowed_to_a_time_mode_of_16_bits) {
    EXPECT_EQ(match(0), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetNewStreamValue(7, nest/0, mode 0,"), 1);
    EXPECT_EQ(match(65541), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetNewLayerStream(7, nest, 65541)"), 1);
    EXPECT_EQ(host.count_of("GetNewStreamValue(7, nest/65541, mode 5,"), 1);
    EXPECT_EQ(match(40000), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetNewStreamValue(7, nest/40000, mode -25536,"), 1);
}

TEST_F(Transform, is_asked_for_with_the_plug_ins_id) {
    info.plugin_id = 31;
    keyed(1, AEGP_StreamType_TwoD_SPATIAL, 1, {10});
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(match(4), A_Err_NONE);
    for (const char* call : {"GetNewLayerStream(31, nest, 1)", "GetNewStreamValue(31, nest/1",
                             "GetNewLayerStream(31, above, 1)", "GetNewKeyframeValue(31, nest/1, 0)",
                             "GetNewKeyframeSpatialTangents(31, nest/1, 0)", "SetStreamValue(31, above/4"}) {
        EXPECT_EQ(host.count_of(call), 1) << call;
    }
}

TEST_F(Transform, expressions_are_neither_read_nor_written) {
    host.layer_stream(nest, 4)->has_expression = true;
    host.layer_stream(nest, 4)->expression_enabled = true;
    fake::Stream* kept = host.layer_stream(above, 4);
    kept->has_expression = true;
    kept->expression = "kept";
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(host.count_of("Expression"), 0);
    EXPECT_EQ(kept->expression, "kept");
}

TEST_F(Transform, every_dimension_gets_its_ease) {
    keyed(2, AEGP_StreamType_ThreeD, 3, {10});
    EXPECT_EQ(match(2), A_Err_NONE);
    EXPECT_THAT(host.calls_of("TemporalEase"),
                ElementsAre("Keyframe4.GetKeyframeTemporalEase(nest/2, 0, 0)",
                            "Keyframe4.SetKeyframeTemporalEase(above/2, 0, 0, 10.25, 10.5)",
                            "Keyframe4.GetKeyframeTemporalEase(nest/2, 0, 1)",
                            "Keyframe4.SetKeyframeTemporalEase(above/2, 0, 1, 11.25, 11.5)",
                            "Keyframe4.GetKeyframeTemporalEase(nest/2, 0, 2)",
                            "Keyframe4.SetKeyframeTemporalEase(above/2, 0, 2, 12.25, 12.5)"));
}

TEST_F(Transform, stream_without_dimensions_gets_no_ease) {
    keyed(2, AEGP_StreamType_ThreeD, 0, {10});
    EXPECT_EQ(match(2), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetStreamTemporalDimensionality(nest/2)"), 1);
    EXPECT_EQ(host.count_of("TemporalEase"), 0);
}

TEST_F(Transform, only_spatial_streams_get_tangents) {
    for (const AEGP_StreamType type :
         {AEGP_StreamType_ThreeD_SPATIAL, AEGP_StreamType_ThreeD, AEGP_StreamType_TwoD_SPATIAL, AEGP_StreamType_TwoD,
          AEGP_StreamType_OneD, AEGP_StreamType_COLOR, AEGP_StreamType_ARB, AEGP_StreamType_MARKER,
          AEGP_StreamType_LAYER_ID, AEGP_StreamType_MASK_ID, AEGP_StreamType_MASK, AEGP_StreamType_TEXT_DOCUMENT}) {
        host.forget_calls();
        host.layer_stream(above, 1)->keyframes.clear();
        keyed(1, type, 1, {10});
        EXPECT_EQ(match(1), A_Err_NONE);
        const bool spatial = type == 3 || type == 1;
        EXPECT_EQ(host.count_of("Tangents"), spatial ? 2 : 0) << type;
    }
}

TEST_F(Transform, keyframe_without_flags_makes_no_flag_call) {
    keyed(4, AEGP_StreamType_OneD, 1, {10, 20, 30});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetKeyframeFlags"), 3);
    EXPECT_EQ(host.count_of("SetKeyframeFlag"), 0);
}

TEST_F(Transform, each_flag_is_set_or_cleared_by_a_call_of_its_own_with_a_plain_truth_value) {
    // 0x20 is none of the five, but not nothing.
    for (const AEGP_KeyframeFlags flags : {0x1, 0x2, 0x4, 0x8, 0x10, 0x15, 0x1F, 0x20}) {
        host.forget_calls();
        host.layer_stream(above, 4)->keyframes.clear();
        keyed(4, AEGP_StreamType_OneD, 1, {10})->keyframes[0].flags = flags;
        EXPECT_EQ(match(4), A_Err_NONE);
        std::vector<std::string> expected;
        for (const int flag : {1, 2, 4, 8, 16}) {
            expected.push_back("Keyframe4.SetKeyframeFlag(above/4, 0, " + std::to_string(flag) +
                               ((flags & flag) != 0 ? ", 1)" : ", 0)"));
        }
        EXPECT_EQ(host.calls_of("SetKeyframeFlag"), expected) << flags;
    }
}

TEST_F(Transform, keyed_opacity_gets_interpolation_flags_and_ease_alone) {
    keyed(4, AEGP_StreamType_OneD, 1, {10})->keyframes[0].flags = AEGP_KeyframeFlag_TEMPORAL_AUTOBEZIER;
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_THAT(
        calls_about_keyframes("4"),
        ElementsAre("Keyframe4.GetStreamNumKFs(nest/4)", "Keyframe4.StartAddKeyframes(above/4)",
                    "Keyframe4.GetKeyframeTime(nest/4, 0, comp)", "Keyframe4.AddKeyframes(batch1, comp, 10/10)",
                    "Keyframe4.GetNewKeyframeValue(7, nest/4, 0)", "Keyframe4.SetAddKeyframe(batch1, 0, 20)",
                    "Stream4.DisposeStreamValue(20)", "Keyframe4.EndAddKeyframes(true, batch1)",
                    "Stream4.GetStreamType(nest/4)", "Keyframe4.GetKeyframeInterpolation(nest/4, 0)",
                    "Keyframe4.SetKeyframeInterpolation(above/4, 0, 1, 1)", "Keyframe4.GetKeyframeFlags(nest/4, 0)",
                    "Keyframe4.SetKeyframeFlag(above/4, 0, 1, 0)", "Keyframe4.SetKeyframeFlag(above/4, 0, 2, 1)",
                    "Keyframe4.SetKeyframeFlag(above/4, 0, 4, 0)", "Keyframe4.SetKeyframeFlag(above/4, 0, 8, 0)",
                    "Keyframe4.SetKeyframeFlag(above/4, 0, 16, 0)", "Keyframe4.GetStreamTemporalDimensionality(nest/4)",
                    "Keyframe4.GetKeyframeTemporalEase(nest/4, 0, 0)",
                    "Keyframe4.SetKeyframeTemporalEase(above/4, 0, 0, 10.25, 10.5)"));
}

TEST_F(Transform, keyed_position_is_the_same_afterwards_on_the_destination) {
    fake::Stream* position = keyed(1, AEGP_StreamType_ThreeD_SPATIAL, 1, {10, 20, 30});
    position->keyframes[0].in = AEGP_KeyInterp_BEZIER;
    position->keyframes[0].out = AEGP_KeyInterp_HOLD;
    position->keyframes[1].flags = AEGP_KeyframeFlag_ROVING;
    EXPECT_EQ(match(1), A_Err_NONE);
    ASSERT_EQ(position->keyframes.size(), 3u);
    expect_same(host.layer_stream(above, 1)->keyframes, position->keyframes);
}

TEST_F(Transform, stream_that_varies_without_keyframes_sets_no_value) {
    keyed(4, AEGP_StreamType_OneD, 1, {});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(changed, 1);
    EXPECT_THAT(calls_about_keyframes("4"),
                ElementsAre("Keyframe4.GetStreamNumKFs(nest/4)", "Keyframe4.StartAddKeyframes(above/4)",
                            "Keyframe4.EndAddKeyframes(true, batch1)", "Stream4.GetStreamType(nest/4)"));
}

TEST_F(Transform, negative_keyframe_count_adds_nothing) {
    keyed(4, AEGP_StreamType_NO_DATA, 0, {});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetKeyframeTime"), 0);
    EXPECT_EQ(host.count_of("GetKeyframeInterpolation"), 0);
}

// ---- What the caller learns

TEST_F(Transform, changed_is_set_before_the_first_keyframe_call) {
    keyed(4, AEGP_StreamType_OneD, 1, {10});
    host.on_call = [&](const std::string& line) { EXPECT_EQ(changed, line.starts_with("Keyframe4.") ? 1 : 0) << line; };
    host.fail_on = "GetStreamNumKFs";
    EXPECT_EQ(match(4), fake::Host::kInjected);
    EXPECT_EQ(changed, 1);
}

TEST_F(Transform, changed_is_not_set_when_nobody_knows_whether_the_stream_varies) {
    keyed(4, AEGP_StreamType_OneD, 1, {10});
    host.fail_on = "IsStreamTimevarying";
    EXPECT_EQ(match(4), fake::Host::kInjected);
    EXPECT_EQ(changed, 0);
}

TEST_F(Transform, changed_is_never_cleared) {
    changed = 7;
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(changed, 7);
    keyed(4, AEGP_StreamType_OneD, 1, {10});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(changed, 1);
}

TEST_F(Transform, changed_stays_the_callers_where_no_stream_is_keyed) {
    changed = 7;
    EXPECT_EQ(match_all(), A_Err_NONE);
    EXPECT_EQ(changed, 7);
}

TEST_F(Transform, one_keyed_stream_is_enough_to_be_changed) {
    for (const AEGP_LayerStream number : {0, 10}) {
        changed = 0;
        fake::Stream* stream = keyed(number, AEGP_StreamType_OneD, 1, {10});
        EXPECT_EQ(match_all(), A_Err_NONE);
        EXPECT_EQ(changed, 1) << number;
        stream->time_varying = false;
    }
}

// ---- What is given back

TEST_F(Transform, gives_everything_back_on_success) {
    EXPECT_EQ(match(4), A_Err_NONE);
    keyed(1, AEGP_StreamType_TwoD_SPATIAL, 2, {10, 20});
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_THAT(host.open, IsEmpty());
}

TEST_F(Transform, failure_leaves_undisposed_what_is_held_then) {
    host.layer_stream(nest, 4)->value = 55;
    host.layer_stream(nest, 1)->value = 56;
    keyed(1, AEGP_StreamType_TwoD_SPATIAL, 1, {10, 20});
    const auto still = [&] { return match(4); };
    const auto moving = [&] { return match(1); };
    expect_left_open("GetLayerInPoint", {}, still);
    expect_left_open("GetNewLayerStream(7, nest", {}, still);
    expect_left_open("GetNewStreamValue", {"stream nest/4"}, still);
    expect_left_open("GetNewLayerStream(7, above", {"stream nest/4", "value 55 of nest/4"}, still);
    for (const char* step : {"IsStreamTimevarying", "SetStreamValue", "DisposeStreamValue"}) {
        expect_left_open(step, {"stream nest/4", "value 55 of nest/4", "stream above/4"}, still);
    }
    expect_left_open("DisposeStream(nest/4)", {"stream nest/4", "stream above/4"}, still);
    expect_left_open("DisposeStream(above/4)", {"stream above/4"}, still);

    const std::vector<std::string> held = {"stream nest/1", "value 56 of nest/1", "stream above/1"};
    const auto and_also = [&](std::vector<std::string> more) {
        more.insert(more.begin(), held.begin(), held.end());
        return more;
    };
    expect_left_open("GetStreamNumKFs", held, moving);
    expect_left_open("StartAddKeyframes", held, moving);
    expect_left_open("GetKeyframeTime(nest/1, 1", and_also({"batch1"}), moving);
    expect_left_open("SetAddKeyframe(batch2, 1", and_also({"batch2", "value 40 of nest/1"}), moving);
    expect_left_open("EndAddKeyframes", and_also({"batch3"}), moving);
    expect_left_open("GetStreamType", held, moving);
    expect_left_open("SetKeyframeTemporalEase", held, moving);
    expect_left_open("SetKeyframeSpatialTangents(above/1, 0", and_also({"value -10 of nest/1", "value 10 of nest/1"}),
                     moving);
    expect_left_open("DisposeStreamValue(10)", and_also({"value 10 of nest/1"}), moving);
}

TEST_F(Transform, keyframes_stay_when_a_later_step_fails) {
    keyed(4, AEGP_StreamType_OneD, 1, {10, 20});
    host.fail_on = "GetKeyframeInterpolation(nest/4, 1)";
    EXPECT_EQ(match(4), fake::Host::kInjected);
    EXPECT_EQ(host.layer_stream(above, 4)->keyframes.size(), 2u);
}

// ---- All streams

TEST_F(Transform, ten_streams_are_visited_rotation_twice) {
    std::vector<std::string> expected;
    for (const int number : {0, 1, 2, 3, 3, 4, 7, 8, 9, 10}) {
        host.layer_stream(nest, number)->value = 100 + number;
        expected.push_back("Stream4.SetStreamValue(7, above/" + std::to_string(number) + ", " +
                           std::to_string(100 + number) + ")");
    }
    EXPECT_EQ(match_all(), A_Err_NONE);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(host.calls_of("SetStreamValue"), expected);
    EXPECT_EQ(host.calls.size(), 90u) << "nine calls for each, nothing between";
    EXPECT_EQ(host.count_of("IsStreamLegal"), 0);
}

TEST_F(Transform, keyed_rotation_is_copied_twice) {
    keyed(3, AEGP_StreamType_OneD, 1, {10, 20});
    EXPECT_EQ(match_all(), A_Err_NONE);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(host.count_of("StartAddKeyframes(above/3)"), 2);
    EXPECT_THAT(host.calls_of("AddKeyframes(batch2, comp"), ElementsAre("Keyframe4.AddKeyframes(batch2, comp, 10/10)",
                                                                        "Keyframe4.AddKeyframes(batch2, comp, 20/10)"));
    EXPECT_EQ(host.count_of("SetKeyframeInterpolation(above/3, 1"), 2);
    EXPECT_EQ(host.layer_stream(above, 3)->keyframes.size(), 2u);
}

TEST_F(Transform, refused_stream_ends_the_walk) {
    host.fail_on = "GetNewLayerStream(7, above, 7)";
    EXPECT_EQ(match_all(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Stream4.GetNewLayerStream(7, above, 7)");
}

TEST_F(Transform, ends_at_the_first_failure) {
    expect_faults_end_it([&] { return match_all(); },
                         [&] {
                             fake::Stream* position = keyed(1, AEGP_StreamType_TwoD_SPATIAL, 2, {10, 20});
                             position->keyframes[1].flags = AEGP_KeyframeFlag_ROVING;
                             host.layer_stream(above, 1)->keyframes.clear();
                         });
}

TEST_F(Transform, uses_one_version_of_each_suite_and_no_options) {
    info.options = nullptr;
    keyed(1, AEGP_StreamType_TwoD_SPATIAL, 1, {10});
    EXPECT_THAT(suites_of([&] { return match_all(); }),
                ElementsAre("AEGP Keyframe Suite 4", "AEGP Layer Suite 10", "AEGP Stream Suite 9"));
}
