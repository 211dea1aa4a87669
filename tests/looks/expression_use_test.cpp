// What expressions read.
#include "expression_use.h"
#include "expression_point.h"

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

TEST(ExpressionUse, a_layers_transform_is_read_by_many_names_and_a_contents_is_another) {
    for (const char* text : {"transform.position[0]", "thisComp.layer('other').rotation", "$bm_transform.scale",
                             "thisLayer('ADBE Transform Group')(1)", "parent.anchorPoint"}) {
        EXPECT_TRUE(read_expression(text).reads_transforms) << text;
    }
    for (const char* text : {"content('a').transform.rotation", "content(1).transform.position", "// scale\n5",
                             "'position'", "value", "effect('scale')(1)"}) {
        EXPECT_FALSE(read_expression(text).reads_transforms) << text;
    }
}

TEST(ExpressionUse, masks_are_asked_for_by_name_or_number) {
    const auto by_name = read_expression("thisLayer.mask('a').maskPath");
    EXPECT_TRUE(by_name.reads_masks);
    EXPECT_FALSE(by_name.numbers_masks);
    for (const char* text : {"mask(1).maskPath", "thisComp.layer('a').mask(i)", "mask(`a${i}`)"}) {
        EXPECT_TRUE(read_expression(text).numbers_masks) << text;
    }
    EXPECT_FALSE(read_expression("effect('mask')(1)").reads_masks);
}

TEST(ExpressionUse, a_value_or_a_loop_of_it_is_carried_along) {
    for (const char* text : {"value", "loopOut('cycle', 0)", "var $bm_rt;\n$bm_rt = loopIn('pingpong');"}) {
        EXPECT_TRUE(lottie::looks::is_carried_along(text)) << text;
    }
    for (const char* text : {"value * 2", "[value[0], 0]", "key(1).value", "20", "numKeys > 0 ? value : 1",
                             "valueAtTime(0)", "var $bm_rt;\n$bm_rt = $bm_sum(value, [5, 0]);"}) {
        EXPECT_FALSE(lottie::looks::is_carried_along(text)) << text;
    }
}

TEST(ExpressionUse, a_point_of_the_composition_comes_from_a_layer_alone) {
    for (const char* text : {"$bm_rt = thisComp.layer('a').toComp([1, 2]);", "thisComp.layer('a').position",
                             "var $bm_rt;\nvar a = thisComp.layer('a');\n$bm_rt = a.transform.position;",
                             "$bm_rt = sub(a.toComp(p[1]), sub(b.position, a.toComp(p[0])));",
                             "$bm_rt = $bm_sum(a.position, $bm_sub(b.position, c.position));"}) {
        EXPECT_TRUE(lottie::looks::is_point_of_composition(text)) << text;
    }
    for (const char* text :
         {"$bm_rt = thisComp.layer('a').toComp([1, 2])[0];", "$bm_rt = a.position; $bm_rt = 5;", "$bm_rt = a.scale;",
          "$bm_rt = a.position * 2;", "$bm_rt = sub(a.position, b.position);", "$bm_rt = $bm_sum(a.position, [1, 2]);",
          "$bm_rt = add(a.position, b.position);", "$bm_rt = sub(a.position);", "$bm_rt = [a.position[0], 5];",
          "$bm_rt = -a.position;", "5"}) {
        EXPECT_FALSE(lottie::looks::is_point_of_composition(text)) << text;
    }
}

TEST(ExpressionUse, a_point_elsewhere_is_none_of_the_composition) {
    for (const char* text : {"$bm_rt = comp('a').layer('b').position;", "$bm_rt = comp('a').layer('b').toComp([0, 0]);",
                             "$bm_rt = thisComp.layer('a').content('b').position;"}) {
        EXPECT_FALSE(lottie::looks::is_point_of_composition(text)) << text;
    }
}

TEST(ExpressionUse, what_leads_a_position_is_told_where_it_is_plain) {
    using By = lottie::looks::Leader::By;
    const std::string bar = "var $bm_rt; var bar = thisComp.layer('bar');";
    const std::string points = "var p = bar.content('Path 1').path.points();";
    const std::string path = "var p = bar('ADBE Root Vectors Group')(1)('ADBE Vector Shape');";
    for (const auto& [text, by] :
         {std::pair(std::string("$bm_rt = thisComp.layer('bar').position;"), By::position),
          std::pair(std::string("$bm_rt = thisComp.layer('bar').transform.position;"), By::position),
          std::pair(std::string("$bm_rt = thisComp.layer('bar').toComp([5, -5, 0]);"), By::point),
          std::pair(bar + "$bm_rt = bar.toComp([5, -5]);", By::point),
          std::pair(bar + points + "$bm_rt = bar.toComp(p[1]);", By::path),
          std::pair(bar + path + "$bm_rt = bar.toComp(p.pointOnPath(time));", By::path)}) {
        const auto leader = lottie::looks::leader_of(text);
        ASSERT_TRUE(leader.has_value()) << text;
        EXPECT_EQ(leader->layer, "bar") << text;
        EXPECT_TRUE(leader->by == by) << text;
        if (by == By::point) {
            EXPECT_THAT(leader->point, ElementsAre(5, -5)) << text;
        }
    }
    for (const std::string& text :
         {std::string("$bm_rt = thisComp.layer('bar').position[0];"), std::string("$bm_rt = bar.toComp([5, 5]);"),
          std::string("$bm_rt = thisComp.layer(1).position;"), std::string("$bm_rt = comp('a').layer('bar').position;"),
          std::string("$bm_rt = thisComp.layer('bar').toComp([time, 5]);"),
          std::string("$bm_rt = thisComp.layer('bar').toComp([5, 5]) * 2;"), bar + "$bm_rt = bar.toComp(p[1]);",
          bar + points + "$bm_rt = bar.toComp(p.pointOnPath(1));", bar + path + "$bm_rt = bar.toComp(p[1]);",
          bar + "bar = thisComp.layer('b'); $bm_rt = bar.toComp([5, 5]);",
          bar + points + "p[1] = [900, 900]; $bm_rt = bar.toComp(p[1]);",
          bar + points + "push(p); $bm_rt = bar.toComp(p[1]);",
          bar + "var p = bar.effect('a')('b'); $bm_rt = bar.toComp(p[1]);"}) {
        EXPECT_FALSE(lottie::looks::leader_of(text).has_value()) << text;
    }
}

