// `exflate report` as people run it. The page's own program is tested in tests/report, in a browser.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// A sandbox with a player in it that plays nothing.
class Report : public testing::Test {
  protected:
    Report() {
        sandbox_.write("player.js", "lottie = '</script><!--';");
        sandbox_.write("LICENSE.md", "Do what you like.");
    }

    test::Finished report(const std::vector<std::string>& arguments, const std::string& input = "") const {
        std::vector<std::string> all = {"report"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return exflate(sandbox_, {.arguments = all, .input = input, .environment = {{"EXFLATE_PLAYER", "player.js"}}});
    }

    // The page of the animation, which comes to that exit code.
    std::string page_of(const std::string& animation, int code = 0, std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.end(), {sandbox_.write("a.json", animation), "-o", "page.html"});
        EXPECT_EQ(report(arguments).exit_code, code);
        return sandbox_.read("page.html");
    }

    test::Sandbox sandbox_;
};

// What a script element of that id holds.
std::string part(const std::string& page, const std::string& id) {
    const std::string start = "id=\"" + id + "\">";
    const std::size_t at = page.find(start);
    if (at == std::string::npos) throw std::runtime_error("the page has no " + id);
    return page.substr(at + start.size(), page.find("</script>", at) - at - start.size());
}

// The same JSON in one spelling.
std::string rewritten(const std::string& text) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    test::parsed(text).Accept(writer);
    return buffer.GetString();
}

std::size_t count(const std::string& text, const std::string& what) {
    std::size_t found = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++found;
    return found;
}

// The nest is cut off at its own frame, and its content, once out, is not.
std::string cut_off() {
    const std::string square = R"({"ddd":0,"ind":1,"ty":1,"nm":"wide","sr":1,)" + test::kTransform +
                               R"(,"ao":0,"sw":90,"sh":70,"sc":"#ff0000","ip":0,"op":50,"st":0,"bm":0})";
    const std::string nest = R"({"ddd":0,"ind":1,"ty":0,"nm":"Small","refId":"comp_0","sr":1,"ks":{},)"
                             R"("ao":0,"w":60,"h":50,"ip":0,"op":50,"st":0,"bm":0})";
    return test::animation({test::asset("comp_0", "Small comp", {square})}, {nest});
}

TEST_F(Report, holds_the_animation_before_and_the_one_that_run_writes) {
    const std::string page = page_of(test::one_nest());
    EXPECT_EQ(exflate(sandbox_, {"run", "a.json", "-o", "flat.json"}).exit_code, 0);
    EXPECT_EQ(rewritten(part(page, "before-animation")), rewritten(test::one_nest()));
    EXPECT_EQ(rewritten(part(page, "after-animation")), rewritten(sandbox_.read("flat.json")));
}

TEST_F(Report, is_one_file_that_forbids_every_network) {
    const std::string page = page_of(test::one_nest());
    EXPECT_EQ(sandbox_.names(), (std::vector<std::string>{"LICENSE.md", "a.json", "page.html", "player.js"}));
    EXPECT_THAT(page, HasSubstr("http-equiv=\"Content-Security-Policy\" content=\"default-src 'none';"));
    EXPECT_THAT(page, AllOf(Not(HasSubstr("<script src")), Not(HasSubstr("https://")), Not(HasSubstr("@import"))));
    EXPECT_EQ(count(page, "http://"), count(page, "http://www.w3.org/2000/svg"));  // a name, not a place
}

TEST_F(Report, goes_to_standard_output_without_o_and_tells_the_counts_beside_it) {
    const auto finished = report({"-"}, test::one_nest());
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(finished.out, testing::StartsWith("<!doctype html>"));
    EXPECT_EQ(finished.err, "standard input: 1 nest: 1 exact, 0 equal to the eye, 0 changing\n");
}

