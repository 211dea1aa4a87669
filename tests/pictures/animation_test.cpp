// Frames through rlottie.
#include "pictures/animation.h"

#include <gtest/gtest.h>

#include "pictures_from_files.h"

namespace {

using lottie::pictures::Animation;

// A red square of 50 pixels that stands in the upper left corner for ten frames.
constexpr const char* kRedCorner =
    R"({"v":"5.7.0","fr":30,"ip":0,"op":10,"w":100,"h":100,"ddd":0,"assets":[],"layers":[{"ddd":0,"ind":1,"ty":1,)"
    R"("nm":"red","sr":1,"ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":0},"p":{"a":0,"k":[25,25,0]},"a":{"a":0,"k":[25,25,0]},)"
    R"("s":{"a":0,"k":[100,100,100]}},"ao":0,"sw":50,"sh":50,"sc":"#ff0000","ip":0,"op":10,"st":0,"bm":0}]})";

TEST(Animation, frames_show_the_layers_where_they_stand) {
    const Animation animation(kRedCorner);
    EXPECT_EQ(animation.width(), 100);
    EXPECT_EQ(animation.height(), 100);
    const auto frame = over_white(animation.frame(3, 100, 100));
    EXPECT_EQ(frame.at(10, 10), 0xffff0000u);
    EXPECT_EQ(frame.at(80, 80), 0xffffffffu);
}

TEST(Animation, a_frame_drawn_twice_is_the_same_picture) {
    const Animation animation(kRedCorner);
    EXPECT_EQ(animation.frame(5, 64, 64).pixels, animation.frame(5, 64, 64).pixels);
}

// What the drawing process must prevent.
TEST(Animation, a_picture_beside_the_process_is_opened) {
    const RedPictureBeside picture;
    const auto frame = over_white(Animation(with_picture("red.png", false, 100)).frame(0, 100, 100));
    EXPECT_NE(frame.at(50, 50), 0xffffffffu);
}

TEST(Animation, a_text_that_is_no_animation_is_refused) {
    EXPECT_THROW(Animation("{}"), std::runtime_error);
}

}  // namespace
