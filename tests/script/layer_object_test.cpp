// Layers in scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using host::model::from_seconds;
using host::model::kPosition;
using host::model::Layer;
using testing::HasSubstr;

double position_x(Layer& layer) {
    return layer.stream(kPosition).value_at({}).n[0];
}

void put_at(Layer& layer, double x, double y) {
    layer.stream(kPosition).set_static_value({{x, y, 0}});
}

TEST(LayerObject, gives_its_properties) {
    SmallProject world;
    EXPECT_EQ(
        world.run("var l = app.project.item(2).layer(2); [l.name, l.index, l.id, l.source.name, l.nullLayer].join()"),
        "b,2," + std::to_string(world.inner.layer_at(1).id()) + ",picture,false");
    EXPECT_EQ(world.run("l.containingComp === app.project.item(2)"), "true");
    EXPECT_THAT(world.error("l.index = 1"), HasSubstr("\"index\" is read-only"));
}

TEST(LayerObject, shows_the_source_name_until_it_gets_its_own) {
    SmallProject world;
    EXPECT_EQ(world.run("var l = app.project.item(4).layer(1); l.name + l.isNameSet"), "innerfalse");
    world.run("l.name = l.name;");
    EXPECT_EQ(world.outer.layer_at(0).own_name(), "inner");
    EXPECT_EQ(world.run("l.isNameSet"), "true");
}

TEST(LayerObject, renaming_updates_expressions_and_can_be_undone) {
    SmallProject world;
    host::model::Stream& stream = world.inner.layer_at(0).stream(host::model::kOpacity);
    stream.set_expression("thisComp.layer(\"b\").transform.opacity");
    world.run("app.project.item(2).layer(2).name = 'renamed';");
    EXPECT_EQ(stream.data().expression, "thisComp.layer(\"renamed\").transform.opacity");
    world.project.undo().undo();
    EXPECT_EQ(world.inner.layer_at(1).display_name(), "b");
}

TEST(LayerObject, a_copy_goes_directly_above_the_selected_layer) {
    SmallProject world;
    world.outer.select({&world.outer.layer_at(0)});
    EXPECT_EQ(world.run("var c = app.project.item(2), t = app.project.item(4);"
                        "for (var i = 1; i <= 3; i++) c.layer(i).copyToComp(t);"),
              "");
    EXPECT_EQ(World::stack(world.outer), "a b c inner ");
    EXPECT_EQ(World::stack(world.inner), "a b c ");
}

TEST(LayerObject, copying_needs_a_composition_that_the_layer_does_not_contain) {
    SmallProject world;
    EXPECT_THAT(world.error("app.project.item(2).layer(1).copyToComp(app.project.item(3))"), HasSubstr("composition"));
    EXPECT_THAT(world.error("app.project.item(2).layer(1).copyToComp()"), HasSubstr("composition"));
    EXPECT_NE(world.error("app.project.item(4).layer(1).copyToComp(app.project.item(2))"), "");
    EXPECT_EQ(World::stack(world.inner), "a b c ");
    world.run("app.project.item(2).layer(1).copyToComp(app.project.item(2))");
    EXPECT_EQ(World::stack(world.inner), "a a b c ");
}

TEST(LayerObject, assigning_a_parent_keeps_the_place) {
    SmallProject world;
    Layer& child = world.inner.layer_at(0);
    put_at(child, 100, 50);
    put_at(world.inner.layer_at(1), 30, 20);
    world.run("var c = app.project.item(2); c.layer(1).parent = c.layer(2);");
    EXPECT_EQ(child.parent(), &world.inner.layer_at(1));
    EXPECT_DOUBLE_EQ(position_x(child), 70);
    EXPECT_EQ(world.run("c.layer(1).parent.name"), "b");
    world.run("app.project.item(2).layer(1).parent = null; ");
    EXPECT_EQ(child.parent(), nullptr);
    EXPECT_DOUBLE_EQ(position_x(child), 100);
    EXPECT_EQ(world.run("c.layer(1).parent === null"), "true");
}

TEST(LayerObject, setParentWithJump_keeps_the_values) {
    SmallProject world;
    Layer& child = world.inner.layer_at(0);
    put_at(child, 100, 50);
    put_at(world.inner.layer_at(1), 30, 20);
    world.run("var c = app.project.item(2); c.layer(1).setParentWithJump(c.layer(2));");
    EXPECT_EQ(child.parent(), &world.inner.layer_at(1));
    EXPECT_DOUBLE_EQ(position_x(child), 100);
    world.run("c.layer(1).setParentWithJump();");
    EXPECT_EQ(child.parent(), nullptr);
    EXPECT_DOUBLE_EQ(position_x(child), 100);
}

TEST(LayerObject, the_same_parent_again_changes_nothing) {
    SmallProject world;
    world.inner.layer_at(0).load_parent(&world.inner.layer_at(1));
    const std::size_t steps = world.project.undo().step_names().size();
    world.run("var c = app.project.item(2); c.layer(1).parent = c.layer(2); c.layer(3).parent = null;");
    EXPECT_EQ(world.project.undo().step_names().size(), steps);
}

