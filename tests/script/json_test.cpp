// The JSON that the dialog script brings along, in the engine that has none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

struct JsonWorld : World {
    JsonWorld() {
        EXPECT_EQ(run("typeof JSON"), "undefined");
        run(read_file(OPTIONS_DIALOG_SCRIPT));
    }
    // The value written, in ASCII.
    std::string written(const std::string& arguments) { return run("escape(JSON.stringify(" + arguments + "))"); }
    // What parsing the text throws, or that it does not.
    std::string refusal(const std::string& literal) {
        return run("try { JSON.parse(" + literal + "); 'accepted'; } catch (e) { e.name + ' ' + e.message; }");
    }
};

TEST(Json, is_there_after_the_dialog_script_and_is_not_made_again) {
    JsonWorld world;
    EXPECT_EQ(world.run("typeof JSON + typeof JSON.stringify + typeof JSON.parse"), "objectfunctionfunction");
    world.run("var first = JSON;");
    world.run(read_file(OPTIONS_DIALOG_SCRIPT));
    EXPECT_EQ(world.run("first === JSON"), "true");
}

TEST(Json, every_character_of_16_bits_is_quoted_so_that_it_can_be_read_back) {
    JsonWorld world;
    EXPECT_EQ(world.run(R"js(
var wrong = [], escapes = 0;
for (var block = 0; block < 0x10000; block += 256) {
    var text = '', quoted;
    for (var code = block; code < block + 256; code += 1) { text += String.fromCharCode(code); }
    quoted = JSON.stringify(text);
    if (/[\u0000-\u001f]/.test(quoted) || JSON.parse(quoted) !== text) { wrong.push(block); }
    escapes += quoted.replace(/\\(u....|.)/g, '').length < 258 ? 258 - quoted.replace(/\\(u....|.)/g, '').length : 0;
}
wrong.join() + '|' + escapes
)js"),
              // 32 + 33 control characters, the quote, the backslash, and the 1 + 5 + 1 + 2 + 4 + 8 + 16 + 1 + 16 that
              // engines drop or read as line ends.
              "|121");
}

TEST(Json, surrogates_without_a_partner_are_left_as_they_are) {
    JsonWorld world;
    EXPECT_EQ(world.written(R"('\ud800a\udc00\udc00\ud800')"), "%22%uD800a%uDC00%uDC00%uD800%22");
    EXPECT_EQ(world.run(R"(JSON.parse(JSON.stringify('\ud800a\udc00')) === '\ud800a\udc00')"), "true");
    EXPECT_EQ(world.run(R"(JSON.parse('"\\ud83d\\ude00"'))"), "\U0001F600");
}

TEST(Json, holes_undefined_and_functions_are_null_in_arrays_and_nothing_in_objects) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify([, 1, undefined, function () {}, , ])"), "[null,1,null,null,null]");
    EXPECT_EQ(world.run("JSON.stringify({a: undefined, b: function () {}})"), "{}");
    EXPECT_EQ(world.run("JSON.stringify(undefined) === undefined && JSON.stringify(function () {}) === undefined"),
              "true");
    EXPECT_EQ(world.run("JSON.stringify({toJSON: function () {}}) === undefined"), "true");
}

TEST(Json, numbers_without_a_form_are_null_and_the_negative_zero_is_zero) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify([NaN, Infinity, -Infinity, -0, new Number(NaN), new Number(-0)])"),
              "[null,null,null,0,null,0]");
    EXPECT_EQ(world.run("JSON.stringify([5e-324, 1.7976931348623157e308, 0.1 + 0.2, 1e21, 123456789012345680000])"),
              "[5e-324,1.7976931348623157e+308,0.30000000000000004,1e+21,123456789012345680000]");
}

TEST(Json, objects_of_the_language_are_written_by_what_they_hold) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify([new Boolean(false), new Number(7), new String('a\"b'), /x/, new Error('e')])"),
              R"([false,7,"a\"b",{},{}])");
    EXPECT_EQ(world.run("JSON.stringify([new Date(-1), new Date(NaN), new Date(1e20)])"),
              R"(["1969-12-31T23:59:59.999Z",null,null])");
    EXPECT_EQ(
        world.run("JSON.stringify(new Date(Date.UTC(2020, 1, 3, 4, 5, 6)), function (k, v) { return typeof v; })"),
        R"("string")");
}

