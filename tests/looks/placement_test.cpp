// Where layers lie and on what clock, also compared with the renderer.
#include "placement.h"

#include <gtest/gtest.h>

#include <cmath>

#include "animations.h"
#include "pictures/animation.h"

namespace {

using namespace test;
using lottie::looks::Point;
using lottie::looks::Scene;

// The point of the first layer's plane, in the composition.
Point placed(const std::vector<std::string>& layers, Point point, double frame = 0) {
    const std::string text = flat_animation(layers);
    const Scene scene(text);
    lottie::looks::Work work;
    lottie::looks::Placement placement(scene.main(), work);
    return placement.world(0, frame).map(point);
}

void expect_near(Point a, Point b, double tolerance = 1e-6) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
}

TEST(Placement, anchor_scale_rotation_and_position_follow_each_other) {
    const std::string turned = transform(
        {{"a", still("[10,0,0]")}, {"s", still("[200,50,100]")}, {"r", still("90")}, {"p", still("[50,60,0]")}});
    expect_near(placed({solid(1, "a", 20, 20, "#ff0000", {{"ks", turned}})}, {20, 10}), {45, 80});
}

TEST(Placement, parents_pass_on_their_transform_but_not_their_opacity) {
    const std::string child = solid(1, "child", 10, 10, "#ff0000", {{"parent", "2"}, {"ks", at(5, 0)}});
    const std::string parent = null_layer(2, "parent", {{"parent", "3"}, {"ks", transform({{"r", still("90")}})}});
    const std::string root = null_layer(3, "root", {{"ks", at(30, 40)}});
    expect_near(placed({child, parent, root}, {0, 0}), {30, 45});
    expect_near(placed({child, root, parent}, {0, 0}), {30, 45});
}

TEST(Placement, a_missing_parent_and_a_cycle_of_parents_are_cut) {
    expect_near(placed({solid(1, "a", 9, 9, "#ff0000", {{"parent", "77"}, {"ks", at(1, 2)}})}, {0, 0}), {1, 2});
    expect_near(placed({solid(1, "a", 9, 9, "#ff0000", {{"parent", "1"}, {"ks", at(1, 2)}})}, {0, 0}), {1, 2});
    const Point in_circle = placed({solid(1, "a", 9, 9, "#ff0000", {{"parent", "2"}, {"ks", at(1, 2)}}),
                                    null_layer(2, "b", {{"parent", "1"}, {"ks", at(10, 20)}})},
                                   {0, 0});
    EXPECT_TRUE(std::isfinite(in_circle.x));
}

TEST(Placement, children_of_a_moving_layer_move) {
    const std::string text(
        flat_animation({solid(1, "rider", 9, 9, "#ff0000", {{"parent", "2"}}),
                        null_layer(2, "carrier", {{"ks", transform({{"p", keyed({{0, "0,0,0"}, {10, "50,0,0"}})}})}}),
                        null_layer(3, "other")}));
    const Scene scene(text);
    lottie::looks::Work work;
    lottie::looks::Placement placement(scene.main(), work);
    EXPECT_TRUE(placement.moves(0));
    EXPECT_TRUE(placement.moves(1));
    EXPECT_FALSE(placement.moves(2));
    expect_near(placement.world(0, 0).map({0, 0}), {0, 0});
    expect_near(placement.world(0, 4).map({0, 0}), {20, 0});
    expect_near(placement.world(0, 2).map({0, 0}), {10, 0});
}

TEST(Placement, a_half_turn_in_depth_mirrors_and_a_quarter_turn_shows_the_edge) {
    const auto turned = [](const std::string& degrees) {
        const std::string ks = transform({{"rx", still("0")}, {"ry", still(degrees)}, {"rz", still("0")}});
        return placed({solid(1, "a", 10, 10, "#ff0000", {{"ddd", "1"}, {"ks", ks}})}, {10, 5});
    };
    expect_near(turned("180"), {-10, 5});
    expect_near(turned("90"), {0, 5});
}

TEST(Placement, depth_is_ignored_on_2d_layers) {
    const std::string ks = transform({{"ry", still("90")}, {"or", still("[0,90,0]")}});
    expect_near(placed({solid(1, "a", 10, 10, "#ff0000", {{"ks", ks}})}, {10, 5}), {10, 5});
}

