// Two animations frame by frame.
#include "render/comparison.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using host::render::Animation;

// A red square, 50 of 100 pixels, that is there for the frames up to `end`.
std::string square_until(int end) {
    return R"({"v":"5.7.0","fr":30,"ip":0,"op":10,"w":100,"h":100,"ddd":0,"assets":[],"layers":[{"ddd":0,"ind":1,"ty":1,)"
           R"("nm":"red","sr":1,"ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":0},"p":{"a":0,"k":[25,25,0]},)"
           R"("a":{"a":0,"k":[25,25,0]},"s":{"a":0,"k":[100,100,100]}},"ao":0,"sw":50,"sh":50,"sc":"#ff0000","ip":0,"op":)" +
           std::to_string(end) + R"(,"st":0,"bm":0}]})";
}

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

}  // namespace
