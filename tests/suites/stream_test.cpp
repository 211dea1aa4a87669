// Streams and their values.
#include <limits>
#include <set>

#include "handle_pool.h"

namespace host::suites {

class Streams : public World {
  public:
    const AEGP_StreamSuite4* table = streams();
    model::Layer& layer = add_layer("A");
    const AEGP_LayerH handle = host.handle(layer);

    bool is_legal(const model::Layer& of, AEGP_LayerStream number) {
        A_Boolean legal = 9;
        EXPECT_EQ(table->AEGP_IsStreamLegal(host.handle(of), number, &legal), 0);
        return legal != 0;
    }
    AEGP_StreamType type(AEGP_StreamRefH ref) {
        AEGP_StreamType found = -1;
        EXPECT_EQ(table->AEGP_GetStreamType(ref, &found), 0);
        return found;
    }
    AEGP_StreamValue2 value(AEGP_StreamRefH ref, A_Time time = kZero, AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime) {
        AEGP_StreamValue2 found{};
        EXPECT_EQ(table->AEGP_GetNewStreamValue(plugin, ref, mode, &time, true, &found), 0);
        return found;
    }
    A_Err set(AEGP_StreamRefH ref, AEGP_StreamValue2 record) {
        return table->AEGP_SetStreamValue(plugin, ref, &record);
    }
};

TEST_F(Streams, are_legal_where_they_apply) {
    std::set<int> flat;
    for (int number = -1; number <= 60; ++number)
        if (is_legal(layer, number)) flat.insert(number);
    EXPECT_EQ(flat, (std::set<int>{0, 1, 2, 3, 4, 6}));
    layer.set_flag(model::kIs3D, true);
    layer.set_flag(model::kTimeRemap, true);
    for (const int number : {7, 8, 9, 10, 22, 28, 43}) EXPECT_TRUE(is_legal(layer, number)) << number;
    const model::Layer& camera = main.load_layer(model::LayerKind::camera, nullptr);
    for (const int number : {0, 1, 8, 9, 10, 11, 15, 32}) EXPECT_TRUE(is_legal(camera, number)) << number;
    for (const int number : {2, 4, 16, 31}) EXPECT_FALSE(is_legal(camera, number)) << number;
}

TEST_F(Streams, that_no_layer_has_are_not_legal_and_cannot_be_had) {
    for (const AEGP_LayerStream number : {-1, 56, 58, 9999}) {
        EXPECT_FALSE(is_legal(layer, number));
        AEGP_StreamRefH made = nullptr;
        EXPECT_EQ(table->AEGP_GetNewLayerStream(plugin, handle, number, &made), kBadArgument);
        EXPECT_EQ(made, nullptr);
    }
}

TEST_F(Streams, that_do_not_apply_are_there_with_a_default_and_can_be_set) {
    for (const int number : {AEGP_LayerStream_TIME_REMAP, AEGP_LayerStream_ROTATE_X, AEGP_LayerStream_ROTATE_Y}) {
        ASSERT_FALSE(is_legal(layer, number));
        const AEGP_StreamRefH ref = stream(layer, number);
        AEGP_StreamValue2 record = value(ref);
        EXPECT_EQ(record.val.one_d, 0);
        record.val.one_d = 3;
        EXPECT_EQ(set(ref, record), 0);
        EXPECT_EQ(value(ref).val.one_d, 3);
        A_long index = -1;
        EXPECT_EQ(keyframes()->AEGP_InsertKeyframe(ref, 1, &kZero, &index), 0);
        EXPECT_EQ(index, 0);
    }
}

TEST_F(Streams, that_do_not_apply_are_refused_if_the_rules_say_so) {
    project.rules().inapplicable_stream = model::InapplicableStream::error;
    AEGP_StreamRefH made = nullptr;
    EXPECT_EQ(table->AEGP_GetNewLayerStream(plugin, handle, AEGP_LayerStream_TIME_REMAP, &made), kNotAllowed);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(table->AEGP_GetNewLayerStream(plugin, handle, AEGP_LayerStream_OPACITY, &made), 0);
}

TEST_F(Streams, give_their_type) {
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_ANCHORPOINT)), AEGP_StreamType_ThreeD_SPATIAL);
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_POSITION)), AEGP_StreamType_ThreeD_SPATIAL);
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_SCALE)), AEGP_StreamType_ThreeD);
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_ROTATION)), AEGP_StreamType_OneD);
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_AUDIO)), AEGP_StreamType_TwoD);
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_MARKER)), AEGP_StreamType_MARKER);
    EXPECT_EQ(type(stream(layer, AEGP_LayerStream_ORIENTATION)), AEGP_StreamType_ThreeD_SPATIAL);
}

