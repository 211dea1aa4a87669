// Giving the copies the pre-comp layer's offset and span.
#include <regex>
#include <sstream>

#include "operation_test.h"

class Timing : public OperationTest {
  protected:
    // Sets the times of a layer, all of scale 10: in-point and duration in both modes, and the offset.
    static void set(fake::Layer* layer, A_long in_layer, A_long in_comp, A_long duration, A_long offset) {
        layer->in_layer = {in_layer, 10};
        layer->in_comp = {in_comp, 10};
        layer->duration_layer = {duration, 10};
        layer->duration_comp = {duration, 10};
        layer->offset = {offset, 10};
    }

    A_Err match(std::size_t count) {
        return match_precomp_timing(&info, fake::handle(nest), std::vector<int>(count, -1));
    }

    const std::vector<std::string> reads_of_nest = {
        "Layer5.GetLayerInPoint(nest, layer)", "Layer5.GetLayerInPoint(nest, comp)",
        "Layer5.GetLayerDuration(nest, comp)", "Layer5.GetLayerOffset(nest)", "Layer5.GetLayerParentComp(nest)"};
};

TEST_F(Timing, reads_only_the_precomp_layer_for_an_empty_list) {
    EXPECT_EQ(match(0), A_Err_NONE);
    EXPECT_EQ(host.calls, reads_of_nest);
}

TEST_F(Timing, shifts_a_layer_and_trims_what_then_lies_behind_the_span) {
    set(nest, 0, 100, 50, 100);
    set(above, 5, 105, 10, 2);  // in the comp, before the shift
    EXPECT_EQ(match(1), A_Err_NONE);
    std::vector<std::string> expected = reads_of_nest;
    for (const char* line : {"Layer5.GetCompLayerByIndex(main, 0)", "Layer5.GetLayerInPoint(above, comp)",
                             "Layer5.GetLayerDuration(above, comp)", "Layer5.GetLayerOffset(above)",
                             "Layer5.SetLayerOffset(above, 102/10)", "Layer5.GetLayerInPoint(above, layer)",
                             "Layer5.GetLayerDuration(above, layer)", "Layer5.GetLayerInPoint(above, comp)",
                             "Layer5.SetLayerInPointAndDuration(above, comp, 205/10, -55/10)"}) {
        expected.push_back(line);
    }
    EXPECT_EQ(host.calls, expected);
}

TEST_F(Timing, treats_as_many_layers_from_the_top_as_the_list_has_entries) {
    set(nest, 0, 0, 500, 1);
    EXPECT_EQ(match(3), A_Err_NONE);
    EXPECT_THAT(host.calls_of("GetCompLayerByIndex"),
                ElementsAre("Layer5.GetCompLayerByIndex(main, 0)", "Layer5.GetCompLayerByIndex(main, 1)",
                            "Layer5.GetCompLayerByIndex(main, 2)"));
}

TEST_F(Timing, ends_at_the_first_failure) {
    expect_faults_end_it([&] { return match(2); },
                         [&] {
                             set(nest, 20, 20, 50, 0);
                             set(above, 0, 0, 60, 0);
                         });
}

TEST_F(Timing, trims_both_ends_in_this_order) {
    set(nest, 20, 25, 50, 3);
    set(above, 4, 5, 90, 6);
    EXPECT_EQ(match(1), A_Err_NONE);
    std::vector<std::string> expected = reads_of_nest;
    for (const char* line :
         {"Layer5.GetCompLayerByIndex(main, 0)", "Layer5.GetLayerInPoint(above, comp)",
          "Layer5.GetLayerDuration(above, comp)", "Layer5.GetLayerOffset(above)", "Layer5.SetLayerOffset(above, 9/10)",
          "Layer5.GetLayerInPoint(above, layer)", "Layer5.GetLayerDuration(above, layer)",
          "Layer5.SetLayerInPointAndDuration(above, comp, 25/10, 74/10)", "Layer5.GetLayerInPoint(above, comp)",
          "Layer5.SetLayerInPointAndDuration(above, comp, 25/10, 50/10)"}) {
        expected.push_back(line);
    }
    EXPECT_EQ(host.calls, expected);
}

TEST_F(Timing, uses_the_length_of_the_list_and_not_what_is_in_it) {
    set(nest, 0, 0, 500, 1);
    EXPECT_EQ(match_precomp_timing(&info, fake::handle(nest), {2, 0}), A_Err_NONE);
    EXPECT_THAT(host.calls_of("GetCompLayerByIndex"),
                ElementsAre("Layer5.GetCompLayerByIndex(main, 0)", "Layer5.GetCompLayerByIndex(main, 1)"));
}

TEST_F(Timing, shifts_each_layer_by_its_own_offset) {
    set(nest, 0, 0, 500, 10);
    set(above, 0, 0, 5, 1);
    set(a, 0, 0, 5, 2);
    main->layers = {above, a, nest};
    EXPECT_EQ(match(2), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerOffset"),
                ElementsAre("Layer5.SetLayerOffset(above, 11/10)", "Layer5.SetLayerOffset(a, 12/10)"));
}

