// Offset, trim, stretch.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::at;
using testing::error_of;
using testing::key;
using testing::Scene;
using testing::value;

// A layer of a clip that lasts four seconds, starting at second one.
struct ClipScene : Scene {
    explicit ClipScene(HostRules rules = {}) : Scene(rules) {
        FootageFacts facts;
        facts.has_duration = true;
        facts.duration = at(4);
        clip = &comp.add_layer(project.add_footage("Clip", facts, 100, 100));
        clip->load_timing(at(1), at(1), at(4), 1);
        project.undo().clear();
    }
    void expect_trim(double in, double duration) const {
        EXPECT_EQ(clip->in_point(), at(in));
        EXPECT_EQ(clip->duration(), at(duration));
        EXPECT_EQ(clip->offset(), at(1));
    }
    Layer* clip;
};

TEST(Timing, moving_the_offset_moves_in_point_and_keyframes_with_it) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration(at(2), at(1));
    scene.clip->stream(kOpacity).replace({}, {key(0, value(0)), key(1, value(100))});
    scene.clip->set_offset(at(-3));
    EXPECT_EQ(scene.clip->in_point(), at(-2));
    EXPECT_EQ(scene.clip->duration(), at(1));
    EXPECT_EQ(scene.clip->stream(kOpacity).keyframe(1).time, at(1));
    EXPECT_EQ(scene.clip->to_comp_time(at(1)), at(-2));
    scene.project.undo().undo();
    EXPECT_EQ(scene.clip->offset(), at(1));
    EXPECT_EQ(scene.clip->in_point(), at(2));
}

TEST(Timing, the_in_point_in_layer_time_tells_of_a_trimmed_head) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration(at(2.5), at(1));
    EXPECT_EQ(scene.clip->to_layer_time(scene.clip->in_point()), at(1.5));
}

TEST(Timing, stretch_scales_layer_time_and_may_turn_it_round) {
    ClipScene scene;
    scene.clip->load_timing(at(1), at(1), at(8), 2);
    EXPECT_EQ(scene.clip->to_comp_time(at(3)), at(7));
    EXPECT_EQ(scene.clip->to_layer_time(at(7)), at(3));
    scene.clip->load_timing(at(9), at(1), at(8), -2);
    EXPECT_EQ(scene.clip->to_comp_time(at(4)), at(1));
    EXPECT_EQ(scene.clip->to_layer_time(at(1)), at(4));
    scene.clip->load_timing(at(1), at(1), at(4), 0);
    EXPECT_EQ(scene.clip->stretch(), 1);
}

TEST(Timing, a_trim_within_the_source_is_kept_exactly) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration({at(2).ticks + 1}, {at(1).ticks + 7});
    EXPECT_EQ(scene.clip->in_point().ticks, at(2).ticks + 1);
    EXPECT_EQ(scene.clip->duration().ticks, at(1).ticks + 7);
}

TEST(Timing, a_trim_beyond_the_source_is_clamped_to_it) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration(at(0), at(20));
    scene.expect_trim(1, 4);
    scene.clip->set_in_point_and_duration(at(3), at(20));
    scene.expect_trim(3, 2);
    scene.clip->set_in_point_and_duration(at(-3), at(5));
    scene.expect_trim(1, 1);
}

TEST(Timing, a_trim_outside_the_source_leaves_one_frame_at_its_edge) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration(at(30), at(1));
    scene.expect_trim(5 - 0.04, 0.04);
    scene.clip->set_in_point_and_duration(at(-30), at(1));
    scene.expect_trim(1, 0.04);
}

TEST(Timing, a_duration_of_zero_becomes_one_frame) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration(at(2), at(0));
    scene.expect_trim(2, 0.04);
    scene.clip->set_in_point_and_duration(at(3), at(-2));
    scene.expect_trim(3, 0.04);
}

TEST(Timing, illegal_trims_are_errors_under_the_rule) {
    HostRules rules;
    rules.illegal_trim = IllegalTrim::error;
    ClipScene scene(rules);
    EXPECT_EQ(error_of([&] { scene.clip->set_in_point_and_duration(at(0), at(2)); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { scene.clip->set_in_point_and_duration(at(2), at(9)); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { scene.clip->set_in_point_and_duration(at(2), at(0)); }), ErrorKind::not_allowed);
    scene.expect_trim(1, 4);
    scene.clip->set_in_point_and_duration(at(2), at(3));
    scene.expect_trim(2, 3);
}

TEST(Timing, a_reversed_layer_is_limited_by_its_source_on_the_other_side) {
    ClipScene scene;
    scene.clip->load_timing(at(9), at(5), at(4), -1);
    scene.clip->set_in_point_and_duration(at(0), at(20));
    EXPECT_EQ(scene.clip->in_point(), at(5));
    EXPECT_EQ(scene.clip->duration(), at(4));
}

TEST(Timing, stills_text_and_remapped_layers_extend_freely) {
    ClipScene scene;
    scene.clip->set_flag(kTimeRemap, true);
    Layer& text = scene.comp.load_layer(LayerKind::text, nullptr);
    Layer& still = scene.layer("Still");
    Layer& null = scene.comp.create_null("Null", {});
    for (Layer* layer : {scene.clip, &text, &still, &null}) {
        layer->set_in_point_and_duration(at(-20), at(100));
        EXPECT_EQ(layer->in_point(), at(-20));
        EXPECT_EQ(layer->duration(), at(100));
    }
}

TEST(Timing, a_composition_limits_the_layers_that_show_it) {
    Scene scene;
    Layer& nest = scene.comp.add_layer(scene.new_comp("Nested", 3));
    EXPECT_EQ(nest.duration(), at(3));
    nest.set_in_point_and_duration(at(1), at(20));
    EXPECT_EQ(nest.duration(), at(2));
}

TEST(Timing, the_same_timing_again_is_no_change) {
    ClipScene scene;
    scene.clip->set_in_point_and_duration(at(1), at(4));
    scene.clip->set_in_point_and_duration(at(0), at(10));
    scene.clip->set_offset(at(1));
    EXPECT_FALSE(scene.project.undo().can_undo());
}

TEST(Timing, seconds_round_to_the_nearest_tick) {
    EXPECT_EQ(from_seconds(1001.0 / 30000).ticks, 4004);
    EXPECT_EQ(from_seconds(-0.5 / 120000).ticks, -1);
    EXPECT_DOUBLE_EQ(seconds(Time{60000}), 0.5);
}

TEST(Timing, a_composition_may_count_in_another_scale_than_the_others) {
    Scene scene;
    EXPECT_EQ(scene.comp.time_scale(), 120000);
    scene.comp.override_time_scale(2500);
    EXPECT_EQ(scene.comp.time_scale(), 2500);
    EXPECT_EQ(scene.new_comp("Other").time_scale(), 120000);
}

}  // namespace
}  // namespace host::model
