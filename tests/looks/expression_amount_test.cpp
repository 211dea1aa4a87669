// Expressions that give a number within bounds.
#include "expression_amount.h"

#include <gtest/gtest.h>

namespace {

using lottie::looks::Control;
using lottie::looks::ValueRange;

// Where the only control there is lies between 2 and 3, and the own value is 6.
std::optional<ValueRange> range_of(const std::string& text) {
    return lottie::looks::range_of(text, 6, [](const Control& control) {
        const bool is_known = control.layer.value_or("own") != "other" && control.effect.name == "e" &&
                              control.parameter.name.empty() && control.parameter.number == 1;
        return is_known ? std::optional(ValueRange{2, 3}) : std::nullopt;
    });
}

void expect_range(const std::string& text, double least, double most) {
    const auto range = range_of(text);
    ASSERT_TRUE(range.has_value()) << text;
    EXPECT_DOUBLE_EQ(range->least, least) << text;
    EXPECT_DOUBLE_EQ(range->most, most) << text;
}

TEST(ExpressionAmount, numbers_and_the_own_value_are_what_they_are) {
    expect_range("value", 6, 6);
    expect_range("var $bm_rt;\n$bm_rt = value;", 6, 6);
    expect_range("$bm_rt = 2.5;", 2.5, 2.5);
    expect_range("$bm_rt = (-7)", -7, -7);
    expect_range("$bm_rt = $bm_neg(value);", -6, -6);
}

TEST(ExpressionAmount, a_control_is_asked_of_any_layer) {
    for (const char* text : {"effect('e')(1)", "thisLayer.effect('e')(1)", "thisComp.layer('l').effect('e')(1)",
                             "comp('c').layer('l').effect('e')(1)"}) {
        expect_range(text, 2, 3);
    }
}

TEST(ExpressionAmount, sums_and_products_lie_between_those_of_their_ends) {
    expect_range("$bm_sum(value, effect('e')(1))", 8, 9);
    expect_range("$bm_sub(value, effect('e')(1))", 3, 4);
    expect_range("$bm_sub(effect('e')(1), value)", -4, -3);
    expect_range("$bm_mul(-value, effect('e')(1))", -18, -12);
    expect_range("$bm_div(value, effect('e')(1))", 2, 3);
    expect_range("$bm_div(effect('e')(1), -2)", -1.5, -1);
    expect_range("mul(div(value, 2), sum(effect('e')(1), sub(1, 1)))", 6, 9);
}

TEST(ExpressionAmount, nothing_is_told_of_anything_else) {
    for (const char* text : {"",
                             "time",
                             "$bm_rt = 1; $bm_rt = 2;",
                             "if (time > 1) $bm_rt = 1;",
                             "value = 9; $bm_rt = value;",
                             "value * 2",
                             "--value",
                             "value[0]",
                             "'6'",
                             "017",
                             "1_000",
                             "1e999",
                             "$bm_div(value, $bm_sub(effect('e')(1), 2))",
                             "$bm_mul(value)",
                             "$bm_mul(value, 2, 3)",
                             "Math.max(value, 2)",
                             "random(value, 2)",
                             "effect('e')",
                             "effect('')(1)",
                             "effect('e')(1)(2)",
                             "effect('e')(1).valueAtTime(3)",
                             "effect('f')(1)",
                             "thisComp.effect('e')(1)",
                             "comp('c').effect('e')(1)",
                             "comp(name).layer('l').effect('e')(1)",
                             "thisLayer.layer('l').effect('e')(1)",
                             "thisComp.layer(2).effect('e')(1)",
                             "thisComp.layer('other').effect('e')(1)",
                             "-(-(-(-(-(-(-(-(-(-(1))))))))))"}) {
        EXPECT_FALSE(range_of(text).has_value()) << text;
    }
}

}  // namespace
