// Which nests are un-nested.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::layer_names;
using test::layer_names_in;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

namespace {

Finished run(const std::string& animation, std::vector<std::string> flags) {
    const Sandbox sandbox;
    flags.insert(flags.begin(), sandbox.write("a.json", animation));
    return exflate(sandbox, flags);
}

std::vector<std::string> names_after(const std::string& animation, const std::vector<std::string>& flags) {
    const Finished finished = run(animation, flags);
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    return layer_names(finished.out);
}

void expect_usage(const Finished& finished, const std::string& sentence) {
    EXPECT_EQ(finished.exit_code, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "a.json: " + sentence + "\n");
}

TEST(RunSelection, every_nest_of_the_main_composition_is_meant_without_flags) {
    EXPECT_THAT(names_after(test::three_nests(), {}), ElementsAre("dot", "dot", "Inner", "frame"));
}

TEST(RunSelection, a_layer_is_named_or_numbered) {
    EXPECT_THAT(names_after(test::three_nests(), {"--layer", "Box"}), ElementsAre("Left", "Right", "Inner", "frame"));
    EXPECT_THAT(names_after(test::three_nests(), {"--layer", "#1"}), ElementsAre("dot", "Right", "Box"));
    EXPECT_THAT(names_after(test::three_nests(), {"--layer", "#3", "--layer", "Left", "--layer", "Left"}),
                ElementsAre("dot", "Right", "Inner", "frame"));
}

TEST(RunSelection, a_name_means_all_nests_that_have_it) {
    const std::string twins = test::animation(
        {test::asset("c", "C", {test::shape_layer(1, "dot")})},
        {test::nest_layer(1, "Twin", "c"), test::shape_layer(2, "Twin"), test::nest_layer(3, "Twin", "c")});
    EXPECT_THAT(names_after(twins, {"--layer", "Twin"}), ElementsAre("dot", "Twin", "dot"));
}

TEST(RunSelection, a_composition_is_named_or_given_by_id) {
    for (const char* comp : {"Outer", "comp_1"}) {
        const Finished finished = run(test::three_nests(), {"--comp", comp});
        EXPECT_EQ(finished.exit_code, 0);
        EXPECT_THAT(layer_names(finished.out), ElementsAre("Left", "Right", "Box"));
        EXPECT_THAT(layer_names_in(finished.out, "comp_1"), ElementsAre("core", "frame"));
    }
}

TEST(RunSelection, recursion_leaves_no_nest_in_the_composition) {
    const Finished finished = run(test::three_nests(), {"--recursive"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(layer_names(finished.out), ElementsAre("dot", "dot", "core", "frame"));
    EXPECT_THAT(finished.err, MatchesRegex("a.json: 4 nests of composition \"Main\" un-nested, 4 layers made, 3 nested "
                                           "compositions kept, [0-9]+ bytes became [0-9]+ .*%.\n"));
}

TEST(RunSelection, recursion_from_a_chosen_layer_leaves_the_others_alone) {
    EXPECT_THAT(names_after(test::three_nests(), {"--recursive", "--layer", "Box"}),
                ElementsAre("Left", "Right", "core", "frame"));
}

TEST(RunSelection, recursion_ends_although_nests_are_kept) {
    EXPECT_THAT(names_after(test::three_nests(), {"--recursive", "--keep-in-comp"}),
                UnorderedElementsAre("dot", "Left", "dot", "Right", "core", "Inner", "frame", "Box"));
}

TEST(RunSelection, recursion_deletes_the_sources_on_every_level) {
    const Finished finished = run(test::three_nests(), {"--recursive", "--delete-source"});
    EXPECT_THAT(test::asset_ids(finished.out), testing::IsEmpty());
    EXPECT_THAT(finished.err, HasSubstr("3 nested compositions deleted"));
}

TEST(RunSelection, an_unknown_composition_is_answered_with_near_names) {
    expect_usage(run(test::three_nests(), {"--comp", "Outr"}),
                 "there is no composition \"Outr\"; did you mean \"Outer\"? (exflate list shows them all)");
    expect_usage(run(test::three_nests(), {"--comp", "comp_9"}),
                 "there is no composition \"comp_9\"; did you mean \"comp_0\", \"comp_1\" or \"comp_2\"? (exflate list "
                 "shows them all)");
}

TEST(RunSelection, an_unknown_layer_is_answered_with_near_nests) {
    expect_usage(
        run(test::three_nests(), {"--layer", "Rihgt"}),
        "composition \"Main\" has no layer named \"Rihgt\"; did you mean \"Right\"? (exflate list shows them all)");
    expect_usage(run(test::three_nests(), {"--layer", "zzzzzzzz"}),
                 "composition \"Main\" has no layer named \"zzzzzzzz\" (exflate list shows them all)");
    expect_usage(run(test::three_nests(), {"--layer", "#4"}), "composition \"Main\" has no layer #4, only 3 layers");
    expect_usage(run(test::three_nests(), {"--layer", "#0"}), "composition \"Main\" has no layer #0, only 3 layers");
}

TEST(RunSelection, a_layer_that_is_no_nest_is_refused) {
    for (const char* layer : {"Title", "#1"}) {
        expect_usage(run(test::one_nest(), {"--layer", layer}),
                     "layer #1 \"Title\" is not a nest: its source is not a composition (exflate list shows them all)");
    }
}

TEST(RunSelection, a_name_that_several_compositions_have_is_refused_with_their_ids) {
    const std::string twins = test::animation(
        {test::asset("a", "Twin", {test::shape_layer(1, "x")}), test::asset("b", "Twin", {test::shape_layer(1, "y")}),
         test::asset("c", "Main", {test::shape_layer(1, "y")})},
        {test::nest_layer(1, "A", "a"), test::nest_layer(2, "B", "b"), test::nest_layer(3, "C", "c")});
    expect_usage(run(twins, {"--comp", "Twin"}), "2 compositions are named \"Twin\": give --comp a or --comp b");
    expect_usage(run(twins, {"--comp", "Main"}),
                 "2 compositions are named \"Main\": give no --comp at all or --comp c");
}

TEST(RunSelection, an_expansion_out_of_all_proportion_is_refused_before_it_begins) {
    std::vector<std::string> assets = {test::asset("level0", "Level 0", {test::shape_layer(1, "dot")})};
    for (int level = 1; level <= 8; ++level) {
        std::vector<std::string> nests;
        for (int i = 1; i <= 10; ++i) nests.push_back(test::nest_layer(i, "nest", "level" + std::to_string(level - 1)));
        assets.push_back(test::asset("level" + std::to_string(level), "Level " + std::to_string(level), nests));
    }
    const std::string bomb = test::animation(assets, {test::nest_layer(1, "Top", "level8")});
    expect_usage(run(bomb, {"--recursive"}),
                 "more than a million layers would come out: choose fewer nests with --layer or leave out --recursive");
    EXPECT_EQ(names_after(bomb, {}).size(), 10U);
}

}  // namespace
