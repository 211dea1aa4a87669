// How far texts reach.
#include "text_reach.h"

#include <gtest/gtest.h>

#include "scene.h"

namespace {

using lottie::looks::Box;

// The box around a text of size 50; `members` go to its document, `animators` and `path` to the text.
Box reach(const std::string& members, double frame = 0, const std::string& animators = "",
          const std::string& path = "{}") {
    const std::string letter =
        R"({"ch":"A","size":50,"style":"Bold","w":60,"fFamily":"Face","data":{"shapes":[{"ty":"gr","it":)"
        R"([{"ty":"sh","ks":{"a":0,"k":{"i":[[0,0],[0,0]],"o":[[0,0],[0,0]],)"
        R"("v":[[5,-70],[55,2]],"c":true}}}]}]}})";
    const std::string text =
        R"({"fr":25,"ip":0,"op":20,"w":100,"h":100,"fonts":{"list":[{"fName":"Face-Bold","fFamily":"Face",)"
        R"("fStyle":"Bold"}]},"chars":[)" +
        letter + R"(],"layers":[{"ty":5,"nm":"text","ip":0,"op":20,"st":0,"t":{"d":{"k":[{"t":0,"s":{"s":50,"lh":60,)" +
        members + R"(}}]},"p":)" + path + R"(,"m":{},"a":[)" + animators + "]}}]}";
    const lottie::looks::Scene scene(text);
    return around(lottie::looks::text_reach(scene.main().layer(0), scene.glyphs(), frame));
}

void expect_box(const Box& box, double left, double top, double right, double bottom) {
    EXPECT_NEAR(box.left, left, 0.05);
    EXPECT_NEAR(box.top, top, 0.05);
    EXPECT_NEAR(box.right, right, 0.05);
    EXPECT_NEAR(box.bottom, bottom, 0.05);
}

std::string animator(const std::string& what, const std::string& selector = "") {
    return R"({"s":{"t":0)" + selector + R"(},"a":{)" + what + "}}";
}

TEST(TextReach, glyphs_in_the_file_are_measured) {
    expect_box(reach(R"("f":"Face-Bold","t":"AA")"), 0, -35, 60, 1);
    expect_box(reach(R"("f":"Face-Bold","t":"AA","tr":100)"), 0, -35, 70, 1);
    expect_box(reach(R"("f":"Face-Bold","t":"AA","j":2)"), -30, -35, 30, 1);
    expect_box(reach(R"("f":"Face-Bold","t":"AA","j":1,"ls":10)"), -60, -45, 0, -9);
}

TEST(TextReach, other_glyphs_are_estimated_from_the_size) {
    expect_box(reach(R"("f":"Other","t":"AA")"), 0, -50, 60, 15);
    expect_box(reach(R"("f":"Face-Bold","t":"AB")"), 0, -50, 60, 15);
    expect_box(reach(R"("f":"Face-Bold","t":"AA\rA")"), 0, -50, 60, 75);
}

TEST(TextReach, animators_move_letters) {
    const std::string text = R"("f":"Face-Bold","t":"AA")";
    const std::string moving = R"("p":{"a":1,"k":[{"t":0,"s":[0,40,0],"i":{"x":1,"y":1},"o":{"x":0,"y":0}},)"
                               R"({"t":10,"s":[0,0,0]}]})";
    EXPECT_LE(reach(text, 0, animator(moving)).top, -75);
    EXPECT_NEAR(reach(text, 10, animator(moving)).top, -35, 0.05);
    EXPECT_LE(reach(text, 0, animator(R"("s":{"a":0,"k":[100,200,100]})")).top, -70);
    EXPECT_GE(reach(text, 0, animator(R"("t":{"a":0,"k":100})")).right, 65);
    EXPECT_LE(reach(text, 0, animator(R"("p":{"a":0,"k":[0,0,0],"x":"value"})")).top, -5000);
}

TEST(TextReach, an_animator_of_all_letters_can_cancel_another) {
    const std::string text = R"("f":"Face-Bold","t":"AA")";
    const std::string flat = R"("s":{"a":0,"k":[100,1,100]})";
    const std::string tall = animator(R"("s":{"a":0,"k":[100,10000,100]})");
    EXPECT_NEAR(reach(text, 0, animator(flat) + "," + tall).top, -35, 0.05);
    for (const char* some : {R"(,"e":{"a":0,"k":50})", R"(,"sh":3)", R"(,"o":{"a":0,"k":-100})", R"(,"r":2)"})
        EXPECT_LE(reach(text, 0, animator(flat, some) + "," + tall).top, -4000) << some;
    EXPECT_LE(reach(text, 0, tall + "," + tall).top, -400000);
}

TEST(TextReach, along_a_path_letters_may_be_anywhere) {
    EXPECT_LE(reach(R"("f":"Face-Bold","t":"AA")", 0, "", R"({"m":0,"f":{"a":0,"k":0}})").top, -5000);
}

}  // namespace
