// Telling animations from other JSON.
#include "document/recognition.h"

#include <gtest/gtest.h>

namespace {

using lottie::document::looks_like_animation;

TEST(Recognition, an_animation_is_recognized_whatever_the_order_of_its_members) {
    EXPECT_TRUE(looks_like_animation(R"({"v":"5.7","fr":25,"ip":0,"op":50,"w":9,"h":9,"assets":[],"layers":[]})"));
    EXPECT_TRUE(looks_like_animation(R"({"assets":[],"layers":[{"ks":{}}],"fr":25.0,"op":50})"));
    EXPECT_TRUE(looks_like_animation("\xEF\xBB\xBF\r\n{\"h\":9,\"w\":9,\"layers\":[]}"));
}

TEST(Recognition, one_that_is_broken_further_on_is_still_one) {
    EXPECT_TRUE(looks_like_animation(R"({"v":"5.7","fr":25,"ip":0,"op":50,"layers":[{"ty":4,)"));
    EXPECT_TRUE(looks_like_animation(R"({"w":9,"h":9,"assets":[nonsense)"));
}

TEST(Recognition, other_json_and_other_texts_are_none) {
    for (const char* text :
         {"", "{", "{}", "[]", "7", "no JSON", R"({"name":"package","version":"1.0.0"})", R"({"layers":[],"width":9})",
          R"({"fr":25,"op":50})", R"({"fr":"25","op":"50","layers":[]})", R"({"fr":25,"op":50,"layers":{}})",
          R"([{"fr":25,"op":50,"layers":[]}])", R"({"inner":{"fr":25,"op":50,"layers":[]}})"})
        EXPECT_FALSE(looks_like_animation(text)) << text;
}

TEST(Recognition, endless_depth_is_no_animation_and_no_harm) {
    EXPECT_FALSE(looks_like_animation("{\"a\":" + std::string(1'000'000, '[')));
    EXPECT_FALSE(looks_like_animation(std::string(1'000'000, '{')));
}

}  // namespace
