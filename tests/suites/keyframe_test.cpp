// Keyframes one by one.
#include <limits>

#include "handle_pool.h"

namespace host::suites {

class Keyframes : public World {
  public:
    const AEGP_KeyframeSuite4* keys = keyframes();
    model::Layer& layer = add_layer("A");
    model::Stream& position = layer.stream(model::kPosition);
    model::Stream& rotation = layer.stream(model::kRotation);
    const AEGP_StreamRefH position_ref = stream(layer, AEGP_LayerStream_POSITION);
    const AEGP_StreamRefH rotation_ref = stream(layer, AEGP_LayerStream_ROTATION);

    Keyframes() {
        set_keys(position, {key(1000, {{1, 2, 3, 0}}), key(2000, {{4, 5, 6, 0}}), key(3000, {{7, 8, 9, 0}})});
        set_keys(rotation, {key(0, {{0, 0, 0, 0}}), key(1000, {{10, 0, 0, 0}}), key(2000, {{20, 0, 0, 0}})});
        project.undo().clear();
    }

    A_long count(AEGP_StreamRefH ref) {
        A_long number = -9;
        EXPECT_EQ(keys->AEGP_GetStreamNumKFs(ref, &number), 0);
        return number;
    }
    A_Time time(AEGP_StreamRefH ref, A_long index, AEGP_LTimeMode mode) {
        A_Time found{};
        EXPECT_EQ(keys->AEGP_GetKeyframeTime(ref, index, mode, &found), 0);
        return found;
    }
    A_long insert(AEGP_StreamRefH ref, A_long ticks, AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime) {
        const A_Time at{ticks, 120'000};
        A_long index = -1;
        EXPECT_EQ(keys->AEGP_InsertKeyframe(ref, mode, &at, &index), 0);
        return index;
    }
    AEGP_KeyframeFlags flags(AEGP_StreamRefH ref, A_long index) {
        AEGP_KeyframeFlags all = -1;
        EXPECT_EQ(keys->AEGP_GetKeyframeFlags(ref, index, &all), 0);
        return all;
    }
};

TEST_F(Keyframes, are_counted_and_minus_one_where_there_can_be_none) {
    install_test_effect(project);
    layer.apply_effect(1);
    EXPECT_EQ(count(position_ref), 3);
    EXPECT_EQ(count(stream(layer, AEGP_LayerStream_SCALE)), 0);
    EXPECT_EQ(count(parameter(layer, 0, 3)), AEGP_NumKF_NO_DATA);
    EXPECT_EQ(count(parameter(layer, 0, 0)), AEGP_NumKF_NO_DATA);
}

TEST_F(Keyframes, have_times_on_both_clocks) {
    layer.load_timing({500}, {500}, {100'000}, 2);
    const A_Time comp = time(position_ref, 1, AEGP_LTimeMode_CompTime);
    EXPECT_EQ(comp.value, 2500);
    EXPECT_EQ(comp.scale, 120'000U);
    EXPECT_EQ(time(position_ref, 1, AEGP_LTimeMode_LayerTime).value, 1000);
}

TEST_F(Keyframes, of_other_time_modes_are_in_composition_time) {
    layer.set_offset({500});
    EXPECT_EQ(time(position_ref, 0, 7).value, 1500);
    EXPECT_EQ(time(position_ref, 0, -1).value, 1500);
}

TEST_F(Keyframes, of_other_time_modes_are_refused_if_the_rules_say_so) {
    project.rules().unknown_time_mode = model::UnknownTimeMode::error;
    A_Time found{1, 1};
    EXPECT_EQ(keys->AEGP_GetKeyframeTime(position_ref, 0, 7, &found), kBadArgument);
    EXPECT_EQ(last_complaint(), "There is no time mode 7.");
    EXPECT_EQ(found.value, 1);
    EXPECT_EQ(time(position_ref, 0, AEGP_LTimeMode_LayerTime).value, 1000);
    EXPECT_EQ(time(position_ref, 0, AEGP_LTimeMode_CompTime).value, 1000);
}

TEST_F(Keyframes, are_inserted_with_the_value_the_stream_has_there) {
    EXPECT_EQ(insert(rotation_ref, 500), 1);
    ASSERT_EQ(count(rotation_ref), 4);
    EXPECT_DOUBLE_EQ(rotation.keyframe(1).value.n[0], 5);
    EXPECT_EQ(time(rotation_ref, 2, AEGP_LTimeMode_CompTime).value, 1000);
    const AEGP_StreamRefH scale = stream(layer, AEGP_LayerStream_SCALE);
    EXPECT_EQ(insert(scale, 700), 0);
    EXPECT_EQ(layer.stream(model::kScale).keyframe(0).value.n[0], 100);
}

TEST_F(Keyframes, are_not_doubled_by_inserting_at_their_time) {
    EXPECT_EQ(insert(rotation_ref, 1000), 1);
    EXPECT_EQ(count(rotation_ref), 3);
    EXPECT_FALSE(project.undo().can_undo());
    layer.set_offset({400});
    EXPECT_EQ(insert(rotation_ref, 1400), 1);
    EXPECT_EQ(insert(rotation_ref, 1000, AEGP_LTimeMode_LayerTime), 1);
    EXPECT_EQ(count(rotation_ref), 3);
}

TEST_F(Keyframes, out_of_range_are_refused_with_outputs_untouched) {
    for (const A_long wrong : {-1, 3}) {
        A_Time found{1, 1};
        EXPECT_EQ(keys->AEGP_GetKeyframeTime(position_ref, wrong, 1, &found), kBadArgument);
        EXPECT_EQ(found.value, 1);
        AEGP_StreamValue2 value{};
        EXPECT_EQ(keys->AEGP_GetNewKeyframeValue(plugin, position_ref, wrong, &value), kBadArgument);
        EXPECT_EQ(value.streamH, nullptr);
        EXPECT_EQ(keys->AEGP_SetKeyframeValue(position_ref, wrong, &value), kBadArgument);
        EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, wrong, 0, false), kBadArgument);
        EXPECT_EQ(keys->AEGP_SetKeyframeInterpolation(position_ref, wrong, 1, 1), kBadArgument);
    }
}

TEST_F(Keyframes, give_and_take_values_by_copy) {
    AEGP_StreamValue2 value{};
    ASSERT_EQ(keys->AEGP_GetNewKeyframeValue(plugin, position_ref, 1, &value), 0);
    EXPECT_EQ(value.val.three_d.x, 4);
    EXPECT_EQ(value.val.three_d.y, 5);
    EXPECT_EQ(value.val.three_d.z, 6);
    value.val.three_d.y = -5;
    EXPECT_EQ(position.keyframe(1).value.n[1], 5);
    EXPECT_EQ(keys->AEGP_SetKeyframeValue(position_ref, 0, &value), 0);
    EXPECT_EQ(position.keyframe(0).value, (model::Value{{4, -5, 6, 0}}));
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&value), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeValue(position_ref, 0, &value), kBadArgument);
    project.undo().undo();
    EXPECT_EQ(position.keyframe(0).value, (model::Value{{1, 2, 3, 0}}));
}

TEST_F(Keyframes, take_values_of_their_own_kind_only) {
    AEGP_StreamValue2 value{};
    ASSERT_EQ(keys->AEGP_GetNewKeyframeValue(plugin, rotation_ref, 1, &value), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeValue(position_ref, 0, &value), kBadArgument);
    AEGP_StreamValue2 endless{};
    endless.val.one_d = std::numeric_limits<double>::infinity();
    EXPECT_EQ(keys->AEGP_SetKeyframeValue(rotation_ref, 0, &endless), kBadArgument);
    EXPECT_FALSE(project.undo().can_undo());
}

TEST_F(Keyframes, have_as_many_eases_as_their_stream_has_dimensions_in_time) {
    install_test_effect(project);
    layer.apply_effect(1);
    const auto dimensions = [this](AEGP_StreamRefH ref) {
        A_short found = -1;
        EXPECT_EQ(keys->AEGP_GetStreamTemporalDimensionality(ref, &found), 0);
        return found;
    };
    EXPECT_EQ(dimensions(position_ref), 1);
    EXPECT_EQ(dimensions(rotation_ref), 1);
    EXPECT_EQ(dimensions(stream(layer, AEGP_LayerStream_SCALE)), 3);
    EXPECT_EQ(dimensions(stream(layer, AEGP_LayerStream_AUDIO)), 2);
    EXPECT_EQ(dimensions(parameter(layer, 0, 2)), 1);
    EXPECT_EQ(dimensions(parameter(layer, 0, 4)), 1);
    EXPECT_EQ(dimensions(parameter(layer, 0, 3)), 0);
}

TEST_F(Keyframes, keep_eases_by_dimension) {
    const AEGP_StreamRefH scale = stream(layer, AEGP_LayerStream_SCALE);
    insert(scale, 0);
    const AEGP_KeyframeEase in{1, 0.5};
    const AEGP_KeyframeEase out{2, 0.75};
    for (const A_long wrong : {-1, 3})
        EXPECT_EQ(keys->AEGP_SetKeyframeTemporalEase(scale, 0, wrong, &in, &out), kBadArgument);
    EXPECT_EQ(keys->AEGP_SetKeyframeTemporalEase(scale, 0, 2, &in, &out), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeTemporalEase(scale, 0, 1, nullptr, &in), 0);
    AEGP_KeyframeEase got_in{};
    AEGP_KeyframeEase got_out{};
    EXPECT_EQ(keys->AEGP_GetKeyframeTemporalEase(scale, 0, 2, &got_in, &got_out), 0);
    EXPECT_EQ(got_in.speedF, 1);
    EXPECT_EQ(got_in.influenceF, 0.5);
    EXPECT_EQ(got_out.speedF, 2);
    EXPECT_EQ(got_out.influenceF, 0.75);
    EXPECT_EQ(keys->AEGP_GetKeyframeTemporalEase(scale, 0, 1, nullptr, &got_out), 0);
    EXPECT_EQ(got_out.speedF, 1);
    EXPECT_EQ(keys->AEGP_GetKeyframeTemporalEase(scale, 0, 3, &got_in, &got_out), kBadArgument);
    const AEGP_KeyframeEase endless{std::numeric_limits<double>::quiet_NaN(), 0.5};
    EXPECT_EQ(keys->AEGP_SetKeyframeTemporalEase(scale, 0, 0, &endless, &out), kBadArgument);
}

TEST_F(Keyframes, have_tangents_on_spatial_streams_only) {
    AEGP_StreamValue2 in{};
    AEGP_StreamValue2 out{};
    ASSERT_EQ(keys->AEGP_GetNewKeyframeSpatialTangents(plugin, position_ref, 1, &in, &out), 0);
    in.val.three_d = {-10, 0, 1};
    out.val.three_d = {10, 0, 2};
    EXPECT_EQ(keys->AEGP_SetKeyframeSpatialTangents(position_ref, 1, &in, &out), 0);
    EXPECT_EQ(position.keyframe(1).tangent_in, (model::Value{{-10, 0, 1, 0}}));
    EXPECT_EQ(position.keyframe(1).tangent_out, (model::Value{{10, 0, 2, 0}}));
    EXPECT_EQ(keys->AEGP_SetKeyframeSpatialTangents(position_ref, 1, &out, nullptr), 0);
    EXPECT_EQ(position.keyframe(1).tangent_in, (model::Value{{10, 0, 2, 0}}));
    EXPECT_EQ(position.keyframe(1).tangent_out, (model::Value{{10, 0, 2, 0}}));
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&in), 0);
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&out), 0);
    EXPECT_EQ(keys->AEGP_GetNewKeyframeSpatialTangents(plugin, rotation_ref, 1, &in, &out), kBadArgument);
    EXPECT_EQ(keys->AEGP_SetKeyframeSpatialTangents(rotation_ref, 1, nullptr, nullptr), kBadArgument);
}

