// How elements are to be laid out: what scripts set and what a window reads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using host::scriptui::Align;
using host::scriptui::Orientation;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(DialogLayout, defaults_differ_by_container) {
    World world;
    EXPECT_EQ(world.run("var w = new Window('dialog'), g = w.add('group'), p = w.add('panel');"
                        "[w.orientation, g.orientation, p.orientation, w.alignChildren, w.spacing, w.margins.left, "
                        "g.margins.left].join()"),
              "column,row,column,center,10,15,0");
    EXPECT_EQ(world.run("[typeof w.size, typeof w.bounds, typeof w.location, typeof g.alignment].join()"),
              "undefined,undefined,undefined,undefined");
    EXPECT_EQ(world.run("g.preferredSize.width + ',' + g.preferredSize.height"), "-1,-1");
}

TEST(DialogLayout, the_window_reads_what_the_script_set) {
    World world;
    int looked = 0;
    world.driver.act = [&](Window& window) {
        ++looked;
        EXPECT_EQ(window.layout().orientation, Orientation::column);
        EXPECT_EQ(window.layout().align_children.first, Align::fill);
        EXPECT_EQ(window.layout().align_children.second, Align::top);
        EXPECT_THAT(window.layout().margins, ElementsAre(16, 16, 16, 16));
        const auto& row = window.control("row").layout();
        EXPECT_EQ(row.orientation, Orientation::row);
        EXPECT_EQ(row.spacing, 4);
        EXPECT_THAT(row.margins, ElementsAre(20, 0, 0, 8));
        EXPECT_EQ(row.alignment->first, Align::right);
        EXPECT_FALSE(row.alignment->second.has_value());
        const auto& input = window.control("input").layout();
        EXPECT_THAT(input.preferred_size, ElementsAre(250, -1));
        EXPECT_THAT(*input.location, ElementsAre(10, 20));
        EXPECT_THAT(*input.size, ElementsAre(100, 24));
    };
    world.run(
        "var w = new Window('dialog'); w.orientation = 'Column'; w.alignChildren = ['fill', 'TOP']; w.margins = 16;"
        "var g = w.add('group', undefined, {name: 'row'}); g.orientation = 'row'; g.spacing = 4; g.margins = [20, 0, "
        "0, 8];"
        "g.alignment = 'right'; var e = g.add('edittext', [10, 20, 110, 44], '', {name: 'input'});"
        "e.preferredSize.width = 250; w.show();");
    EXPECT_EQ(looked, 1);
}

TEST(DialogLayout, measures_can_be_set_whole_by_name_and_by_number) {
    World world;
    world.run("var w = new Window('dialog'), b = w.add('button');");
    EXPECT_EQ(world.run("b.preferredSize = [80, 20]; b.preferredSize.height = 30; b.preferredSize[0] += 1;"
                        "b.preferredSize[0] + ',' + b.preferredSize.height"),
              "81,30");
    EXPECT_EQ(world.run("b.size = {width: 5, height: 6}; b.size.width + b.size[1]"), "11");
    EXPECT_EQ(world.run("b.bounds = {x: 1, y: 2, width: 10, height: 20}; [b.bounds.left, b.bounds.top, b.bounds.right, "
                        "b.bounds.bottom].join()"),
              "1,2,11,22");
    EXPECT_EQ(world.run("b.location = [7, 8]; b.location.x + ',' + b.location.y + ',' + b.bounds.right"), "7,8,17");
    EXPECT_EQ(world.run("w.margins = {left: 1, top: 2, right: 3, bottom: 4}; w.margins.right = 9; [w.margins[0], "
                        "w.margins.right].join()"),
              "1,9");
    EXPECT_EQ(world.run("var view = b.preferredSize; b = w = null; view.width = 3; view.width"), "3");
}

TEST(DialogLayout, alignments_are_given_back_as_words) {
    World world;
    EXPECT_EQ(
        world.run(
            "var g = new Window('dialog').add('group'); g.alignChildren = ['Left', 'bottom']; g.alignment = 'FILL';"
            "g.alignChildren.join('+') + ' ' + g.alignment"),
        "left+bottom fill");
}

TEST(DialogLayout, values_that_make_no_sense_are_errors) {
    World world;
    world.run("var g = new Window('dialog').add('group');");
    EXPECT_THAT(world.error("g.orientation = 'diagonal'"), HasSubstr("unknown orientation \"diagonal\""));
    EXPECT_THAT(world.error("g.alignment = 'middle'"), HasSubstr("unknown alignment \"middle\""));
    EXPECT_THAT(world.error("g.alignment = ['top', 'left']"), HasSubstr("horizontal, then vertical"));
    EXPECT_THAT(world.error("g.alignment = ['left', 'right']"), HasSubstr("horizontal, then vertical"));
    EXPECT_THAT(world.error("g.alignment = ['left']"), HasSubstr("array of two"));
    EXPECT_THAT(world.error("g.margins = 'wide'"), HasSubstr("margins cannot be read"));
    EXPECT_THAT(world.error("g.margins = [1, 2, 3]"), HasSubstr("margins cannot be read"));
    EXPECT_THAT(world.error("g.preferredSize = 3"), HasSubstr("preferredSize cannot be read"));
    EXPECT_THAT(world.error("g.bounds = {x: 1}"), HasSubstr("bounds cannot be read"));
    EXPECT_THAT(world.error("g.spacing = 'some'"), HasSubstr("number was expected"));
    EXPECT_THAT(world.error("g.preferredSize.width = 'wide'"), HasSubstr("number was expected"));
    EXPECT_THAT(world.error("g.add('button', 'here')"), HasSubstr("bounds cannot be read"));
}

TEST(DialogLayout, an_edit_field_knows_several_lines_and_reading_only) {
    World world;
    int looked = 0;
    world.driver.act = [&](Window& window) {
        ++looked;
        EXPECT_TRUE(window.control("a").is_multiline());
        EXPECT_FALSE(window.control("a").is_read_only());
        EXPECT_TRUE(window.control("b").is_read_only());
    };
    world.run(
        "var w = new Window('dialog'); w.add('edittext', undefined, '', {name: 'a', multiline: true});"
        "w.add('edittext', undefined, '', {name: 'b', readonly: true}); w.show();");
    EXPECT_EQ(looked, 1);
}

}  // namespace
}  // namespace script_test
