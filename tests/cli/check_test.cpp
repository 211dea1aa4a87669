// `exflate check`: verdicts, exit codes, and that nothing is ever written.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

Finished check(const std::string& animation, std::vector<std::string> flags = {}) {
    flags.insert(flags.begin(), "check");
    return test::exflate_on(animation, flags);
}

// The names of the nests in a JSON report.
std::vector<std::string> nests_of(const Finished& finished) {
    const rapidjson::Document report = test::parsed(finished.out);
    return test::members_of(report["files"][0]["nests"], "name");
}

TEST(Check, an_unchanged_look_is_exact_and_exits_with_0) {
    const Finished finished = check(test::one_nest());
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_THAT(finished.out, testing::MatchesRegex("a.json\n"
                                                    "  composition \"Main\"\n"
                                                    "    #2 \"Intro\": exact \\(2 layers, [+-][0-9.]+ %\\)\n"
                                                    "  1 nest: 1 exact, 0 equal to the eye, 0 changing\n"));
}

TEST(Check, a_changed_look_is_reported_with_reason_and_advice_and_exits_with_1) {
    const Finished finished = check(test::fading_nest());
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_EQ(finished.err, "");
    EXPECT_THAT(finished.out, HasSubstr("    #2 \"Intro\": changes (2 layers, "));
    EXPECT_THAT(finished.out,
                HasSubstr("      ! opacity: its opacity of 50 % is lost: the layers keep their own -> give the layers "
                          "inside the opacity, or keep this nest\n"));
    EXPECT_THAT(finished.out, HasSubstr("  1 nest: 0 exact, 0 equal to the eye, 1 changing\n"));
}

TEST(Check, a_file_without_nests_is_exact) {
    const Finished finished = check(test::no_nest());
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, "a.json\n  0 nests: 0 exact, 0 equal to the eye, 0 changing\n");
}