TEST_F(Report, of_a_look_that_changes_ends_with_one_and_shows_the_worst_frame) {
    const auto data = test::parsed(part(page_of(cut_off(), 1), "data"));
    EXPECT_STREQ(data["verdict"].GetString(), "changes");
    const auto& nest = data["nests"][0];
    EXPECT_STREQ(nest["verdict"].GetString(), "changes");
    EXPECT_STREQ(nest["reasons"][0]["code"].GetString(), "clip");
    EXPECT_FALSE(nest["pictures"]["equal"].GetBool());
    for (const char* picture : {"before", "after", "difference"}) {
        EXPECT_THAT(nest["worst"][picture].GetString(), testing::StartsWith("data:image/png;base64,iVBORw0KGgo"));
        EXPECT_THAT(data["worst"][picture].GetString(), testing::StartsWith("data:image/png;base64,iVBORw0KGgo"));
    }
}

TEST_F(Report, tells_where_every_layer_comes_from) {
    const auto data = test::parsed(part(page_of(test::one_nest()), "data"));
    std::vector<std::string> layers;
    for (const auto& layer : data["stack_after"].GetArray()) {
        std::string told = std::string(layer["name"].GetString()) + " " + layer["origin"].GetString();
        if (layer.HasMember("was")) told += " " + std::to_string(layer["was"].GetInt());
        if (layer.HasMember("nest")) told += " of " + std::to_string(layer["nest"].GetInt());
        layers.push_back(told);
    }
    EXPECT_THAT(layers, testing::IsSupersetOf(
                            {"Title kept 1", "circle copied 1 of 2", "square copied 2 of 2", "Background kept 3"}));
    EXPECT_EQ(data["stack_before"].Size(), 3U);
    EXPECT_STREQ(data["stack_before"][1]["type"].GetString(), "nest");
}

TEST_F(Report, names_a_command_that_gives_its_animation_whatever_the_names_are) {
    const std::string file = "it's <b> $HOME.json";
    sandbox_.write(file, test::animation({test::asset("comp_0", "Shared", {test::shape_layer(1, "dot")})},
                                         {test::nest_layer(1, "-x '$(touch hit)'", "comp_0"),
                                          test::nest_layer(2, "other", "comp_0")}));
    EXPECT_LE(
        report({file, "--layer=-x '$(touch hit)'", "--prefix", "a b", "--prepend-name", "-o", "page.html"}).exit_code,
        1);
    const std::string page = sandbox_.read("page.html");
    const std::string command = test::parsed(part(page, "data"))["command"].GetString();
    EXPECT_THAT(command, testing::StartsWith("exflate run "));
    const auto finished =
        sandbox_.run("/bin/sh", {.arguments = {"-c", "exflate() { \"$COMMAND\" \"$@\"; }; " + command},
                                 .environment = {{"COMMAND", EXFLATE_COMMAND}}});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_EQ(rewritten(sandbox_.read("it's <b> $HOME_flat.json")), rewritten(part(page, "after-animation")));
    EXPECT_THAT(sandbox_.names(), Not(testing::Contains("hit")));
}

TEST_F(Report, lets_no_name_end_a_script_or_open_a_comment) {
    sandbox_.write("ordinary.json", test::one_nest());
    const std::string hostile = "</script><img src=x onerror=alert(1)><!--<script>";
    sandbox_.write("hostile.json", test::animation({test::asset("comp_0", hostile, {test::shape_layer(1, hostile)})},
                                                   {test::nest_layer(1, hostile, "comp_0")}));
    EXPECT_EQ(report({"ordinary.json", "-o", "ordinary.html"}).exit_code, 0);
    EXPECT_LE(report({"hostile.json", "-o", "hostile.html"}).exit_code, 1);
    const std::string ordinary = sandbox_.read("ordinary.html");
    const std::string page = sandbox_.read("hostile.html");
    for (const char* mark : {"</script", "<script", "<img", "<!--"})
        EXPECT_EQ(count(page, mark), count(ordinary, mark)) << mark;
    EXPECT_EQ(test::parsed(part(page, "data"))["nests"][0]["name"].GetString(), hostile);
}

