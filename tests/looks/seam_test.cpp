// Layers that fade one by one along a seam, against the group that fades as one, pixel by pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "looks/seam.h"

namespace {

using lottie::looks::MovingPath;
using lottie::looks::seam_width;
using lottie::looks::within_seam;

MovingPath::Vertices rectangle(double left, double top, double right, double bottom) {
    MovingPath::Vertices path;
    path.at = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    path.in.resize(4);
    path.out.resize(4);
    path.is_closed = true;
    return path;
}

// How much of the pixel that begins at `x` lies left of `edge`.
double filled(double edge, double x) {
    return std::clamp(edge - x, 0.0, 1.0);
}

// White below black layers, so that the difference is what shows through.
double shown(double upper, double lower, double opacity) {
    return (1 - opacity * upper) * (1 - opacity * lower);
}

TEST(Seam, shows_nowhere_by_more_than_eleven_steps) {
    double worst = 0;
    for (int percent = 1; percent < 100; ++percent) {
        const double opacity = percent / 100.0;
        for (double edge = 50; edge < 51; edge += 0.01) {
            const auto taken = within_seam(rectangle(0, 0, edge, 100), opacity, 1).value();
            for (double x = 47; x < 53; ++x) {
                const double one_by_one = shown(filled(edge, x), 1 - filled(taken.at[1].x, x), opacity);
                worst = std::max(worst, std::abs(one_by_one - (1 - opacity)));
            }
        }
    }
    EXPECT_LT(worst * 255, 11.1);
    EXPECT_GT(worst * 255, 5) << "the measure tells nothing";
}

TEST(Seam, is_the_wider_the_less_transparent_the_layers_are) {
    EXPECT_NEAR(seam_width(0.01), 0, 0.01);
    EXPECT_NEAR(seam_width(0.5), 0.101, 0.001);
    EXPECT_GT(seam_width(0.99), 0.7);
}

TEST(Seam, lies_inside_whichever_way_the_path_turns) {
    auto path = rectangle(10, 10, 90, 90);
    for (int way = 0; way < 2; ++way) {
        const auto taken = within_seam(path, 0.8, 2).value();
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(std::abs(taken.at[i].x - 50), 40 - 2 * seam_width(0.8), 1e-9);
            EXPECT_NEAR(std::abs(taken.at[i].y - 50), 40 - 2 * seam_width(0.8), 1e-9);
        }
        std::reverse(path.at.begin(), path.at.end());
    }
}

TEST(Seam, keeps_a_circle_round) {
    MovingPath::Vertices circle;
    constexpr double kRound = 0.5519;
    circle.at = {{0, -10}, {10, 0}, {0, 10}, {-10, 0}};
    circle.out = {{10 * kRound, 0}, {0, 10 * kRound}, {-10 * kRound, 0}, {0, -10 * kRound}};
    circle.in = {{-10 * kRound, 0}, {0, -10 * kRound}, {10 * kRound, 0}, {0, 10 * kRound}};
    circle.is_closed = true;
    const auto taken = within_seam(circle, 0.9, 1).value();
    const double radius = 10 - seam_width(0.9);
    EXPECT_NEAR(taken.at[1].x, radius, 1e-9);
    EXPECT_NEAR(taken.out[0].x, radius * kRound, 1e-9);
    EXPECT_NEAR(taken.in[1].y, -radius * kRound, 1e-9);
}

TEST(Seam, is_not_told_of_jagged_paths) {
    auto jagged = rectangle(0, 0, 40, 40);
    jagged.out[0] = {-10, 15};
    jagged.in[1] = {12, 18};
    EXPECT_FALSE(within_seam(jagged, 0.9, 1));
}

TEST(Seam, never_takes_more_than_a_part_of_what_is_small) {
    const auto taken = within_seam(rectangle(0, 0, 1, 100), 0.9, 10).value();
    EXPECT_NEAR(taken.at[1].x - taken.at[0].x, 0.5, 1e-9);
}

}  // namespace
