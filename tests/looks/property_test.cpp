// Numbers and points over time.
#include "property.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

#include "animations.h"

namespace {

using lottie::looks::Property;
using lottie::looks::Values;

struct Read {
    explicit Read(const std::string& json) { document.Parse(json.c_str()); }
    Property property(const Values& missing = {}) const { return Property(&document, missing); }
    lottie::looks::JsonDocument document;
};

std::string eased_keys(const std::string& ease, const std::string& values) {
    return R"({"a":1,"k":[{"t":10,"s":[0],)" + ease + "},{" + values + R"("t":20,"s":[100]}]})";
}

TEST(Property, values_that_find_no_memory_are_an_error) {
    EXPECT_THROW(lottie::looks::JsonPool().Malloc(PTRDIFF_MAX), std::bad_alloc);
}

TEST(Property, a_static_value_is_a_number_or_an_array) {
    EXPECT_EQ(Read(R"({"k":7})").property().at(3), (Values{7, 0, 0}));
    EXPECT_EQ(Read(R"({"k":[7]})").property().at(3), (Values{7, 0, 0}));
    EXPECT_EQ(Read(R"({"k":[1,2,3]})").property().at(3), (Values{1, 2, 3}));
}

TEST(Property, a_missing_property_has_the_default_value) {
    EXPECT_EQ(Property(nullptr, {100, 100, 100}).at(0), (Values{100, 100, 100}));
    EXPECT_EQ(Read(R"({"k":[50,60]})").property({100, 100, 100}).at(0), (Values{50, 60, 100}));
    EXPECT_EQ(Read(R"({"k":"?"})").property({5, 0, 0}).at(0), (Values{5, 0, 0}));
}

TEST(Property, keyframes_are_recognized_by_their_form_not_by_the_flag) {
    EXPECT_EQ(Read(R"({"a":0,"k":[{"t":0,"s":[1]},{"t":9,"s":[2]}]})").property().key_times().size(), 2U);
    EXPECT_EQ(Read(R"({"a":1,"k":[4,5]})").property().at(0), (Values{4, 5, 0}));
}

TEST(Property, linear_keyframes_interpolate_between_and_hold_outside) {
    const Read read(test::keyed({{10, "0,50"}, {20, "100,0"}}));
    EXPECT_EQ(read.property().at(15), (Values{50, 25, 0}));
    EXPECT_EQ(read.property().at(-100), (Values{0, 50, 0}));
    EXPECT_EQ(read.property().at(10), (Values{0, 50, 0}));
    EXPECT_EQ(read.property().at(20), (Values{100, 0, 0}));
    EXPECT_EQ(read.property().at(1000), (Values{100, 0, 0}));
}

TEST(Property, a_hold_keyframe_jumps_at_the_next) {
    const Read read(eased_keys(R"("h":1)", ""));
    EXPECT_EQ(read.property().at(19.999)[0], 0);
    EXPECT_EQ(read.property().at(20)[0], 100);
}

TEST(Property, an_ease_is_slow_at_both_ends_and_symmetric) {
    const Read read(eased_keys(R"("o":{"x":[0.5],"y":[0]},"i":{"x":[0.5],"y":[1]})", ""));
    const Property property = read.property();
    EXPECT_NEAR(property.at(15)[0], 50, 1e-6);
    EXPECT_NEAR(property.at(12)[0] + property.at(18)[0], 100, 1e-6);
    // The curve through (.5, 0) and (.5, 1) at a fifth of the time: u = 0.1548, y = 3u^2 - 2u^3.
    EXPECT_NEAR(property.at(12)[0], 6.45, 0.01);
}

TEST(Property, eases_of_all_shapes_lie_on_their_curves) {
    for (const double out_x : {0.0, 0.001, 0.33, 1.0}) {
        for (const double in_x : {0.0, 0.667, 0.999, 1.0}) {
            const Read read(eased_keys(R"("o":{"x":[)" + std::to_string(out_x) + R"(],"y":[0]},"i":{"x":[)" +
                                           std::to_string(in_x) + R"(],"y":[1]})",
                                       ""));
            const Property property = read.property();
            for (int step = 0; step <= 100; ++step) {
                const double u = step / 100.0;
                const double v = 1 - u;
                const double x = 3 * v * v * u * out_x + 3 * v * u * u * in_x + u * u * u;
                const double y = 3 * v * u * u + u * u * u;
                // Where time stands still on the curve, a rounded frame is some way along it.
                EXPECT_NEAR(property.at(10 + 10 * x)[0], 100 * y, 1e-2) << out_x << " " << in_x << " at " << u;
            }
        }
    }
}

TEST(Property, an_ease_may_overshoot) {
    const Read read(eased_keys(R"("o":{"x":[0.3],"y":[2]},"i":{"x":[0.7],"y":[1]})", ""));
    EXPECT_GT(read.property().at(16)[0], 100);
}

TEST(Property, each_dimension_has_its_own_ease) {
    const Read read(
        R"({"k":[{"t":0,"s":[0,0],"o":{"x":[0,0.9],"y":[0,0]},"i":{"x":[1,0.9],"y":[1,0]}},{"t":10,"s":[100,100]}]})");
    const Values values = read.property().at(5);
    EXPECT_NEAR(values[0], 50, 1e-6);
    EXPECT_LT(values[1], 10);
}

TEST(Property, old_files_say_where_a_segment_ends) {
    const Read read(R"({"k":[{"t":0,"s":[10],"e":[30],"o":{"x":[0],"y":[0]},"i":{"x":[1],"y":[1]}},{"t":10}]})");
    EXPECT_EQ(read.property().at(5)[0], 20);
    EXPECT_EQ(read.property().at(10)[0], 30);
    EXPECT_EQ(read.property().at(99)[0], 30);
}

TEST(Property, a_spatial_path_is_followed_at_constant_speed) {
    // A quarter of a circle around the origin, nearly: half the way along it lies on the diagonal.
    const Read read(
        R"({"k":[{"t":0,"s":[100,0],"to":[0,55.23],"ti":[55.23,0],"o":{"x":0,"y":0},"i":{"x":1,"y":1}},{"t":10,"s":[0,100]}]})");
    const Values middle = read.property().at(5);
    EXPECT_NEAR(middle[0], 70.71, 0.05);
    EXPECT_NEAR(middle[1], 70.71, 0.05);
    const Values third = read.property().at(10.0 / 3);
    EXPECT_NEAR(third[0], 86.6, 0.1);
    EXPECT_NEAR(third[1], 50, 0.1);
}

TEST(Property, each_of_several_spatial_paths_has_its_own_length) {
    const Read read(
        R"({"k":[{"t":0,"s":[0,0],"to":[0,30],"ti":[0,30],"o":{"x":0,"y":0},"i":{"x":1,"y":1}},)"
        R"({"t":10,"s":[100,0],"to":[0,300],"ti":[0,300],"o":{"x":0,"y":0},"i":{"x":1,"y":1}},{"t":20,"s":[200,0]}]})");
    const Property in_order = read.property();
    const Property in_turn = read.property();
    for (const double frame : {1.0, 2.5, 5.0, 7.0}) {
        const Values first = in_order.at(frame);
        EXPECT_EQ(in_turn.at(frame), first);
        EXPECT_NE(in_turn.at(frame + 10)[1], first[1]);
        EXPECT_EQ(in_turn.at(frame), first);
    }
}

TEST(Property, separated_positions_are_read_as_one) {
    const Read read(
        R"({"s":true,"x":{"k":[{"t":0,"s":[0],"o":{"x":[0],"y":[0]},"i":{"x":[1],"y":[1]}},{"t":10,"s":[50]}]},)"
        R"("y":{"k":7,"x":"time"}})");
    EXPECT_EQ(read.property().at(5), (Values{25, 7, 0}));
    EXPECT_TRUE(read.property().is_animated());
    EXPECT_TRUE(read.property().has_expression());
    EXPECT_EQ(read.property().key_times(), (std::vector<double>{0, 10}));
}

TEST(Property, equal_keyframes_animate_nothing) {
    EXPECT_FALSE(Read(test::keyed({{0, "5"}, {10, "5"}})).property().is_animated());
    EXPECT_TRUE(Read(test::keyed({{0, "5"}, {10, "6"}})).property().is_animated());
    EXPECT_FALSE(Read(test::still("5")).property().is_animated());
}

TEST(Property, a_loop_between_equal_points_animates) {
    EXPECT_TRUE(Read(R"({"k":[{"t":0,"s":[1,1],"to":[9,0],"ti":[0,9]},{"t":5,"s":[1,1]}]})").property().is_animated());
}

// Where the values lie, as "least..most"; empty where that is not told.
std::string range(const std::string& json) {
    const auto range = Read(json).property().range();
    return range ? std::to_string(static_cast<int>(range->least)) + ".." + std::to_string(static_cast<int>(range->most))
                 : "";
}

TEST(Property, values_lie_between_those_of_all_keyframes) {
    EXPECT_EQ(range(R"({"k":7})"), "7..7");
    EXPECT_EQ(range(test::keyed({{0, "5,50"}, {10, "-3,90"}, {15, "4,4"}})), "-3..5");
    EXPECT_EQ(range(R"({"k":[{"t":0,"s":[1],"e":[8]},{"t":5}]})"), "1..8");
    EXPECT_EQ(range(R"({"s":true,"x":{"k":4},"y":{"k":5}})"), "4..4");
}

TEST(Property, an_ease_that_leads_past_keyframes_leaves_values_without_a_range) {
    EXPECT_EQ(range(eased_keys(R"("o":{"x":[0.5],"y":[0]},"i":{"x":[1.5],"y":[1]})", "")), "0..100");
    EXPECT_EQ(range(eased_keys(R"("o":{"x":[0.5],"y":[-0.1]},"i":{"x":[0.5],"y":[1]})", "")), "");
    EXPECT_EQ(range(eased_keys(R"("o":{"x":[0.5],"y":[0]},"i":{"x":[0.5],"y":[1.1]})", "")), "");
    EXPECT_EQ(range(eased_keys(R"("h":1,"o":{"x":[0.5],"y":[-0.1]},"i":{"x":[0.5],"y":[1]})", "")), "0..100");
    EXPECT_EQ(range(R"({"k":[{"t":0,"s":[1],"o":{"x":[0.5],"y":[9]},"i":{"x":[0.5],"y":[9]}},{"t":5,"s":[1]}]})"),
              "1..1");
    EXPECT_EQ(range(R"({"k":[{"t":0,"s":[1,1],"to":[9,0],"ti":[0,9]},{"t":5,"s":[2,2]}]})"), "");
}

}  // namespace
