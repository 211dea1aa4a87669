// What a shape layer paints.
#include "survey.h"

#include <gtest/gtest.h>

#include "animations.h"

namespace {

using namespace test;
using lottie::looks::Box;

// The box around all that is painted, growth taken into account; null when there is nothing.
std::optional<Box> painted(const std::string& items, double frame = 0,
                           lottie::looks::Work work = lottie::looks::Work()) {
    const std::string text = flat_animation({shape_layer(1, "shape", items)});
    const lottie::looks::Scene scene(text);
    lottie::looks::Surveys surveys(scene, work);
    lottie::looks::Survey& survey = *surveys.find("");
    const lottie::looks::Hull& hull = survey.reach(0, frame);
    if (area(hull) <= 0) return std::nullopt;
    const Box box = around(hull);
    const double less = (box.right - box.left) / 1000;
    EXPECT_FALSE(survey.surely_lies_within(0, frame, {box.left + less, box.top, box.right, box.bottom}));
    EXPECT_FALSE(survey.surely_lies_within(0, frame, {box.left, box.top, box.right - less, box.bottom}));
    EXPECT_FALSE(survey.surely_lies_within(0, frame, {box.left, box.top + less, box.right, box.bottom}));
    EXPECT_FALSE(survey.surely_lies_within(0, frame, {box.left, box.top, box.right, box.bottom - less}));
    const bool has_repeater = items.find("\"rp\"") != std::string::npos;
    EXPECT_EQ(survey.surely_lies_within(0, frame, {-1e4, -1e4, 1e4, 1e4}), !has_repeater);
    return box;
}

void expect_box(const std::optional<Box>& box, double left, double top, double right, double bottom) {
    ASSERT_TRUE(box.has_value());
    EXPECT_NEAR(box->left, left, 0.05);
    EXPECT_NEAR(box->top, top, 0.05);
    EXPECT_NEAR(box->right, right, 0.05);
    EXPECT_NEAR(box->bottom, bottom, 0.05);
}

const std::string kSquare = R"({"ty":"rc","p":{"k":[50,50]},"s":{"k":[20,20]},"r":{"k":0}})";
const std::string kLine =
    R"({"ty":"sh","ks":{"k":{"v":[[0,0],[100,0]],"i":[[0,0],[0,0]],"o":[[0,0],[0,0]],"c":false}}})";
const std::string kFill = R"({"ty":"fl","c":{"k":[1,0,0]},"o":{"k":100}})";

std::string stroke(const std::string& width, const std::string& join = "2") {
    return R"({"ty":"st","c":{"k":[1,0,0]},"o":{"k":100},"lj":)" + join + R"(,"w":{"k":)" + width + "}}";
}

std::string group(const std::string& items, const std::string& position, const std::string& opacity = "100") {
    return R"({"ty":"gr","it":[)" + items + R"(,{"ty":"tr","p":{"k":)" + position + R"(},"o":{"k":)" + opacity +
           R"(},"s":{"k":[100,100]},"a":{"k":[0,0]},"r":{"k":0}}]})";
}

TEST(ShapeContent, a_filled_rectangle_has_its_own_size) {
    expect_box(painted(kSquare + "," + kFill), 40, 40, 60, 60);
}

TEST(ShapeContent, a_stroke_adds_half_its_width) {
    expect_box(painted(kSquare + "," + stroke("6")), 37, 37, 63, 63);
}

TEST(ShapeContent, an_ellipse_fills_its_box) {
    expect_box(painted(R"({"ty":"el","p":{"k":[10,20]},"s":{"k":[20,10]}},)" + kFill), 0, 15, 20, 25);
}

TEST(ShapeContent, bounds_follow_the_curve_not_its_handles) {
    const std::string arch =
        R"({"ty":"sh","ks":{"k":{"v":[[0,0],[100,0]],"i":[[0,0],[0,100]],"o":[[0,100],[0,0]],"c":false}}},)";
    expect_box(painted(arch + kFill), 0, 0, 100, 75);
}

TEST(ShapeContent, vertices_that_the_next_keyframe_lacks_stay) {
    const std::string losing =
        R"({"ty":"sh","ks":{"a":1,"k":[{"t":0,"i":{"x":1,"y":1},"o":{"x":0,"y":0},"s":[{"c":true,)"
        R"("v":[[0,0],[100,0],[100,50]],"i":[[0,0],[0,0],[0,0]],"o":[[0,0],[0,0],[0,0]]}]},)"
        R"({"t":10,"s":[{"c":true,"v":[[20,0],[100,0]],"i":[[0,0],[0,0]],"o":[[0,0],[0,0]]}]}]}},)";
    expect_box(painted(losing + kFill, 5), 10, 0, 100, 50);
}

TEST(ShapeContent, unpainted_paths_are_left_out) {
    EXPECT_FALSE(painted(kSquare).has_value());
    EXPECT_FALSE(painted(kFill + "," + kSquare).has_value());  // paint acts on what stands before it
    EXPECT_FALSE(painted(kSquare + R"(,{"ty":"fl","o":{"k":0}})").has_value());
    EXPECT_FALSE(painted(kSquare + R"(,{"ty":"fl","hd":true,"o":{"k":100}})").has_value());
}

TEST(ShapeContent, paint_acts_on_all_that_stands_before_it_in_its_group) {
    const std::string right = R"({"ty":"rc","p":{"k":[90,50]},"s":{"k":[20,20]},"r":{"k":0}})";
    const std::string far = R"({"ty":"rc","p":{"k":[900,50]},"s":{"k":[20,20]},"r":{"k":0}})";
    const std::string grown = R"({"ty":"pb","a":{"k":5}})";
    expect_box(painted(kSquare + "," + stroke("6") + "," + right + "," + stroke("2") + "," + far), 37, 37, 101, 63);
    expect_box(painted(kSquare + "," + stroke("2") + "," + right + "," + stroke("6") + "," + kFill), 37, 37, 103, 63);
    expect_box(painted(kSquare + "," + stroke("6") + "," + grown + "," + right + "," + stroke("2")), 32, 32, 101, 68);
    expect_box(painted(kSquare + "," + grown + "," + stroke("20") + "," + stroke("6")), 30, 30, 70, 70);
    expect_box(painted(group(kSquare + "," + stroke("6"), "[0,0]") + "," + right + "," + stroke("2")), 37, 37, 101, 63);
}

TEST(ShapeContent, groups_transform_their_contents_and_hide_them_when_transparent) {
    expect_box(painted(group(kSquare + "," + kFill, "[10,-10]")), 50, 30, 70, 50);
    expect_box(painted(group(kSquare, "[10,-10]") + "," + kFill), 50, 30, 70, 50);  // painted from outside
    EXPECT_FALSE(painted(group(kSquare + "," + kFill, "[0,0]", "0")).has_value());
}

TEST(ShapeContent, trimming_leaves_the_part_between_start_and_end) {
    const auto trimmed = [](const std::string& start, const std::string& end, const std::string& offset) {
        return painted(kLine + R"(,{"ty":"tm","s":{"k":)" + start + R"(},"e":{"k":)" + end + R"(},"o":{"k":)" + offset +
                       R"(},"m":1},)" + stroke("2"));
    };
    expect_box(trimmed("25", "75", "0"), 24, -1, 76, 1);
    expect_box(trimmed("75", "25", "0"), 24, -1, 76, 1);
    expect_box(trimmed("0", "50", "90"), 24, -1, 76, 1);     // a quarter further
    expect_box(trimmed("50", "100", "90"), -1, -1, 101, 1);  // around the end: both ends
    EXPECT_FALSE(trimmed("50", "50", "0").has_value());
}

std::string repeater(const std::string& copies, const std::string& position) {
    return R"(,{"ty":"rp","c":{"k":)" + copies + R"(},"o":{"k":0},"tr":{"p":{"k":)" + position +
           R"(},"a":{"k":[0,0]},"s":{"k":[100,100]},"r":{"k":0},"so":{"k":100},"eo":{"k":100}}})";
}

TEST(ShapeContent, a_repeater_reaches_to_its_last_copy) {
    expect_box(painted(kSquare + "," + kFill + repeater("3", "[30,0]")), 40, 40, 120, 60);
    EXPECT_FALSE(painted(kSquare + "," + kFill + R"(,{"ty":"rp","c":{"k":0},"o":{"k":0},"tr":{}})").has_value());
}

TEST(ShapeContent, repeaters_of_repeaters_do_not_multiply_the_work) {
    std::string doubled = kSquare + "," + kFill;
    for (int i = 0; i < 300; ++i) doubled += repeater("2", "[1,0]");
    expect_box(painted(doubled, 0, lottie::looks::Work(20'000)), 40, 40, 360, 60);
    EXPECT_THROW(painted(doubled, 0, lottie::looks::Work(1'000)), lottie::looks::TooMuchWork);
}

TEST(ShapeContent, an_animated_path_is_evaluated_at_the_frame) {
    const auto line_to = [](const std::string& x) {
        return R"([{"v":[[0,0],[)" + x + R"(,0]],"i":[[0,0],[0,0]],"o":[[0,0],[0,0]],"c":false}])";
    };
    const std::string path = R"({"ty":"sh","ks":{"k":[{"t":0,"s":)" + line_to("20") +
                             R"(,"o":{"x":0,"y":0},"i":{"x":1,"y":1}},{"t":10,"s":)" + line_to("60") + "}]}},";
    expect_box(painted(path + stroke("2"), 0), -1, -1, 21, 1);
    expect_box(painted(path + stroke("2"), 5), -1, -1, 41, 1);
    expect_box(painted(path + stroke("2"), 12), -1, -1, 61, 1);
}

TEST(ShapeContent, the_handles_of_an_animated_path_are_evaluated_at_the_frame) {
    const auto line = [](const std::string& in, const std::string& out) {
        return R"([{"v":[[0,0],[100,0]],"i":[[0,0],)" + in + R"(],"o":[)" + out + R"(,[0,0]],"c":false}])";
    };
    const auto bent = [&](const std::string& in, const std::string& out) {
        return painted(R"({"ty":"sh","ks":{"k":[{"t":0,"s":)" + line("[0,0]", "[0,0]") +
                           R"(,"o":{"x":0,"y":0},"i":{"x":1,"y":1}},{"t":10,"s":)" + line(in, out) + "}]}}," +
                           stroke("2"),
                       5);
    };
    expect_box(bent("[0,-80]", "[0,-80]"), -1, -31, 101, 1);
    expect_box(bent("[0,-90]", "[0,0]"), -1, -21, 101, 1);
    expect_box(bent("[0,0]", "[0,-90]"), -1, -21, 101, 1);
}

}  // namespace