TEST(LayerObject, impossible_parents_are_errors) {
    SmallProject world;
    EXPECT_NE(world.error("var c = app.project.item(2); c.layer(1).parent = c.layer(1);"), "");
    EXPECT_NE(world.error("c.layer(1).parent = app.project.item(4).layer(1);"), "");
    EXPECT_THAT(world.error("c.layer(1).parent = 'b';"), HasSubstr("layer or null"));
    EXPECT_THAT(world.error("c.layer(1).parent = undefined;"), HasSubstr("layer or null"));
    world.run("c.layer(1).parent = c.layer(2);");
    EXPECT_NE(world.error("c.layer(2).parent = c.layer(1);"), "");
    EXPECT_EQ(world.inner.layer_at(1).parent(), nullptr);
}

TEST(LayerObject, moves_in_the_stack) {
    SmallProject world;
    world.run("var c = app.project.item(2); c.layer('c').moveToBeginning();");
    EXPECT_EQ(World::stack(world.inner), "c a b ");
    world.run("c.layer('c').moveToEnd();");
    EXPECT_EQ(World::stack(world.inner), "a b c ");
    world.run("c.layer('a').moveAfter(c.layer('b'));");
    EXPECT_EQ(World::stack(world.inner), "b a c ");
    world.run("c.layer('c').moveAfter(c.layer('b'));");
    EXPECT_EQ(World::stack(world.inner), "b c a ");
    world.run("c.layer('b').moveBefore(c.layer('a'));");
    EXPECT_EQ(World::stack(world.inner), "c b a ");
    world.run("c.layer('a').moveBefore(c.layer('c'));");
    EXPECT_EQ(World::stack(world.inner), "a c b ");
    world.run("c.layer('a').moveBefore(c.layer('a')); c.layer('a').moveAfter(c.layer('a'));");
    EXPECT_EQ(World::stack(world.inner), "a c b ");
    EXPECT_THAT(world.error("c.layer(1).moveAfter(app.project.item(4).layer(1))"), HasSubstr("another composition"));
    EXPECT_THAT(world.error("c.layer(1).moveBefore(2)"), HasSubstr("a layer was expected"));
}

TEST(LayerObject, a_removed_layer_is_invalid_in_every_member) {
    SmallProject world;
    world.run("var c = app.project.item(2), gone = c.layer(2); gone.remove();");
    EXPECT_EQ(World::stack(world.inner), "a c ");
    for (const char* use : {"gone.name", "gone.name = 'x'", "gone.index", "gone.parent", "gone.parent = null",
                            "gone.remove()", "gone.copyToComp(app.project.item(4))", "c.layer(1).parent = gone",
                            "c.layer(gone, 1)", "gone.moveToEnd()", "gone.source"}) {
        EXPECT_EQ(world.error(use), "Unable to execute script at line 1. Object is invalid") << use;
    }
    EXPECT_EQ(world.run("typeof gone"), "object");
    world.project.undo().undo();
    EXPECT_EQ(world.run("gone.name"), "b");
}

TEST(LayerObject, layers_of_a_deleted_composition_are_invalid) {
    SmallProject world;
    world.run("var l = app.project.item(2).layer(1); app.project.item(2).remove();");
    EXPECT_THAT(world.error("l.name"), HasSubstr("Object is invalid"));
}

TEST(LayerObject, switches_can_be_read_and_set) {
    SmallProject world;
    const Layer& layer = world.inner.layer_at(0);
    world.run(
        "var l = app.project.item(2).layer(1); l.enabled = false; l.shy = l.solo = l.locked = true;"
        "l.threeDLayer = true; l.motionBlur = true; l.adjustmentLayer = true; l.collapseTransformation = true;");
    EXPECT_FALSE(layer.has_flag(host::model::kVideoActive));
    for (const auto flag : {host::model::kShy, host::model::kSolo, host::model::kLocked, host::model::kIs3D,
                            host::model::kMotionBlur, host::model::kAdjustment, host::model::kCollapse}) {
        EXPECT_TRUE(layer.has_flag(flag)) << flag;
    }
    EXPECT_EQ(world.run("[l.enabled, l.shy, l.threeDLayer].join()"), "false,true,true");
}

TEST(LayerObject, times_are_seconds_and_trimming_keeps_the_other_end) {
    SmallProject world;
    Layer& layer = world.inner.layer_at(0);
    world.run("var l = app.project.item(2).layer(1); l.inPoint = 2; l.outPoint = 5;");
    EXPECT_EQ(layer.in_point(), from_seconds(2));
    EXPECT_EQ(layer.duration(), from_seconds(3));
    world.run("l.startTime = 1;");
    EXPECT_EQ(world.run("[l.startTime, l.inPoint, l.outPoint].join()"), "1,3,6");
    EXPECT_THAT(world.error("l.inPoint = 'soon'"), HasSubstr("number was expected"));
}

TEST(LayerObject, cameras_have_no_source) {
    SmallProject world;
    world.inner.load_layer(host::model::LayerKind::camera, nullptr);
    EXPECT_EQ(world.run("typeof app.project.item(2).layer(4).source"), "undefined");
    world.inner.load_layer(host::model::LayerKind::text, nullptr);
    EXPECT_EQ(world.run("app.project.item(2).layer(5).source === null"), "true");
}

}  // namespace
}  // namespace script_test
