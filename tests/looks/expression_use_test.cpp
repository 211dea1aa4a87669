// What expressions read.
#include "expression_use.h"

#include <gmock/gmock.h>

#include "looks/expressions.h"

namespace {

using lottie::looks::ExpressionUse;
using lottie::looks::read_expression;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ExpressionUse, time_is_read_by_name_and_through_functions_of_time) {
    for (const char* text : {"time * 2", "wiggle(1, 2)", "valueAtTime(1)", "thisProperty.velocityAtTime(0)",
                             "posterizeTime(12); value", "$bm_mul(time, 3)"}) {
        EXPECT_TRUE(read_expression(text).reads_time) << text;
    }
    for (const char* text : {"value", "a.time", "'time'", "// time\nvalue", "timeless", "wiggle"}) {
        EXPECT_FALSE(read_expression(text).reads_time) << text;
    }
}

TEST(ExpressionUse, the_propertys_own_value_goes_by_many_names) {
    for (const char* text :
         {"value + [5, 0]", "wiggle(2, 5)", "thisProperty(1)", "loopOut('cycle')", "key(1).value",
          "thisLayer.toComp([0, 0])", "transform.position", "thisComp.layer('self').position",
          "thisComp.layer(1).position", "thisComp.layer(index - 1).position", "eval('val' + 'ue')"}) {
        EXPECT_FALSE(lottie::looks::is_independent_of_own_value(text, "self")) << text;
    }
    for (const char* text :
         {"[100, time * 20]", "thisComp.layer('other').transform.position", "thisComp.layer('other').toComp([0, 0])",
          "[thisLayer.effect('x')(1).value, 0]", "// value\n[3, 4]"}) {
        EXPECT_TRUE(lottie::looks::is_independent_of_own_value(text, "self")) << text;
    }
}

TEST(ExpressionUse, only_expressions_of_numbers_and_time_read_no_layers) {
    for (const char* text : {"[value[0], 0]", "a.valueAtTime(1)", "thisComp.layer('other').position", "parent.scale",
                             "transform.rotation", "content('a').path", "key(1)", "loopOut()", "wiggle(1, 2)"}) {
        EXPECT_TRUE(read_expression(text).reads_layers) << text;
    }
    for (const char* text :
         {"[100, time * 20]", "// scale\n5", "values = [1, 2]; values", "'layer'", "Math.sin(time)"}) {
        EXPECT_FALSE(read_expression(text).reads_layers) << text;
    }
}

TEST(ExpressionUse, reading_keyframes_is_noticed) {
    EXPECT_TRUE(read_expression("value + key(1).value").is_relative_to_keys);
    EXPECT_TRUE(read_expression("thisProperty.nearestKey(time).time").is_relative_to_keys);
    EXPECT_FALSE(read_expression("key + 1").is_relative_to_keys);
}

TEST(ExpressionUse, the_index_is_read_by_itself_or_as_a_member_of_this_layer) {
    EXPECT_TRUE(read_expression("index * 5").reads_index);
    EXPECT_TRUE(read_expression("thisLayer.index").reads_index);
    EXPECT_FALSE(read_expression("key(1).index").reads_index);
    EXPECT_FALSE(read_expression("'index'").reads_index);
}

TEST(ExpressionUse, randomness_and_seeds_are_told_apart) {
    EXPECT_TRUE(read_expression("random(5)").is_random);
    EXPECT_TRUE(read_expression("gaussRandom()").is_random);
    EXPECT_FALSE(read_expression("seedRandom(3); value").is_random);
    EXPECT_TRUE(read_expression("seedRandom(3); random()").is_seeded);
    EXPECT_FALSE(read_expression("randomly").is_random);
}

TEST(ExpressionUse, layers_are_found_by_literal_number_or_by_a_computed_one) {
    EXPECT_THAT(read_expression("thisComp.layer(3).opacity").layer_numbers, ElementsAre(3));
    EXPECT_FALSE(read_expression("thisComp.layer(3)").has_computed_layer);
    EXPECT_FALSE(read_expression("thisComp.layer('a')").has_computed_layer);
    EXPECT_TRUE(read_expression("thisComp.layer(n)").has_computed_layer);
    EXPECT_TRUE(read_expression("thisComp.layer('a' + 1)").has_computed_layer);
}

TEST(ExpressionUse, a_layer_number_in_another_composition_is_listed_apart) {
    const ExpressionUse use = read_expression("comp('A').layer(1).effect('Color')(1)");
    EXPECT_THAT(use.layer_numbers, IsEmpty());
    EXPECT_THAT(use.layer_numbers_elsewhere, ElementsAre(testing::Pair("A", 1)));
    EXPECT_THAT(read_expression("x.comp('A').layer(1)").layer_numbers, ElementsAre(1));
}

TEST(ExpressionUse, members_of_the_composition_are_listed_except_layers) {
    EXPECT_THAT(read_expression("thisComp.width / thisComp.numLayers").composition_members,
                ElementsAre("width", "numLayers"));
    EXPECT_THAT(read_expression("thisComp.layer('a').width").composition_members, IsEmpty());
}

TEST(ExpressionUse, compositions_are_found_by_name) {
    EXPECT_THAT(read_expression("comp('A').layer('b'); comp(\"C\")").compositions, ElementsAre("A", "C"));
    EXPECT_THAT(read_expression("comp(name)").compositions, ElementsAre(""));
    EXPECT_THAT(read_expression("x.comp('A')").compositions, IsEmpty());
}

TEST(ExpressionUse, no_text_breaks_the_reader) {
    for (const char* text : {"", "'", "layer(", "thisComp.", "comp(", "thisComp.layer(", "/*", "a.layer('b'"}) {
        EXPECT_NO_THROW(read_expression(text)) << text;
    }
}

}  // namespace
