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

TEST(RunInput, a_missing_file_and_a_folder_are_bad_input) {
    const Sandbox sandbox;
    const Finished missing = exflate(sandbox, {"absent.json", "-o", "out.json"});
    expect_refused(sandbox, missing, 3);
    EXPECT_EQ(missing.err, "absent.json: cannot be read: No such file or directory\n");
    const Finished folder = exflate(sandbox, {".", "-o", "out.json"});
    expect_refused(sandbox, folder, 3);
    EXPECT_EQ(folder.err, ".: is a folder; name the files in it, as in FOLDER/*.json\n");
}

TEST(RunInput, text_that_is_no_json_is_told_with_line_and_column) {
    const Sandbox sandbox;
    const Finished finished =
        exflate(sandbox, {sandbox.write("bad.json", "{\n  \"v\": nonsense\n}"), "-o", "out.json"});
    expect_refused(sandbox, finished, 3);
    EXPECT_THAT(finished.err, MatchesRegex("bad\\.json:2:[0-9]+: .*\n"));
}

TEST(RunInput, every_truncation_of_an_animation_is_bad_input_or_nothing_worse) {
    const Sandbox sandbox;
    const std::string whole = test::one_nest();
    for (std::size_t length = 0; length < whole.size(); length += 97) {
        const Finished finished = exflate(sandbox, {"-", "-o", "out.json"}, whole.substr(0, length));
        expect_refused(sandbox, finished, 3);
        EXPECT_THAT(finished.err, testing::StartsWith("standard input:")) << "cut at " << length;
    }
}

TEST(RunInput, a_fault_deep_inside_a_layer_is_bad_input_even_where_the_plug_in_passes_over_the_failure) {
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

TEST(RunInput, json_that_is_no_animation_is_bad_input) {
    const Sandbox sandbox;
    for (const char* text : {"", "[]", "{}", "7", "\"text\"", "null", R"({"layers":7})"}) {
        const Finished finished = exflate(sandbox, {sandbox.write("bad.json", text), "-o", "out.json"});
        expect_refused(sandbox, finished, 3);
        EXPECT_THAT(finished.err, testing::StartsWith("bad.json:")) << text;
    }
}

TEST(RunInput, compositions_that_hold_themselves_are_bad_input) {
    const Sandbox sandbox;
    const std::string text = test::animation({test::asset("a", "A", {test::nest_layer(1, "inner", "b")}),
                                              test::asset("b", "B", {test::nest_layer(1, "inner", "a")})},
                                             {test::nest_layer(1, "nest", "a")});
    expect_refused(sandbox, exflate(sandbox, {sandbox.write("bad.json", text), "-o", "out.json"}), 3);
}

TEST(RunInput, list_refuses_bad_input_as_run_does) {
    const Sandbox sandbox;
    EXPECT_EQ(exflate(sandbox, {"list", "absent.json"}).exit_code, 3);
    const Finished bad = exflate(sandbox, {"list", sandbox.write("bad.json", "{")});
    expect_refused(sandbox, bad, 3);
    EXPECT_THAT(bad.err, MatchesRegex("bad\\.json:1:[0-9]+: .*\n"));
}

Finished with_plugin(const Sandbox& sandbox, const std::string& plugin) {
    sandbox.write("a.json", test::one_nest());
    return exflate(sandbox, {.arguments = {"a.json", "-o", "out.json"}, .environment = {{"EXFLATE_PLUGIN", plugin}}});
}

TEST(RunPlugin, a_missing_plug_in_is_told) {
    const Sandbox sandbox;
    const Finished finished = with_plugin(sandbox, "absent.so");
    expect_refused(sandbox, finished, 4);
    EXPECT_EQ(finished.err, "exflate: there is no plug-in at 'absent.so'\n");
}

TEST(RunPlugin, what_is_no_plug_in_is_told) {
    const Sandbox sandbox;
    const Finished text = with_plugin(sandbox, "a.json");
    expect_refused(sandbox, text, 4);
    EXPECT_THAT(text.err, HasSubstr("'a.json' is not a loadable plug-in"));
    const Finished other = with_plugin(sandbox, NO_ENTRY_POINT);
    expect_refused(sandbox, other, 4);
    EXPECT_THAT(other.err, HasSubstr("exports no function named EntryPointFunc"));
}

TEST(RunPlugin, a_plug_in_that_cannot_start_is_told_with_what_it_says) {
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
