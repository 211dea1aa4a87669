// Running texts: values, errors, what stays between runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Engine, the_result_is_the_value_of_the_last_statement_as_text) {
    World world;
    EXPECT_EQ(world.run("1 + 1"), "2");
    EXPECT_EQ(world.run("'a'; 'b';"), "b");
    EXPECT_EQ(world.run("true"), "true");
    EXPECT_EQ(world.run("null"), "null");
    EXPECT_EQ(world.run("[1,[2,3]]"), "1,2,3");
    EXPECT_EQ(world.run("0.1"), "0.1");
    EXPECT_EQ(world.run("({toString: function () { return 'told'; }})"), "told");
}

TEST(Engine, undefined_and_nothing_give_an_empty_result) {
    World world;
    EXPECT_EQ(world.run(""), "");
    EXPECT_EQ(world.run("// only a comment"), "");
    EXPECT_EQ(world.run("undefined"), "");
    EXPECT_EQ(world.run("var a = 1;"), "");
    EXPECT_EQ(world.run("(function () {})()"), "");
    EXPECT_EQ(world.run("''"), "");
}

TEST(Engine, a_declaration_after_a_value_keeps_the_value) {
    World world;
    EXPECT_EQ(world.run("'value'; var later = 2; function f() {}"), "value");
    EXPECT_EQ(world.run("if (true) { 'inside'; }"), "inside");
}

TEST(Engine, variables_and_functions_stay_for_later_runs) {
    World world;
    world.run("var kept = 'here'; function twice(x) { return 2 * x; }");
    EXPECT_EQ(world.run("kept + twice(4)"), "here8");
    world.error("kept = 'changed'; nowhere();");
    EXPECT_EQ(world.run("kept"), "changed");
}

TEST(Engine, two_engines_do_not_share_variables) {
    World one;
    World other;
    one.run("var mine = 1;");
    EXPECT_EQ(other.run("typeof mine"), "undefined");
}

TEST(Engine, statements_before_an_error_have_taken_effect) {
    SmallProject world;
    world.error("app.project.item(2).name = 'renamed'; app.project.item(99); app.project.item(2).name = 'never';");
    EXPECT_EQ(world.inner.name(), "renamed");
}

TEST(Engine, a_syntax_error_anywhere_means_that_nothing_was_run) {
    SmallProject world;
    const std::string error = world.error("app.project.item(2).name = 'renamed';\n\nvar = 3;");
    EXPECT_EQ(world.inner.name(), "inner");
    EXPECT_THAT(error, StartsWith("Unable to execute script at line 3. SyntaxError: "));
}

TEST(Engine, errors_tell_the_line_of_the_statement) {
    World world;
    EXPECT_THAT(world.error("nowhere()"), StartsWith("Unable to execute script at line 1. ReferenceError: "));
    EXPECT_THAT(world.error("1;\n2;\nnowhere();\n4;"), StartsWith("Unable to execute script at line 3. "));
    EXPECT_THAT(world.error("\r\n\r\nnull.x"), StartsWith("Unable to execute script at line 3. TypeError: "));
}

TEST(Engine, an_error_inside_a_host_function_has_the_line_that_called_it) {
    World world;
    EXPECT_EQ(world.error("\n\n\napp.project.item(7);"),
              "Unable to execute script at line 4. item 7 is out of range: the project has 0");
}

TEST(Engine, an_error_inside_a_function_has_the_line_in_that_function) {
    World world;
    EXPECT_THAT(world.error("function f() {\n  nowhere();\n}\n\nf();"), HasSubstr("at line 2."));
}

TEST(Engine, whatever_is_thrown_is_told) {
    World world;
    EXPECT_EQ(world.error("\nthrow 'a text';"), "Unable to execute script at line 2. a text");
    EXPECT_EQ(world.error("throw 42"), "Unable to execute script at line 1. 42");
    EXPECT_EQ(world.error("throw new Error('a reason')"), "Unable to execute script at line 1. a reason");
    EXPECT_EQ(world.error("throw new RangeError('far')"), "Unable to execute script at line 1. RangeError: far");
    EXPECT_EQ(world.error("throw undefined"), "Unable to execute script at line 1. undefined");
    EXPECT_EQ(world.error("throw {toString: function () { throw 1; }}"),
              "Unable to execute script at line 1. an error that cannot be told as text was thrown");
}

TEST(Engine, a_value_that_cannot_become_text_is_an_error) {
    World world;
    EXPECT_THAT(world.error("({toString: function () { throw new Error('no text'); }})"), HasSubstr("no text"));
    EXPECT_THAT(world.error("({toString: null, valueOf: null})"), HasSubstr("TypeError"));
}

TEST(Engine, an_error_that_the_script_catches_is_no_failure) {
    World world;
    EXPECT_EQ(world.run("try { app.project.item(1); } catch (e) { e.message; }"),
              "item 1 is out of range: the project has 0");
    EXPECT_EQ(world.run("try { app.project.item(1); } catch (e) { e instanceof Error; }"), "true");
}

TEST(Engine, evaluated_text_and_made_functions_work) {
    World world;
    EXPECT_EQ(world.run("eval('2 + 3')"), "5");
    EXPECT_EQ(world.run("new Function('a', 'return a * a')(4)"), "16");
    EXPECT_THAT(world.error("\n\neval('(')"), HasSubstr("at line 3."));
}

TEST(Engine, a_text_of_many_distinct_words_and_numbers_runs) {
    World world;
    std::string text = "var all = [];";
    for (int i = 0; i < 60'000; ++i) text += "all.push(\"word" + std::to_string(i) + "\");";
    EXPECT_EQ(world.run(text + "all.length + all[59999]"), "60000word59999");
}

TEST(Engine, a_run_inside_a_run_is_refused) {
    World world;
    ScriptResult inside;
    world.driver.act = [&](Window&) { inside = world.engine.run("1"); };
    EXPECT_EQ(world.run("new Window('dialog').show(); 'outer'"), "outer");
    EXPECT_TRUE(inside.failed);
    EXPECT_EQ(inside.error, "A script is already running.");
}

}  // namespace
}  // namespace script_test
