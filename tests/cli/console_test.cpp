// What standard error looks like.
#include "cli/shared/console.h"

#include <gtest/gtest.h>

using cli::Console;

namespace {

std::string said(bool has_colors, Console::Tone tone) {
    testing::internal::CaptureStderr();
    Console(has_colors).say(tone, "a.json", "a sentence");
    return testing::internal::GetCapturedStderr();
}

TEST(Console, colours_only_the_subject) {
    EXPECT_EQ(said(true, Console::Tone::error), "\033[31ma.json:\033[0m a sentence\n");
    EXPECT_EQ(said(true, Console::Tone::plain), "a.json: a sentence\n");
}

TEST(Console, has_no_colours_when_asked_for_none) {
    EXPECT_EQ(said(false, Console::Tone::error), "a.json: a sentence\n");
}

TEST(Console, counts_have_their_plural) {
    EXPECT_EQ(cli::counted(0, "nest"), "0 nests");
    EXPECT_EQ(cli::counted(1, "nest"), "1 nest");
    EXPECT_EQ(cli::counted(2, "nest"), "2 nests");
}

}  // namespace