TEST(Clock, of_a_nest_runs_from_its_start_time_at_its_stretch) {
    const auto inner = [](const Members& members, double frame) {
        const std::string text = flat_animation({nest_layer(1, "n", "none", members)});
        const Scene scene(text);
        return scene.main().layer(0).inner_frame(frame, scene.frame_rate);
    };
    EXPECT_EQ(inner({{"st", "5"}}, 12), 7);
    EXPECT_EQ(inner({{"st", "-5"}, {"sr", "2"}}, 15), 10);
    EXPECT_EQ(inner({{"sr", "0"}}, 15), 15);
    EXPECT_NEAR(inner({{"st", "5"}, {"tm", keyed({{0, "0"}, {10, "2"}})}}, 5), 25, 1e-9);  // seconds at 25 frames each
}

TEST(Clock, a_layer_is_on_from_its_in_point_up_to_but_not_at_its_out_point) {
    const std::string text = flat_animation({null_layer(1, "n", {{"ip", "2"}, {"op", "4.5"}})});
    const Scene scene(text);
    const auto& layer = scene.main().layer(0);
    EXPECT_FALSE(layer.is_on(1.9));
    EXPECT_TRUE(layer.is_on(2));
    EXPECT_TRUE(layer.is_on(4.4));
    EXPECT_FALSE(layer.is_on(4.5));
}

// The centre of what is red in the renderer's picture, in pixels of the composition.
Point red_centre(const std::vector<std::string>& layers, int frame) {
    constexpr int kScale = 4;
    const auto picture =
        over_white(lottie::pictures::Animation(flat_animation(layers)).frame(frame, 100 * kScale, 100 * kScale));
    double x = 0;
    double y = 0;
    double count = 0;
    for (int row = 0; row < picture.height; ++row) {
        for (int column = 0; column < picture.width; ++column) {
            if (picture.at(column, row) != 0xffff0000U) continue;
            x += column + 0.5;
            y += row + 0.5;
            ++count;
        }
    }
    return {x / count / kScale, y / count / kScale};
}

class AsInTheRenderer : public testing::TestWithParam<std::pair<const char*, std::vector<std::string>>> {};

// Within half a pixel: along a curve the renderer measures lengths coarsely.
TEST_P(AsInTheRenderer, a_square_is_placed_at_every_frame) {
    for (const int frame : {0, 3, 7, 10, 14, 19}) {
        expect_near(placed(GetParam().second, {4, 4}, frame), red_centre(GetParam().second, frame), 0.5);
    }
}

std::vector<std::pair<const char*, std::vector<std::string>>> moving_squares() {
    const auto square = [](const std::string& ks, const Members& more = {}) {
        Members members = more;
        members["ks"] = ks;
        return solid(1, "square", 8, 8, "#ff0000", members);
    };
    const std::string eased =
        R"({"a":1,"k":[{"t":2,"s":[20,20,0],"o":{"x":0.6,"y":0},"i":{"x":0.3,"y":1},"to":[0,0,0],"ti":[0,0,0]},)"
        R"({"t":17,"s":[80,70,0]}]})";
    const std::string curve =
        R"({"a":1,"k":[{"t":2,"s":[20,20,0],"o":{"x":0.3,"y":0},"i":{"x":0.7,"y":1},"to":[40,0,0],"ti":[0,-40,0]},)"
        R"({"t":17,"s":[80,80,0]}]})";
    const std::string separated =
        R"({"s":true,"x":)" + keyed({{0, "20"}, {19, "80"}}) + R"(,"y":)" + keyed({{5, "70"}, {10, "30"}}) + "}";
    return {
        {"eased", {square(transform({{"p", eased}}))}},
        {"on_a_curve", {square(transform({{"p", curve}}))}},
        {"with_separated_dimensions", {square(transform({{"p", separated}}))}},
        {"turning_around_its_anchor",
         {square(transform({{"p", still("[50,50,0]")},
                            {"a", still("[20,0,0]")},
                            {"r", keyed({{0, "0"}, {19, "270"}})},
                            {"s", keyed({{0, "100,100,100"}, {19, "150,60,100"}})}}))}},
        {"carried_by_two_parents",
         {square(at(10, 5), {{"parent", "2"}}),
          null_layer(2, "turning", {{"parent", "3"}, {"ks", transform({{"r", keyed({{0, "0"}, {19, "90"}})}})}}),
          null_layer(3, "moving", {{"ks", transform({{"p", keyed({{0, "40,30,0"}, {19, "60,50,0"}})}})}})}},
    };
}

INSTANTIATE_TEST_SUITE_P(Placement, AsInTheRenderer, testing::ValuesIn(moving_squares()),
                         [](const auto& one) { return std::string(one.param.first); });

}  // namespace
