// Parents and mattes.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::error_of;
using testing::Scene;
using testing::value;
using Layers = std::vector<Layer*>;

TEST(Parents, keeping_local_values_changes_the_link_alone) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    Layer& child = scene.layer("Child");
    const auto* data = &child.stream(kPosition).data();
    child.set_parent(&parent, Parenting::keep_local_values);
    EXPECT_EQ(child.parent(), &parent);
    EXPECT_EQ(parent.children(), Layers{&child});
    EXPECT_EQ(&child.stream(kPosition).data(), data);
    child.set_parent(nullptr, Parenting::keep_local_values);
    EXPECT_EQ(child.parent(), nullptr);
    EXPECT_TRUE(parent.children().empty());
    scene.project.undo().undo();
    EXPECT_EQ(child.parent(), &parent);
}

TEST(Parents, itself_a_descendant_a_foreign_and_a_dead_layer_are_refused) {
    Scene scene;
    Comp& other = scene.new_comp("Other");
    Layer& foreign = scene.layer("Foreign", &other);
    Layer& a = scene.layer("A");
    Layer& b = scene.layer("B");
    Layer& c = scene.layer("C");
    Layer& dead = scene.layer("Dead");
    dead.remove();
    b.set_parent(&a, Parenting::keep_local_values);
    c.set_parent(&b, Parenting::keep_local_values);
    const std::size_t steps = scene.project.undo().step_names().size();
    for (Layer* parent : {&a, &b, &c, &foreign, &dead}) {
        EXPECT_EQ(error_of([&] { a.set_parent(parent, Parenting::keep_place); }), ErrorKind::bad_argument);
    }
    EXPECT_EQ(a.parent(), nullptr);
    EXPECT_EQ(error_of([&] { a.load_parent(&c); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { dead.set_parent(&a, Parenting::keep_place); }), ErrorKind::bad_argument);
    EXPECT_EQ(scene.project.undo().step_names().size(), steps);
}

TEST(Parents, the_same_parent_again_changes_nothing) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    Layer& child = scene.layer("Child");
    child.load_parent(&parent);
    child.set_parent(&parent, Parenting::keep_place);
    EXPECT_FALSE(scene.project.undo().can_undo());
}

TEST(Parents, a_locked_layer_refuses_only_under_the_rule) {
    Scene scene;
    Layer& parent = scene.layer("Parent");
    Layer& child = scene.layer("Child");
    child.set_flag(kLocked, true);
    child.set_parent(&parent, Parenting::keep_local_values);
    EXPECT_EQ(child.parent(), &parent);
    scene.project.rules().locked_layers_refuse_edits = true;
    EXPECT_EQ(error_of([&] { child.set_parent(nullptr, Parenting::keep_local_values); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { child.rename("X"); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { child.stream(kOpacity).set_static_value(value(1)); }), ErrorKind::not_allowed);
    child.set_flag(kLocked, false);
    child.set_parent(nullptr, Parenting::keep_local_values);
    EXPECT_EQ(child.parent(), nullptr);
}

TEST(Mattes, a_matte_is_linked_both_ways_and_released_by_none) {
    Scene scene;
    Layer& matte = scene.layer("Matte");
    Layer& user = scene.layer("User");
    user.load_matte(&matte, MatteType::luma);
    EXPECT_EQ(matte.matte_users(), Layers{&user});
    EXPECT_EQ(user.matte_type(), MatteType::luma);
    user.load_matte(nullptr, MatteType::none);
    EXPECT_TRUE(matte.matte_users().empty());
}

TEST(Switches, three_d_brings_no_hidden_depth_to_light_and_going_back_drops_it) {
    Scene scene;
    Layer& layer = scene.layer("L");
    layer.stream(kPosition).set_static_value(value(10, 20, 30));
    layer.stream(kRotateX).set_static_value(value(45));
    layer.set_flag(kIs3D, true);
    EXPECT_EQ(layer.stream(kPosition).data().static_value, value(10, 20, 0));
    EXPECT_EQ(layer.stream(kRotateX).data().static_value, value(0));
    layer.stream(kPosition).insert_keyframe(Time{});
    Keyframe keyframe = layer.stream(kPosition).keyframe(0);
    keyframe.value = value(1, 2, 3);
    keyframe.tangent_out = value(4, 5, 6);
    layer.stream(kPosition).set_keyframe(0, keyframe);
    layer.stream(kOrientation).set_static_value(value(1, 2, 3));
    layer.stream(kRotation).set_static_value(value(15));
    layer.set_flag(kIs3D, false);
    EXPECT_EQ(layer.stream(kPosition).keyframe(0).value, value(1, 2, 0));
    EXPECT_EQ(layer.stream(kPosition).keyframe(0).tangent_out, value(4, 5, 0));
    EXPECT_EQ(layer.stream(kOrientation).data().static_value, Value{});
    EXPECT_EQ(layer.stream(kRotation).data().static_value, value(15));
    scene.project.undo().undo();
    EXPECT_TRUE(layer.is_3d());
    EXPECT_EQ(layer.stream(kPosition).keyframe(0).value, value(1, 2, 3));
}

TEST(Switches, cameras_and_lights_are_3d_and_stay_it) {
    Scene scene;
    Layer& camera = scene.comp.load_layer(LayerKind::camera, nullptr);
    EXPECT_TRUE(camera.is_3d());
    camera.set_flag(kIs3D, true);
    camera.set_flag(kIs3D, false);
    EXPECT_TRUE(camera.is_3d());
    EXPECT_FALSE(scene.project.undo().can_undo());
}

}  // namespace
}  // namespace host::model
