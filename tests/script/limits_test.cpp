// Scripts that would never end, or take everything.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "world.h"

namespace script_test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

Limits short_time() {
    Limits limits;
    limits.time = 300ms;
    return limits;
}

Limits little_memory() {
    Limits limits;
    limits.memory = std::size_t{16} << 20;
    return limits;
}

class EndlessScript : public testing::TestWithParam<const char*> {};

TEST_P(EndlessScript, is_ended_and_leaves_the_engine_usable) {
    World world(short_time());
    world.run("var before = 'kept';");
    EXPECT_THAT(world.error(GetParam()), HasSubstr("ran longer than 300 ms"));
    EXPECT_EQ(world.run("before + 1"), "kept1");
}

INSTANTIATE_TEST_SUITE_P(
    Limits, EndlessScript,
    testing::Values(
        "while (true) {}", "for (;;) ;", "do { 1; } while (1)",

        "while (true) { try { while (true) {} } catch (e) {} }", "(function f() { try { f(); } finally { f(); } })()",
        "while (true) { try { while (true) {} } finally { continue; } }",
        "try { while (true) {} } catch (e) { while (true) {} }",
        "function fib(n) { return n < 2 ? n : fib(n - 1) + fib(n - 2); } fib(100)", "eval('while (true) {}')",
        "new Function('while (true) {}')()", "[3, 1, 2].sort(function () { while (1) {} })",
        "'aaa'.replace(/a/g, function () { while (1) {} })", "({toString: function () { while (1) {} }})",
        "throw {toString: function () { while (1) {} }}", "while (1) { try { app.project.item(99); } catch (e) {} }",
        "while (1) { /^(a+)+$/.test('aaaaaaaaaaaaaaaaaaaab'); }",
        "var o = {}; Object.defineProperty(o, 'x', {get: function () { for (;;); }}); o.x",
        "'abc'.substr({valueOf: function () { for (;;); }})",
        "while (1) [5, 3, 9, 1, 7].sort(function () { return 1; })",
        "var a = []; for (var i = 0; i < 3e5; ++i) a[i] = i % 7; while (1) a.sort(function (x) { return x - 3; })",
        "var n = 0, a = new Array(99999).join('a').split('');"
        "while (1) a.sort(function () { return ++n % 3 - 1; })"));

// One call of a built-in function, or one text to compile, that would take minutes or hours.
INSTANTIATE_TEST_SUITE_P(
    BuiltInFunctions, EndlessScript,
    testing::Values("new Array(4294967295).join('x')", "new Array(4294967295).toString()",
                    "[].reverse.call({length: 4294967295})", "[].shift.call({length: 4294967295})",
                    "[].unshift.call({length: 4294967294}, 1)", "[].forEach.call({length: 4294967295}, function () {})",
                    "[].reduce.call({length: 4294967295}, function () {}, 0)",
                    "new Array(2147483647).reduceRight(function () {}, 0)",
                    "var s = 'a'; while (s.length < 8e6) s += s; s.indexOf(s.substr(0, 4e6) + 'b')",
                    "var s = 'a'; while (s.length < 8e6) s += s; s.lastIndexOf(s.substr(0, 4e6) + 'b')",
                    "var s = 'a'; while (s.length < 8e6) s += s; s.split(s.substr(0, 4e6) + 'b')",
                    "var s = 'a'; while (s.length < 8e6) s += s; s.replace(s.substr(0, 4e6) + 'b', '')",
                    "while (1) try { /(x+x+)+y/.test(new Array(60).join('x')); } catch (e) {}",
                    "var s = ';'; while (s.length < 3e7) s += s; eval(s)"));

TEST(Limits, a_regular_expression_that_explodes_is_ended) {
    World world;
    EXPECT_THAT(world.error("/^(a+)+$/.test('aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab')"),
                HasSubstr("step limit"));
}

TEST(Limits, time_is_counted_for_each_run_by_itself) {
    World world(short_time());
    const char* half = "var now = new Date().getTime(); while (new Date().getTime() < now + 150) {} 'done'";
    for (int i = 0; i < 4; ++i) EXPECT_EQ(world.run(half), "done");
}

TEST(Limits, all_runs_together_have_a_limit_and_then_no_script_is_begun) {
    Limits limits;
    limits.time = 200ms;
    limits.time_of_all = std::make_shared<host::script::SharedTime>(300ms);
    World first(limits);
    World second(limits);
    EXPECT_THAT(first.error("while (true) {}"), HasSubstr("ran longer than 200 ms and was ended"));
    EXPECT_THAT(second.error("while (true) {}"), HasSubstr("ran longer than 300 ms together and were ended"));
    EXPECT_EQ(limits.time_of_all->left().count(), 0);
    for (World* world : {&first, &second}) {
        const ScriptResult refused = world->engine.run("var begun = true;");
        EXPECT_TRUE(refused.failed);
        EXPECT_TRUE(refused.took_too_long);
        EXPECT_EQ(refused.error, "The scripts ran longer than 300 ms together and were ended.");
    }
}

