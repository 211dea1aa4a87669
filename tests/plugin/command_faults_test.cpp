// The command when calls fail or suites are missing.
#include <algorithm>
#include <clocale>
#include <stdexcept>

#include "command_fixture.h"

TEST_F(Command, reports_the_first_failure_and_closes_the_group) {
    // Every call of a full run fails once. Dropped results let the run go on, so the calls after are not counted here.
    host.layer_stream(nest, 1)->time_varying = true;
    nest->is_3d = true;
    host.add_effect(nest, "blur", 5, 2);
    answer = "[true,true,false,\"fx\",true,true]";
    const std::vector<fake::Layer*> layers = main->layers;
    const std::vector<fake::Item*> items = host.items;
    int swept = 0;
    int dropped = 0;
    for (int n = 1;; ++n) {
        main->layers = layers;
        host.items = items;
        host.forget_calls();
        host.fail_at = n;
        const A_Err err = run();
        if (static_cast<int>(host.calls.size()) < n) break;
        ++swept;
        EXPECT_EQ(host.held, 0);
        const std::string& failed = host.calls[static_cast<std::size_t>(n) - 1];
        if (err == A_Err_NONE) {
            ++dropped;
            // Reading names while renaming, repairs, and effects copied to one layer.
            EXPECT_TRUE(failed.find("GetLayerName") != std::string::npos ||
                        failed.find("autoFix") != std::string::npos || failed.find("blur") != std::string::npos ||
                        failed.find("new5") != std::string::npos || failed.find("Effect3") != std::string::npos ||
                        failed.find("DisposeStreamValue") != std::string::npos)
                << failed;
        } else {
            EXPECT_EQ(err, fake::Host::kInjected) << failed;
            EXPECT_EQ(host.count_of("EndUndoGroup"), host.count_of("StartUndoGroup") + (n == 3 ? 1 : 0)) << failed;
            EXPECT_TRUE(n <= 2 || host.calls.back() == "Utility6.EndUndoGroup()" || host.calls.back() == failed)
                << failed;
        }
    }
    EXPECT_GT(swept, 400);
    EXPECT_GT(dropped, 20);
}

TEST_F(Command, failed_end_of_the_group_is_returned_when_nothing_else_failed) {
    host.fail_on = "EndUndoGroup";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
}

TEST_F(Command, still_ends_a_group_that_could_not_be_started) {
    host.fail_on = "StartUndoGroup";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
}

TEST_F(Command, reads_the_precomp_layers_name_even_after_a_failure) {
    answer = "[false,false,false,\"\",true,false]";
    host.fail_on = "NewCollection(";
    EXPECT_EQ(run(), fake::Host::kInjected);
    const auto failed = std::find(host.calls.begin(), host.calls.end(), "Collection2.NewCollection(7)");
    EXPECT_THAT(std::vector<std::string>(failed + 1, host.calls.end()),
                ElementsAre("Layer5.GetLayerName(nest, own, null)", "Utility6.EndUndoGroup()"));
}

TEST_F(Command, makes_no_call_for_the_layers_after_a_failed_one) {
    fake::Layer* twin = host.add_layer(main, "twin", inner->item);
    main->selection = {nest, twin};
    host.fail_on = "CreateNullInComp";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.count_of("GetCollectionItemByIndex(collection1, 1)"), 0);
}

TEST_F(Command, missing_suite_of_its_own_leaves_the_group_open) {
    // First acquired by the driver itself, to delete the layer.
    answer = kDiscard;
    host.refused = {"AEGP Comp Suite 14"};
    EXPECT_EQ(run(), 516);
    EXPECT_EQ(host.count_of("EndUndoGroup"), 0);
}

TEST_F(Command, missing_suite_of_an_operation_is_an_ordinary_failure) {
    host.refused = {"AEGP Comp Suite 25"};
    EXPECT_EQ(run(), 516);
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
}

TEST_F(Command, missing_suite_for_effects_or_repairs_lets_the_run_go_on) {
    host.add_effect(nest, "blur", 5, 2);
    host.refused = {"AEGP Effect Suite 3"};
    EXPECT_EQ(run(), A_Err_NONE);
}

