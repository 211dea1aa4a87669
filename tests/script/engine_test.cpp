// Running texts: values, errors, what stays between runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::StartsWith;

struct ResultCase {
    const char* name;
    const char* script;
    const char* result;
};

const ResultCase kResults[] = {
    {"a_number", "1 + 1", "2"},
    {"the_last_statement", "'a'; 'b';", "b"},
    {"a_boolean", "true", "true"},
    {"null", "null", "null"},
    {"an_array_in_an_array", "[1,[2,3]]", "1,2,3"},
    {"a_fraction", "0.1", "0.1"},
    {"an_object_with_a_text", "({toString: function () { return 'mine'; }})", "mine"},
    {"no_statement", "", ""},
    {"only_a_comment", "// only a comment", ""},
    {"undefined", "undefined", ""},
    {"a_declaration", "var a = 1;", ""},
    {"a_function_without_a_result", "(function () {})()", ""},
    {"an_empty_text", "''", ""},
    {"a_value_before_declarations", "'value'; var later = 2; function f() {}", "value"},
    {"a_value_in_a_block", "if (true) { 'inside'; }", "inside"},
    {"a_caught_error", "try { app.project.item(1); } catch (e) { e.message; }",
     "item 1 is out of range: the project has 0"},
    {"an_error_of_the_host", "try { app.project.item(1); } catch (e) { e instanceof Error; }", "true"},
    {"evaluated_text", "eval('2 + 3')", "5"},
    {"a_function_made_from_text", "new Function('a', 'return a * a')(4)", "16"},
};

class ScriptResults : public testing::TestWithParam<ResultCase> {};

TEST_P(ScriptResults, are_the_value_of_the_last_statement_as_text) {
    World world;
    EXPECT_EQ(world.run(GetParam().script), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Engine, ScriptResults, testing::ValuesIn(kResults),
                         [](const auto& test) { return test.param.name; });

struct ErrorCase {
    const char* name;
    const char* script;
    int line;           // 0: none was running
    const char* begin;  // of the reason
};

const ErrorCase kErrors[] = {
    {"an_unknown_name", "nowhere()", 1, "ReferenceError: "},
    {"the_third_statement", "1;\n2;\nnowhere();\n4;", 3, "ReferenceError: "},
    {"lines_that_end_in_two_characters", "\r\n\r\nnull.x", 3, "TypeError: "},
    {"a_host_function", "\n\n\napp.project.item(7);", 4, "item 7 is out of range: the project has 0"},
    {"a_function_of_the_script", "function f() {\n  nowhere();\n}\n\nf();", 2, "ReferenceError: "},
    {"evaluated_text", "\n\neval('(')", 3, "SyntaxError: "},
    {"a_thrown_text", "\nthrow 'a text';", 2, "a text"},
    {"a_thrown_number", "throw 42", 1, "42"},
    {"a_thrown_error", "throw new Error('a reason')", 1, "a reason"},
    {"a_thrown_error_of_another_kind", "throw new RangeError('far')", 1, "RangeError: far"},
    {"thrown_undefined", "throw undefined", 1, "undefined"},
    {"a_thrown_object_without_a_text", "throw {toString: function () { throw 1; }}", 1,
     "an error that cannot be converted to text was thrown"},
    {"a_result_whose_text_fails", "({toString: function () { throw new Error('no text'); }})", 1, "no text"},
    {"a_result_without_a_text", "({toString: null, valueOf: null})", 0, "TypeError: "},
};

class ScriptErrors : public testing::TestWithParam<ErrorCase> {};

TEST_P(ScriptErrors, give_the_line_of_the_innermost_statement_and_the_reason) {
    World world;
    EXPECT_THAT(world.error(GetParam().script), StartsWith("Unable to execute script at line " +
                                                           std::to_string(GetParam().line) + ". " + GetParam().begin));
}

INSTANTIATE_TEST_SUITE_P(Engine, ScriptErrors, testing::ValuesIn(kErrors),
                         [](const auto& test) { return test.param.name; });

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