TEST_F(Keyframes, hand_out_only_the_tangents_asked_for) {
    AEGP_StreamValue2 out{};
    ASSERT_EQ(keys->AEGP_GetNewKeyframeSpatialTangents(plugin, position_ref, 1, nullptr, &out), 0);
    EXPECT_EQ(host.ledger().handed_out.at(HandleKind::stream_value), 1U);
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&out), 0);
}

TEST_F(Keyframes, keep_interpolation_flags_ease_and_tangents_apart) {
    const AEGP_KeyframeEase ease{3, 0.5};
    AEGP_StreamValue2 tangent{};
    EXPECT_EQ(keys->AEGP_SetKeyframeInterpolation(position_ref, 1, AEGP_KeyInterp_HOLD, AEGP_KeyInterp_LINEAR), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, 1, AEGP_KeyframeFlag_SPATIAL_AUTOBEZIER, true), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeTemporalEase(position_ref, 1, 0, &ease, &ease), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeSpatialTangents(position_ref, 1, &tangent, &tangent), 0);
    AEGP_KeyframeInterpolationType in = -1;
    AEGP_KeyframeInterpolationType out = -1;
    EXPECT_EQ(keys->AEGP_GetKeyframeInterpolation(position_ref, 1, &in, &out), 0);
    EXPECT_EQ(in, AEGP_KeyInterp_HOLD);
    EXPECT_EQ(out, AEGP_KeyInterp_LINEAR);
    EXPECT_EQ(flags(position_ref, 1), AEGP_KeyframeFlag_SPATIAL_AUTOBEZIER);
}