TEST(Check, every_nest_of_every_composition_is_checked_by_itself) {
    const Finished finished = check(test::three_nests(), {"--format", "json"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(nests_of(finished), ElementsAre("Left", "Right", "Box", "Inner"));
}

TEST(Check, comp_and_layer_choose_what_is_checked) {
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::string>>> choices = {
        {{"--comp", "Outer"}, {"Inner"}},
        {{"--comp", "Main"}, {"Left", "Right", "Box"}},
        {{"--layer", "#3", "--layer", "Left"}, {"Box", "Left"}},
        {{"--comp", "comp_1", "--layer", "Inner"}, {"Inner"}}};
    for (auto [flags, nests] : choices) {
        flags.emplace_back("--format=json");
        EXPECT_EQ(nests_of(check(test::three_nests(), flags)), nests);
    }
}

TEST(Check, a_selection_that_matches_nothing_is_wrong_usage) {
    const Finished finished = check(test::one_nest(), {"--layer", "Outro"});
    EXPECT_EQ(finished.exit_code, 2);
    EXPECT_THAT(finished.err, HasSubstr("no layer named \"Outro\""));
    EXPECT_EQ(check(test::one_nest(), {"--comp", "nowhere"}).exit_code, 2);
    EXPECT_EQ(check(test::one_nest(), {"--layer", "Title"}).exit_code, 2);
}

TEST(Check, the_answers_to_the_dialog_change_the_verdict) {
    EXPECT_EQ(check(test::one_nest()).exit_code, 0);
    const Finished discarded = check(test::one_nest(), {"--discard-attributes"});
    EXPECT_EQ(discarded.exit_code, 1);
    EXPECT_THAT(discarded.out, HasSubstr("! place: its transform does not reach every layer"));
}

TEST(Check, several_files_are_all_reported_and_the_highest_code_counts) {
    const Sandbox sandbox;
    const std::string kept = sandbox.write("kept.json", test::one_nest());
    const std::string fading = sandbox.write("fading.json", test::fading_nest());
    const std::string broken = sandbox.write("broken.json", "{");
    EXPECT_EQ(exflate(sandbox, {"check", kept, kept}).exit_code, 0);
    EXPECT_EQ(exflate(sandbox, {"check", fading, kept}).exit_code, 1);
    const Finished all = exflate(sandbox, {"check", kept, broken, fading});
    EXPECT_EQ(all.exit_code, 3);
    EXPECT_THAT(all.out, HasSubstr("kept.json\n  composition \"Main\"\n    #2 \"Intro\": exact"));
    EXPECT_THAT(all.out, HasSubstr("broken.json\n  not checked to the end: "));
    EXPECT_THAT(all.out, HasSubstr("fading.json\n  composition \"Main\"\n    #2 \"Intro\": changes"));
    EXPECT_THAT(all.err, testing::StartsWith("broken.json:1:2: "));
    EXPECT_EQ(exflate(sandbox, {"check", "missing.json", kept}).exit_code, 3);
    EXPECT_EQ(exflate(sandbox, {"check", kept, fading, "--layer", "Outro"}).exit_code, 2);
}

TEST(Check, a_plug_in_that_cannot_be_loaded_or_fails_exits_with_4) {
    const Sandbox sandbox;
    const std::string file = sandbox.write("a.json", test::one_nest());
    const auto with = [&](const std::string& module) {
        return exflate(sandbox, {.arguments = {"check", file}, .environment = {{"EXFLATE_PLUGIN", module}}});
    };
    const Finished missing = with("/nowhere/at/all.so");
    EXPECT_EQ(missing.exit_code, 4);
    EXPECT_EQ(missing.out, "");
    const Finished failing = with(EDITS_THEN_FAILS);
    EXPECT_EQ(failing.exit_code, 4);
    EXPECT_THAT(failing.out, HasSubstr("not checked to the end: "));
}

// Two nests whose tints differ in name and in the value behind an expression.
TEST(Check, one_nests_trial_does_not_affect_the_next) {
    const auto tinted = [](int ind, const std::string& name, const std::string& amount) {
        std::string nest = test::nest_layer(ind, name, "comp_0");
        return nest.insert(nest.size() - 1,
                           R"(,"ef":[{"ty":20,"nm":"Tint of )" + name +
                               R"(","np":3,"mn":"ADBE Tint","ix":1,"en":1,"ef":[{"ty":0,"nm":"Amount",)" +
                               R"("mn":"ADBE Tint-0003","ix":1,"v":{"a":0,"k":)" + amount +
                               R"(,"ix":1,"x":"value"}}]}])");
    };
    const Sandbox sandbox;
    const std::string file =
        sandbox.write("a.json", test::animation({test::asset("comp_0", "Shared", {test::shape_layer(1, "dot")})},
                                                {tinted(1, "Left", "7"), tinted(2, "Right side", "33.125")}));
    const rapidjson::Document report = test::parsed(exflate(sandbox, {"check", file, "--format", "json"}).out);
    const Finished run = exflate(sandbox, {"run", file, "--layer", "Right side", "-o", "-"});
    EXPECT_EQ(report["files"][0]["nests"][1]["bytes_after"].GetUint64(), run.out.size());
    EXPECT_THAT(run.out, HasSubstr(R"("nm":"dot","sr":1)"));
    const Finished both = exflate(sandbox, {"run", file, "-o", "-"});
    for (const std::string& text :
         {std::string("Tint of Left"), std::string("Tint of Right side"), std::string(R"("k":7,"ix":1,"x":"value")"),
          std::string(R"("k":33.125,"ix":1,"x":"value")")})
        EXPECT_THAT(both.out, HasSubstr(text));
}

TEST(Check, nothing_is_written_and_the_file_keeps_its_bytes) {
    const Sandbox sandbox(test::fading_nest());
    for (const char* format : {"text", "json", "junit"}) {
        exflate(sandbox, {"check", "a.json", "--format", format, "--prove", "--delete-source", "--prefix", "x"});
    }
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
    EXPECT_EQ(sandbox.read("a.json"), test::fading_nest());
}

TEST(Check, standard_input_is_checked_too) {
    const Sandbox sandbox;
    const Finished finished = exflate(sandbox, {"check", "-"}, test::fading_nest());
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_THAT(finished.out, testing::StartsWith("standard input\n"));
}

TEST(Check, prove_says_how_much_the_pictures_differ) {
    EXPECT_THAT(check(test::fading_nest(), {"--prove"}).out,
                HasSubstr("      pictures: different; worst at frame 0: mean "));
    EXPECT_THAT(check(test::one_nest(), {"--prove"}).out,
                HasSubstr("      pictures: equal; worst at frame 0: mean 0.000 of 255, 0.00 % of pixels beyond 8, SSIM "
                          "1.0000\n"));
    EXPECT_THAT(check(test::one_nest()).out, Not(HasSubstr("pictures")));
}

TEST(Check, no_name_can_break_a_line_or_control_the_terminal) {
    const Finished finished = check(test::hostile_names());
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_THAT(finished.out, HasSubstr(R"("a\"]]><&\u000A\u001B[31m\u009B)"));
    for (const char c : finished.out) EXPECT_TRUE(c == '\n' || static_cast<unsigned char>(c) >= 0x20);
    EXPECT_THAT(finished.out, Not(HasSubstr("\xC2\x9B")));
}

TEST(Check, pictures_of_all_nests_share_a_time_limit_and_a_nest_without_says_why) {
    const Finished finished = test::exflate_on(test::three_nests(), {"check", "--prove", "--picture-time", "0.01"});
    EXPECT_EQ(finished.err, "");
    EXPECT_THAT(finished.out, testing::HasSubstr("pictures: equal; "));
    EXPECT_THAT(finished.out,
                testing::HasSubstr("no pictures: the time for them is used up; --picture-time gives more\n"));
}

}  // namespace
