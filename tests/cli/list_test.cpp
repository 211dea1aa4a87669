// The listing of compositions, layers and nests.
#include <gmock/gmock.h>

#include <algorithm>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::HasSubstr;

namespace {

Finished list(const std::string& animation, std::vector<std::string> flags = {}) {
    flags.insert(flags.begin(), "list");
    return test::exflate_on(animation, flags);
}

TEST(List, nests_are_shown_with_what_is_inside_and_a_shared_composition_once) {
    const Finished finished = list(test::three_nests());
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out,
              "a.json\n"
              "composition \"Main\", 100 x 80, 25 frames a second, 3 layers\n"
              "    #1 nest \"Left\" 0 to 50 of composition \"Shared\" [comp_0]\n"
              "        #1 shape \"dot\" 0 to 50\n"
              "    #2 nest \"Right\" 0 to 50 of composition \"Shared\" [comp_0], shown above\n"
              "    #3 nest \"Box\" 0 to 50 of composition \"Outer\" [comp_1]\n"
              "        #1 nest \"Inner\" 0 to 50 of composition \"Deep\" [comp_2]\n"
              "            #1 shape \"core\" 0 to 50\n"
              "        #2 shape \"frame\" 0 to 50\n");
}

TEST(List, a_composition_that_nothing_uses_stands_at_the_end) {
    const std::string text =
        test::animation({test::asset("spare", "Spare", {test::shape_layer(1, "x")})}, {test::shape_layer(1, "Title")});
    EXPECT_THAT(list(text).out,
                testing::EndsWith("composition \"Spare\" [spare], 100 x 80, 25 frames a second, 1 layer\n"
                                  "    #1 shape \"x\" 0 to 50\n"));
}

TEST(List, times_are_frames_with_their_fractions) {
    std::string text = test::no_nest();
    text.replace(text.rfind(R"("ip":0,"op":50,"st":0)"), 21, R"("ip":-2.5,"op":7.25,"st":0)");
    EXPECT_THAT(list(text).out, HasSubstr("#1 shape \"Title\" -2.5 to 7.25\n"));
}

TEST(List, a_name_can_neither_break_a_line_nor_control_the_terminal) {
    const Finished finished = list(test::animation({}, {test::shape_layer(1, R"(a\nb\u001b[31m\"q\u009bx)")}));
    EXPECT_THAT(finished.out, HasSubstr(R"("a\u000Ab\u001B[31m\"q\u009Bx")"));
}

TEST(List, a_million_paths_through_shared_compositions_are_listed_fast) {
    std::vector<std::string> assets = {test::asset("level0", "Level 0", {test::shape_layer(1, "dot")})};
    for (int level = 1; level <= 30; ++level) {
        const std::string inner = "level" + std::to_string(level - 1);
        assets.push_back(test::asset("level" + std::to_string(level), "Level " + std::to_string(level),
                                     {test::nest_layer(1, "left", inner), test::nest_layer(2, "right", inner)}));
    }
    const Finished finished = list(test::animation(assets, {test::nest_layer(1, "Top", "level30")}));
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(finished.out, HasSubstr(", shown below\n"));  // deeper than the indentation goes
    // The file's line; two compositions that stand on their own; two layers on each level, one in the innermost and
    // main.
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 1 + 2 + 60 + 1 + 1);
}

TEST(List, json_holds_each_composition_once) {
    const Finished finished = list(test::three_nests(), {"--json"});
    EXPECT_EQ(finished.exit_code, 0);
    const rapidjson::Document document = test::parsed(finished.out);
    EXPECT_STREQ(document["file"].GetString(), "a.json");
    const auto& comps = document["compositions"];
    ASSERT_EQ(comps.Size(), 4U);
    EXPECT_TRUE(comps[0]["id"].IsNull());
    EXPECT_STREQ(comps[0]["name"].GetString(), "Main");
    EXPECT_EQ(comps[0]["width"].GetInt(), 100);
    EXPECT_EQ(comps[0]["height"].GetInt(), 80);
    EXPECT_EQ(comps[0]["frame_rate"].GetDouble(), 25);
    const auto& box = comps[0]["layers"][2];
    EXPECT_EQ(box["number"].GetInt(), 3);
    EXPECT_STREQ(box["type"].GetString(), "nest");
    EXPECT_STREQ(box["name"].GetString(), "Box");
    EXPECT_EQ(box["in"].GetInt(), 0);
    EXPECT_EQ(box["out"].GetInt(), 50);
    EXPECT_STREQ(box["composition"].GetString(), "comp_1");
    EXPECT_STREQ(comps[2]["id"].GetString(), "comp_1");
    EXPECT_FALSE(comps[2]["layers"][1].HasMember("composition"));
}

TEST(List, json_survives_any_name) {
    const Finished finished = list(test::animation({}, {test::shape_layer(1, R"(a\n\"\\\u0001é)")}), {"--json"});
    const rapidjson::Document document = test::parsed(finished.out);
    EXPECT_EQ(std::string(document["compositions"][0]["layers"][0]["name"].GetString()), "a\n\"\\\x01é");
}

TEST(List, json_survives_a_file_name_that_is_no_utf8) {
    const Sandbox sandbox;
    const Finished finished = exflate(sandbox, {"list", "--json", sandbox.write("a\xFF.json", test::no_nest())});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_STREQ(test::parsed(finished.out)["file"].GetString(), "a\xEF\xBF\xBD.json");
}

TEST(List, the_types_of_layers_are_shown) {
    const auto layer = [](int ind, const std::string& type) {
        return R"({"nm":"x","ip":0,"op":9,"st":0,"ind":)" + std::to_string(ind) + ',' + test::kTransform + type + "}";
    };
    const Finished finished = list(test::animation(
        {R"({"id":"img","w":4,"h":4,"u":"","p":"x.png","e":0})", R"({"id":"snd","u":"","p":"x.mp3","e":0})"},
        {layer(1, R"(,"ty":1,"sw":10,"sh":10,"sc":"#ff0000")"), layer(2, R"(,"ty":2,"refId":"img")"),
         layer(3, R"(,"ty":3)"), layer(4, R"(,"ty":5,"t":{"d":{"k":[]}})"),
         layer(5, R"(,"ty":13,"pe":{"a":0,"k":500})"), layer(6, R"(,"ty":6,"refId":"snd")")}));
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    for (const char* line : {"#1 solid ", "#2 image ", "#3 null ", "#4 text ", "#5 camera ", "#6 audio "}) {
        EXPECT_THAT(finished.out, HasSubstr(line));
    }
}

TEST(List, standard_input_is_listed_too) {
    const Sandbox sandbox;
    EXPECT_THAT(exflate(sandbox, {"list", "-"}, test::no_nest()).out, testing::StartsWith("standard input\n"));
}

}  // namespace
