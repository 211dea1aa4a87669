// Sums and parts of convex polygons.
#include "hull.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using namespace lottie::looks;

// Of every two corners: slow, but plain.
Hull sum_of_corners(const Hull& a, const Hull& b) {
    std::vector<Point> all;
    for (const Point& p : a) {
        for (const Point& q : b) all.push_back({p.x + q.x, p.y + q.y});
    }
    return hull_of(all);
}

void expect_same(const Hull& a, const Hull& b) {
    EXPECT_NEAR(area(a), area(b), 1e-9 * (1 + area(a)));
    const Box x = around(a);
    const Box y = around(b);
    EXPECT_NEAR(x.left, y.left, 1e-9);
    EXPECT_NEAR(x.top, y.top, 1e-9);
    EXPECT_NEAR(x.right, y.right, 1e-9);
    EXPECT_NEAR(x.bottom, y.bottom, 1e-9);
    // Whatever lies around both cuts nothing off.
    const Hull far = hull_of(Box{-1000, -1000, 1000, 1000});
    EXPECT_NEAR(area(cut(far, b)), area(b), 1e-6);
}

Hull regular(int corners, double radius) {
    Hull hull;
    for (int i = 0; i < corners; ++i) {
        const double angle = std::numbers::pi / corners * (2 * i + 1);
        hull.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return hull;
}

// On a grid many sides are parallel and many corners lie in a line.
Hull made(std::mt19937& random, bool is_on_grid) {
    std::uniform_real_distribution<double> anywhere(-100, 100);
    std::uniform_int_distribution<int> corners(0, 9);
    std::uniform_int_distribution<int> on_grid(-3, 3);
    std::vector<Point> points;
    for (int i = corners(random); i >= 0; --i) {
        points.push_back(is_on_grid ? Point{0.1 * on_grid(random), 0.1 * on_grid(random)}
                                    : Point{anywhere(random), anywhere(random)});
    }
    return hull_of(std::move(points));
}

TEST(Hull, SumIsThatOfAllCorners) {
    std::mt19937 random(20);
    for (int i = 0; i < 5000 && !testing::Test::HasFailure(); ++i) {
        const Hull a = made(random, i % 2 == 0);
        const Hull b = i % 3 == 0 ? regular(8, 5.3) : made(random, i % 5 < 3);
        expect_same(sum_of_corners(a, b), sum(a, b));
    }
}

// Their corners lie nearly in a line: sides go there and all but back.
TEST(Hull, SumOfSlivers) {
    const Hull sliver = {{195.85, 46.713},
                         {196.77268287037035, 46.712999999999994},
                         {242.744, 46.713},
                         {208.00770370370373, 46.713000000000008}};
    expect_same(sum_of_corners(sliver, regular(8, 0.1)), sum(sliver, regular(8, 0.1)));
    expect_same(sum_of_corners(sliver, sliver), sum(sliver, sliver));
    expect_same(sum_of_corners(sliver, {{1, 1}, {30, 1}}), sum(sliver, {{1, 1}, {30, 1}}));
}

TEST(Hull, SumWithNothingIsNothing) {
    EXPECT_TRUE(sum(regular(4, 1), {}).empty());
    EXPECT_TRUE(sum({}, regular(4, 1)).empty());
}

TEST(Hull, SumOfNumbersTooLargeToMultiplyEnds) {
    const Hull far = {{0, -1e200}, {1e200, 0}, {0, 1e200}, {-1e200, 0}};
    EXPECT_LE(sum(far, far).size(), 8U);
    EXPECT_LE(sum(far, {{-1e200, 0}, {1e308, 1e308}}).size(), 6U);
}

// Rounding turns the side between two corners that are one anywhere.
TEST(Hull, CutsWithNoSideThatIsAPoint) {
    const Hull square = {{0, 0}, {10, 0}, {10, 10}, {10 - 1e-15, 10 + 1e-14}, {10, 10 + 2e-14}, {0, 10}};
    EXPECT_NEAR(area(cut(hull_of(Box{-5, -5, 15, 15}), square)), 100, 1e-6);
    const Hull dented = {{0, 0}, {10, 0}, {10, 1e-13}, {10 - 1e-12, 0}, {10, 10}, {0, 10}};
    EXPECT_NEAR(area(cut(hull_of(Box{-5, -5, 15, 15}), dented)), 100, 1e-6);
}

}  // namespace
