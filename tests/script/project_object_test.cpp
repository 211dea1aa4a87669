// app.project
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

TEST(ProjectObject, items_are_numbered_from_one_through_all_folders) {
    SmallProject world;
    EXPECT_EQ(
        world.run("var p = app.project, names = []; for (var i = 1; i <= p.numItems; i++) names.push(p.item(i).name);"
                  "names.join(' ')"),
        "folder inner picture outer");
    EXPECT_EQ(world.run("app.project.numItems"), "4");
}

TEST(ProjectObject, numbers_out_of_range_are_errors) {
    SmallProject world;
    EXPECT_THAT(world.error("app.project.item(0)"), HasSubstr("item 0 is out of range: the project has 4"));
    EXPECT_THAT(world.error("app.project.item(5)"), HasSubstr("item 5 is out of range"));
    EXPECT_THAT(world.error("app.project.item(-1)"), HasSubstr("item -1 is out of range"));
    EXPECT_THAT(world.error("app.project.item()"), HasSubstr("number was expected"));
    EXPECT_THAT(world.error("app.project.item('folder')"), HasSubstr("number was expected"));
    EXPECT_THAT(world.error("app.project.item(1.5)"), HasSubstr("whole number"));
    EXPECT_THAT(world.error("app.project.item(1e300)"), HasSubstr("whole number"));
    EXPECT_THAT(world.error("app.project.item(1/0)"), HasSubstr("number was expected"));
}

TEST(ProjectObject, numbers_follow_the_project) {
    SmallProject world;
    world.project.delete_item(world.folder);
    EXPECT_EQ(world.run("app.project.numItems + app.project.item(1).name"), "2picture");
}

TEST(ProjectObject, the_active_item_is_the_open_composition_or_the_selected_item) {
    SmallProject world;
    EXPECT_EQ(world.run("String(app.project.activeItem)"), "null");
    world.project.open_comp(&world.outer);
    EXPECT_EQ(world.run("app.project.activeItem.name"), "outer");
    world.project.set_active_panel(host::model::ActivePanel::project);
    world.project.select_items({&world.picture});
    EXPECT_EQ(world.run("app.project.activeItem.name"), "picture");
    world.project.select_items({&world.picture, &world.inner});
    EXPECT_EQ(world.run("app.project.activeItem === null"), "true");
}

TEST(ProjectObject, autoFixExpressions_repairs_broken_expressions_that_quote_the_old_name) {
    SmallProject world;
    host::model::Stream& stream = world.inner.layer_at(0).stream(host::model::kOpacity);
    stream.set_expression("thisComp.layer(\"old\").transform.opacity");
    ASSERT_TRUE(stream.is_expression_broken());
    EXPECT_EQ(world.run("app.project.autoFixExpressions(\"old\",\"b\");"), "");
    EXPECT_EQ(stream.data().expression, "thisComp.layer(\"b\").transform.opacity");
    EXPECT_FALSE(stream.is_expression_broken());
}

TEST(ProjectObject, autoFixExpressions_passes_names_byte_by_byte) {
    SmallProject world;
    const std::string name = "cut \xC3 \U0001F600";
    world.inner.layer_at(1).load_name(name);
    host::model::Stream& stream = world.inner.layer_at(0).stream(host::model::kOpacity);
    stream.set_expression("thisComp.layer(\"old\").transform.opacity");
    world.run("app.project.autoFixExpressions(\"old\",\"" + name + "\");");
    EXPECT_EQ(stream.data().expression, "thisComp.layer(\"" + name + "\").transform.opacity");
}

TEST(ProjectObject, a_name_with_a_quote_put_into_the_text_unescaped_is_a_syntax_error) {
    SmallProject world;
    EXPECT_THAT(world.error("app.project.autoFixExpressions(\"a\"b\",\"c\");"), HasSubstr("SyntaxError"));
}

TEST(ProjectObject, unknown_members_are_undefined_and_cannot_be_called) {
    SmallProject world;
    EXPECT_EQ(world.run("typeof app.project.noSuchThing"), "undefined");
    EXPECT_THAT(world.error("app.project.noSuchCall()"), HasSubstr("TypeError"));
    EXPECT_THAT(world.error("app.project.numItems = 3"), HasSubstr("\"numItems\" is read-only"));
}

TEST(ProjectObject, app_and_its_members_stay_in_place) {
    SmallProject world;
    world.run("app.project = 3; delete app.settings;");
    EXPECT_EQ(world.run("app.project.numItems + typeof app.settings"), "4object");
}

}  // namespace
}  // namespace script_test
