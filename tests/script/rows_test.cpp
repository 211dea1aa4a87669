// Rows of plain statements and repeated texts, which are not compiled again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

// The same text where it is not a row: a comment is enough.
std::string whole(std::string_view text) {
    return "/**/" + std::string(text);
}

class Row : public testing::TestWithParam<const char*> {};

// Both ways agree on the result or the error, and on what they leave behind.
TEST_P(Row, does_what_the_same_text_does_when_it_is_compiled_whole) {
    const std::string_view text = GetParam();
    SmallProject row;
    SmallProject compiled;
    const ScriptResult one = row.engine.run(text);
    const ScriptResult other = compiled.engine.run(whole(text));
    EXPECT_EQ(one.failed, other.failed);
    EXPECT_EQ(one.result, other.result);
    EXPECT_EQ(one.error, other.error);
    EXPECT_EQ(World::stack(row.inner), World::stack(compiled.inner));
    EXPECT_EQ(World::stack(row.outer), World::stack(compiled.outer));
    EXPECT_EQ(row.run("typeof n + typeof list + typeof made"), compiled.run("typeof n + typeof list + typeof made"));
}

INSTANTIATE_TEST_SUITE_P(
    Programs, Row,
    testing::Values(
        "var n = \"\"; var list = [];n = app.project.item(2).layer(1).name; list.push(n);"
        "app.project.item(2).layer(1).name = n;app.project.item(2).layer(1).copyToComp(app.project.item(4));"
        "app.project.item(2).layer(2).name = n;",
        "app.project.item(2).layer(1).parent = null; ",
        "app.project.item(2).layer(3).name = \"\xC3\xA9\xF0\x9F\x90\x9D\";",
        "app.project.item(2).layer(3).name = \"\xFF\";", "app.project.item(2).layer(1).name = \"it's\";",
        "app.project.autoFixExpressions(\"a\",\"b\");", "app.project.item(2).layer(1).name = null;",
        // The last value is the result; declarations have none.
        "var n = 3; String(7);", "var n = 3; n = 8;", "made = \"x\";", "var n = 1; n = n;", "Number(\"12\");",
        "isNaN(0);",
        // Errors come at the statement, with what came before done.
        "app.project.item(2).layer(1).name = \"z\"; app.project.item(9).layer(1).name = \"y\";",
        "app.project.item(2).layer(9).name = \"y\"; made = 3;", "app.nothing.more = 3;", "app.nothing(3);",
        "nowhere(1);", "made = nowhere;", "app.project.item(2).layer(1).index = 3;", "list.push(1);",
        "n.x = 1; var n = 2;",
        // Not rows, whatever they look like.
        "app.project.item(2).layer(01).name = \"y\";", "app.project.item(2).layer(1).name = \"a\\x62\";",
        "app.project.item(2).layer(1).name = \"a\nb\";",
        "app.project.item(2).layer(1).name = \"a\xE2\x80\xA8"
        "b\";",
        "made = this;", "made = arguments;", "eval(\"var made = 1\");", "app.project.item(2).layer(1)(",
        "app.project.item(2.5);", "app.project.item(1e0);", "app.project.item(2,);", "app.project.item(,2);",
        "made = 1", "made = n = 1;", "item(1) = 2;", "made = 99999999999;", "var made = 1;", "var = 1; made = 2;",
        "made = nullable;", "var n = [1]; n.push(2);", ";", "made = \"open;", "new Date(0); made = 1;", "true.x = 1;",
        "made = 5 made = 6;", "made = \"a\"\"b\";", "made = 1; made", "made = 1; app.project.numItems", "made = 1; 2"));

TEST(Programs, a_syntax_error_after_a_row_means_that_nothing_was_run) {
    SmallProject world;
    EXPECT_THAT(world.error("app.project.item(2).layer(1).name = \"z\"; oops oops;"), HasSubstr("SyntaxError"));
    EXPECT_EQ(World::stack(world.inner), "a b c ");
}

TEST(Programs, a_long_row_is_ended_when_its_time_is_up) {
    Limits limits;
    limits.time = std::chrono::milliseconds(50);
    World world(limits);
    std::string row = "var list = [];";
    for (int i = 0; i < 500'000; ++i) row += "list.push(" + std::to_string(i) + ");";
    const ScriptResult outcome = world.engine.run(row);
    EXPECT_TRUE(outcome.failed);
    EXPECT_TRUE(outcome.took_too_long);
    EXPECT_EQ(world.run("1 + 1"), "2");
}

TEST(Programs, more_shapes_than_are_kept_run_all_the_same) {
    World world;
    world.run("var list = {};");
    for (int i = 0; i < 1'000; ++i) {
        const std::string name = "list.n" + std::to_string(i);
        EXPECT_EQ(world.run(name + " = " + std::to_string(i) + ";"), std::to_string(i));
        EXPECT_EQ(world.run("list.n0 = list.n0;"), "0");
    }
}

TEST(Programs, a_repeated_text_starts_afresh) {
    World world;
    const std::string long_text = "var made = []; function add(x) { made.push(x); return made; } add(1); add(" +
                                  std::string(2'000, ' ') + "typeof later); var later = 3; made.join();";
    EXPECT_EQ(world.run(long_text), "1,undefined");
    EXPECT_EQ(world.run("later = 'set'; add = null; made.length"), "2");
    EXPECT_EQ(world.run(long_text), "1,string");
}

TEST(Programs, a_text_that_failed_fails_again_at_its_line) {
    World world;
    const std::string text = std::string(2'000, ' ') + "\nmissing();\n";
    const std::string first = world.error(text);
    EXPECT_THAT(first, HasSubstr("at line 2."));
    EXPECT_EQ(world.error(text), first);
}

// The first engine compiles the text, the second one runs what came of it.
TEST(Programs, a_text_does_the_same_in_every_engine_that_shares_the_limits) {
    const Limits limits;
    const std::string text =
        "var made = typeof made; function fails() {\n missing(); }\nvar named = function own(n) { "
        "return n > 0 ? own(n - 1) : 'end'; };" +
        std::string(2'000, ' ') + "[made, named(2), fails.length, named.name].join();";
    for (int i = 0; i < 3; ++i) {
        World world(limits);
        EXPECT_EQ(world.run(text), "undefined,end,0,own") << i;
        EXPECT_THAT(world.error("fails()"), HasSubstr("at line 2.")) << i;
        EXPECT_EQ(world.run(text), "string,end,0,own") << i;
    }
    EXPECT_THAT(limits.compiled->find(text), testing::NotNull());
}

}  // namespace
}  // namespace script_test
