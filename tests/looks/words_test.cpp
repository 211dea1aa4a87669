// Names and numbers as designers know them.
#include "words.h"

#include <gtest/gtest.h>

namespace {

using namespace lottie::looks;

TEST(Words, properties_go_by_the_names_of_the_panels) {
    EXPECT_EQ(property_name("ks.p"), "Position");
    EXPECT_EQ(property_name("ks.p.x"), "X Position");
    EXPECT_EQ(property_name("ks.r"), "Rotation");
    EXPECT_EQ(property_name("tm"), "Time Remap");
    EXPECT_EQ(property_name("shapes[0].it[1].c"), "Contents");
    EXPECT_EQ(property_name("ef[2].ef[0].v"), "Effects");
    EXPECT_EQ(property_name("masksProperties[0].pt"), "Masks");
    EXPECT_EQ(property_name("t.d"), "Text");
    EXPECT_EQ(property_name("un\x1B"
                            "heard"),
              "un\\u001Bheard");
}

TEST(Words, a_frame_is_the_one_that_the_timeline_shows) {
    EXPECT_EQ(timeline_frame(12), "12");
    EXPECT_EQ(timeline_frame(12.7), "12");
    EXPECT_EQ(timeline_frame(11.9999), "12");
    EXPECT_EQ(timeline_frame(-0.5), "-1");
}

TEST(Words, blend_modes_have_names) {
    EXPECT_EQ(blend_mode_name(1), "Multiply");
    EXPECT_EQ(blend_mode_name(17), "Hard Mix");
    EXPECT_EQ(blend_mode_name(99), "number 99");
    EXPECT_EQ(blend_mode_name(-1), "number -1");
}

}  // namespace
