// Undo groups that scripts open.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(UndoGroups, edits_in_a_group_are_one_step_with_its_name) {
    SmallProject world;
    world.run(
        "app.beginUndoGroup('Rename'); app.project.item(1).name = 'x'; app.project.item(2).name = 'y'; "
        "app.endUndoGroup();");
    EXPECT_THAT(world.project.undo().step_names(), ElementsAre("Rename"));
    world.project.undo().undo();
    EXPECT_EQ(world.folder.name() + world.inner.name(), "folderinner");
}

TEST(UndoGroups, edits_outside_a_group_are_steps_of_their_own) {
    SmallProject world;
    world.run("app.project.item(1).name = 'x'; app.project.item(2).name = 'y';");
    EXPECT_EQ(world.project.undo().step_names().size(), 2U);
}

TEST(UndoGroups, ending_a_group_that_was_not_begun_is_an_error) {
    SmallProject world;
    EXPECT_THAT(world.error("app.endUndoGroup()"), HasSubstr("without beginUndoGroup"));
}

TEST(UndoGroups, a_group_left_open_is_closed_at_the_end_of_the_script) {
    SmallProject world;
    world.run("app.beginUndoGroup('one'); app.beginUndoGroup('two'); app.project.item(1).name = 'x';");
    EXPECT_EQ(world.project.undo().open_groups(), 0);
    world.error("app.beginUndoGroup('three'); app.project.item(1).name = 'z'; nowhere();");
    EXPECT_EQ(world.project.undo().open_groups(), 0);
    EXPECT_THAT(world.project.undo().step_names(), ElementsAre("one", "three"));
}

TEST(UndoGroups, a_script_joins_an_open_group_and_cannot_end_it) {
    SmallProject world;
    world.project.undo().begin_group("outside");
    EXPECT_THAT(world.error("app.project.item(1).name = 'x'; app.endUndoGroup();"),
                HasSubstr("without beginUndoGroup"));
    world.run("app.beginUndoGroup('inside'); app.project.item(2).name = 'y'; app.endUndoGroup();");
    EXPECT_EQ(world.project.undo().open_groups(), 1);
    world.project.undo().end_group();
    EXPECT_THAT(world.project.undo().step_names(), ElementsAre("outside"));
}

}  // namespace
}  // namespace script_test
