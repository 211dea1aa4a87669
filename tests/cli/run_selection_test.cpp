// Which nests are un-nested.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate_on;
using test::Finished;
using test::layer_names;
using test::layer_names_in;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

namespace {

std::vector<std::string> names_after(const std::string& animation, const std::vector<std::string>& flags) {
    const Finished finished = exflate_on(animation, flags);
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    return layer_names(finished.out);
}

// Eight levels of ten nests.
std::string nested_tenfold() {
    std::vector<std::string> assets = {test::asset("level0", "Level 0", {test::shape_layer(1, "dot")})};
    for (int level = 1; level <= 8; ++level) {
        std::vector<std::string> nests;
        for (int i = 1; i <= 10; ++i) nests.push_back(test::nest_layer(i, "nest", "level" + std::to_string(level - 1)));
        assets.push_back(test::asset("level" + std::to_string(level), "Level " + std::to_string(level), nests));
    }
    return test::animation(assets, {test::nest_layer(1, "Top", "level8")});
}

TEST(RunSelection, every_nest_of_the_main_composition_is_selected_without_flags) {
    EXPECT_THAT(names_after(test::three_nests(), {}), ElementsAre("dot", "dot", "Inner", "frame"));
}

TEST(RunSelection, a_layer_is_selected_by_name_or_number) {
    EXPECT_THAT(names_after(test::three_nests(), {"--layer", "Box"}), ElementsAre("Left", "Right", "Inner", "frame"));
    EXPECT_THAT(names_after(test::three_nests(), {"--layer", "#1"}), ElementsAre("dot", "Right", "Box"));
    EXPECT_THAT(names_after(test::three_nests(), {"--layer", "#3", "--layer", "Left", "--layer", "Left"}),
                ElementsAre("dot", "Right", "Inner", "frame"));
}

TEST(RunSelection, a_name_selects_all_nests_that_have_it) {
    const std::string twins = test::animation(
        {test::asset("c", "C", {test::shape_layer(1, "dot")})},
        {test::nest_layer(1, "Twin", "c"), test::shape_layer(2, "Twin"), test::nest_layer(3, "Twin", "c")});
    EXPECT_THAT(names_after(twins, {"--layer", "Twin"}), ElementsAre("dot", "Twin", "dot"));
}

TEST(RunSelection, a_composition_is_selected_by_name_or_id) {
    for (const char* comp : {"Outer", "comp_1"}) {
        const Finished finished = exflate_on(test::three_nests(), {"--comp", comp});
        EXPECT_EQ(finished.exit_code, 0);
        EXPECT_THAT(layer_names(finished.out), ElementsAre("Left", "Right", "Box"));
        EXPECT_THAT(layer_names_in(finished.out, "comp_1"), ElementsAre("core", "frame"));
    }
}

TEST(RunSelection, recursion_leaves_no_nest_in_the_composition) {
    const Finished finished = exflate_on(test::three_nests(), {"--recursive"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(layer_names(finished.out), ElementsAre("dot", "dot", "core", "frame"));
    EXPECT_THAT(finished.err, MatchesRegex("a.json: 4 nests of composition \"Main\" un-nested, 4 layers made, 3 nested "
                                           "compositions kept, [0-9]+ bytes became [0-9]+ .*%.\n"
                                           "a.json: looks were not judged: [^\n]*\n"));
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
    const Finished finished = exflate_on(test::three_nests(), {"--recursive", "--delete-source"});
    EXPECT_THAT(test::asset_ids(finished.out), testing::IsEmpty());
    EXPECT_THAT(finished.err, HasSubstr("3 nested compositions deleted"));
}

struct WrongChoice {
    std::string animation;
    std::vector<std::string> flags;
    std::string sentence;
};

TEST(RunSelection, a_wrong_selection_is_refused_with_suggestions) {
    const std::string three = test::three_nests();
    const std::string twins = test::animation(
        {test::asset("a", "Twin", {test::shape_layer(1, "x")}), test::asset("b", "Twin", {test::shape_layer(1, "y")}),
         test::asset("c", "Main", {test::shape_layer(1, "y")})},
        {test::nest_layer(1, "A", "a"), test::nest_layer(2, "B", "b"), test::nest_layer(3, "C", "c")});
    const std::string see = " (exflate list shows them all)";
    const std::string not_a_nest = "layer #1 \"Title\" is not a nest: its source is not a composition" + see;
    const std::vector<WrongChoice> choices = {
        {three, {"--comp", "Outr"}, "there is no composition \"Outr\"; did you mean \"Outer\"?" + see},
        {three,
         {"--comp", "comp_9"},
         "there is no composition \"comp_9\"; did you mean \"comp_0\", \"comp_1\" or \"comp_2\"?" + see},
        {three,
         {"--layer", "Rihgt"},
         "composition \"Main\" has no layer named \"Rihgt\"; did you mean \"Right\"?" + see},
        {three, {"--layer", "zzzzzzzz"}, "composition \"Main\" has no layer named \"zzzzzzzz\"" + see},
        {three, {"--layer", "#4"}, "composition \"Main\" has no layer #4, only 3 layers"},
        {three, {"--layer", "#0"}, "composition \"Main\" has no layer #0, only 3 layers"},
        {test::one_nest(), {"--layer", "Title"}, not_a_nest},
        {test::one_nest(), {"--layer", "#1"}, not_a_nest},
        {twins, {"--comp", "Twin"}, "2 compositions are named \"Twin\": give --comp a or --comp b"},
        {twins, {"--comp", "Main"}, "2 compositions are named \"Main\": give no --comp at all or --comp c"},
        {nested_tenfold(),
         {"--recursive"},
         "more than a million layers would come out: choose fewer nests with --layer or leave out --recursive"}};
    for (const WrongChoice& choice : choices) {
        const Finished finished = exflate_on(choice.animation, choice.flags);
        EXPECT_EQ(finished.exit_code, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(finished.err, "a.json: " + choice.sentence + "\n");
    }
    EXPECT_EQ(names_after(nested_tenfold(), {}).size(), 10U);
}

}  // namespace
