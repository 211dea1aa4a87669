// Script objects that stand for things of the project: sameness, life, and attempts to fool them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

TEST(ObjectIdentity, the_same_thing_is_the_same_object) {
    SmallProject world;
    EXPECT_EQ(world.run("app.project.item(2) === app.project.item(2)"), "true");
    EXPECT_EQ(world.run("app.project.item(2).layer(1) === app.project.item(2).layer('a')"), "true");
    EXPECT_EQ(world.run("app.project.item(2).layer(1) === app.project.item(2).layer(2)"), "false");
    EXPECT_EQ(world.run("app.project.item(4).layer(1).source === app.project.item(2)"), "true");
}

TEST(ObjectIdentity, what_a_script_notes_on_an_object_stays_while_it_holds_it) {
    SmallProject world;
    world.run("var held = app.project.item(2).layer(1); held.note = 'mine';");
    EXPECT_EQ(world.run("app.project.item(2).layer(1).note"), "mine");
}

// More layers than the engine keeps objects of when nobody holds them.
struct ManyLayers : SmallProject {
    ManyLayers() {
        for (int i = 4; i <= kLayers; ++i) {
            inner.load_layer(host::model::LayerKind::av, &picture).load_name("layer " + std::to_string(i));
        }
    }
    static constexpr int kLayers = 100;
};

TEST(ObjectIdentity, released_objects_are_made_again) {
    ManyLayers world;
    world.run("app.project.item(2).layer(1).note = 'lost';");
    EXPECT_EQ(world.run("for (var i = 0; i < 20000; i++) app.project.item(2).layer(1 + i % 100).name"), "layer 100");
    EXPECT_EQ(world.run("typeof app.project.item(2).layer(1).note + app.project.item(2).layer(1).name"), "undefineda");
}

TEST(ObjectIdentity, garbage_in_cycles_leaves_no_stale_objects) {
    ManyLayers world;
    EXPECT_EQ(
        world.run("for (var i = 0; i < 20000; i++) { var l = app.project.item(2).layer(1 + i % 100), o = {layer: l};"
                  "if (l.name !== (l.index > 3 ? 'layer ' + l.index : 'abc'.charAt(l.index - 1))) throw l.name;"
                  "l.o = o; l = o = null; } i"),
        "20000");
}

TEST(ObjectIdentity, exchanging_the_prototype_leaves_no_stale_objects) {
    ManyLayers world;
    world.run(
        "for (var i = 0; i < 1000; i++) { var l = app.project.item(2).layer(1 + i % 100); Object.setPrototypeOf(l, "
        "{}); l = null; }");
    EXPECT_EQ(world.run("app.project.item(2).layer(1).name"), "a");
}

TEST(ObjectIdentity, an_object_under_another_prototype_is_still_what_it_was) {
    SmallProject world;
    EXPECT_THAT(
        world.error(
            "var l = app.project.item(2).layer(1), c = app.project.item(2); l.__proto__ = c.__proto__; l.numLayers"),
        HasSubstr("not an item"));
    EXPECT_THAT(world.error("Object.create(l, {}).layer(1)"), HasSubstr("not an item"));
    EXPECT_EQ(world.run("var derived = Object.create(c); derived.name"), "inner");
    EXPECT_EQ(world.run("derived = null; app.project.item(2).name"), "inner");
}

TEST(ObjectIdentity, accessors_need_the_right_object) {
    SmallProject world;
    EXPECT_THAT(world.error("Object.getPrototypeOf(Object.getPrototypeOf(app.project.item(2).layer(1))).name"),
                HasSubstr("not a layer"));
    EXPECT_EQ(world.run("var names = Object.getOwnPropertyNames(app.project.item(2)); names.length"), "0");
}

TEST(ObjectIdentity, the_engine_can_go_while_scripts_hold_objects) {
    auto world = std::make_unique<SmallProject>();
    world->run(
        "var l = app.project.item(2).layer(1), w = new Window('dialog'); w.add('button'); var b = w.children[0];"
        "l.self = l; w.l = l; l.w = w;");
    world.reset();
    SUCCEED();
}

}  // namespace
}  // namespace script_test