TEST_F(Streams, vary_with_keyframes) {
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_ROTATION);
    A_Boolean answer = 9;
    EXPECT_EQ(table->AEGP_CanVaryOverTime(ref, &answer), 0);
    EXPECT_EQ(answer, 1);
    EXPECT_EQ(table->AEGP_IsStreamTimevarying(ref, &answer), 0);
    EXPECT_EQ(answer, 0);
    set_keys(layer.stream(model::kRotation), {key(0, {})});
    EXPECT_EQ(table->AEGP_IsStreamTimevarying(ref, &answer), 0);
    EXPECT_EQ(answer, 1);
}

TEST_F(Streams, of_effects_vary_or_not) {
    install_test_effect(project);
    layer.apply_effect(1);
    A_Boolean answer = 9;
    EXPECT_EQ(table->AEGP_CanVaryOverTime(parameter(layer, 0, 1), &answer), 0);
    EXPECT_EQ(answer, 1);
    for (const int constant : {0, 3}) {
        EXPECT_EQ(table->AEGP_CanVaryOverTime(parameter(layer, 0, constant), &answer), 0);
        EXPECT_EQ(answer, 0);
    }
}

TEST_F(Streams, give_the_value_at_a_time_of_either_clock) {
    layer.load_timing({1000}, {1000}, {100'000}, 2);
    set_keys(layer.stream(model::kRotation), {key(0, {{0, 0, 0, 0}}), key(1000, {{10, 0, 0, 0}})});
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_ROTATION);
    EXPECT_DOUBLE_EQ(value(ref, {1500, 120'000}).val.one_d, 5);
    EXPECT_DOUBLE_EQ(value(ref, {250, 120'000}, AEGP_LTimeMode_LayerTime).val.one_d, 5);
    EXPECT_DOUBLE_EQ(value(ref, {1500, 120'000}, 3).val.one_d, 5);
}

TEST_F(Streams, need_a_time_that_is_one) {
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_ROTATION);
    AEGP_StreamValue2 untouched{};
    const A_Time no_time{1, 0};
    EXPECT_EQ(table->AEGP_GetNewStreamValue(plugin, ref, 1, &no_time, true, &untouched), kBadArgument);
    EXPECT_EQ(table->AEGP_GetNewStreamValue(plugin, ref, 1, nullptr, true, &untouched), kBadArgument);
    EXPECT_EQ(table->AEGP_GetNewStreamValue(plugin, ref, 1, &kZero, true, nullptr), kBadArgument);
    EXPECT_EQ(untouched.streamH, nullptr);
}

TEST_F(Streams, take_static_values_by_copy) {
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_POSITION);
    AEGP_StreamValue2 record = value(ref);
    EXPECT_EQ(record.val.three_d.x, 500);
    record.val.three_d = {1, 2, 3};
    EXPECT_EQ(set(ref, record), 0);
    record.val.three_d = {};
    EXPECT_EQ(layer.stream(model::kPosition).data().static_value, (model::Value{{1, 2, 3, 0}}));
    EXPECT_EQ(table->AEGP_DisposeStreamValue(&record), 0);
    project.undo().undo();
    EXPECT_EQ(layer.stream(model::kPosition).data().static_value, (model::Value{{500, 250, 0, 0}}));
}

TEST_F(Streams, that_vary_take_no_static_value) {
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_ROTATION);
    AEGP_StreamValue2 record{};
    record.val.one_d = 9;
    set_keys(layer.stream(model::kRotation), {key(0, {{1, 0, 0, 0}})});
    EXPECT_EQ(set(ref, record), kNotAllowed);
    EXPECT_EQ(layer.stream(model::kRotation).keyframe(0).value.n[0], 1);
    const AEGP_StreamRefH opacity = stream(layer, AEGP_LayerStream_OPACITY);
    ASSERT_EQ(table->AEGP_SetExpression(plugin, opacity, "time"), 0);
    EXPECT_EQ(set(opacity, record), kNotAllowed);
    EXPECT_EQ(layer.stream(model::kOpacity).data().static_value.n[0], 100);
}

TEST_F(Streams, take_values_of_streams_that_look_the_same_only) {
    const AEGP_StreamRefH position = stream(layer, AEGP_LayerStream_POSITION);
    const AEGP_StreamRefH scale = stream(layer, AEGP_LayerStream_SCALE);
    const AEGP_StreamRefH rotation = stream(layer, AEGP_LayerStream_ROTATION);
    EXPECT_EQ(set(scale, value(position)), 0);
    EXPECT_EQ(layer.stream(model::kScale).data().static_value.n[0], 500);
    EXPECT_EQ(set(rotation, value(position)), kBadArgument);
    EXPECT_EQ(last_complaint(), "The value is of another type than the stream's.");
}

TEST_F(Streams, take_finite_numbers_only) {
    AEGP_StreamValue2 record{};
    record.val.three_d = {0, std::numeric_limits<double>::quiet_NaN(), 0};
    EXPECT_EQ(set(stream(layer, AEGP_LayerStream_POSITION), record), kBadArgument);
    EXPECT_EQ(layer.stream(model::kPosition).data().static_value, (model::Value{{500, 250, 0, 0}}));
}

TEST_F(Streams, keep_every_kind_of_number_where_the_record_has_it) {
    install_test_effect(project);
    layer.apply_effect(1);
    const AEGP_StreamRefH point = parameter(layer, 0, 2);
    const AEGP_StreamRefH colour = parameter(layer, 0, 4);
    const AEGP_StreamRefH other = parameter(layer, 0, 5);
    EXPECT_EQ(value(point).val.two_d.y, 20);
    EXPECT_EQ(value(colour).val.color.alphaF, 1);
    EXPECT_EQ(value(colour).val.color.redF, 0.25);
    EXPECT_EQ(value(colour).val.color.blueF, 0.75);
    AEGP_StreamValue2 record{};
    record.val.color = {0.5, 0.1, 0.2, 0.3};
    EXPECT_EQ(set(colour, record), 0);
    EXPECT_EQ(layer.effect(0).parameter(4).data().static_value, (model::Value{{0.1, 0.2, 0.3, 0.5}}));
    record = {};
    record.val.layer_id = 12;
    EXPECT_EQ(set(other, record), 0);
    EXPECT_EQ(value(other).val.layer_id, 12);
    record.val.two_d = {3, 4};
    EXPECT_EQ(set(point, record), 0);
    EXPECT_EQ(layer.effect(0).parameter(2).data().static_value, (model::Value{{3, 4, 0, 0}}));
}

TEST_F(Streams, without_data_give_an_empty_value_and_take_any) {
    install_test_effect(project);
    layer.apply_effect(1);
    const AEGP_StreamRefH group = parameter(layer, 0, 3);
    AEGP_StreamValue2 record = value(group);
    EXPECT_NE(record.streamH, nullptr);
    EXPECT_EQ(set(group, record), 0);
    EXPECT_EQ(table->AEGP_DisposeStreamValue(&record), 0);
}

TEST_F(Streams, without_data_refuse_values_if_the_rules_are_strict) {
    project.rules().strict_no_data = true;
    install_test_effect(project);
    layer.apply_effect(1);
    const AEGP_StreamRefH group = parameter(layer, 0, 3);
    AEGP_StreamValue2 record{};
    EXPECT_EQ(table->AEGP_GetNewStreamValue(plugin, group, 1, &kZero, true, &record), kNotAllowed);
    EXPECT_EQ(set(group, record), kNotAllowed);
    EXPECT_EQ(record.streamH, nullptr);
    EXPECT_EQ(set(parameter(layer, 0, 1), record), 0);
}

TEST_F(Streams, have_values_that_are_disposed_of_once_and_empty_ones_any_time) {
    AEGP_StreamValue2 record{};
    EXPECT_EQ(table->AEGP_DisposeStreamValue(&record), 0);
    EXPECT_EQ(table->AEGP_DisposeStreamValue(nullptr), kBadArgument);
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_POSITION);
    record.streamH = ref;  // as plug-ins fill records by hand
    EXPECT_EQ(set(ref, record), 0);
    EXPECT_EQ(table->AEGP_DisposeStreamValue(&record), 0);
    record = value(ref);
    EXPECT_EQ(table->AEGP_DisposeStreamValue(&record), 0);
    EXPECT_EQ(table->AEGP_DisposeStreamValue(&record), kBadArgument);
    EXPECT_EQ(host.ledger().disposed_twice.size(), 1U);
    EXPECT_EQ(table->AEGP_DisposeStream(ref), 0);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

TEST_F(Streams, survive_keyframes_and_die_with_their_layer) {
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_ROTATION);
    A_long index = -1;
    for (const A_long ticks : {300, 100, 200}) {
        const A_Time at{ticks, 120'000};
        EXPECT_EQ(keyframes()->AEGP_InsertKeyframe(ref, 1, &at, &index), 0);
    }
    EXPECT_EQ(type(ref), AEGP_StreamType_OneD);
    ASSERT_EQ(layers()->AEGP_DeleteLayer(handle), 0);
    AEGP_StreamType untouched = -1;
    EXPECT_EQ(table->AEGP_GetStreamType(ref, &untouched), kBadArgument);
    EXPECT_EQ(last_complaint(), "What the stream belongs to was deleted.");
    EXPECT_EQ(table->AEGP_DisposeStream(ref), 0);
}

TEST_F(Streams, of_an_effect_outlive_its_reference) {
    install_test_effect(project);
    layer.apply_effect(1);
    EXPECT_EQ(value(parameter(layer, 0, 1)).val.one_d, 7);  // parameter() disposes of the effect's
}

}  // namespace host::suites
