// What a mistyped name may have meant.
#include "cli/shared/suggestions.h"

#include <gmock/gmock.h>

using cli::did_you_mean;
using cli::edit_distance;
using cli::suggestions;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(EditDistance, counts_insertions_deletions_replacements_and_swaps_of_neighbours_in_either_case) {
    EXPECT_EQ(edit_distance("", ""), 0U);
    EXPECT_EQ(edit_distance("", "abc"), 3U);
    EXPECT_EQ(edit_distance("abc", ""), 3U);
    EXPECT_EQ(edit_distance("kitten", "sitting"), 3U);
    EXPECT_EQ(edit_distance("Intor", "Intro"), 1U);
    EXPECT_EQ(edit_distance("ab", "ba"), 1U);
    EXPECT_EQ(edit_distance("INTRO", "intro"), 0U);
}

TEST(Suggestions, the_nearest_stands_first_and_far_ones_are_left_out) {
    EXPECT_THAT(suggestions("Intor", {"Outro comp", "Intros", "Intro", "Background"}), ElementsAre("Intro", "Intros"));
}

TEST(Suggestions, each_name_is_suggested_once_and_at_most_three) {
    EXPECT_THAT(suggestions("layer", {"layer 1", "layer 1", "layer 2", "layer 3", "layer 4"}),
                ElementsAre("layer 1", "layer 2", "layer 3"));
}

TEST(Suggestions, a_short_name_with_nothing_in_common_is_not_suggested) {
    EXPECT_THAT(suggestions("x", {"y", "ab", ""}), IsEmpty());
}

TEST(Suggestions, the_question_joins_them) {
    EXPECT_EQ(did_you_mean("Intor", {"Intro", "Intro2", "Into"}), "; did you mean \"Into\", \"Intro\" or \"Intro2\"?");
    EXPECT_EQ(did_you_mean("Intor", {"Intro"}), "; did you mean \"Intro\"?");
    EXPECT_EQ(did_you_mean("Intor", {"Background"}), "");
}

}  // namespace
