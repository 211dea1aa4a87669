// Text on its way into scripts and back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "world.h"

namespace script_test {
namespace {

const std::string kReplacement = "\xEF\xBF\xBD";

TEST(Text, a_byte_order_mark_at_the_start_is_passed_over) {
    World world;
    EXPECT_EQ(world.run("\xEF\xBB\xBF//comment\n'after'"), "after");
    EXPECT_EQ(world.run("\xEF\xBB\xBF"), "");
    EXPECT_EQ(world.error("\xEF\xBB\xBF\nnowhere()").substr(0, 36), "Unable to execute script at line 2. ");
}

TEST(Text, characters_of_every_length_come_back) {
    World world;
    EXPECT_EQ(world.run("'a\u00E9\u20AC\U0001F600'"), "a\u00E9\u20AC\U0001F600");
    EXPECT_EQ(world.run("'\U0010FFFF'"), "\U0010FFFF");
}

TEST(Text, a_character_beyond_the_basic_plane_is_a_pair_inside_and_one_outside) {
    World world;
    EXPECT_EQ(world.run("'\U0001F600'.length"), "2");
    EXPECT_EQ(world.run("'\\uD83D\\uDE00'"), "\U0001F600");
    EXPECT_EQ(world.run("'\U0001F600'.charCodeAt(0).toString(16)"), "d83d");
    EXPECT_EQ(world.run("'\U0001F600' === '\\uD83D\\uDE00'"), "true");
    EXPECT_EQ(world.run("encodeURIComponent('\U0001F600')"), "%F0%9F%98%80");
}

TEST(Text, a_lone_surrogate_in_a_result_becomes_the_replacement_character) {
    World world;
    EXPECT_EQ(world.run("'<\\uD83D>'"), "<" + kReplacement + ">");
    EXPECT_EQ(world.run("'<\\uDE00\\uD83D>'"), "<" + kReplacement + kReplacement + ">");
    EXPECT_EQ(world.error("throw '\\uDC80'"), "Unable to execute script at line 1. " + kReplacement);
}

TEST(Text, zero_bytes_survive) {
    World world;
    EXPECT_EQ(world.run("'a\\u0000b'"), std::string("a\0b", 3));
    EXPECT_EQ(world.run(std::string("'a\0b'.length", 12)), "3");
}

TEST(Text, names_with_any_characters_pass_through_a_script) {
    SmallProject world;
    for (const std::string name : {"\U0001F600 \u00E9", "\"quoted\" \\ back", "line\nend", "\xEF\xBB\xBFmark"}) {
        world.inner.layer_at(0).rename(name);
        EXPECT_EQ(world.run("app.project.item(2).layer(1).name"), name);
        world.run("app.project.item(2).layer(2).name = app.project.item(2).layer(1).name + '!'");
        EXPECT_EQ(world.inner.layer_at(1).display_name(), name + "!");
    }
}

TEST(Text, names_that_are_not_utf_8_come_back_unharmed) {
    SmallProject world;
    for (const std::string name : {"cut \xC3", "\xFF\xFE", "\x80", "\xED\xA0\xBD", "\xF0\x9F\x98", "\xC0\x80",
                                   "\xFFhidden", "\xF4\x90\x80\x80"}) {
        world.inner.layer_at(0).rename(name);
        world.run("var kept = app.project.item(2).layer(1).name; app.project.item(2).layer(2).name = kept;");
        EXPECT_EQ(world.inner.layer_at(1).display_name(), name);
    }
}

TEST(Text, bytes_in_the_script_that_are_not_utf_8_reach_the_project_as_they_are) {
    SmallProject world;
    world.run("app.project.item(2).name = \"cut \xC3\";");
    EXPECT_EQ(world.inner.name(), "cut \xC3");
    EXPECT_EQ(world.run("'cut \xC3'"), "cut " + kReplacement);
}

TEST(Text, random_bytes_never_crash_the_engine) {
    const unsigned seed = std::random_device{}();
    RecordProperty("seed", std::to_string(seed));
    std::mt19937 random(seed);
    World world;
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 40, '\0');
        for (char& c : bytes) c = static_cast<char>(random());
        world.engine.run(bytes);
        const ScriptResult quoted = world.engine.run("/*" + bytes + "*/ 'alive'");
        if (bytes.find("*/") == std::string::npos) {
            EXPECT_EQ(quoted.result, "alive") << "seed " << seed << ": " << quoted.error;
        }
    }
}

}  // namespace
}  // namespace script_test