TEST_F(Keyframes, let_ease_force_bezier_and_tangents_drop_auto_bezier_if_the_rules_say_so) {
    project.rules().keyframe_setters_disturb_each_other = true;
    const AEGP_KeyframeEase ease{3, 0.5};
    AEGP_StreamValue2 tangent{};
    EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, 1, AEGP_KeyframeFlag_SPATIAL_AUTOBEZIER, true), 0);
    EXPECT_EQ(keys->AEGP_SetKeyframeTemporalEase(position_ref, 1, 0, &ease, &ease), 0);
    AEGP_KeyframeInterpolationType in = -1;
    EXPECT_EQ(keys->AEGP_GetKeyframeInterpolation(position_ref, 1, &in, nullptr), 0);
    EXPECT_EQ(in, AEGP_KeyInterp_BEZIER);
    EXPECT_EQ(keys->AEGP_SetKeyframeSpatialTangents(position_ref, 1, &tangent, &tangent), 0);
    EXPECT_EQ(flags(position_ref, 1), 0);
}

TEST_F(Keyframes, take_interpolations_there_are) {
    EXPECT_EQ(keys->AEGP_SetKeyframeInterpolation(rotation_ref, 0, AEGP_KeyInterp_NONE, AEGP_KeyInterp_BEZIER), 0);
    EXPECT_EQ(rotation.keyframe(0).out, model::Interpolation::bezier);
    EXPECT_EQ(keys->AEGP_SetKeyframeInterpolation(rotation_ref, 0, AEGP_KeyInterp_LINEAR, 4), kBadArgument);
    EXPECT_EQ(keys->AEGP_SetKeyframeInterpolation(rotation_ref, 0, -1, AEGP_KeyInterp_LINEAR), kBadArgument);
    EXPECT_EQ(rotation.keyframe(0).in, model::Interpolation::none);
}

