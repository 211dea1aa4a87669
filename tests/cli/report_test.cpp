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

    // The page for the animation; expects that exit code.
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

// Where the layers of all levels were before.
std::vector<std::string> origins(const rapidjson::Value& layers) {
    std::vector<std::string> told;
    for (const auto& layer : layers.GetArray()) {
        told.push_back(layer["name"].GetString() + std::string(" ") +
                       (layer.HasMember("from") ? layer["from"].GetString() : "new"));
        if (!layer.HasMember("layers")) continue;
        for (std::string& inner : origins(layer["layers"])) told.push_back(std::move(inner));
    }
    return told;
}

// The nest clips its layer, which sticks out once it is un-nested.
std::string clipped() {
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

TEST_F(Report, goes_to_standard_output_without_o_and_the_counts_do_not) {
    const auto finished = report({"-"}, test::one_nest());
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(finished.out, testing::StartsWith("<!doctype html>"));
    EXPECT_EQ(finished.err, "standard input: 1 nest: 1 exact, 0 equal to the eye, 0 changing\n");
}

TEST_F(Report, of_a_changed_look_exits_with_1_and_shows_the_worst_frame) {
    const auto data = test::parsed(part(page_of(clipped(), 1), "data"));
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

TEST_F(Report, shows_where_every_layer_comes_from) {
    const auto data = test::parsed(part(page_of(test::one_nest()), "data"));
    EXPECT_THAT(origins(data["layers_after"]),
                testing::IsSupersetOf({"Title 1", "circle 2.1", "square 2.2", "Background 3"}));
    EXPECT_EQ(data["layers_before"].Size(), 3U);
    EXPECT_STREQ(data["layers_before"][1]["type"].GetString(), "nest");
    EXPECT_EQ(data["layers_before"][1]["layers"].Size(), 2U);
}

// A nest of two levels whose inner one is drawn from frame 10 on at half speed.
std::string slow_inside() {
    std::string inner = test::nest_layer(1, "Slow", "comp_1");
    inner.replace(inner.find(R"("sr":1)"), 6, R"("sr":2)");
    inner.replace(inner.find(R"("st":0)"), 6, R"("st":10)");
    std::string early = test::shape_layer(1, "early");
    early.replace(early.find(R"("op":50)"), 7, R"("op":15)");
    return test::animation({test::asset("comp_0", "Outer", {inner}), test::asset("comp_1", "Deep", {early})},
                           {test::nest_layer(1, "Box", "comp_0")});
}

TEST_F(Report, places_layers_of_all_levels_on_one_timeline) {
    const auto data = test::parsed(part(page_of(slow_inside()), "data"));
    const auto& slow = data["layers_before"][0]["layers"][0];
    EXPECT_STREQ(slow["shown"].GetString(), "0:50");
    EXPECT_STREQ(slow["layers"][0]["shown"].GetString(), "10:40");
    EXPECT_EQ(slow["layers"][0]["out"].GetInt(), 15);
}

// Its clock goes through the first 20 frames twice, and holds between.
TEST_F(Report, places_layers_by_remapped_time_frame_by_frame_unless_an_expression_drives_it) {
    const std::string key = R"({"t":%t,"s":[%s],"i":{"x":[0.5],"y":[0.5]},"o":{"x":[0.5],"y":[0.5]}})";
    const auto at = [&key](const std::string& time, const std::string& seconds) {
        std::string text = key;
        text.replace(text.find("%t"), 2, time);
        return text.replace(text.find("%s"), 2, seconds);
    };
    const std::string remap = R"("tm":{"a":1,"k":[)" + at("0", "0") + "," + at("20", "0.8") + "," + at("21", "0") +
                              "," + at("41", "0.8") + "]}";
    std::string layer = test::shape_layer(1, "late");
    layer.replace(layer.find(R"("ip":0)"), 6, R"("ip":10)");
    std::string nest = test::nest_layer(1, "Twice", "comp_0");
    nest.replace(nest.find(R"("ao":0)"), 6, remap + R"(,"ao":0)");
    const auto text = [&] { return test::animation({test::asset("comp_0", "Inside", {layer})}, {nest}); };
    const auto inside = [&](const char* name) {
        const auto data = test::parsed(part(page_of(text(), 1, {"--flatten"}), "data"));
        const auto& shown = data["layers_before"][0]["layers"][0];
        return shown.HasMember(name) ? std::string(shown[name].IsBool() ? "yes" : shown[name].GetString()) : "";
    };
    EXPECT_EQ(inside("shown"), "10:21 31:50");
    EXPECT_EQ(inside("unplaced"), "");
    nest.insert(nest.find(remap) + remap.size() - 1, R"(,"x":"var $bm_rt = time;")");
    EXPECT_EQ(inside("unplaced"), "yes");
}

// Nests inside one another, each with `layers` other layers.
std::string deep_and_wide(int levels, int layers) {
    std::vector<std::string> assets;
    for (int level = 0; level < levels; ++level) {
        std::vector<std::string> inside;
        if (level + 1 < levels) inside.push_back(test::nest_layer(1, "Next", "comp_" + std::to_string(level + 1)));
        for (int i = 0; i < layers; ++i) inside.push_back(test::shape_layer(i + 2, "layer"));
        assets.push_back(test::asset("comp_" + std::to_string(level), "Inside", inside));
    }
    return test::animation(assets, {test::nest_layer(1, "First", "comp_0")});
}

double left_out(const rapidjson::Value& layers) {
    double count = 0;
    for (const auto& layer : layers.GetArray()) {
        if (layer.HasMember("left_out")) count += layer["left_out"].GetDouble();
        if (layer.HasMember("layers")) count += left_out(layer["layers"]);
    }
    return count;
}

TEST_F(Report, draws_no_more_layers_in_nests_than_it_has_room_for_and_counts_the_rest) {
    const auto left_out_of = [this](int levels, int layers) {
        return left_out(test::parsed(part(page_of(deep_and_wide(levels, layers), 0), "data"))["layers_before"]);
    };
    EXPECT_EQ(left_out_of(8, 1), 0);
    EXPECT_EQ(left_out_of(12, 1), 7);   // two in each of the four deepest, but for the last
    EXPECT_EQ(left_out_of(2, 499), 0);  // 500 and 499
    EXPECT_EQ(left_out_of(2, 501), 501);
    EXPECT_EQ(left_out_of(1, 1001), 1001);
}

// "Flat" holds "Inner", which becomes flat, and "Soft" stays for its blur.
std::string soft_and_flat() {
    std::string soft = test::nest_layer(2, "Soft", "comp_0");
    const std::string blur =
        R"("ef":[{"ty":29,"nm":"Blur","ix":1,"en":1,"ef":[{"ty":0,"nm":"Blurriness","ix":1,"v":{"a":0,"k":20}}]}])";
    soft.replace(soft.find(R"("ao":0)"), 6, blur + R"(,"ao":0)");
    return test::animation({test::asset("comp_0", "Two", {test::solid_layer(1, "red"), test::solid_layer(2, "blue")}),
                            test::asset("comp_1", "Outer", {test::nest_layer(1, "Inner", "comp_0")})},
                           {test::nest_layer(1, "Flat", "comp_1"), soft});
}

TEST_F(Report, of_flatten_contains_what_flatten_writes_and_has_its_exit_code) {
    const std::string page = page_of(soft_and_flat(), 1, {"--flatten"});
    const auto flat = exflate(sandbox_, {"flatten", "a.json", "-o", "flat.json"});
    EXPECT_EQ(flat.exit_code, 1);
    EXPECT_EQ(rewritten(part(page, "before-animation")), rewritten(soft_and_flat()));
    EXPECT_EQ(rewritten(part(page, "after-animation")), rewritten(sandbox_.read("flat.json")));
    const auto data = test::parsed(part(page, "data"));
    const std::string last = data["messages"][0].GetString();
    EXPECT_EQ(flat.err, "a.json: " + last + "\n");
    EXPECT_EQ(report({"--flatten", "a.json", "-o", "page.html"}).err, "a.json: " + last + "; written to page.html\n");
    EXPECT_EQ(data["bytes_after"].GetUint(), sandbox_.read("flat.json").size());
    EXPECT_STREQ(data["command"].GetString(), "exflate flatten -o a_flat.json a.json");
    EXPECT_EQ(page_of(test::three_nests(), 0, {"--flatten"}), page_of(test::three_nests(), 0, {"--flatten"}));
}

TEST_F(Report, of_flatten_lists_every_nest_with_those_that_stay_first) {
    const auto data = test::parsed(part(page_of(soft_and_flat(), 1, {"--flatten"}), "data"));
    std::vector<std::string> told;
    for (const auto& nest : data["nests"].GetArray())
        told.push_back(nest["name"].GetString() + std::string(" ") + nest["becomes"].GetString());
    EXPECT_EQ(told, (std::vector<std::string>{"Soft kept", "Inner flat", "Flat flat"}));
    EXPECT_THAT(data["nests"][0]["kept_because"].GetString(), testing::StartsWith("effects: "));
    EXPECT_EQ(data["flat"]["un_nested"].GetUint(), 2U);
    EXPECT_EQ(data["flat"]["mended"].GetUint(), 0U);
    EXPECT_EQ(data["flat"]["left"].GetUint(), 1U);
    EXPECT_THAT(origins(data["layers_after"]), testing::IsSupersetOf({"red 1.1.1", "blue 1.1.2", "Soft 2", "red 2.1"}));
}

TEST_F(Report, of_flatten_takes_no_dialog_flags) {
    sandbox_.write("a.json", test::one_nest());
    for (const char* choice : {"--delete-source", "--prefix=a", "--discard-attributes"}) {
        const auto finished = report({"--flatten", choice, "a.json", "-o", "page.html"});
        EXPECT_EQ(finished.exit_code, 2);
        EXPECT_THAT(finished.err, HasSubstr("--flatten"));
    }
}

TEST_F(Report, of_flatten_in_one_composition_shows_that_one) {
    const std::string page = page_of(test::three_nests(), 0, {"--flatten", "--comp", "Outer"});
    EXPECT_EQ(test::layer_names(part(page, "before-animation")), (std::vector<std::string>{"Inner", "frame"}));
    EXPECT_EQ(test::layer_names(part(page, "after-animation")), (std::vector<std::string>{"core", "frame"}));
    EXPECT_STREQ(test::parsed(part(page, "data"))["command"].GetString(),
                 "exflate flatten --comp=Outer -o a_flat.json a.json");
}

TEST_F(Report, names_a_command_that_reproduces_its_animation_whatever_the_names) {
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
    EXPECT_EQ(page_of(clipped(), 1), page_of(clipped(), 1));
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
        EXPECT_THAT(finished.err,
                    AllOf(testing::StartsWith(player + std::string(": the page's player cannot be read: ")),
                          HasSubstr("; run tools/setup report")));
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

TEST_F(Report, that_cannot_be_written_is_an_error) {
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