TEST(Limits, other_errors_do_not_count_as_taking_too_long) {
    World world(little_memory());
    EXPECT_FALSE(world.engine.run("missing()").took_too_long);
    EXPECT_FALSE(world.engine.run("var s = 'x'; while (1) s += s;").took_too_long);
    EXPECT_TRUE(World(short_time()).engine.run("while (1) {}").took_too_long);
}

TEST(Limits, time_does_not_count_while_a_dialog_waits) {
    World world(short_time());
    world.driver.act = [](Window&) {
        const auto end = std::chrono::steady_clock::now() + 600ms;
        while (std::chrono::steady_clock::now() < end) {
        }
    };
    EXPECT_EQ(world.run("new Window('dialog').show(); for (var i = 0; i < 10000; i++) {} 'after'"), "after");
}

TEST(Limits, an_endless_handler_ends_the_script_and_the_driver_too) {
    World world(short_time());
    bool came_back = false;
    world.driver.act = [&](Window& window) {
        window.click(window.control("go"));
        came_back = true;
    };
    EXPECT_THAT(world.error("var w = new Window('dialog'); w.add('button', undefined, 'go').onClick = function () {"
                            "while (true) {} }; try { w.show(); } catch (e) { alert('caught'); }"),
                HasSubstr("ran longer than"));
    EXPECT_FALSE(came_back);
    EXPECT_TRUE(world.alerts.empty());
    EXPECT_EQ(world.run("w.children.length"), "1");
}

class GreedyScript : public testing::TestWithParam<const char*> {};

TEST_P(GreedyScript, is_ended_and_leaves_the_engine_usable) {
    World world(little_memory());
    EXPECT_THAT(world.error(GetParam()), HasSubstr("ran out of memory; it may use 16 MiB"));
    EXPECT_EQ(world.run("hoard = chain = null; 'still here'"), "still here");
    EXPECT_EQ(world.run("var few = []; for (var i = 0; i < 1000; i++) few.push({}); few.length"), "1000");
}

INSTANTIATE_TEST_SUITE_P(
    Limits, GreedyScript,
    testing::Values(
        "var hoard = [1]; while (true) hoard = hoard.concat(hoard);", "var hoard = 'x'.repeat(1e9);",
        "var hoard = []; while (true) hoard.push({});", "var hoard = 'x'; while (true) hoard += hoard;",
        "var hoard = []; while (true) try { hoard.push({}); } catch (e) {}",
        "var hoard = []; for (var i = 0;; i++) hoard.push('a text of its own ' + i);",
        "var chain = null; while (true) chain = {next: chain};", "var hoard = []; while (true) hoard = [hoard, hoard];",
        "var hoard = 'x'; while (true) try { hoard += hoard; } catch (e) { hoard = [hoard, 'y'].join(); }"));

TEST(Limits, garbage_does_not_count_for_long) {
    World world(little_memory());
    EXPECT_EQ(world.run("for (var i = 0; i < 200000; i++) { var a = {}, b = {a: a}; a.b = b; } i"), "200000");
    EXPECT_EQ(world.run("for (var i = 0; i < 100; i++) { var s = new Array(20000).join(i + 'xyz'); } s.length"),
              "99995");
}

class DeepScript : public testing::TestWithParam<const char*> {};

TEST_P(DeepScript, is_an_error_and_no_crash) {
    World world;
    EXPECT_NE(world.error(GetParam()), "");
    EXPECT_EQ(world.run("1 + 1"), "2");
}

INSTANTIATE_TEST_SUITE_P(Limits, DeepScript,
                         testing::Values("(function f() { return f() + 1; })()", "({get x() { return this.x; }}).x",
                                         "var a = [1, 2]; while (true) a.push.apply(a, a);", "new ArrayBuffer(1e9)",
                                         "+{valueOf: function () { return +this; }}",
                                         "function g() { [1].sort(); [1, 2].map(g); } g()",
                                         "var o = {}; o.toString = function () { return '' + o; }; '' + o",
                                         "eval(new Array(20000).join('(') + 1 + new Array(20000).join(')'))",
                                         "eval(new Array(20000).join('[') + new Array(20000).join(']'))",
                                         "new RegExp(new Array(30000).join('('))",
                                         "function h() { eval('h()'); } h()"));

}  // namespace
}  // namespace script_test
