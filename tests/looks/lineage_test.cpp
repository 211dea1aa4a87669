// Where layers come from, after steps written by hand.
#include "looks/lineage.h"

#include <gtest/gtest.h>

#include "animations.h"

namespace {

using namespace test;
using namespace lottie::looks;

constexpr auto kKept = Origin::Kind::kept;
constexpr auto kCopied = Origin::Kind::copied;
constexpr auto kMade = Origin::Kind::made;

// "Nest" shows "inside", which shows "second" by its first layer.
std::string two_levels() {
    Nesting nesting;
    nesting.inside = {nest_layer(1, "Second", "second", {{"w", "100"}, {"h", "100"}}),
                      solid(2, "near", 40, 40, "#ff0000")};
    nesting.assets = {R"({"id":"second","layers":[)" + solid(1, "far", 40, 40, "#0000ff") + "]}"};
    return animation(nesting);
}

TEST(Lineage, leads_through_all_nests_in_whatever_order_they_were_un_nested) {
    const std::string text = two_levels();
    const Descent far = {{"", 0}, {"inside", 0}, {"second", 0}};
    Lineage from_inside(text);
    from_inside.add({"inside", {0}, {{kCopied, 0, 0}, {kKept, 1, 0}}});
    from_inside.add({"", {0}, {{kMade, 0, 0}, {kCopied, 0, 0}, {kCopied, 1, 0}, {kKept, 1, 0}}});
    EXPECT_EQ(from_inside.path("", 0), Descent());
    EXPECT_EQ(from_inside.path("", 1), far);
    EXPECT_EQ(from_inside.path("", 2), (Descent{{"", 0}, {"inside", 1}}));
    EXPECT_EQ(from_inside.path("", 3), (Descent{{"", 1}}));
    Lineage from_outside(text);
    from_outside.add({"", {0}, {{kCopied, 0, 0}, {kCopied, 1, 0}, {kKept, 1, 0}}});
    EXPECT_EQ(from_outside.path("", 0), (Descent{{"", 0}, {"inside", 0}}));
    from_outside.add({"", {0}, {{kCopied, 0, 0}, {kKept, 1, 0}, {kKept, 2, 0}}});
    EXPECT_EQ(from_outside.path("", 0), far);
    EXPECT_EQ(from_outside.path("", 0, 2), (Descent{{"", 0}, {"inside", 0}}));
}

}  // namespace
