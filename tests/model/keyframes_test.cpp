// Static values, keyframes and their single fields.
#include <gtest/gtest.h>

#include "model/keyframe_edit.h"
#include "scene.h"

namespace host::model {
namespace {

using testing::at;
using testing::error_of;
using testing::key;
using testing::Scene;
using testing::value;

struct KeyframeScene : Scene {
    explicit KeyframeScene(int number) : stream(layer("L").stream(number)) {}
    std::vector<double> times() const {
        std::vector<double> all;
        for (const Keyframe& keyframe : stream.data().keyframes) all.push_back(seconds(keyframe.time));
        return all;
    }
    std::vector<double> values() const {
        std::vector<double> all;
        for (const Keyframe& keyframe : stream.data().keyframes) all.push_back(keyframe.value.n[0]);
        return all;
    }
    Stream& stream;
};
using Numbers = std::vector<double>;

TEST(Keyframes, the_first_one_takes_the_static_value) {
    KeyframeScene scene(kOpacity);
    scene.stream.set_static_value(value(42));
    EXPECT_EQ(scene.stream.insert_keyframe(at(3)), 0u);
    EXPECT_EQ(scene.stream.keyframe(0).value, value(42));
    EXPECT_EQ(scene.stream.keyframe(0).in, Interpolation::linear);
}

TEST(Keyframes, a_new_one_takes_the_value_the_stream_has_there_and_shifts_those_behind) {
    KeyframeScene scene(kOpacity);
    scene.stream.replace({}, {key(0, value(0)), key(4, value(80))});
    EXPECT_EQ(scene.stream.insert_keyframe(at(1)), 1u);
    EXPECT_EQ(scene.stream.insert_keyframe(at(-1)), 0u);
    EXPECT_EQ(scene.times(), (Numbers{-1, 0, 1, 4}));
    EXPECT_EQ(scene.values(), (Numbers{0, 0, 20, 80}));
}

TEST(Keyframes, inserting_where_one_is_finds_it) {
    KeyframeScene scene(kOpacity);
    scene.stream.replace({}, {key(0, value(0)), key(4, value(80))});
    const StreamData* data = &scene.stream.data();
    EXPECT_EQ(scene.stream.insert_keyframe(at(4)), 1u);
    EXPECT_EQ(&scene.stream.data(), data);
}

TEST(Keyframes, a_batch_is_one_step_sorts_itself_and_replaces_only_values) {
    KeyframeScene scene(kOpacity);
    Keyframe held = key(2, value(5));
    held.out = Interpolation::hold;
    scene.stream.replace({}, {held});
    scene.project.undo().clear();
    scene.stream.add_keyframes({{at(3), value(30)}, {at(2), value(20)}, {at(1), value(10)}});
    EXPECT_EQ(scene.times(), (Numbers{1, 2, 3}));
    EXPECT_EQ(scene.values(), (Numbers{10, 20, 30}));
    EXPECT_EQ(scene.stream.keyframe(1).out, Interpolation::hold);
    EXPECT_EQ(scene.project.undo().step_names().size(), 1u);
    scene.project.undo().undo();
    EXPECT_EQ(scene.values(), Numbers{5});
}

TEST(Keyframes, of_one_time_twice_in_a_batch_the_last_counts) {
    KeyframeScene scene(kOpacity);
    scene.stream.add_keyframes({{at(1), value(10)}, {at(1), value(11)}});
    EXPECT_EQ(scene.values(), Numbers{11});
}

TEST(Keyframes, a_batch_that_says_nothing_new_changes_nothing) {
    KeyframeScene scene(kOpacity);
    scene.stream.add_keyframes({{at(1), value(10)}, {at(2), value(20)}});
    const StreamData* data = &scene.stream.data();
    scene.project.undo().clear();
    scene.stream.add_keyframes({{at(2), value(20)}, {at(1), value(10)}});
    scene.stream.add_keyframes({});
    EXPECT_EQ(&scene.stream.data(), data);
    EXPECT_FALSE(scene.project.undo().can_undo());
}

TEST(Keyframes, indices_out_of_range_are_errors) {
    KeyframeScene scene(kOpacity);
    scene.stream.insert_keyframe(at(0));
    EXPECT_EQ(error_of([&] { scene.stream.keyframe(1); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.stream.set_keyframe(1, key(0, value(0))); }), ErrorKind::bad_argument);
}

TEST(Keyframes, setting_one_may_not_move_it_in_time) {
    KeyframeScene scene(kOpacity);
    scene.stream.insert_keyframe(at(1));
    EXPECT_EQ(error_of([&] { scene.stream.set_keyframe(0, key(2, value(1))); }), ErrorKind::bad_argument);
    scene.stream.set_keyframe(0, key(1, value(7)));
    EXPECT_EQ(scene.values(), Numbers{7});
}

TEST(Keyframes, spatial_flags_need_a_spatial_stream) {
    KeyframeScene scene(kOpacity);
    scene.stream.replace({}, {key(0, value(0)), key(1, value(1)), key(2, value(2))});
    for (const KeyframeFlag flag : {kSpatialContinuous, kSpatialAutoBezier, kRoving}) {
        Keyframe keyframe = scene.stream.keyframe(1);
        keyframe.flags = flag;
        EXPECT_EQ(error_of([&] { scene.stream.set_keyframe(1, keyframe); }), ErrorKind::not_allowed);
    }
    Keyframe keyframe = scene.stream.keyframe(1);
    keyframe.flags = kTemporalContinuous | kTemporalAutoBezier;
    scene.stream.set_keyframe(1, keyframe);
    EXPECT_EQ(scene.stream.keyframe(1).flags, keyframe.flags);
}

TEST(Keyframes, the_first_and_the_last_never_rove) {
    KeyframeScene scene(kPosition);
    scene.stream.replace({}, {key(0, value(0)), key(1, value(1)), key(2, value(2))});
    for (const std::size_t i : {0u, 1u, 2u}) {
        Keyframe keyframe = scene.stream.keyframe(i);
        keyframe.flags = kRoving | kSpatialContinuous;
        scene.stream.set_keyframe(i, keyframe);
    }
    EXPECT_EQ(scene.stream.keyframe(0).flags, kSpatialContinuous);
    EXPECT_EQ(scene.stream.keyframe(1).flags, kRoving | kSpatialContinuous);
    EXPECT_EQ(scene.stream.keyframe(2).flags, kSpatialContinuous);
}

TEST(Keyframes, setters_of_single_fields_disturb_each_other_only_under_the_rule) {
    HostRules rules;
    Keyframe keyframe = key(0, value(0));
    keyframe.flags = kSpatialAutoBezier;
    set_ease(keyframe, 0, {3, 0.2}, {4, 0.3}, rules);
    set_tangents(keyframe, value(1), value(2), rules);
    EXPECT_EQ(keyframe.ease_in[0], (Ease{3, 0.2}));
    EXPECT_EQ(keyframe.ease_out[0], (Ease{4, 0.3}));
    EXPECT_EQ(keyframe.tangent_in, value(1));
    EXPECT_EQ(keyframe.tangent_out, value(2));
    EXPECT_EQ(keyframe.in, Interpolation::linear);
    EXPECT_EQ(keyframe.flags, kSpatialAutoBezier);
    rules.keyframe_setters_disturb_each_other = true;
    set_ease(keyframe, 0, {3, 0.2}, {4, 0.3}, rules);
    set_tangents(keyframe, value(1), value(2), rules);
    EXPECT_EQ(keyframe.in, Interpolation::bezier);
    EXPECT_EQ(keyframe.out, Interpolation::bezier);
    EXPECT_EQ(keyframe.flags, 0u);
}

TEST(StaticValues, are_refused_while_there_are_keyframes) {
    KeyframeScene scene(kOpacity);
    scene.stream.insert_keyframe(at(0));
    const StreamData* data = &scene.stream.data();
    EXPECT_EQ(error_of([&] { scene.stream.set_static_value(value(5)); }), ErrorKind::not_allowed);
    EXPECT_EQ(&scene.stream.data(), data);
}

TEST(StaticValues, the_same_value_again_is_no_change) {
    KeyframeScene scene(kOpacity);
    scene.stream.set_static_value(value(100));
    EXPECT_FALSE(scene.stream.is_changed());
    scene.stream.set_static_value(value(99));
    EXPECT_TRUE(scene.stream.is_changed());
    scene.project.undo().undo();
    EXPECT_FALSE(scene.stream.is_changed());
}

TEST(Streams, vary_over_time_by_keyframes_or_by_a_working_expression) {
    KeyframeScene scene(kOpacity);
    EXPECT_FALSE(scene.stream.is_time_varying());
    scene.stream.set_expression("wiggle(1, 2)");
    EXPECT_TRUE(scene.stream.is_time_varying());
    scene.stream.set_expression_state(false);
    EXPECT_FALSE(scene.stream.is_time_varying());
    scene.stream.set_expression("thisComp.layer('Nobody').opacity");
    EXPECT_FALSE(scene.stream.is_time_varying());
    scene.stream.insert_keyframe(at(0));
    EXPECT_TRUE(scene.stream.is_time_varying());
}

TEST(Streams, without_data_take_values_and_keep_nothing_but_no_keyframes_nor_expressions) {
    Scene scene;
    Effect& tint = scene.layer("L").apply_effect(testing::install_tint(scene.project)->key);
    Stream& entry = tint.parameter(testing::kTintGroupEnd);
    entry.set_static_value(value(5));
    EXPECT_EQ(entry.data().static_value, Value{});
    EXPECT_FALSE(entry.can_vary_over_time());
    EXPECT_EQ(error_of([&] { entry.insert_keyframe(at(0)); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { entry.add_keyframes({{at(0), value(1)}}); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { entry.set_expression("1"); }), ErrorKind::not_allowed);
}

TEST(Streams, have_as_many_eases_as_their_type_says) {
    EXPECT_EQ(temporal_dimensions(StreamType::three_d_spatial), 1);
    EXPECT_EQ(temporal_dimensions(StreamType::two_d_spatial), 1);
    EXPECT_EQ(temporal_dimensions(StreamType::two_d), 2);
    EXPECT_EQ(temporal_dimensions(StreamType::three_d), 3);
    EXPECT_EQ(temporal_dimensions(StreamType::color), 1);
    EXPECT_EQ(temporal_dimensions(StreamType::no_data), 0);
    EXPECT_EQ(value_dimensions(StreamType::color), 4);
    EXPECT_EQ(value_dimensions(StreamType::marker), 0);
}

}  // namespace
}  // namespace host::model