TEST(ExpressionUse, a_loop_stays_within_its_keyframes_unless_it_goes_on_from_the_last) {
    for (const char* text : {"loopOut()", "loopOut('cycle')", "$bm_rt = loopIn('pingpong');", "loopOut('cycle', 2)"}) {
        EXPECT_TRUE(lottie::looks::stays_within_keys(text)) << text;
    }
    for (const char* text :
         {"loopOut('offset')", "loopOut('continue')", "loopOut('cycle') * 2", "value", "loopOutDuration('cycle', 1)"}) {
        EXPECT_FALSE(lottie::looks::stays_within_keys(text)) << text;
    }
}

TEST(ExpressionUse, a_position_may_be_spelled_out) {
    const auto spelled = lottie::looks::spelled_point("$bm_rt = [-4.5, value[1], 0];");
    ASSERT_TRUE(spelled.has_value());
    EXPECT_THAT(spelled->numbers, ElementsAre(testing::Optional(-4.5), testing::Eq(std::nullopt)));
    for (const char* text : {"[time, 5]", "[value[1], value[0]]", "[5]", "5", "[5, 5] * 2", "[-value[0], 5]", "["}) {
        EXPECT_FALSE(lottie::looks::spelled_point(text).has_value()) << text;
    }
}

TEST(ExpressionUse, points_that_go_there_and_back_are_not_converted) {
    EXPECT_TRUE(read_expression("toComp([0, 0])").converts_points);
    EXPECT_TRUE(read_expression("thisLayer.fromWorld([0, 0])").converts_points);
    EXPECT_FALSE(read_expression("fromComp(thisComp.layer('a').toComp([0, 0]))").converts_points);
}

TEST(ExpressionUse, the_composition_by_another_name_hides_which_layer_is_asked_for) {
    for (const char* text : {"var c = thisComp; c.layer('a').position", "f(thisComp)", "thisComp('a').position",
                             "thisComp['layer']('a')", "with (thisComp) layer('a').position"}) {
        EXPECT_TRUE(read_expression(text).has_computed_layer) << text;
    }
    EXPECT_FALSE(read_expression("thisComp.layer('a').position").has_computed_layer);
}

TEST(ExpressionUse, layers_that_are_named_by_a_literal_are_not_worked_out) {
    for (const char* text : {"thisComp.layer('a')", "thisComp.layer(3)", "thisComp('a')", "value",
                             "var c = thisComp; c.layer('a').position", "var n = 'a';\nthisComp.layer(n)"}) {
        EXPECT_FALSE(read_expression(text).works_out_layer) << text;
    }
    for (const char* text :
         {"thisComp.layer(index + 1)", "thisComp.layer('a' + 'b')", "f(thisComp)", "thisComp[n]",
          "var c = thisComp; f(c)", "thisComp(index)", "eval('x')", "var l = thisComp.layer; l(3)"}) {
        EXPECT_TRUE(read_expression(text).works_out_layer) << text;
    }
}

TEST(ExpressionUse, a_transform_goes_by_names_and_numbers_too) {
    for (const char* text : {"thisLayer(6)('Position')", "parent(1)(2)", "thisComp.layer('a')(6)('ADBE Opacity')",
                             "thisLayer('Transform')('Opacity')"}) {
        EXPECT_TRUE(read_expression(text).reads_transforms) << text;
        EXPECT_TRUE(read_expression(text).reads_opacity) << text;
    }
    for (const char* text : {"effect(1)(6)", "a('ADBE Root Vectors Group')(1)('Path')", "f(6)", "thisLayer(4)(1)"}) {
        EXPECT_FALSE(read_expression(text).reads_transforms) << text;
    }
}

TEST(ExpressionUse, a_text_that_is_run_hides_which_layer_is_asked_for) {
    EXPECT_TRUE(read_expression("eval('thisComp.la' + 'yer(2)')").has_computed_layer);
    EXPECT_FALSE(read_expression("evaluate('a')").has_computed_layer);
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
    EXPECT_FALSE(read_expression("key(1).index + nearestKey(f(1)).index").reads_other_index);
    EXPECT_TRUE(read_expression("thisComp.layer('a').index").reads_other_index);
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
