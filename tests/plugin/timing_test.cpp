// Giving the copies the pre-comp layer's offset and span.
#include <climits>

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

TEST_F(Timing, changes_only_the_offset_of_a_layer_that_needs_no_trim) {
    set(nest, 0, 0, 500, 100);
    set(above, 5, 5, 10, 0);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerOffset(above, 100/10)"), 1);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration"), 0);
}

TEST_F(Timing, trims_the_head_by_the_in_point_from_before_the_shift) {
    set(nest, 30, 130, 500, 100);
    set(above, 10, 10, 40, 0);
    above->duration_layer = {41, 10};
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.calls_of("SetLayerInPointAndDuration"),
              std::vector<std::string>{"Layer5.SetLayerInPointAndDuration(above, comp, 130/10, 21/10)"});
}

TEST_F(Timing, leaves_the_head_of_a_layer_that_starts_with_the_precomp_layer) {
    set(nest, 0, 100, 500, 0);
    set(above, 0, 100, 40, 0);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration"), 0);
    above->in_comp.value = 99;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration(above, comp, 100/10, 40/10)"), 1);
}

TEST_F(Timing, leaves_the_tail_of_a_layer_that_ends_with_the_precomp_layer) {
    set(nest, 0, 100, 50, 0);
    set(above, 10, 110, 40, 0);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration"), 0);
    above->duration_comp.value = 41;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerInPointAndDuration(above, comp, 110/10, 40/10)");
}

TEST_F(Timing, judges_the_tail_by_the_duration_from_before_the_head_was_trimmed) {
    set(nest, 20, 20, 50, 0);
    set(above, 0, 0, 60, 0);  // 0 to 60, seen through 20 to 70
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.calls_of("SetLayerInPointAndDuration"),
              (std::vector<std::string>{"Layer5.SetLayerInPointAndDuration(above, comp, 20/10, 40/10)",
                                        "Layer5.SetLayerInPointAndDuration(above, comp, 20/10, 50/10)"}));
}

TEST_F(Timing, keeps_scales_where_it_finds_them) {
    set(nest, 0, 0, 50, 7);
    nest->duration_comp = {50, 30};
    set(above, 0, 0, 90, 3);
    above->offset.scale = 25;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerOffset(above, 10/25)"), 1);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerInPointAndDuration(above, comp, 7/10, 43/30)");
}

TEST_F(Timing, wraps_each_sum_by_itself_and_compares_signed) {
    set(nest, 0, INT_MAX, 10, INT_MAX);
    set(above, 0, 0, 0, 1);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerOffset(above, -2147483648/10)"), 1);
    // The pre-comp layer's end wraps to a negative number, which everything exceeds.
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerInPointAndDuration(above, comp, 2147483647/10, 10/10)");
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

TEST_F(Timing, judges_the_tail_by_the_duration_in_the_composition) {
    set(nest, 0, 0, 50, 0);
    set(above, 0, 0, 50, 0);
    above->duration_layer.value = 500;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration"), 0);
    above->duration_layer.value = 5;
    above->duration_comp.value = 51;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerInPointAndDuration(above, comp, 0/10, 50/10)");
}

TEST_F(Timing, takes_the_precomp_layers_span_from_the_composition) {
    set(nest, 7, 100, 50, 0);
    nest->duration_layer.value = 9;
    set(above, 0, 120, 31, 0);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.calls_of("SetLayerInPointAndDuration"),
              std::vector<std::string>{"Layer5.SetLayerInPointAndDuration(above, comp, 120/10, 30/10)"});
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

TEST_F(Timing, compares_values_and_not_scales) {
    set(nest, 0, 10, 100, 0);
    set(above, 0, 11, 20, 0);
    above->in_comp.scale = 1000;  // far earlier, were scales looked at
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration"), 0);
}

TEST_F(Timing, takes_the_scale_of_a_trimmed_head_from_the_layer) {
    set(nest, 30, 130, 500, 0);
    nest->in_layer.scale = 77;
    set(above, 10, 10, 40, 0);
    above->duration_layer = {40, 25};
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration(above, comp, 130/10, 20/25)"), 1);
}

TEST_F(Timing, wraps_the_differences_and_the_layers_end_too) {
    // The head: 0 - (INT_MAX - (-1)) wraps once, and the difference from it again.
    set(nest, INT_MAX, 0, 500, 0);
    set(above, -1, -1, 3, 0);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration(above, comp, 0/10, -2147483645/10)"), 1);
    // The layer's end wraps to a negative number, which lies before every end.
    host.forget_calls();
    set(nest, 0, 0, 5, 0);
    set(above, 0, 10, INT_MAX, 0);
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerInPointAndDuration"), 0);
    // Shifted, the layer starts at -2: the gap to the pre-comp layer's start wraps to INT_MAX.
    host.forget_calls();
    set(nest, 0, INT_MAX, 5, 0);
    set(above, 0, INT_MAX, 0, 1);
    nest->offset.value = INT_MAX;
    above->offset.value = 0;
    EXPECT_EQ(match(1), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerInPointAndDuration(above, comp, -2/10, -2147483642/10)");
}

TEST_F(Timing, layers_changed_before_a_failure_keep_their_changes) {
    set(nest, 0, 0, 500, 10);
    main->layers = {above, a, nest};
    host.fail_on = "SetLayerOffset(a,";
    EXPECT_EQ(match(2), fake::Host::kInjected);
    EXPECT_EQ(above->offset.value, 10);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerOffset(a, 10/1)");
}
