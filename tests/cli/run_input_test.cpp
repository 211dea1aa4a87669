// Bad input and missing plug-ins: one sentence, the right code, and nothing written.
#include <gmock/gmock.h>

#include <algorithm>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

// One line, no output, nothing new in the folder.
void expect_refused(const Sandbox& sandbox, const Finished& finished, int exit_code) {
    EXPECT_EQ(finished.exit_code, exit_code);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(std::count(finished.err.begin(), finished.err.end(), '\n'), 1) << finished.err;
    EXPECT_THAT(sandbox.names(), testing::Not(testing::Contains("out.json")));
}

TEST(RunInput, an_unreadable_file_and_one_without_an_animation_are_bad_input) {
    const Sandbox sandbox;
    const auto file = [&](const std::string& text) {
        static int count = 0;
        return sandbox.write("bad" + std::to_string(++count) + ".json", text);
    };
    const std::string holding_itself = test::animation({test::asset("a", "A", {test::nest_layer(1, "inner", "b")}),
                                                        test::asset("b", "B", {test::nest_layer(1, "inner", "a")})},
                                                       {test::nest_layer(1, "nest", "a")});
    std::vector<std::pair<std::string, std::string>> inputs = {
        {"absent.json", "absent\\.json: cannot be read: No such file or directory\n"},
        {file("{\n  \"v\": nonsense\n}"), "bad1\\.json:2:[0-9]+: .*\n"},
        {file("{"), "bad2\\.json:1:[0-9]+: .*\n"},
        {file(holding_itself), "bad3\\.json:1:[0-9]+: A composition contains itself: .*\n"}};
    for (const char* text : {"", "[]", "{}", "7", "\"text\"", "null", R"({"layers":7})"}) {
        inputs.emplace_back(file(text), "bad[0-9]+\\.json:.*\n");
    }
    for (const auto& [input, sentence] : inputs) {
        const Finished finished = exflate(sandbox, {input, "-o", "out.json"});
        expect_refused(sandbox, finished, 3);
        EXPECT_THAT(finished.err, MatchesRegex(sentence));
        const Finished listed = exflate(sandbox, {"list", input});
        expect_refused(sandbox, listed, 3);
        EXPECT_EQ(listed.err, finished.err);
    }
}

TEST(RunInput, every_truncation_of_an_animation_is_at_worst_bad_input) {
    const Sandbox sandbox;
    const std::string whole = test::one_nest();
    for (std::size_t length = 0; length < whole.size(); length += 97) {
        const Finished finished = exflate(sandbox, {"-", "-o", "out.json"}, whole.substr(0, length));
        expect_refused(sandbox, finished, 3);
        EXPECT_THAT(finished.err, testing::StartsWith("standard input:")) << "cut at " << length;
    }
}

TEST(RunInput, an_error_deep_inside_a_layer_is_bad_input_even_if_the_plug_in_ignores_the_failure) {
    const Sandbox sandbox;
    const std::string without_time = R"({"a":1,"k":[{"s":[1]},{"t":9,"s":[2]}]})";
    const std::string effect =
        R"("ef":[{"ty":5,"nm":"Slider","mn":"slider","np":3,"ix":1,"en":1,"ef":[{"ty":0,"nm":"Value","mn":"slider-1","ix":1,"v":)" +
        without_time + "}]}],";
    for (const bool in_effect : {true, false}) {
        std::string text = test::one_nest();
        const std::string anchor = in_effect ? R"("ao":0,"w":)" : R"("ks":{"o":{"a":0,"k":100})";
        const std::size_t nest = text.find(R"("nm":"Intro","refId")");
        text.replace(text.find(anchor, nest), anchor.size(),
                     in_effect ? effect + anchor : R"("ks":{"o":)" + without_time);
        const Finished finished = exflate(sandbox, {sandbox.write("bad.json", text), "-o", "out.json"});
        expect_refused(sandbox, finished, 3);
        EXPECT_THAT(finished.err,
                    MatchesRegex("bad\\.json:1:[0-9]+: The content of layer \"Intro\" cannot be read: .*\n"));
    }
}

// The first `from` behind the nest's name becomes `to`.
std::string one_nest_with(const std::string& from, const std::string& to) {
    std::string text = test::one_nest();
    const std::size_t at = text.find(from, text.find(R"("nm":"Intro","refId")"));
    return text.replace(at, from.size(), to);
}

TEST(RunInput, numbers_that_cannot_be_represented_are_bad_input_to_every_command) {
    const Sandbox sandbox;
    const std::string eased =
        R"("p":{"a":1,"k":[{"t":0,"s":[0,0],"i":{"x":1,"y":1},"o":{"x":0,"y":1e308}},{"t":9,"s":[5,5]}]})";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {one_nest_with(R"("p":{"a":0,"k":[50,40,0]})", eased), "the easing of a keyframe"},
        {one_nest_with(R"("s":{"a":0,"k":[100,100,100]})", R"("s":{"a":0,"k":[1.7e308,1.7e308,100]})"), "not finite"},
        {one_nest_with(R"("sr":1)", R"("sr":1e-300)"), "\"sr\""},
        {one_nest_with(R"("st":0)", R"("st":1e7)"), "\"st\""},
        {one_nest_with(R"("p":{"a":0,"k":[50,40,0]})", R"("p":{"a":1,"k":[{"t":0,"s":[0,0]},{"t":1e9,"s":[5,5]}]})"),
         "the time of a keyframe"}};
    for (const auto& [text, sentence] : cases) {
        sandbox.write("bad.json", text);
        for (const std::string command : {"run", "flatten", "check"}) {
            const Finished finished = exflate(sandbox, {command, "bad.json"});
            EXPECT_EQ(finished.exit_code, 3) << command << sentence;
            EXPECT_THAT(finished.err, AllOf(MatchesRegex("bad\\.json:1:[0-9]+: [^\n]*\n"), HasSubstr(sentence)));
        }
    }
}

