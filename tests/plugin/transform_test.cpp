// Copying transform streams with their keyframes.
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

TEST_F(Transform, every_dimension_gets_its_ease) {
    keyed(2, AEGP_StreamType_ThreeD, 3, {10});
    EXPECT_EQ(match(2), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetKeyframeTemporalEase"),
                ElementsAre("Keyframe4.SetKeyframeTemporalEase(above/2, 0, 0, 10.25, 10.5)",
                            "Keyframe4.SetKeyframeTemporalEase(above/2, 0, 1, 11.25, 11.5)",
                            "Keyframe4.SetKeyframeTemporalEase(above/2, 0, 2, 12.25, 12.5)"));
}

TEST_F(Transform, only_spatial_streams_get_tangents) {
    for (const AEGP_StreamType type :
         {AEGP_StreamType_ThreeD_SPATIAL, AEGP_StreamType_TwoD_SPATIAL, AEGP_StreamType_ThreeD, AEGP_StreamType_TwoD,
          AEGP_StreamType_OneD, AEGP_StreamType_COLOR}) {
        host.forget_calls();
        host.layer_stream(above, 1)->keyframes.clear();
        keyed(1, type, 1, {10});
        EXPECT_EQ(match(1), A_Err_NONE);
        const bool spatial = type == AEGP_StreamType_ThreeD_SPATIAL || type == AEGP_StreamType_TwoD_SPATIAL;
        EXPECT_EQ(host.count_of("Tangents"), spatial ? 2 : 0) << type;
    }
}

TEST_F(Transform, keyframe_without_flags_makes_no_flag_call) {
    keyed(4, AEGP_StreamType_OneD, 1, {10, 20, 30});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetKeyframeFlag"), 0);
}

TEST_F(Transform, stream_that_varies_without_keyframes_sets_no_value) {
    keyed(4, AEGP_StreamType_OneD, 1, {});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(host.count_of("SetStreamValue"), 0);
    EXPECT_EQ(host.count_of("EndAddKeyframes(true"), 1);
}

TEST_F(Transform, negative_keyframe_count_adds_nothing) {
    keyed(4, AEGP_StreamType_NO_DATA, 0, {});
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetKeyframeTime"), 0);
}

TEST_F(Transform, changed_is_set_before_the_first_keyframe_call) {
    keyed(4, AEGP_StreamType_OneD, 1, {10});
    host.fail_on = "GetStreamNumKFs";
    EXPECT_EQ(match(4), fake::Host::kInjected);
    EXPECT_EQ(changed, 1);
}

TEST_F(Transform, changed_is_never_cleared) {
    changed = 1;
    EXPECT_EQ(match(4), A_Err_NONE);
    EXPECT_EQ(changed, 1);
}

TEST_F(Transform, ten_streams_are_visited_rotation_twice) {
    EXPECT_EQ(match_transform(&info, fake::handle(above), fake::handle(nest), &changed), A_Err_NONE);
    EXPECT_EQ(changed, 0);
    std::vector<std::string> expected;
    for (const char* number : {"0", "1", "2", "3", "3", "4", "7", "8", "9", "10"}) {
        expected.push_back(std::string("Stream4.SetStreamValue(7, above/") + number + ", 0)");
    }
    EXPECT_EQ(host.calls_of("SetStreamValue"), expected);
    EXPECT_EQ(host.count_of("IsStreamLegal"), 0);
}

TEST_F(Transform, keyed_rotation_is_copied_twice) {
    keyed(3, AEGP_StreamType_OneD, 1, {10, 20});
    EXPECT_EQ(match_transform(&info, fake::handle(above), fake::handle(nest), &changed), A_Err_NONE);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(host.count_of("StartAddKeyframes(above/3)"), 2);
    EXPECT_EQ(host.layer_stream(above, 3)->keyframes.size(), 2u);
}

TEST_F(Transform, refused_stream_ends_the_walk) {
    host.fail_on = "GetNewLayerStream(7, above, 7)";
    EXPECT_EQ(match_transform(&info, fake::handle(above), fake::handle(nest), &changed), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Stream4.GetNewLayerStream(7, above, 7)");
}

TEST_F(Transform, ends_at_the_first_failure) {
    expect_faults_end_it([&] { return match_transform(&info, fake::handle(above), fake::handle(nest), &changed); },
                         [&] {
                             fake::Stream* position = keyed(1, AEGP_StreamType_TwoD_SPATIAL, 2, {10, 20});
                             position->keyframes[1].flags = AEGP_KeyframeFlag_ROVING;
                             host.layer_stream(above, 1)->keyframes.clear();
                         });
}