TEST_F(Command, lets_no_exception_out) {
    // The layer's name holds what UTF-8 decoding lets through and encoding does not.
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    answer = "[false,false,false,\"fx\",false,false]";
    a->label = "\xf4\x90\x80\x80";
    EXPECT_EQ(run(), A_Err_GENERIC);
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()") << "an exception that is no code";
}

TEST_F(Command, keeps_its_own_code_when_the_end_of_the_group_fails_after_an_exception) {
    host.on_call = [](const std::string& line) {
        if (line == "Collection2.NewCollection(7)") throw std::runtime_error("no memory");
    };
    host.fail_on = "EndUndoGroup";
    EXPECT_EQ(run(), A_Err_GENERIC);
    EXPECT_EQ(host.count_of("EndUndoGroup"), 1);
    EXPECT_THAT(host.calls_of("ExecuteScript(7, , false"), IsEmpty());
}

TEST_F(Command, keeps_the_first_code_when_the_end_of_the_group_fails_too) {
    host.fail_with = {{"NewCollection(", 11}, {"EndUndoGroup", 22}};
    EXPECT_EQ(run(), 11);
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
}

TEST_F(Command, returns_the_code_of_a_failed_closing_script) {
    host.fail_on = "ExecuteScript(7, , false";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), script_call(""));
}

TEST_F(Command, puts_what_was_read_of_the_precomp_layers_name_in_front) {
    answer = "[false,false,false,\"fx\",true,false]";
    host.half_read_name = "ne";
    host.on_call = [this](const std::string& line) {
        if (line == "Layer5.GetLayerIndex(nest)") host.fail_on = "GetLayerName(nest";
    };
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer6.SetLayerName(a', ne_fx_a')"), 1);
}

TEST_F(Command, does_not_stop_at_a_precomp_layers_name_that_cannot_be_read) {
    answer = "[false,false,false,\"fx\",true,false]";
    host.on_call = [this](const std::string& line) {
        // Only the driver's reading of it, which comes when the parent links stand again.
        if (line == "Layer5.GetLayerIndex(nest)") host.fail_on = "GetLayerName(nest";
    };
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer6.SetLayerName(a', fx_a')"), 1);
    EXPECT_EQ(host.count_of("GetLayerName(nest, own, null)"), 2);
}

TEST_F(Command, ends_with_the_code_of_the_null_that_could_not_be_dropped) {
    answer = kDiscard;
    const std::vector<fake::Layer*> layers = main->layers;
    for (const char* failing : {"IsItemSelected(main)", "DeleteLayer(null)"}) {
        main->layers = layers;
        host.forget_calls();
        host.fail_on = failing;
        EXPECT_EQ(run(), fake::Host::kInjected) << failing;
        EXPECT_EQ(host.count_of("DeleteLayer(nest)"), 0) << failing;
        EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()") << failing;
    }
}

TEST_F(Command, moves_the_null_that_stays_before_it_selects_it) {
    host.layer_stream(nest, 1)->time_varying = true;
    host.fail_on = "CollectionPushBack(collection2, 1, null";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.count_of("Layer6.ReorderLayer(null"), 1);
}

class LongPrefix : public Command {
  protected:
    LongPrefix() { answer = "[true,false,false,\"" + std::string(51, 'x') + "\",false,false]"; }
};

TEST_F(LongPrefix, ends_with_the_code_of_its_failed_alert) {
    host.fail_on = "TOO LONG";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Utility6.ExecuteScript(7, TOO LONG, false, result, null)");
}

TEST_F(LongPrefix, shows_no_alert_after_a_failure) {
    host.fail_on = "UnlockMemHandle";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.count_of("TOO LONG"), 0);
    EXPECT_EQ(host.count_of("UndoGroup"), 0);
}

TEST_F(LongPrefix, is_reported_even_at_a_thousand_bytes) {
    answer = "[true,false,false,\"" + std::string(1000, 'x') + "\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("TOO LONG"), 1);
}