TEST_F(Report, keeps_a_player_inside_its_element_and_its_licence_in_the_page) {
    const std::string page = page_of(test::one_nest());
    EXPECT_EQ(part(page, "player-program"), "lottie = '<\\/script><\\!--';");
    EXPECT_STREQ(test::parsed(part(page, "data"))["licence"].GetString(), "Do what you like.");
}

TEST_F(Report, of_the_same_input_is_the_same_page) {
    EXPECT_EQ(page_of(cut_off(), 1), page_of(cut_off(), 1));
}

TEST_F(Report, of_a_composition_shows_that_one) {
    const std::string page = page_of(test::three_nests(), 0, {"--comp", "Outer"});
    EXPECT_EQ(test::layer_names(part(page, "before-animation")), (std::vector<std::string>{"Inner", "frame"}));
    EXPECT_THAT(test::layer_names(part(page, "after-animation")), testing::Contains("core"));
    EXPECT_EQ(test::parsed(part(page, "data"))["nests"].Size(), 1U);
}

TEST_F(Report, of_an_animation_without_nests_shows_it_as_it_is) {
    const std::string page = page_of(test::no_nest());
    EXPECT_EQ(part(page, "before-animation"), part(page, "after-animation"));
    EXPECT_EQ(test::parsed(part(page, "data"))["nests"].Size(), 0U);
}

TEST_F(Report, leaves_the_animation_as_it_was) {
    page_of(test::one_nest());
    EXPECT_EQ(sandbox_.read("a.json"), test::one_nest());
}

TEST_F(Report, says_what_is_missing_without_a_player_and_writes_nothing) {
    sandbox_.write("a.json", test::one_nest());
    for (const char* player : {"nowhere.js", "folder/player.js"}) {
        const auto finished = exflate(sandbox_, {.arguments = {"report", "a.json", "-o", "page.html"},
                                                 .environment = {{"EXFLATE_PLAYER", player}}});
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_THAT(finished.err, AllOf(HasSubstr("the page's player"), HasSubstr(player)));
    }
    std::filesystem::copy_file(EXFLATE_COMMAND, sandbox_.path("lonely"));
    const auto finished = sandbox_.run(sandbox_.path("lonely"), {.arguments = {"report", "a.json", "-o", "page.html"}});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr("lottie.min.js"), HasSubstr("tools/setup report"), HasSubstr("EXFLATE_PLAYER")));
    EXPECT_THAT(sandbox_.names(), Not(testing::Contains("page.html")));
}

struct Refused {
    std::vector<std::string> arguments;
    int code;
    const char* sentence;
};

TEST_F(Report, that_cannot_be_made_is_told) {
    sandbox_.write("a.json", test::one_nest());
    sandbox_.write("broken.json", "{\"layers\":");
    const std::vector<Refused> all = {
        {{"nowhere.json", "-o", "page.html"}, 3, "nowhere.json: cannot be read"},
        {{"broken.json", "-o", "page.html"}, 3, "broken.json:1:"},
        {{"a.json", "--layer", "nobody", "-o", "page.html"}, 2, "has no layer named \"nobody\""},
        {{"a.json", "-o", "a.json"}, 2, "would replace the animation"},
        {{"a.json", "-o", sandbox_.path("a.json")}, 2, "would replace the animation"},
        {{"a.json", "-o", "no/such/folder/page.html"}, 4, "'no/such/folder/page.html' cannot be written"},
        {{"a.json", "-o", "/dev/full"}, 4, "cannot be written"}};
    for (const Refused& refused : all) {
        const auto finished = report(refused.arguments);
        EXPECT_EQ(finished.exit_code, refused.code);
        EXPECT_THAT(finished.err, HasSubstr(refused.sentence));
    }
    EXPECT_THAT(sandbox_.names(), Not(testing::Contains("page.html")));
    EXPECT_EQ(sandbox_.read("a.json"), test::one_nest());
}

}  // namespace