TEST_F(Timing, layers_changed_before_a_failure_keep_their_changes) {
    set(nest, 0, 0, 500, 10);
    main->layers = {above, a, nest};
    host.fail_on = "SetLayerOffset(a,";
    EXPECT_EQ(match(2), fake::Host::kInjected);
    EXPECT_EQ(above->offset.value, 10);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerOffset(a, 10/1)");
}

// ---- What becomes of one layer

// Times are in-point and duration, each in the layer's time and in the composition's, and the offset; of scale 10 where
// no other stands behind them. Last come the offset, the in-points and the durations that are set.
struct TimingCase {
    const char* name;
    const char* nest;
    const char* layer;
    const char* set;

    friend void PrintTo(const TimingCase& tested, std::ostream* out) { *out << tested.name; }
};

const TimingCase kTimingCases[] = {
    {"only_the_offset_changes_where_no_trim_is_needed", "0 0 500 500 100", "5 5 10 10 0", "100/10"},
    {"head_is_judged_before_the_shift", "30 130 500 500 100", "10 10 41 40 0", "100/10; 130/10, 21/10"},
    {"head_that_starts_with_the_precomp_layer_stays", "0 100 500 500 0", "0 100 40 40 0", "0/10"},
    {"head_that_starts_before_it_goes", "0 100 500 500 0", "0 99 40 40 0", "0/10; 100/10, 40/10"},
    {"tail_that_ends_with_the_precomp_layer_stays", "0 100 50 50 0", "10 110 40 40 0", "0/10"},
    {"tail_that_ends_behind_it_goes", "0 100 50 50 0", "10 110 41 41 0", "0/10; 110/10, 40/10"},
    // 0 to 60, seen through 20 to 70.
    {"tail_is_judged_before_the_head_is_trimmed", "20 20 50 50 0", "0 0 60 60 0", "0/10; 20/10, 40/10; 20/10, 50/10"},
    {"tail_is_not_judged_by_the_duration_in_the_layer", "0 0 50 50 0", "0 0 500 50 0", "0/10"},
    {"tail_is_judged_by_the_duration_in_the_composition", "0 0 50 50 0", "0 0 5 51 0", "0/10; 0/10, 50/10"},
    {"span_of_the_precomp_layer_is_the_compositions", "7 100 9 50 0", "0 120 31 31 0", "0/10; 120/10, 30/10"},
    {"scales_stay_where_they_are_found", "0 0 50 50/30 7", "0 0 90 90 3/25", "10/25; 7/10, 43/30"},
    {"trimmed_head_has_the_layers_scale", "30/77 130 500 500 0", "10 10 40/25 40 0", "0/10; 130/10, 20/25"},
    // Far earlier, if scales were taken into account.
    {"values_are_compared_and_not_scales", "0 10 100 100 0", "0 11/1000 20 20 0", "0/10"},
    // The pre-comp layer's end wraps to a negative number, which everything exceeds.
    {"sums_wrap_each_by_itself_and_are_compared_signed", "0 2147483647 10 10 2147483647", "0 0 0 0 1",
     "-2147483648/10; 2147483647/10, 0/10; 2147483647/10, 10/10"},
    // 0 - (2147483647 - (-1)) wraps once, and the difference from it again.
    {"differences_of_the_head_wrap_too", "2147483647 0 500 500 0", "-1 -1 3 3 0", "0/10; 0/10, -2147483645/10"},
    // It wraps to a negative number, which is before every end.
    {"end_of_the_layer_wraps_too", "0 0 5 5 0", "0 10 2147483647 2147483647 0", "0/10"},
    // Shifted, the layer starts at -2: the gap to the pre-comp layer's start wraps to 2147483647.
    {"gap_between_the_starts_wraps_too", "0 2147483647 5 5 2147483647", "0 2147483647 0 0 0",
     "2147483647/10; -2/10, -2147483642/10"},
};

class TimingOfOneLayer : public Timing, public testing::WithParamInterface<TimingCase> {
  protected:
    static void set(fake::Layer* layer, const char* times) {
        std::istringstream in(times);
        for (A_Time* time :
             {&layer->in_layer, &layer->in_comp, &layer->duration_layer, &layer->duration_comp, &layer->offset}) {
            *time = {0, 10};
            in >> time->value;
            if (in.peek() == '/') in.ignore() >> time->scale;
        }
        EXPECT_TRUE(in.eof()) << times;
    }
};

TEST_P(TimingOfOneLayer, is_set_as_expected) {
    set(nest, GetParam().nest);
    set(above, GetParam().layer);
    EXPECT_EQ(match(1), A_Err_NONE);
    const std::regex call(R"(Layer5\.Set\w+\(above, (?:comp, )?(.*)\))");
    std::string set;
    for (const std::string& line : host.calls_of("Layer5.Set"))
        set += (set.empty() ? "" : "; ") + std::regex_replace(line, call, "$1");
    EXPECT_EQ(set, GetParam().set);
}

INSTANTIATE_TEST_SUITE_P(Cases, TimingOfOneLayer, testing::ValuesIn(kTimingCases),
                         [](const auto& timing) { return timing.param.name; });
