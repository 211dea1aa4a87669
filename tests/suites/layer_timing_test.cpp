// In-points, durations and offsets on both clocks.
#include "world.h"

namespace host::suites {

class LayerTiming : public World {
  public:
    model::Layer& layer = add_layer("A");
    const AEGP_LayerH handle = host.handle(layer);
    const AEGP_LayerSuite5* table = layers();
    static constexpr AEGP_LTimeMode kLayer = AEGP_LTimeMode_LayerTime;
    static constexpr AEGP_LTimeMode kComp = AEGP_LTimeMode_CompTime;

    A_Time in_point(AEGP_LTimeMode mode) {
        A_Time time{};
        EXPECT_EQ(table->AEGP_GetLayerInPoint(handle, mode, &time), 0);
        return time;
    }
    A_Time duration(AEGP_LTimeMode mode) {
        A_Time time{};
        EXPECT_EQ(table->AEGP_GetLayerDuration(handle, mode, &time), 0);
        return time;
    }
    A_Time offset() {
        A_Time time{};
        EXPECT_EQ(table->AEGP_GetLayerOffset(handle, &time), 0);
        return time;
    }
    A_Err trim(AEGP_LTimeMode mode, A_Time in, A_Time length) {
        return table->AEGP_SetLayerInPointAndDuration(handle, mode, &in, &length);
    }
    A_Err move(A_Time to) { return table->AEGP_SetLayerOffset(handle, &to); }
    static A_Time ticks(A_long value) { return {value, 120'000}; }
};

TEST_F(LayerTiming, is_given_in_120000_ticks_a_second) {
    layer.load_timing({12'000}, {24'000}, {48'000}, 1);
    EXPECT_EQ(in_point(kComp).scale, 120'000U);
    EXPECT_EQ(in_point(kComp).value, 24'000);
    EXPECT_EQ(duration(kComp).value, 48'000);
    EXPECT_EQ(offset().value, 12'000);
}

TEST_F(LayerTiming, of_a_trimmed_layer_begins_after_zero_in_layer_time) {
    layer.load_timing({12'000}, {24'000}, {48'000}, 1);
    EXPECT_EQ(in_point(kLayer).value, 12'000);
    EXPECT_EQ(duration(kLayer).value, 48'000);
}

TEST_F(LayerTiming, of_a_stretched_layer_runs_slower) {
    layer.load_timing({12'000}, {24'000}, {48'000}, 2);
    EXPECT_EQ(in_point(kLayer).value, 6'000);
    EXPECT_EQ(duration(kLayer).value, 24'000);
    layer.load_timing({72'000}, {24'000}, {48'000}, -2);
    EXPECT_EQ(in_point(kLayer).value, 24'000);
    EXPECT_EQ(duration(kLayer).value, 24'000);
}

TEST_F(LayerTiming, moves_as_a_whole_with_the_offset) {
    layer.load_timing({0}, {24'000}, {48'000}, 1);
    set_keys(layer.stream(model::kRotation), {key(1000, {})});
    const AEGP_StreamRefH rotation = stream(layer, AEGP_LayerStream_ROTATION);
    EXPECT_EQ(move({-1, 4}), 0);
    EXPECT_EQ(offset().value, -30'000);
    EXPECT_EQ(in_point(kComp).value, -6'000);
    EXPECT_EQ(in_point(kLayer).value, 24'000);
    EXPECT_EQ(duration(kComp).value, 48'000);
    A_Time at{};
    EXPECT_EQ(keyframes()->AEGP_GetKeyframeTime(rotation, 0, kComp, &at), 0);
    EXPECT_EQ(at.value, -29'000);
    EXPECT_EQ(keyframes()->AEGP_GetKeyframeTime(rotation, 0, kLayer, &at), 0);
    EXPECT_EQ(at.value, 1'000);
    project.undo().undo();
    EXPECT_EQ(in_point(kComp).value, 24'000);
}

TEST_F(LayerTiming, is_trimmed_without_moving) {
    EXPECT_EQ(move(ticks(10'000)), 0);
    EXPECT_EQ(trim(kComp, ticks(20'000), ticks(5'000)), 0);
    EXPECT_EQ(in_point(kComp).value, 20'000);
    EXPECT_EQ(duration(kComp).value, 5'000);
    EXPECT_EQ(offset().value, 10'000);
    EXPECT_EQ(trim(kLayer, ticks(-2'000), ticks(7'000)), 0);
    EXPECT_EQ(in_point(kComp).value, 8'000);
    EXPECT_EQ(duration(kComp).value, 7'000);
}

TEST_F(LayerTiming, is_trimmed_through_the_stretch_in_layer_time) {
    layer.load_timing({10'000}, {10'000}, {40'000}, 2);
    EXPECT_EQ(trim(kLayer, ticks(5'000), ticks(7'000)), 0);
    EXPECT_EQ(in_point(kComp).value, 20'000);
    EXPECT_EQ(duration(kComp).value, 14'000);
}

TEST_F(LayerTiming, takes_times_of_any_scale) {
    EXPECT_EQ(trim(kComp, {25, 25}, {1001, 30'000}), 0);
    EXPECT_EQ(in_point(kComp).value, 120'000);
    EXPECT_EQ(duration(kComp).value, 4'004);
    EXPECT_EQ(trim(kComp, {1, 7}, {1, 1}), 0);
    EXPECT_EQ(in_point(kComp).value, 17'143);  // the nearest tick
    EXPECT_EQ(trim(kComp, {-1, 7}, {1, 1}), 0);
    EXPECT_EQ(in_point(kComp).value, -17'143);
}

TEST_F(LayerTiming, refuses_times_without_a_scale) {
    EXPECT_EQ(trim(kComp, {5, 0}, {1, 1}), kBadArgument);
    EXPECT_EQ(trim(kComp, {5, 1}, {1, 0}), kBadArgument);
    EXPECT_EQ(move({5, 0}), kBadArgument);
    EXPECT_EQ(last_complaint(), "The time's scale is 0.");
    EXPECT_EQ(table->AEGP_SetLayerOffset(handle, nullptr), kBadArgument);
    EXPECT_EQ(offset().value, 0);
    EXPECT_EQ(in_point(kComp).value, 0);
}

TEST_F(LayerTiming, is_never_shorter_than_a_frame) {
    for (const A_long nothing : {0, -500}) {
        EXPECT_EQ(trim(kComp, ticks(1'000), ticks(nothing)), 0);
        EXPECT_EQ(in_point(kComp).value, 1'000);
        EXPECT_EQ(duration(kComp).value, 4'800);
    }
}

TEST_F(LayerTiming, stays_within_a_source_that_ends) {
    model::Comp& short_comp = project.add_comp("Short");
    short_comp.load_timing(25, model::from_seconds(1));
    const AEGP_LayerH nested = host.handle(main.add_layer(short_comp));
    const A_Time in{-1, 1};
    const A_Time length{5, 1};
    EXPECT_EQ(table->AEGP_SetLayerInPointAndDuration(nested, kComp, &in, &length), 0);
    A_Time found{};
    EXPECT_EQ(table->AEGP_GetLayerInPoint(nested, kComp, &found), 0);
    EXPECT_EQ(found.value, 0);
    EXPECT_EQ(table->AEGP_GetLayerDuration(nested, kComp, &found), 0);
    EXPECT_EQ(found.value, 120'000);
}

TEST_F(LayerTiming, refuses_impossible_trims_if_the_rules_say_so) {
    project.rules().illegal_trim = model::IllegalTrim::error;
    EXPECT_EQ(trim(kComp, ticks(0), ticks(0)), kNotAllowed);
    EXPECT_EQ(trim(kComp, ticks(0), ticks(5'000)), 0);
    EXPECT_EQ(duration(kComp).value, 5'000);
}

TEST_F(LayerTiming, is_given_in_the_scale_of_the_rules_or_of_the_composition) {
    layer.load_timing({0}, {60'000}, {60'001}, 1);
    project.rules().time_scale = 600;
    EXPECT_EQ(in_point(kComp).value, 300);
    EXPECT_EQ(in_point(kComp).scale, 600U);
    main.override_time_scale(24);
    EXPECT_EQ(in_point(kComp).value, 12);
    EXPECT_EQ(in_point(kComp).scale, 24U);
    EXPECT_EQ(duration(kComp).value, 12);
}

TEST_F(LayerTiming, that_32_bits_cannot_hold_is_refused) {
    layer.load_timing({0}, model::from_seconds(17'000), model::from_seconds(18'000), 1);
    EXPECT_EQ(in_point(kComp).value, 2'040'000'000);
    A_Time untouched{7, 7};
    EXPECT_EQ(table->AEGP_GetLayerDuration(handle, kComp, &untouched), kNotAllowed);
    EXPECT_EQ(untouched.value, 7);
}

}  // namespace host::suites
