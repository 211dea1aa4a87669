// One plug-in in one host: entry, menus, commands, and everything that can go wrong on the way.
#include "runner/session.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "nobody_there.h"

using host::model::Comp;
using host::model::Project;
using host::runner::PluginModule;
using host::runner::Session;
using host::runner::VisitResult;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct SessionOf {
    explicit SessionOf(const std::string& plugin)
        : module(std::filesystem::path(TEST_PLUGIN_FOLDER) / (plugin + ".so")),
          comp(project.add_comp("Main")),
          session(project, settings, nobody) {
        comp.load_timing(25, host::model::from_seconds(4));
        comp.load_size(100, 100);
        project.open_comp(&comp);
    }

    VisitResult start() { return session.start(module); }

    AEGP_Command command(const std::string& text) {
        for (const auto& item : session.menu_items()) {
            if (item.text == text) return item.command;
        }
        return 0;
    }

    // Starts the plug-in and picks one command.
    VisitResult run(const std::string& text) {
        EXPECT_FALSE(start().has_failed());
        return session.run_command(command(text));
    }

    PluginModule module;
    Project project;
    Comp& comp;
    host::script::Settings settings = host::script::Settings::in_memory();
    test::NobodyThere nobody;
    Session session;
};

TEST(Session, starting_inserts_menu_items_that_are_disabled) {
    SessionOf plugin("troublemaker");
    EXPECT_THAT(plugin.session.menu_items(), IsEmpty());
    const VisitResult outcome = plugin.start();
    EXPECT_EQ(outcome.error, A_Err_NONE);
    EXPECT_THAT(outcome.log, IsEmpty());
    ASSERT_FALSE(plugin.session.menu_items().empty());
    EXPECT_EQ(plugin.session.menu_items().front().text, "Add");
    EXPECT_FALSE(plugin.session.menu_items().front().enabled);
}

TEST(Session, updating_menus_enables_what_the_hook_enables) {
    SessionOf plugin("troublemaker");
    plugin.start();
    plugin.session.update_menus();
    EXPECT_TRUE(plugin.session.suites().menu_item(plugin.command("Add"))->enabled);
    EXPECT_FALSE(plugin.session.suites().menu_item(plugin.command("Never Enabled"))->enabled);
}

TEST(Session, a_failed_entry_point_drops_what_it_registered_and_keeps_what_it_said) {
    SessionOf plugin("fails_at_entry");
    const VisitResult outcome = plugin.start();
    EXPECT_EQ(outcome.error, 13);
    EXPECT_THAT(outcome.reports, ElementsAre("cannot start"));
    EXPECT_THAT(outcome.log, ElementsAre("plug-in fails_at_entry: its entry point returned error 13"));
    EXPECT_THAT(plugin.session.menu_items(), IsEmpty());
    EXPECT_THAT(plugin.session.suites().command_hooks(), IsEmpty());
}

TEST(Session, an_exception_from_the_entry_point_is_a_failed_start) {
    SessionOf plugin("throws_at_entry");
    const VisitResult outcome = plugin.start();
    EXPECT_TRUE(outcome.has_failed());
    EXPECT_TRUE(outcome.has_thrown);
    EXPECT_THAT(outcome.log, ElementsAre("plug-in throws_at_entry: its entry point threw an exception: no start"));
}

TEST(Session, a_command_changes_the_project_under_its_undo_group) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Add");
    EXPECT_EQ(outcome.error, A_Err_NONE);
    EXPECT_TRUE(outcome.is_handled);
    EXPECT_THAT(outcome.undo_steps, ElementsAre("Add"));
    EXPECT_EQ(plugin.comp.layer_count(), 1);
    plugin.project.undo().undo_all();
    EXPECT_EQ(plugin.comp.layer_count(), 0);
}

TEST(Session, a_disabled_command_is_refused_without_asking_anybody) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Never Enabled");
    EXPECT_FALSE(outcome.is_enabled);
    EXPECT_FALSE(outcome.is_handled);
    EXPECT_FALSE(outcome.has_failed());
    EXPECT_THAT(outcome.reports, IsEmpty());
}

TEST(Session, an_unknown_command_is_refused) {
    SessionOf plugin("troublemaker");
    plugin.start();
    EXPECT_FALSE(plugin.session.run_command(0).is_enabled);
    EXPECT_FALSE(plugin.session.run_command(123456).is_enabled);
}

TEST(Session, a_later_plug_in_is_told_whether_an_earlier_one_handled_the_command) {
    SessionOf plugin("troublemaker");
    const PluginModule onlooker(std::filesystem::path(TEST_PLUGIN_FOLDER) / "onlooker.so");
    plugin.start();
    EXPECT_FALSE(plugin.session.start(onlooker).has_failed());
    const VisitResult claimed = plugin.session.run_command(plugin.command("Add"));
    EXPECT_THAT(claimed.reports, ElementsAre("handled before"));
    EXPECT_TRUE(claimed.is_handled);
    const VisitResult unclaimed = plugin.session.run_command(plugin.command("Unclaimed"));
    EXPECT_THAT(unclaimed.reports, ElementsAre("not handled before"));
    EXPECT_FALSE(unclaimed.is_handled);
}

