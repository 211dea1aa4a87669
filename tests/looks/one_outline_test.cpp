// Of which layers the areas can be told.
#include "one_outline.h"

#include <gtest/gtest.h>

#include "animations.h"
#include "scene.h"

namespace {

using namespace test;

// Of a layer with two circles in one fill, the second one backward; their middles lie so far apart, across.
std::size_t areas_of_two_circles(int vertices, double apart) {
    const std::string shapes = R"({"ty":"sh","ks":)" + circle(vertices, 20, 20, 10) + R"(},{"ty":"sh","ks":)" +
                               circle(vertices, 20 + apart, 20 + apart, 10, false) +
                               R"(},{"ty":"fl","c":{"a":0,"k":[1,0,0,1]},"o":{"a":0,"k":100}})";
    const std::string text = flat_animation({shape_layer(1, "two", shapes)});
    const lottie::looks::Scene scene(text);
    return lottie::looks::outlines_at_any_opacity(scene.main().layer(0)).size();
}

TEST(OneOutline, a_path_that_makes_a_hole_in_another_leaves_no_area_to_tell) {
    EXPECT_EQ(areas_of_two_circles(40, 30), 2U);
    EXPECT_EQ(areas_of_two_circles(40, 5), 0U);
}

TEST(OneOutline, paths_of_so_many_vertices_that_holes_take_long_to_find_are_left_alone) {
    constexpr double kNear = 16;  // the rectangles around them overlap, they do not
    EXPECT_EQ(areas_of_two_circles(400, kNear), 2U);
    EXPECT_EQ(areas_of_two_circles(4'000, kNear), 0U);
    EXPECT_EQ(areas_of_two_circles(4'000, 30), 2U);
}

}  // namespace
