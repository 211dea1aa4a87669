// Messages, undo groups, scripts.
#include "world.h"

namespace host::suites {

using testing::ElementsAre;

class Utilities : public World {
  public:
    const AEGP_UtilitySuite6* table = suite<AEGP_UtilitySuite6>();
};

TEST_F(Utilities, report_under_the_plug_in_s_name) {
    EXPECT_EQ(table->AEGP_ReportInfo(plugin, "narrow \xC3\xA9"), 0);
    const A_UTF16Char wide[] = {'w', 'i', 'd', 'e', ' ', 0xE9, 0};
    EXPECT_EQ(table->AEGP_ReportInfoUnicode(plugin, wide), 0);
    EXPECT_EQ(suite<AEGP_UtilitySuite3>()->AEGP_ReportInfo(plugin, "older"), 0);
    EXPECT_THAT(reports, ElementsAre("Tester: narrow \xC3\xA9", "Tester: wide \xC3\xA9", "Tester: older"));
    EXPECT_EQ(table->AEGP_ReportInfo(plugin, nullptr), kBadArgument);
    EXPECT_EQ(reports.size(), 3U);
}

TEST_F(Utilities, group_edits_into_one_step) {
    EXPECT_EQ(table->AEGP_StartUndoGroup("Outer"), 0);
    const AEGP_LayerH a = host.handle(add_layer("A"));
    EXPECT_EQ(table->AEGP_StartUndoGroup("Inner"), 0);
    EXPECT_EQ(layers()->AEGP_SetLayerName(a, "B"), 0);
    EXPECT_EQ(table->AEGP_EndUndoGroup(), 0);
    EXPECT_EQ(layers()->AEGP_SetLayerName(a, "C"), 0);
    EXPECT_EQ(table->AEGP_EndUndoGroup(), 0);
    EXPECT_THAT(project.undo().step_names(), ElementsAre("Outer"));
    project.undo().undo();
    EXPECT_EQ(main.layer_count(), 0);
}

TEST_F(Utilities, make_a_step_of_each_edit_outside_groups) {
    const AEGP_LayerH a = host.handle(add_layer("A"));
    project.undo().clear();
    EXPECT_EQ(layers()->AEGP_SetLayerName(a, "B"), 0);
    EXPECT_EQ(layers()->AEGP_SetLayerName(a, "C"), 0);
    EXPECT_THAT(project.undo().step_names(), ElementsAre("", ""));
}

TEST_F(Utilities, end_only_groups_that_are_open) {
    EXPECT_EQ(table->AEGP_EndUndoGroup(), kNotAllowed);
    EXPECT_EQ(last_complaint(), "No undo group is open.");
    EXPECT_EQ(table->AEGP_StartUndoGroup(nullptr), kBadArgument);
    EXPECT_EQ(project.undo().open_groups(), 0);
}

TEST_F(Utilities, make_no_step_of_an_empty_group_unless_the_rules_say_so) {
    for (const bool makes_a_step : {false, true}) {
        project.rules().empty_undo_group_makes_a_step = makes_a_step;
        EXPECT_EQ(table->AEGP_StartUndoGroup("Nothing"), 0);
        EXPECT_EQ(table->AEGP_EndUndoGroup(), 0);
        EXPECT_EQ(project.undo().can_undo(), makes_a_step);
    }
}

TEST_F(Utilities, run_scripts_and_hand_their_result_out) {
    next_script_outcome = {false, "r\xC3\xA9sult", ""};
    AEGP_MemHandle result = nullptr;
    AEGP_MemHandle error = nullptr;
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, "1 + 1; // \xC3\xA9", false, &result, &error), 0);
    EXPECT_THAT(scripts, ElementsAre("1 + 1; // \xC3\xA9"));
    EXPECT_EQ(text_in(result), "r\xC3\xA9sult");
    EXPECT_EQ(text_in(error), "");
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

TEST_F(Utilities, run_scripts_without_handing_anything_out) {
    next_script_outcome = {false, "result", ""};
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, "1", true, nullptr, nullptr), 0);
    EXPECT_TRUE(host.ledger().handed_out.empty());
}

TEST_F(Utilities, report_a_failed_script_in_its_error_text) {
    next_script_outcome = {true, "ignored", "Unable to execute script at line 1. x is undefined"};
    AEGP_MemHandle result = nullptr;
    AEGP_MemHandle error = nullptr;
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, "x", false, &result, &error), 0);
    EXPECT_EQ(text_in(result), "");
    EXPECT_EQ(text_in(error), "Unable to execute script at line 1. x is undefined");
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, "x", false, nullptr, nullptr), 0);
    EXPECT_TRUE(host.diagnostics().empty());
}

TEST_F(Utilities, fail_with_a_failed_script_if_the_rules_say_so) {
    project.rules().failing_script_is_an_error = true;
    next_script_outcome = {true, "", "x is undefined"};
    AEGP_MemHandle result = nullptr;
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, "x", false, &result, nullptr), kNotAllowed);
    EXPECT_EQ(last_complaint(), "x is undefined");
    EXPECT_EQ(result, nullptr);
    next_script_outcome = {};
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, "1", false, &result, nullptr), 0);
}

TEST_F(Utilities, run_no_script_that_is_null) {
    EXPECT_EQ(table->AEGP_ExecuteScript(plugin, nullptr, false, nullptr, nullptr), kBadArgument);
    EXPECT_TRUE(scripts.empty());
}

}  // namespace host::suites
