// A composition as an animation of its own.
#include "looks/extract_composition.h"

#include <gtest/gtest.h>

#include "animations.h"

namespace {

using namespace test;
using lottie::looks::extract_composition;

TEST(ExtractComposition, it_has_the_size_and_the_time_of_the_composition_once) {
    Nesting nesting;
    nesting.nest = {{"w", "61.5"}, {"h", "48"}};
    nesting.inside = {solid(1, "red", 40, 40, "#ff0000", {{"op", "12"}})};
    const auto extracted = extract_composition(animation(nesting), "inside");
    EXPECT_NE(extracted.text.find(R"("w":62,"h":48,"ip":0,"op":12,"layers":[{)"), std::string::npos) << extracted.text;
    EXPECT_NE(extracted.text.find(R"("fr":25)"), std::string::npos) << extracted.text;
    EXPECT_EQ(extracted.text.find(R"("w":100)"), std::string::npos) << extracted.text;
    EXPECT_EQ(extracted.text.find(R"("nm":"ground")"), std::string::npos) << extracted.text;
    EXPECT_EQ(extracted.first_frame, 0);
}

TEST(ExtractComposition, the_main_composition_is_the_animation) {
    const std::string text = animation({});
    EXPECT_EQ(extract_composition(text, "").text, text);
    EXPECT_THROW(extract_composition(text, "nowhere"), std::invalid_argument);
}

}  // namespace
