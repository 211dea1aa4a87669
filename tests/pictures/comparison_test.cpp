// Two animations frame by frame.
#include "pictures/comparison.h"

#include <gtest/gtest.h>

#include "squares.h"

namespace {

using lottie::pictures::Animation;

TEST(Comparison, an_animation_looks_equal_to_itself) {
    const Animation animation(square_until(10));
    const auto comparison = compare(animation, animation);
    EXPECT_TRUE(comparison.looks_equal);
    EXPECT_EQ(comparison.frames, 10);
    EXPECT_EQ(comparison.worst_before.pixels, comparison.worst_after.pixels);
}

TEST(Comparison, the_pictures_of_the_worst_frame_are_those_that_were_compared) {
    const Animation before(square_until(10));
    const Animation after(square_until(6));
    const auto comparison = compare(before, after);
    EXPECT_FALSE(comparison.looks_equal);
    EXPECT_GE(comparison.worst_frame, 6);
    EXPECT_EQ(comparison.worst_before.width, 400);
    EXPECT_EQ(difference(comparison.worst_before, comparison.worst_after).mean, comparison.worst.mean);
    EXPECT_EQ(over_white(comparison.worst_before).at(10, 10), 0xffff0000u);
    EXPECT_EQ(over_white(comparison.worst_after).at(10, 10), 0xffffffffu);
}

TEST(Comparison, few_frames_of_an_endless_animation_are_drawn_and_the_worst_one_is_found) {
    constexpr int kLength = 500'000;
    const Animation before(square_until(kLength, kLength));
    const Animation after(square_until(kLength - 4'000, kLength));
    const auto comparison = compare(before, after);
    EXPECT_FALSE(comparison.looks_equal);
    EXPECT_GE(comparison.worst_frame, kLength - 4'000);
    EXPECT_LT(comparison.frames, 500);
}

TEST(Comparison, around_the_worst_frames_of_a_longer_animation_every_frame_is_drawn) {
    constexpr int kLength = 300;
    const Animation before(square_until(kLength, kLength));
    const Animation after(square_until(kLength - 1, kLength));
    EXPECT_GT(compare(before, after).frames, 100);
    EXPECT_EQ(compare(before, after).worst_frame, kLength - 1);
}

}  // namespace
