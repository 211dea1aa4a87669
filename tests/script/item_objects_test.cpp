// FolderItem, FootageItem and what compositions share with them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

TEST(ItemObject, gives_its_properties) {
    SmallProject world;
    EXPECT_EQ(world.run("var i = app.project.item(3); [i.name, i.typeName, i.width, i.height, i.pixelAspect].join()"),
              "picture,Footage,320,240,1");
    EXPECT_EQ(world.run("app.project.item(1).typeName + app.project.item(2).typeName"), "FolderComposition");
    EXPECT_EQ(world.run("app.project.item(2).id"), std::to_string(world.inner.id()));
}

TEST(ItemObject, can_be_renamed_and_that_can_be_undone) {
    SmallProject world;
    world.run("app.project.item(3).name = 'photo';");
    EXPECT_EQ(world.picture.name(), "photo");
    world.project.undo().undo();
    EXPECT_EQ(world.picture.name(), "picture");
}

TEST(ItemObject, folders_number_their_own_contents) {
    SmallProject world;
    EXPECT_EQ(world.run("var f = app.project.item(1); f.numItems + f.item(1).name"), "1inner");
    EXPECT_THAT(world.error("f.item(2)"), HasSubstr("item 2 is out of range: the folder has 1"));
    EXPECT_EQ(world.run("app.project.rootFolder.numItems"), "3");
    EXPECT_EQ(world.run("app.project.item(2).parentFolder === f"), "true");
    EXPECT_EQ(world.run("String(app.project.rootFolder.parentFolder)"), "null");
}

TEST(ItemObject, removing_a_source_removes_its_layers) {
    SmallProject world;
    world.run("app.project.item(2).remove();");
    EXPECT_FALSE(world.inner.is_alive());
    EXPECT_EQ(world.outer.layer_count(), 0);
    EXPECT_THAT(world.error("app.project.rootFolder.remove()"), HasSubstr("root folder"));
}

TEST(ItemObject, a_deleted_item_is_invalid_and_an_undone_deletion_revives_it) {
    SmallProject world;
    world.run("var gone = app.project.item(3); gone.remove();");
    EXPECT_EQ(world.error("gone.name"), "Unable to execute script at line 1. Object is invalid");
    EXPECT_EQ(world.error("gone.name = 'x'"), "Unable to execute script at line 1. Object is invalid");
    EXPECT_EQ(world.error("gone.remove()"), "Unable to execute script at line 1. Object is invalid");
    world.project.undo().undo();
    EXPECT_EQ(world.run("gone.name"), "picture");
}

}  // namespace
}  // namespace script_test