TEST(Json, a_toJSON_is_asked_once_with_the_key_and_before_the_replacer) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify({a: {toJSON: function () { return {toJSON: function () { return 1; }}; }}})"),
              R"({"a":{}})");
    EXPECT_EQ(world.run("JSON.stringify({a: [{toJSON: function (key) { return typeof key + key; }}]},"
                        "function (k, v) { return k === '0' ? v + '!' : v; })"),
              R"({"a":["string0!"]})");
}

TEST(Json, a_replacing_function_sees_every_value_with_its_holder) {
    JsonWorld world;
    EXPECT_EQ(world.run("var seen = []; JSON.stringify({a: [1, {b: 2}]}, function (k, v) {"
                        "seen.push(k + (this[k] === v)); return v; }) + ' ' + seen.join()"),
              R"({"a":[1,{"b":2}]} true,atrue,0true,1true,btrue)");
    EXPECT_EQ(world.run("JSON.stringify(1, function () { return undefined; }) === undefined"), "true");
}

TEST(Json, a_list_of_names_chooses_the_members_and_their_order) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify({a: 1, b: {a: 2, c: 3}, c: [{b: 4}]}, ['c', 'b', 'x'])"),
              R"({"c":[{"b":4}],"b":{"c":3}})");
    EXPECT_EQ(world.run("JSON.stringify({a: 1}, [])"), "{}");
}

// Newer ones take a number in the list for a name and a name given twice once, and stop at ten spaces.
TEST(Json, is_of_the_old_form_where_newer_ones_went_on) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify({1: 1, a: 2}, [1, 'a', 'a'])"), R"({"a":2,"a":2})");
    EXPECT_EQ(world.run("JSON.stringify([1], null, 12)"), "[\n            1\n]");
    EXPECT_EQ(world.run("JSON.stringify([1], null, '123456789012')"), "[\n1234567890121\n]");
    EXPECT_EQ(world.run("JSON.stringify([1], null, new Number(2))"), "[1]");
    EXPECT_THAT(world.error("JSON.stringify([1], 'x')"), testing::HasSubstr("JSON.stringify"));
}

TEST(Json, space_sets_out_lines) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.stringify({a: [1, {b: []}], c: {}}, null, '\\t')"),
              "{\n\t\"a\": [\n\t\t1,\n\t\t{\n\t\t\t\"b\": []\n\t\t}\n\t],\n\t\"c\": {}\n}");
    EXPECT_EQ(world.run("JSON.stringify([1], null, 0) + JSON.stringify([1], null, -3)"), "[1][1]");
}

TEST(Json, an_object_inside_itself_is_an_error_and_the_engine_goes_on) {
    JsonWorld world;
    EXPECT_THAT(world.error("var ring = []; ring[0] = {ring: ring}; JSON.stringify(ring)"),
                testing::HasSubstr("RangeError"));
    EXPECT_EQ(world.run("ring[0].ring = 1; JSON.stringify(ring)"), R"([{"ring":1}])");
}

TEST(Json, nesting_too_deep_to_read_is_an_error_and_the_engine_goes_on) {
    JsonWorld world;
    world.run("function nested(n) { var s = '[', t = ']'; while (s.length < n) { s += s; t += t; } return s + t; }");
    EXPECT_EQ(world.run("JSON.stringify(JSON.parse(nested(64))) === nested(64)"), "true");
    EXPECT_THAT(world.error("JSON.parse(nested(1024))"), testing::HasSubstr("RangeError"));
    EXPECT_EQ(world.run("JSON.parse('[7]')[0]"), "7");
}

TEST(Json, long_texts_are_read) {
    JsonWorld world;
    EXPECT_EQ(world.run("var s = 'x\\n\\u2028'; while (s.length < 20000) s += s;"
                        "JSON.parse(JSON.stringify([s, s]))[1] === s"),
              "true");
}

TEST(Json, a_reviver_works_from_the_inside_out_and_may_take_members_away) {
    JsonWorld world;
    EXPECT_EQ(world.run("var seen = []; var v = JSON.parse('{\"a\":[1,{\"b\":2}],\"c\":null}', function (k, v) {"
                        "seen.push(k + (this[k] === v)); return k === 'c' ? undefined : v; });"
                        "seen.join() + ' ' + JSON.stringify(v)"),
              R"(0true,btrue,1true,atrue,ctrue,true {"a":[1,{"b":2}]})");
    EXPECT_EQ(world.run("var list = JSON.parse('[1,2,3]', function (k, v) { return k === '1' ? undefined : v; });"
                        "list.length + ',' + (1 in list)"),
              "3,false");
    EXPECT_EQ(world.run("JSON.parse('{}', function () {}) === undefined"), "true");
    EXPECT_EQ(world.run("JSON.parse('[1]', 'no function')[0]"), "1");
}