TEST(RunInput, a_file_that_takes_more_work_than_is_allowed_is_refused_at_once) {
    const Sandbox sandbox;
    std::vector<std::string> nests;
    for (int i = 1; i <= 20'000; ++i) nests.push_back(test::nest_layer(i, "nest", "comp_0"));
    const std::string many = sandbox.write(
        "many.json", test::animation({test::asset("comp_0", "Inner", {test::shape_layer(1, "dot")})}, nests));
    for (const auto& options : {std::vector<std::string>{}, {"--recursive"}, {"--strict"}}) {
        std::vector<std::string> arguments = {many, "-o", "out.json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Finished finished = exflate(sandbox, arguments);
        expect_refused(sandbox, finished, 3);
        EXPECT_THAT(finished.err, HasSubstr("more work than one file may make: choose fewer nests with --layer"));
    }
}

TEST(RunInput, what_players_ignore_is_ignored_with_a_warning) {
    const Sandbox sandbox;
    const std::vector<std::pair<std::string, std::string>> cases = {
        {test::animation({}, {test::shape_layer(1, "A"), test::shape_layer(1, "B")}), "has the same \"ind\" 1"},
        {test::animation({}, {test::shape_layer(1, "A"), "7"}), "is not an object"},
        {test::animation({}, {test::nest_layer(1, "N", "gone")}), "\"gone\", which does not exist"}};
    for (const auto& [text, sentence] : cases) {
        sandbox.write("odd.json", text);
        for (const std::string command : {"run", "flatten", "check", "list"}) {
            const Finished finished = exflate(sandbox, {command, "odd.json"});
            EXPECT_EQ(finished.exit_code, 0) << command << finished.err;
            EXPECT_THAT(finished.err, HasSubstr("odd.json:1:"));
            EXPECT_THAT(finished.err, HasSubstr(sentence));
            if (command == "run" || command == "flatten") {
                EXPECT_EQ(finished.out, text) << command;
            }
        }
    }
}

Finished with_plugin(const Sandbox& sandbox, const std::string& plugin) {
    sandbox.write("a.json", test::one_nest());
    return exflate(sandbox, {.arguments = {"a.json", "-o", "out.json"}, .environment = {{"EXFLATE_PLUGIN", plugin}}});
}

TEST(RunPlugin, that_is_missing_or_no_plug_in_or_has_no_command_is_reported) {
    const std::vector<std::pair<const char*, const char*>> plugins = {
        {"absent.so", "absent.so: there is no such plug-in: set EXFLATE_PLUGIN to its file, or unset it\n"},
        {"a.json", "'a.json' is not a loadable plug-in"},
        {NO_ENTRY_POINT, "exports no function named EntryPointFunc"},
        {CARETAKER, "a.json: the plug-in has no command\n"},
        {NEVER_ENABLED, "a.json: the plug-in's command is not available for these layers\n"}};
    for (const auto& [plugin, sentence] : plugins) {
        const Sandbox sandbox;
        const Finished finished = with_plugin(sandbox, plugin);
        expect_refused(sandbox, finished, 4);
        EXPECT_THAT(finished.err, HasSubstr(sentence));
    }
}

TEST(RunPlugin, a_command_without_its_parts_tells_where_it_looked_for_them) {
    const Sandbox sandbox(test::one_nest());
    const auto neither = [&](const std::string& what, const std::string& built, const std::string& installed) {
        return sandbox.path(built).string() + ": " + what + " is neither here nor at '" +
               sandbox.path(installed).string() + "': ";
    };
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"run", "a.json"}, neither("the plug-in", "plugin/Exflate.so", "lib/exflate/Exflate.so")},
        {{"report", "a.json"},
         neither("the page's player", "player/lottie.min.js", "share/exflate/player/lottie.min.js")}};
    for (const auto& [arguments, sentence] : cases) {
        const Finished finished = test::lone_exflate(sandbox, {.arguments = arguments});
        expect_refused(sandbox, finished, 4);
        EXPECT_THAT(finished.err, testing::StartsWith(sentence));
    }
}

TEST(RunPlugin, a_plug_in_that_cannot_start_is_reported_with_its_own_message) {
    const Sandbox sandbox;
    const Finished finished = with_plugin(sandbox, FAILS_AT_ENTRY);
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_EQ(finished.err,
              "a.json: the plug-in says: cannot start\n"
              "a.json: plug-in fails_at_entry: its entry point returned error 13\n"
              "a.json: the plug-in cannot start: its entry point failed with error 13\n");
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
}

TEST(RunPlugin, a_command_that_fails_half_way_writes_nothing) {
    const Sandbox sandbox;
    const Finished finished = with_plugin(sandbox, EDITS_THEN_FAILS);
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("a.json: the plug-in says: half way\n"),
                                    HasSubstr("a.json: the plug-in's command failed with error 7\n")));
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
}

}  // namespace