TEST_F(Keyframes, take_flags_one_by_one_and_none_at_all) {
    AEGP_KeyframeFlags expected = 0;
    for (const AEGP_KeyframeFlags bit : {1, 2, 4, 8, 16}) {
        // Any number but 0 is true.
        EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, 1, bit, static_cast<A_Boolean>(bit)), 0);
        expected |= bit;
        EXPECT_EQ(flags(position_ref, 1), expected);
    }
    EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, 1, AEGP_KeyframeFlag_NONE, true), 0);
    EXPECT_EQ(flags(position_ref, 1), 31);
    EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, 1, AEGP_KeyframeFlag_ROVING, false), 0);
    EXPECT_EQ(flags(position_ref, 1), 15);
    for (const AEGP_KeyframeFlags wrong : {3, 32, -1})
        EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, 1, wrong, true), kBadArgument);
    EXPECT_EQ(flags(position_ref, 1), 15);
}

TEST_F(Keyframes, at_the_ends_never_rove) {
    for (const A_long end : {0, 2}) {
        EXPECT_EQ(keys->AEGP_SetKeyframeFlag(position_ref, end, AEGP_KeyframeFlag_ROVING, true), 0);
        EXPECT_EQ(flags(position_ref, end), 0);
    }
}

TEST_F(Keyframes, have_spatial_flags_on_spatial_streams_only) {
    for (const AEGP_KeyframeFlags bit : {4, 8, 16}) {
        EXPECT_EQ(keys->AEGP_SetKeyframeFlag(rotation_ref, 1, bit, false), 0);
        EXPECT_EQ(keys->AEGP_SetKeyframeFlag(rotation_ref, 1, bit, true), kNotAllowed);
    }
    EXPECT_EQ(flags(rotation_ref, 1), 0);
}

TEST_F(Keyframes, of_a_separated_position_are_not_its_own) {
    auto data = std::make_shared<model::StreamData>(position.data());
    layer.load_stream(model::kPosition, std::move(data), true);
    const AEGP_StreamRefH leader = stream(layer, AEGP_LayerStream_POSITION);
    EXPECT_EQ(count(leader), 0);
    A_Time found{};
    EXPECT_EQ(keys->AEGP_GetKeyframeTime(leader, 0, 1, &found), kNotAllowed);
    A_long index = -1;
    EXPECT_EQ(keys->AEGP_InsertKeyframe(leader, 1, &kZero, &index), kNotAllowed);
    A_Boolean varying = 0;
    EXPECT_EQ(streams()->AEGP_IsStreamTimevarying(leader, &varying), 0);
    EXPECT_EQ(varying, 1);
}

TEST_F(Keyframes, of_a_separated_position_are_combined_if_the_rules_say_so) {
    project.rules().separated_position = model::SeparatedPosition::leader_is_combined;
    auto data = std::make_shared<model::StreamData>(position.data());
    layer.load_stream(model::kPosition, std::move(data), true);
    const AEGP_StreamRefH leader = stream(layer, AEGP_LayerStream_POSITION);
    EXPECT_EQ(count(leader), 3);
    EXPECT_EQ(time(leader, 2, AEGP_LTimeMode_CompTime).value, 3000);
    EXPECT_EQ(insert(leader, 0), 0);
}

}  // namespace host::suites