TEST(Json, reads_the_text_of_whatever_it_is_given) {
    JsonWorld world;
    EXPECT_EQ(world.run("JSON.parse(null) === null && JSON.parse(12) === 12"), "true");
    EXPECT_EQ(world.run("JSON.parse({toString: function () { return '[7]'; }})[0]"), "7");
    EXPECT_EQ(world.refusal("undefined"), "SyntaxError JSON.parse");
    EXPECT_EQ(world.refusal("{}"), "SyntaxError JSON.parse");
}

TEST(Json, names_of_the_language_are_members_like_any_other) {
    JsonWorld world;
    EXPECT_EQ(world.run("var v = JSON.parse('{\"__proto__\":{\"x\":1},\"hasOwnProperty\":2,\"constructor\":3}');"
                        "JSON.stringify(v) + v.x + ({}).x"),
              R"({"__proto__":{"x":1},"hasOwnProperty":2,"constructor":3}undefinedundefined)");
    EXPECT_EQ(world.run("JSON.parse('{\"a\":1,\"a\":2}').a"), "2");
}

class HostileJson : public testing::TestWithParam<const char*> {};

TEST_P(HostileJson, is_refused_and_nothing_of_it_runs) {
    JsonWorld world;
    world.run("var ran = 0; function run() { ran += 1; return 1; }");
    EXPECT_EQ(world.refusal(GetParam()), "SyntaxError JSON.parse");
    EXPECT_EQ(world.run("ran"), "0");
}

// Literals of the scripts' language.
INSTANTIATE_TEST_SUITE_P(
    Json, HostileJson,
    testing::Values("'run()'", "'[run()]'", "'{\"a\":run()}'", "'{\"a\":[1,{\"b\":run()}]}'", "'(run())'", "'1,run()'",
                    "'1);run();(1'", "'[1]);run();([1]'", "'\"\"+run()'", "'\"\\\\\"+run()+\"\\\\\"'", "'[1][run()]'",
                    "'{\"a\":1}[run()]'", "'{get a(){run()}}'", "'{\"a\":1}/*'", "'/**/1'", "'1//'", "'[1/**/]'",
                    "'new run'", "'run`1`'", "'ran=1'", "'{\"a\":ran=1}'", "'\\u0072un()'", "'\\\\u0072un()'",
                    "'[\\\\u0072un()]'", "'\"\\\\u2028\"\\\\u002brun()'", "'\"\\n\"'", "'\"\\t\"'", "'\"\\u0000\"'",
                    "'\"\\\\\\u2028\"'", "'\"\\\\\\ufeff\"'", "'\\ufeff1'", "'1\\u2028'", "'\\u00a01'", "'1\\v'",
                    "'\\f1'", "'[1,]'", "'[,1]'", "'[,]'", "'{,}'", "'{\"a\":1,}'", "'{\"a\"}'", "'{\"a\":}'",
                    "'{\"a\",1}'", "'[\"a\":1]'", "'{a:1}'", "'{1:1}'", "'{\\'a\\':1}'", "'\\'a\\''", "'[1}'", "'[[1]'",
                    "'[1]]'", "'{{}}'", "'[1 2]'", "'01'", "'-'", "'- 1'", "'-01'", "'+1'", "'.5'", "'1.'", "'1e'",
                    "'1e+'", "'1.e1'", "'0x1'", "'1n'", "'NaN'", "'Infinity'", "'undefined'", "'True'", "'nulll'",
                    "'truefalse'", "'\"a\"\"b\"'", "'\"\\\\x41\"'", "'\"\\\\u12\"'", "'\"\\\\u12g4\"'", "'\"\\\\a\"'",
                    "'\"\\\\\"'", "'\"'", "'\"a'", "'a\"'", "''", "' '", "'s'", "'v'", "'[s]'", "'{s:v}'", "'@'",
                    "'\"@'", "'!'"));

}  // namespace
}  // namespace script_test
