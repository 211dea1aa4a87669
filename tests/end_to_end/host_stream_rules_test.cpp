// What the command makes of what a host may settle one way or the other: streams, keyframes, expressions, scripts.
#include "host_rules.h"

using namespace end_to_end;
using testing::ElementsAre;

namespace {

const auto kFixRandom = click("Attempt to correct layers with randomized expressions");

std::string nest_with_effect(const std::string& parameters) {
    const std::string effect =
        R"(,"ef":[{"ty":5,"nm":"Tint","mn":"Our Tint","np":5,"ix":1,"en":1,"ef":)" + parameters + "}]";
    return animation({asset("inner", {layer(1, "Wheel")})}, {nest(1, "Intro", "inner", kFull, kStill, effect)});
}

// ---- Streams

TEST(InapplicableStream, has_a_default_or_ends_a_run_that_copies_attributes) {
    // Of the transform streams that are copied, some apply to 3D layers only.
    OneRun shows(one_nest());
    EXPECT_FALSE(shows.on({1}).has_failed());

    const auto refuse = [](HostRules& rules) { rules.inapplicable_stream = host::model::InapplicableStream::error; };
    OneRun refuses(one_nest(), refuse);
    expect_failed_in_one_step(refuses, refuses.on({1}), one_nest());

    OneRun discards(one_nest(), refuse);
    EXPECT_FALSE(discards.on({1}, {kDiscard, kFixRandom}).has_failed()) << "seeds are put into legal streams alone";
    EXPECT_THAT(discards.stack(), ElementsAre("Above", "Wheel", "Cart", "Below"));
}

TEST(UnknownTimeMode, is_read_as_composition_time_or_ends_a_run_that_copies_attributes) {
    OneRun reads(one_nest());
    EXPECT_FALSE(reads.on({1}).has_failed());
    EXPECT_FALSE(calls_of(reads.whole, "AEGP_GetNewStreamValue(").empty());

    const auto refuse = [](HostRules& rules) { rules.unknown_time_mode = host::model::UnknownTimeMode::error; };
    OneRun refuses(one_nest(), refuse);
    expect_failed_in_one_step(refuses, refuses.on({1}), one_nest());
    EXPECT_EQ(calls_of(refuses.whole, "AEGP_GetNewStreamValue(").size(), 3u) << "the third stream has mode 2";

    OneRun discards(one_nest(), refuse);
    EXPECT_FALSE(discards.on({1}, {kDiscard}).has_failed());
}

TEST(StreamWithoutData, is_passed_over_or_ends_the_copying_of_its_effect) {
    const std::string text = nest_with_effect(
        R"([{"ty":0,"nm":"First","v":{"a":1,"k":[{"t":0,"s":[3]},{"t":30,"s":[4]}]}},{"ty":6,"nm":"Group","v":0},)"
        R"({"ty":0,"nm":"Last","v":{"a":1,"k":[{"t":0,"s":[7]},{"t":30,"s":[8]}]}}])");
    for (const bool strict : {false, true}) {
        OneRun run(text, [&](HostRules& rules) { rules.strict_no_data = strict; });
        ASSERT_FALSE(run.on({0}).has_failed()) << "effects that cannot be copied do not end a run";
        ASSERT_EQ(run.named("Wheel").effect_count(), 1u);
        host::model::Effect& effect = run.named("Wheel").effect(0);
        ASSERT_EQ(effect.parameter_count(), 4u);
        EXPECT_EQ(effect.parameter(1).keyframe_count(), 2u);
        EXPECT_EQ(effect.parameter(3).keyframe_count(), strict ? 0u : 2u) << "it comes behind the one without data";
    }
}

// ---- Keyframes

TEST(KeyframeSetters, that_disturb_each_other_show_in_the_null) {
    const std::string holding =
        transform(R"({"a":1,"k":[{"h":1,"t":0,"s":[10,20,0]},)"
                  R"({"i":{"x":1,"y":1},"o":{"x":0,"y":0},"t":20,"s":[40,20,0]},{"t":30,"s":[70,20,0]}]})");
    for (const bool disturb : {false, true}) {
        OneRun run(one_nest(kFull, holding),
                   [&](HostRules& rules) { rules.keyframe_setters_disturb_each_other = disturb; });
        ASSERT_FALSE(run.on({1}).has_failed());
        host::model::Stream& position = run.named("{{Intro_exflate}}").stream(host::model::kPosition);
        ASSERT_EQ(position.keyframe_count(), 3u);
        // The interpolation is set first, the ease after it.
        using host::model::Interpolation;
        EXPECT_EQ(position.keyframe(0).out, disturb ? Interpolation::bezier : Interpolation::hold);
        EXPECT_EQ(position.keyframe(1).in, disturb ? Interpolation::bezier : Interpolation::linear);
        EXPECT_EQ(position.keyframe(1).out, disturb ? Interpolation::bezier : Interpolation::linear);
        EXPECT_EQ(position.keyframe(2).in, disturb ? Interpolation::bezier : Interpolation::linear);
    }
}

TEST(SeparatedPosition, is_copied_only_where_its_leader_shows_the_keyframes) {
    for (const bool combined : {false, true}) {
        OneRun run(one_nest(kFull, kMoving), [&](HostRules& rules) {
            if (combined) rules.separated_position = host::model::SeparatedPosition::leader_is_combined;
        });
        run.comp.layer_at(1).stream(host::model::kPosition).set_separated(true);
        ASSERT_FALSE(run.on({1}).has_failed());
        // Either way the position varies, so the null stays.
        EXPECT_THAT(run.stack(), ElementsAre("Above", "Wheel", "Cart", "{{Intro_exflate}}", "Below"));
        EXPECT_EQ(run.named("{{Intro_exflate}}").stream(host::model::kPosition).keyframe_count(), combined ? 2u : 0u);
    }
}

// ---- Expressions and scripts

TEST(MissingExpression, without_a_text_is_left_alone_and_with_an_empty_one_becomes_a_seed) {
    const std::string text = animation({asset("inner", {layer(1, "Wheel", "", kMoving), layer(2, "Cart")})},
                                       {nest(1, "Intro", "inner", kFull)});
    OneRun leaves(text);
    ASSERT_FALSE(leaves.on({0}, {kDiscard, kFixRandom}).has_failed());
    EXPECT_FALSE(leaves.named("Wheel").stream(host::model::kPosition).has_expression());

    OneRun seeds(text, [](HostRules& rules) { rules.missing_expression = host::model::MissingExpression::empty_text; });
    ASSERT_FALSE(seeds.on({0}, {kDiscard, kFixRandom}).has_failed());
    EXPECT_EQ(seeds.named("Wheel").stream(host::model::kPosition).data().expression,
              "seedRandom(0); // this line was added by Exflate \n\n");
    EXPECT_FALSE(seeds.named("Wheel").stream(host::model::kScale).has_expression()) << "it does not vary";
    EXPECT_FALSE(seeds.named("Cart").stream(host::model::kPosition).has_expression());
}

TEST(MissingExpression, of_an_effects_parameter_stays_missing) {
    const std::string text =
        nest_with_effect(R"([{"ty":0,"nm":"First","v":{"a":0,"k":3,"x":"var $bm_rt;\n$bm_rt = 4;"}},)"
                         R"({"ty":0,"nm":"Last","v":{"a":0,"k":7}}])");
    for (const bool empty : {false, true}) {
        OneRun run(text, [&](HostRules& rules) {
            if (empty) rules.missing_expression = host::model::MissingExpression::empty_text;
        });
        ASSERT_FALSE(run.on({0}).has_failed());
        host::model::Effect& effect = run.named("Wheel").effect(0);
        EXPECT_EQ(effect.parameter(1).data().expression, "var $bm_rt;\n$bm_rt = 4;");
        EXPECT_TRUE(effect.parameter(1).expression_state());
        EXPECT_FALSE(effect.parameter(2).has_expression());
        EXPECT_EQ(effect.parameter(2).data().static_value.n[0], 7);
    }
}

TEST(BrokenExpression, that_does_not_recover_is_repaired_by_a_renaming_alone) {
    // "Wheel" names "Cart", which comes into the composition after it.
    const std::string turning =
        R"("ks":{"o":{"a":0,"k":80},"r":{"a":0,"k":0,"x":"var $bm_rt;\n$bm_rt = thisComp.layer('Cart').rotation;"},)"
        R"("p":{"a":0,"k":[5,5,0]},"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}})";
    const std::string text = animation({asset("inner", {layer(1, "Wheel", "", turning), layer(2, "Cart")})},
                                       {nest(1, "Intro", "inner", kFull)});
    for (const bool recovers : {true, false}) {
        for (const bool renamed : {true, false}) {
            OneRun run(text, [&](HostRules& rules) { rules.broken_expressions_recover = recovers; });
            ASSERT_FALSE(run.on({0}, {kDiscard, type("prefixInput", renamed ? "p" : "")}).has_failed());
            host::model::Stream& rotation = run.named(renamed ? "p_Wheel" : "Wheel").stream(host::model::kRotation);
            const std::string name = renamed ? "p_Cart" : "Cart";
            EXPECT_EQ(rotation.data().expression, "var $bm_rt;\n$bm_rt = thisComp.layer('" + name + "').rotation;");
            EXPECT_EQ(rotation.expression_state(), recovers || renamed);
        }
    }
}

TEST(FailingScript, that_should_repair_expressions_never_ends_a_run) {
    const std::string text =
        animation({asset("inner", {layer(1, R"(6\" wheel)")})}, {nest(1, "Intro", "inner", kFull)});
    for (const bool is_error : {false, true}) {
        OneRun run(text, [&](HostRules& rules) { rules.failing_script_is_an_error = is_error; });
        const auto outcome = run.on({0}, {type("prefixInput", "p")});
        EXPECT_FALSE(outcome.has_failed());
        EXPECT_FALSE(outcome.log.empty()) << "the host notes it";
        EXPECT_THAT(run.stack(), ElementsAre("p_6\" wheel"));
        EXPECT_THAT(outcome.undo_steps, ElementsAre("Exflate"));
    }
}

}  // namespace
