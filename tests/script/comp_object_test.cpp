// CompItem
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

TEST(CompObject, finds_layers_by_number_from_the_top) {
    SmallProject world;
    EXPECT_EQ(world.run("var c = app.project.item(2); c.numLayers + c.layer(1).name + c.layer(3).name"), "3ac");
    EXPECT_THAT(world.error("c.layer(0)"), HasSubstr("layer 0 is out of range: the composition has 3"));
    EXPECT_THAT(world.error("c.layer(4)"), HasSubstr("layer 4 is out of range"));
    EXPECT_THAT(world.error("c.layer(1.5)"), HasSubstr("whole number"));
    EXPECT_THAT(world.error("c.layer()"), HasSubstr("number was expected"));
}

TEST(CompObject, finds_layers_by_name_topmost_first) {
    SmallProject world;
    world.inner.layer_at(2).load_name("b");
    EXPECT_EQ(world.run("var c = app.project.item(2); c.layer('b').index"), "2");
    EXPECT_EQ(world.run("c.layer('none') === null"), "true");
    EXPECT_EQ(world.run("app.project.item(4).layer('inner').index"), "1");
}

TEST(CompObject, finds_layers_relative_to_another) {
    SmallProject world;
    EXPECT_EQ(world.run("var c = app.project.item(2); c.layer(c.layer(1), 2).name + c.layer(c.layer(3), -1).name"),
              "cb");
    EXPECT_THAT(world.error("c.layer(c.layer(1), -1)"), HasSubstr("layer 0 is out of range"));
    EXPECT_THAT(world.error("c.layer(c.layer(3), 2147483647)"), HasSubstr("out of range"));
    EXPECT_THAT(world.error("c.layer(app.project.item(4).layer(1), 0)"), HasSubstr("another composition"));
}

TEST(CompObject, gives_its_size_and_its_timing_in_seconds) {
    SmallProject world;
    EXPECT_EQ(world.run("var c = app.project.item(2);"
                        "[c.width, c.height, c.pixelAspect, c.duration, c.frameRate, c.frameDuration, c.time].join()"),
              "640,480,1,10,25,0.04,0");
    world.run("c.time = 2.5;");
    EXPECT_EQ(world.inner.current_time(), host::model::from_seconds(2.5));
}

TEST(CompObject, lists_its_selected_layers) {
    SmallProject world;
    world.inner.select({&world.inner.layer_at(2), &world.inner.layer_at(0)});
    EXPECT_EQ(world.run("var s = app.project.item(2).selectedLayers; s.length + s[0].name + s[1].name"), "2ca");
    EXPECT_EQ(world.run("app.project.item(4).selectedLayers.length"), "0");
}

TEST(CompObject, calls_on_other_objects_are_errors) {
    SmallProject world;
    EXPECT_THAT(world.error("app.project.item(2).layer.call(app.project.item(3), 1)"), HasSubstr("not a composition"));
    EXPECT_THAT(world.error("app.project.item(2).layer.call(app.project.item(2).layer(1), 1)"),
                HasSubstr("not an item"));
    EXPECT_THAT(world.error("app.project.item(2).layer.call({}, 1)"), HasSubstr("not an item"));
    EXPECT_THAT(world.error("app.project.item(2).layer.call(null, 1)"), HasSubstr("not an item"));
}

}  // namespace
}  // namespace script_test
