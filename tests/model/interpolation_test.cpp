// Values between keyframes.
#include <gtest/gtest.h>

#include <cmath>

#include "scene.h"

namespace host::model {
namespace {

using testing::at;
using testing::key;
using testing::Scene;
using testing::value;

// The value of a layer stream that has these keyframes.
Value between(int number, std::vector<Keyframe> keyframes, double seconds) {
    Scene scene;
    Stream& stream = scene.layer("L").stream(number);
    stream.replace(value(-1, -1, -1), std::move(keyframes));
    return stream.value_at(at(seconds));
}

std::vector<Keyframe> eased(Value from, Value to, Ease out, Ease in) {
    Keyframe a = key(0, from);
    Keyframe b = key(2, to);
    a.out = b.in = Interpolation::bezier;
    a.ease_out.fill(out);
    b.ease_in.fill(in);
    return {a, b};
}

TEST(Interpolation, without_keyframes_the_static_value_holds_at_all_times) {
    EXPECT_EQ(between(kOpacity, {}, 3), value(-1, -1, -1));
}

TEST(Interpolation, before_the_first_and_after_the_last_keyframe_the_value_stays) {
    const std::vector<Keyframe> keyframes = {key(1, value(10)), key(2, value(20))};
    EXPECT_EQ(between(kOpacity, keyframes, 0), value(10));
    EXPECT_EQ(between(kOpacity, keyframes, 1), value(10));
    EXPECT_EQ(between(kOpacity, keyframes, 2), value(20));
    EXPECT_EQ(between(kOpacity, keyframes, 9), value(20));
}

TEST(Interpolation, linear_goes_straight) {
    EXPECT_DOUBLE_EQ(between(kOpacity, {key(0, value(10)), key(4, value(30))}, 1).n[0], 15);
    const Value scale = between(kScale, {key(0, value(0, 100, 50)), key(4, value(40, 0, 50))}, 1);
    EXPECT_DOUBLE_EQ(scale.n[0], 10);
    EXPECT_DOUBLE_EQ(scale.n[1], 75);
    EXPECT_DOUBLE_EQ(scale.n[2], 50);
}

TEST(Interpolation, hold_stays_until_the_next_keyframe) {
    std::vector<Keyframe> keyframes = {key(0, value(10)), key(4, value(30))};
    keyframes[0].out = Interpolation::hold;
    keyframes[1].in = Interpolation::bezier;
    EXPECT_EQ(between(kOpacity, keyframes, 3.99), value(10));
    EXPECT_EQ(between(kOpacity, keyframes, 4), value(30));
}

TEST(Interpolation, an_even_ease_is_the_smooth_step) {
    const auto keyframes = eased(value(0), value(100), {0, 1.0 / 3}, {0, 1.0 / 3});
    for (const double share : {0.1, 0.25, 0.5, 0.9}) {
        EXPECT_NEAR(between(kOpacity, keyframes, 2 * share).n[0], 100 * share * share * (3 - 2 * share), 1e-4) << share;
    }
}

TEST(Interpolation, eases_of_the_average_speed_are_a_straight_line) {
    const auto keyframes = eased(value(0), value(100), {50, 0.7}, {50, 0.2});
    for (const double share : {0.1, 0.5, 0.8}) {
        EXPECT_NEAR(between(kOpacity, keyframes, 2 * share).n[0], 100 * share, 1e-3);
    }
}

TEST(Interpolation, the_speed_at_a_keyframe_is_that_of_its_ease) {
    const auto keyframes = eased(value(0), value(100), {120, 0.3}, {-40, 0.5});
    EXPECT_NEAR(between(kOpacity, keyframes, 0.001).n[0] / 0.001, 120, 1);
    EXPECT_NEAR((100 - between(kOpacity, keyframes, 1.999).n[0]) / 0.001, -40, 1);
}

TEST(Interpolation, each_dimension_of_a_scale_has_its_own_ease) {
    auto keyframes = eased(value(0, 0, 0), value(100, 100, 100), {0, 1.0 / 3}, {0, 1.0 / 3});
    keyframes[0].ease_out[1] = {50, 1.0 / 3};
    keyframes[1].ease_in[1] = {50, 1.0 / 3};
    const Value v = between(kScale, keyframes, 0.5);
    EXPECT_NEAR(v.n[0], 15.625, 1e-4);
    EXPECT_NEAR(v.n[1], 25, 1e-4);
}

TEST(Interpolation, a_linear_side_opposite_a_bezier_one_points_along_the_straight_line) {
    auto keyframes = eased(value(0), value(100), {0, 1.0 / 3}, {7, 1.0 / 3});
    keyframes[1].in = Interpolation::linear;
    // Handles at (1/3, 0) and (2/3, 2/3): time runs evenly, value is 3u^2 (1 - u) 2/3 + u^3.
    EXPECT_NEAR(between(kOpacity, keyframes, 1).n[0], 100 * (2 * 0.25 * 0.5 + 0.125), 1e-4);
}

TEST(Interpolation, a_position_moves_evenly_along_a_curve) {
    // A quarter of a circle of radius 100.
    const double k = 100 * 4 * (std::sqrt(2.0) - 1) / 3;
    Keyframe a = key(0, value(100, 0, 0));
    Keyframe b = key(2, value(0, 100, 0));
    a.tangent_out = value(0, k, 0);
    b.tangent_in = value(k, 0, 0);
    for (const double share : {0.2, 0.5, 0.7}) {
        const Value v = between(kPosition, {a, b}, 2 * share);
        EXPECT_NEAR(v.n[0], 100 * std::cos(share * M_PI / 2), 0.1) << share;
        EXPECT_NEAR(v.n[1], 100 * std::sin(share * M_PI / 2), 0.1) << share;
    }
}

TEST(Interpolation, uneven_tangents_do_not_change_the_speed_along_a_line) {
    Keyframe a = key(0, value(0, 0, 0));
    Keyframe b = key(2, value(100, 0, 0));
    a.tangent_out = value(90, 0, 0);
    const Value v = between(kPosition, {a, b}, 0.5);
    EXPECT_NEAR(v.n[0], 25, 0.01);
    EXPECT_NEAR(v.n[1], 0, 1e-9);
}

TEST(Interpolation, the_ease_of_a_position_acts_on_the_way_covered) {
    const auto keyframes = eased(value(0, 0, 0), value(30, 40, 0), {0, 1.0 / 3}, {0, 1.0 / 3});
    const Value v = between(kPosition, keyframes, 0.5);
    EXPECT_NEAR(v.n[0], 30 * 0.15625, 1e-4);
    EXPECT_NEAR(v.n[1], 40 * 0.15625, 1e-4);
}

TEST(Interpolation, a_position_never_leaves_its_path) {
    const auto keyframes = eased(value(0, 0, 0), value(100, 0, 0), {5000, 1}, {-300, 0.5});
    double last = 0;
    for (int i = 0; i <= 20; ++i) {
        const double x = between(kPosition, keyframes, i * 0.1).n[0];
        EXPECT_GE(x, last - 1e-9);
        EXPECT_LE(x, 100 + 1e-9);
        last = x;
    }
}

TEST(Interpolation, a_path_of_no_length_stays_where_it_is) {
    const auto keyframes = eased(value(5, 6, 7), value(5, 6, 7), {10, 0.5}, {10, 0.5});
    EXPECT_EQ(between(kPosition, keyframes, 1), value(5, 6, 7));
}

TEST(Interpolation, layer_choices_do_not_blend) {
    Scene scene;
    Layer& layer = scene.layer("L");
    Effect& tint = layer.apply_effect(testing::install_tint(scene.project)->key);
    Stream& map = tint.parameter(testing::kTintLayer);
    map.replace({}, {key(0, value(3)), key(2, value(9))});
    EXPECT_EQ(map.value_at(at(1.9)), value(3));
    Stream& color = tint.parameter(2);
    color.replace({}, {key(0, value(0, 0, 0, 1)), key(2, value(1, 0.5, 0, 1))});
    EXPECT_NEAR(color.value_at(at(1)).n[1], 0.25, 1e-9);
}

}  // namespace
}  // namespace host::model
