// Effects on layers.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::error_of;
using testing::install_tint;
using testing::Scene;
using testing::value;

TEST(Effects, are_appended_with_default_values_and_a_free_name) {
    Scene scene;
    const int key = install_tint(scene.project)->key;
    Layer& layer = scene.layer("L");
    Effect& first = layer.apply_effect(key);
    Effect& second = layer.apply_effect(key);
    Effect& third = layer.apply_effect(key);
    ASSERT_EQ(layer.effect_count(), 3u);
    EXPECT_EQ(&layer.effect(0), &first);
    EXPECT_EQ(&layer.effect(2), &third);
    EXPECT_EQ(first.name(), "Tint");
    EXPECT_EQ(second.name(), "Tint 2");
    EXPECT_EQ(third.name(), "Tint 3");
    EXPECT_EQ(first.kind().key, key);
    EXPECT_EQ(first.flags(), kEffectActive);
    ASSERT_EQ(first.parameter_count(), 5u);
    EXPECT_EQ(first.parameter(testing::kTintNumber).value_at({}), value(50));
    EXPECT_FALSE(first.parameter(0).can_vary_over_time());
}

TEST(Effects, parameters_of_equal_value_share_data_and_change_apart) {
    Scene scene;
    const int key = install_tint(scene.project)->key;
    Stream& one = scene.layer("L").apply_effect(key).parameter(testing::kTintNumber);
    Stream& other = scene.layer("M").apply_effect(key).parameter(testing::kTintNumber);
    EXPECT_EQ(&one.data(), &other.data());
    one.set_static_value(value(1));
    EXPECT_EQ(other.value_at({}), value(50));
    other.insert_keyframe({});
    EXPECT_EQ(one.keyframe_count(), 0u);
    scene.project.undo().undo();
    scene.project.undo().undo();
    EXPECT_EQ(one.value_at({}), value(50));
}

TEST(Effects, undo_takes_them_off_again) {
    Scene scene;
    const int key = install_tint(scene.project)->key;
    Layer& layer = scene.layer("L");
    Effect& first = layer.apply_effect(key);
    layer.apply_effect(key).parameter(testing::kTintNumber).set_expression("thisComp.layer('L').opacity");
    scene.project.undo().undo();
    scene.project.undo().undo();
    ASSERT_EQ(layer.effect_count(), 1u);
    EXPECT_EQ(&layer.effect(0), &first);
    layer.rename("M");
    EXPECT_EQ(layer.apply_effect(key).name(), "Tint 2");
}

// Takes hours if every name is compared with all that are taken, for each number.
TEST(Effects, by_the_thousands_get_the_smallest_free_names) {
    Scene scene;
    const int key = install_tint(scene.project)->key;
    Layer& layer = scene.layer("L");
    for (int number = 2; number <= 20'001; ++number) layer.apply_effect(key);
    EXPECT_EQ(layer.effect(19'999).name(), "Tint 20000");
    scene.project.undo().undo();
    EXPECT_EQ(layer.apply_effect(key).name(), "Tint 20000");
}

TEST(Effects, unknown_keys_cameras_and_lights_are_refused) {
    Scene scene;
    const int key = install_tint(scene.project)->key;
    EXPECT_EQ(error_of([&] { scene.layer("L").apply_effect(key + 1); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.layer("L").apply_effect(0); }), ErrorKind::bad_argument);
    for (const LayerKind kind : {LayerKind::camera, LayerKind::light}) {
        Layer& layer = scene.comp.load_layer(kind, nullptr);
        EXPECT_EQ(error_of([&] { layer.apply_effect(key); }), ErrorKind::bad_argument);
        EXPECT_EQ(layer.effect_count(), 0u);
    }
}

TEST(Effects, only_masked_flags_change) {
    Scene scene;
    Effect& tint = scene.layer("L").apply_effect(install_tint(scene.project)->key);
    tint.set_flags(kEffectAudioOnly | kEffectAudioToo, kEffectAudioOnly | kEffectMissing);
    EXPECT_EQ(tint.flags(), kEffectActive | kEffectAudioOnly);
    tint.set_flags(kEffectActive, 0);
    EXPECT_EQ(tint.flags(), std::uint32_t{kEffectAudioOnly});
    scene.project.undo().undo();
    EXPECT_EQ(tint.flags(), kEffectActive | kEffectAudioOnly);
}

TEST(Effects, indices_out_of_range_are_errors) {
    Scene scene;
    Layer& layer = scene.layer("L");
    Effect& tint = layer.apply_effect(install_tint(scene.project)->key);
    EXPECT_EQ(error_of([&] { layer.effect(1); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { tint.parameter(5); }), ErrorKind::bad_argument);
}

}  // namespace
}  // namespace host::model