TEST(Session, an_earlier_plug_in_that_fails_does_not_keep_the_command_from_later_ones) {
    SessionOf plugin("troublemaker");
    const PluginModule onlooker(std::filesystem::path(TEST_PLUGIN_FOLDER) / "onlooker.so");
    plugin.start();
    plugin.session.start(onlooker);
    const VisitResult outcome = plugin.session.run_command(plugin.command("Throw Exception"));
    EXPECT_THAT(outcome.reports, ElementsAre("handled before"));
    EXPECT_TRUE(outcome.has_thrown);
}

TEST(Session, an_exception_that_leaves_a_hook_is_caught_and_reported) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Throw Exception");
    EXPECT_TRUE(outcome.has_failed());
    EXPECT_TRUE(outcome.has_thrown);
    EXPECT_THAT(outcome.log, ElementsAre("plug-in troublemaker: its command hook threw an exception: boom"));
}

TEST(Session, a_thrown_number_is_caught_too) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Throw Number");
    EXPECT_TRUE(outcome.has_thrown);
    EXPECT_THAT(outcome.log,
                ElementsAre("plug-in troublemaker: its command hook threw something that is not an exception"));
}

TEST(Session, undo_groups_left_open_are_closed_and_the_edits_are_one_step) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Leave Group Open");
    EXPECT_FALSE(outcome.has_failed());
    EXPECT_THAT(outcome.undo_steps, ElementsAre("Outer"));
    EXPECT_THAT(outcome.log,
                ElementsAre("plug-in troublemaker: its command hook left 2 undo groups open; the host closed "
                            "them and kept the changes as one step"));
    EXPECT_EQ(plugin.comp.layer_count(), 1);
    plugin.project.undo().undo();
    EXPECT_EQ(plugin.comp.layer_count(), 0);
}

TEST(Session, boxes_and_alerts_are_kept_in_full) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Talk");
    EXPECT_THAT(outcome.reports, ElementsAre("a box"));
    ASSERT_EQ(outcome.alerts.size(), 1U);
    EXPECT_EQ(outcome.alerts[0].message, "a script says");
    EXPECT_EQ(outcome.alerts[0].title, "Title");
}

TEST(Session, a_failed_call_and_a_failed_hook_are_one_sentence_each) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Bad Call");
    EXPECT_TRUE(outcome.has_failed());
    ASSERT_EQ(outcome.log.size(), 2U);
    EXPECT_THAT(outcome.log[0], HasSubstr("LayerSuite5.AEGP_DeleteLayer: "));
    EXPECT_EQ(outcome.log[1], "plug-in troublemaker: its command hook returned error " + std::to_string(outcome.error));
}

TEST(Session, a_failed_call_that_the_plug_in_ignores_is_logged_and_no_failure) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Ignored Bad Call");
    EXPECT_FALSE(outcome.has_failed());
    EXPECT_THAT(outcome.log, ElementsAre(HasSubstr("AEGP_DeleteLayer")));
}

TEST(Session, changes_before_an_error_stay_until_they_are_taken_back) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Edit Then Fail");
    EXPECT_EQ(outcome.error, 7);
    EXPECT_EQ(plugin.comp.layer_count(), 1);
    plugin.project.undo().undo_all();
    EXPECT_EQ(plugin.comp.layer_count(), 0);
}

TEST(Session, idle_hooks_are_asked_again_and_again_and_death_hooks_at_the_end) {
    SessionOf plugin("caretaker");
    EXPECT_FALSE(plugin.start().has_failed());
    EXPECT_THAT(plugin.session.idle().reports, ElementsAre("idle 1"));
    EXPECT_THAT(plugin.session.idle().reports, ElementsAre("idle 2"));
    EXPECT_THAT(plugin.session.quit().reports, ElementsAre("goodbye"));
}

TEST(Session, a_second_run_starts_with_a_clean_record) {
    SessionOf plugin("troublemaker");
    plugin.run("Bad Call");
    const VisitResult outcome = plugin.session.run_command(plugin.command("Add"));
    EXPECT_FALSE(outcome.has_failed());
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_THAT(outcome.undo_steps, ElementsAre("Add"));
}

TEST(Session, what_was_never_given_back_can_be_asked) {
    SessionOf plugin("troublemaker");
    plugin.run("Leak");
    const auto ledger = plugin.session.suites().ledger();
    ASSERT_EQ(ledger.never_disposed.size(), 1U);
    EXPECT_EQ(ledger.never_disposed[0].kind, host::suites::HandleKind::collection);
    const auto held = plugin.session.suites().suites_held();
    ASSERT_EQ(held.size(), 1U);
    EXPECT_EQ(held[0].structure, "AEGP_CollectionSuite2");
}

TEST(Session, a_broken_script_is_quiet_for_the_plug_in_and_logged) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Broken Script");
    EXPECT_FALSE(outcome.has_failed());
    EXPECT_THAT(outcome.log, ElementsAre(HasSubstr("a script failed: Unable to execute script at line 1.")));
}

TEST(Session, registering_outside_the_entry_point_is_refused) {
    SessionOf plugin("troublemaker");
    const VisitResult outcome = plugin.run("Register Late");
    EXPECT_TRUE(outcome.has_failed());
    EXPECT_EQ(plugin.session.suites().command_hooks().size(), 1U);
}

TEST(Session, one_module_can_serve_one_session_after_another) {
    for (int i = 0; i < 3; ++i) {
        SessionOf plugin("troublemaker");
        EXPECT_FALSE(plugin.run("Add").has_failed());
        EXPECT_EQ(plugin.comp.layer_count(), 1);
    }
}

}  // namespace
