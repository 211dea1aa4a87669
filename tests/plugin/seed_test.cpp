// Fixed random seeds in front of expressions.
#include "operation_test.h"

class Seed : public OperationTest {
  protected:
    fake::Stream* with_expression(AEGP_LayerStream number, const std::string& text) {
        a->legal_streams.insert(number);
        fake::Stream* stream = host.layer_stream(a, number);
        stream->time_varying = true;
        stream->has_expression = true;
        stream->expression = text;
        return stream;
    }
};

TEST_F(Seed, goes_in_front_of_the_expression) {
    const fake::Stream* position = with_expression(1, "value");
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 1), A_Err_NONE);
    EXPECT_EQ(position->expression, "seedRandom(3); // this line was added by Exflate \n\nvalue");
    EXPECT_THAT(host.calls, ElementsAre("Stream4.IsStreamLegal(a, 1)", "Stream4.GetNewLayerStream(7, a, 1)",
                                        "Stream4.CanVaryOverTime(a/1)", "Stream4.IsStreamTimevarying(a/1)",
                                        "Stream4.GetExpression(7, a/1)", "Memory1.LockMemHandle(memory1)",
                                        "Memory1.FreeMemHandle(memory1)",
                                        "Stream4.SetExpression(7, a/1, " + position->expression + ")"));
}

TEST_F(Seed, is_written_as_a_plain_decimal) {
    with_expression(1, "x");
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 0, 1), A_Err_NONE);
    EXPECT_EQ(host.layer_stream(a, 1)->expression, "seedRandom(0); // this line was added by Exflate \n\nx");
    with_expression(1, "x");
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), -12, 1), A_Err_NONE);
    EXPECT_EQ(host.layer_stream(a, 1)->expression, "seedRandom(-12); // this line was added by Exflate \n\nx");
}

TEST_F(Seed, comes_again_on_every_run) {
    with_expression(1, "x");
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 1, 1), A_Err_NONE);
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 2, 1), A_Err_NONE);
    EXPECT_EQ(host.layer_stream(a, 1)->expression,
              "seedRandom(2); // this line was added by Exflate \n\n"
              "seedRandom(1); // this line was added by Exflate \n\nx");
}

TEST_F(Seed, leaves_illegal_streams_alone) {
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 1), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Stream4.IsStreamLegal(a, 1)"));
}

TEST_F(Seed, leaves_streams_alone_that_cannot_vary_or_do_not) {
    with_expression(1, "x")->can_vary = false;
    with_expression(2, "x")->time_varying = false;
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 1), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Stream4.CanVaryOverTime(a/1)");
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 2), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Stream4.IsStreamTimevarying(a/2)");
}

TEST_F(Seed, leaves_a_keyframed_stream_without_an_expression_alone) {
    with_expression(1, "")->has_expression = false;
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 1), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Stream4.GetExpression(7, a/1)");
}

TEST_F(Seed, stands_alone_when_the_host_gives_an_empty_text) {
    with_expression(1, "");
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 1), A_Err_NONE);
    EXPECT_EQ(host.layer_stream(a, 1)->expression, "seedRandom(3); // this line was added by Exflate \n\n");
}

TEST_F(Seed, visits_the_layer_streams_0_to_58_in_order) {
    EXPECT_EQ(add_random_seed_to_all_expressions(&info, fake::handle(a), 3), A_Err_NONE);
    ASSERT_EQ(host.calls.size(), 59u);
    for (std::size_t i = 0; i < 59; ++i) {
        EXPECT_EQ(host.calls[i], "Stream4.IsStreamLegal(a, " + std::to_string(i) + ")");
    }
}

TEST_F(Seed, ends_at_the_first_failure) {
    expect_faults_end_it([&] { return add_random_seed_to_all_expressions(&info, fake::handle(a), 1); },
                         [&] {
                             with_expression(1, "x");
                             with_expression(58, "y");
                         });
}

TEST_F(Seed, goes_in_front_of_a_disabled_expression_too) {
    with_expression(1, "x")->expression_enabled = false;
    EXPECT_EQ(add_random_seed_to_expressions(&info, fake::handle(a), 3, 1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetExpression"), 1);
    EXPECT_EQ(host.count_of("GetExpressionState"), 0);
}

TEST_F(Seed, leaves_the_stream_with_the_host_and_its_text_freed_while_locked) {
    with_expression(1, "x");
    with_expression(2, "x")->can_vary = false;
    with_expression(3, "x")->time_varying = false;
    with_expression(4, "")->has_expression = false;
    EXPECT_EQ(add_random_seed_to_all_expressions(&info, fake::handle(a), 3), A_Err_NONE);
    EXPECT_THAT(host.open, ElementsAre("stream a/1", "lock of memory1", "stream a/2", "stream a/3", "stream a/4"));
    EXPECT_EQ(host.count_of("UnlockMemHandle"), 0);
}

TEST_F(Seed, is_put_before_each_expression_of_the_layer) {
    for (const AEGP_LayerStream number : {0, 1, 31, 58}) with_expression(number, "x");
    EXPECT_EQ(add_random_seed_to_all_expressions(&info, fake::handle(a), 12), A_Err_NONE);
    for (const AEGP_LayerStream number : {0, 1, 31, 58}) {
        EXPECT_EQ(host.layer_stream(a, number)->expression, "seedRandom(12); // this line was added by Exflate \n\nx");
    }
    EXPECT_EQ(host.count_of("Effect3"), 0) << "effects are not looked at";
}

TEST_F(Seed, stops_at_the_first_stream_that_fails) {
    with_expression(1, "x");
    with_expression(2, "y");
    host.fail_on = "GetExpression(7, a/1)";
    EXPECT_EQ(add_random_seed_to_all_expressions(&info, fake::handle(a), 1), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Stream4.GetExpression(7, a/1)");
    EXPECT_EQ(host.layer_stream(a, 2)->expression, "y");
}
