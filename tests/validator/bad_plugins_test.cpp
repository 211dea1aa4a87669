// The small plug-in with one mistake at a time: the test that is meant for it must find it, and say what is wrong; and
// without a mistake, nothing must be found.
#include <gmock/gmock.h>

#include <cstdlib>
#include <set>

#include "runner/utf8_locale.h"
#include "validator/examine.h"

namespace validator {
namespace {

using testing::HasSubstr;

struct BadPlugin {
    std::string mistake;
    std::string test;    // that finds it
    std::string reason;  // a piece of what it says
    TestVerdict verdict = TestVerdict::failed;

    friend std::ostream& operator<<(std::ostream& out, const BadPlugin& plugin) { return out << plugin.mistake; }
};

const std::vector<BadPlugin> kBadPlugins = {
    {"crashes_while_it_is_loaded", "start.loads", "crashed (Aborted) while it was being loaded", TestVerdict::crashed},
    {"crashes_when_it_is_unloaded", "start.loads", "while it was being unloaded", TestVerdict::crashed},
    {"crashes_at_its_start", "start.entry-point", "in its entry point", TestVerdict::crashed},
    {"throws_at_its_start", "start.entry-point", "an exception left its entry point"},
    {"hangs_at_its_start", "start.entry-point", "in its entry point", TestVerdict::hung},
    {"fails_at_its_start", "start.entry-point", "returned error 1"},
    {"registers_nothing", "start.entry-point", "registers no hook"},
    {"ends_the_program_at_its_start", "start.entry-point", "ended the program with code 7"},
    {"registers_a_null_hook", "start.entry-point", "AEGP_RegisterCommandHook (The hook is null.)"},
    {"has_one_menu_item_for_two_commands", "menu.items", "2 commands"},
    {"has_no_menu_item", "menu.items", "inserts no menu item"},
    {"has_no_command_hook", "menu.items", "no command hook behind it"},
    {"crashes_in_the_menu_hook", "menu.update", "in its update-menu hook", TestVerdict::crashed},
    {"changes_something_in_the_menu_hook", "menu.changes-nothing", "changes the project"},
    {"handles_every_command", "menu.foreign-commands", "compare the command's number"},
    {"crashes_when_idle", "hooks.idle", "in its idle hook", TestVerdict::crashed},
    {"asks_for_the_type_of_nothing_when_idle", "hooks.idle", "after the host refused ItemSuite6.AEGP_GetItemType"},
    {"changes_something_when_idle", "hooks.idle", "changes the project"},
    {"crashes_at_the_end", "hooks.death", "in its death hook", TestVerdict::crashed},
    {"throws_at_the_end", "hooks.death", "an exception left its death hook"},
    {"is_enabled_with_nothing_open", "empty.nothing-open", "disable the command where it cannot work"},
    {"divides_by_the_number_of_layers", "empty.no-layers", "the composition has no layers", TestVerdict::crashed},
    {"crashes_without_a_selection", "empty.nothing-selected", "no layer is selected", TestVerdict::crashed},
    {"fails_on_locked_layers", "typical.locked-layers", "returned error 1"},
    {"crashes_on_unnamed_layers", "typical.unnamed-layers", "have no names", TestVerdict::crashed},
    {"takes_the_picture_for_a_composition", "typical.picture-in-panel",
     "refused CompSuite11.AEGP_GetNewCollectionFromCompSelection"},
    {"crashes_in_the_command", "typical.one-layer", "in its command hook, after", TestVerdict::crashed},
    {"hangs_in_the_command", "typical.one-layer", "computed for more than", TestVerdict::hung},
    {"waits_in_the_command", "typical.one-layer", "did not come back within", TestVerdict::hung},
    {"ends_the_program", "typical.one-layer", "must not end the application"},
    {"throws_in_the_command", "typical.exceptions", "an exception left its command hook"},
    {"eats_all_memory", "typical.one-layer", "of memory"},
    {"does_not_say_that_it_handled", "typical.handled", "*handledPB"},
    {"calls_from_a_thread", "typical.main-thread", "from a thread of its own"},
    {"runs_a_broken_script", "typical.calls", "a script of it failed here", TestVerdict::warning},
    {"prints", "typical.quiet", "hiding layers", TestVerdict::warning},
    {"prints_when_idle", "typical.quiet", "idle", TestVerdict::warning},
    {"leaves_a_process", "typical.processes", "still runs"},
    {"keeps_a_layer", "typical.after-deletion", "AEGP_GetLayerFlags with a handle that it has kept"},
    {"crashes_behind_an_option", "typical.switched", "every switch of its dialogs", TestVerdict::crashed},
    {"fails_on_a_second_run", "typical.second-run", "returned error 1"},
    {"counts_its_runs", "typical.run-after-undo", "keeps something of the first run"},
    {"keeps_the_first_composition", "typical.composition-in-front", "handles of the first"},
    {"asks_for_a_suite_that_nobody_has", "typical.one-layer", "after a call of the basic suite", TestVerdict::crashed},
    {"leaves_memory", "leaks.memory", "AEGP_ExecuteScript"},
    {"leaves_a_collection", "leaks.collections", "AEGP_GetNewCollectionFromCompSelection"},
    {"leaves_a_stream", "leaks.streams", "AEGP_GetNewLayerStream"},
    {"leaves_a_stream_value", "leaks.stream-values", "AEGP_GetNewStreamValue"},
    {"leaves_an_effect", "leaks.effects", "AEGP_GetLayerEffectByIndex"},
    {"leaves_footage", "leaks.footage", "AEGP_NewSolidFootage"},
    {"leaves_a_keyframe_batch", "leaks.keyframe-batches", "AEGP_StartAddKeyframes"},
    {"leaves_a_block", "leaks.blocks", "AllocateBlock"},
    {"holds_a_suite", "leaks.suites", "AEGP_ProjSuite6"},
    {"disposes_twice", "handles.disposed-twice", "AEGP_DisposeCollection"},
    {"uses_after_disposal", "handles.used-after-disposal", "AEGP_GetStreamNumKFs"},
    {"frees_locked_memory", "handles.freed-while-locked", "AEGP_ExecuteScript"},
    {"releases_twice", "handles.released-twice", "ProjSuite6"},
    {"never_ends_its_group", "undo.group-closed", "AEGP_EndUndoGroup"},
    {"leaves_a_group_open_when_idle", "undo.group-closed", "its idle hook leaves 1 undo group"},
    {"ends_its_group_twice", "undo.group-balanced", "when none is open"},
    {"edits_outside_its_group", "undo.in-a-group", "outside an undo group"},
    {"makes_two_steps", "undo.one-step", "undo 2 times", TestVerdict::warning},
    {"crashes_after_a_failure", "once.lives", "failed, it crashed (Aborted) in its command hook", TestVerdict::crashed},
    {"hangs_after_a_failure", "once.lives", "failed, it did not come back", TestVerdict::hung},
    {"throws_after_a_failure", "once.exceptions", "an exception left its command hook"},
    {"swallows_errors", "once.errors-told", "it returned 0 and told nobody"},
    {"returns_another_code", "once.code-kept", "returned error 1 instead of that call's code 4711"},
    {"goes_on_after_an_error", "once.stops", "it went on with LayerSuite5.AEGP_SetLayerFlag"},
    {"passes_on_what_it_never_got", "once.results-unused", "AEGP_GetCollectionNumItems"},
    {"leaves_the_group_open_after_a_failure", "once.undo-group", "never ended"},
    {"forgets_that_it_handled_after_a_failure", "once.handled", "handled"},
    {"leaves_a_collection_after_a_failure", "once.leaks", "AEGP_GetNewCollectionFromCompSelection"},
    {"swallows_errors_at_its_start", "once.entry-point", "half registered"},
    {"holds_a_suite_when_it_does_not_start", "once.entry-point", "without releasing AEGP_ProjSuite6"},
    {"crashes_without_a_suite", "missing.lives", "without the suite ProjSuite6", TestVerdict::crashed},
    {"leaves_the_group_open_without_a_suite", "missing.undo-group", "never ended"},
    {"copies_names_into_a_short_buffer", "hostile.long-names", "longer", TestVerdict::crashed},
    {"breaks_on_names_beyond_ascii", "hostile.foreign-names", "not ASCII"},
    {"prints_names_as_formats", "hostile.odd-names", "format letters", TestVerdict::crashed},
    {"compares_all_layers_with_all", "hostile.many-layers", "square of the layers"},
    {"cannot_nest_deeply", "hostile.deep-nesting", "nested 60 deep", TestVerdict::crashed},
};

// The plug-in is loaded in processes of its own only, so each reads what the environment says now.
CheckRequest request_for(const std::string& mistake) {
    host::runner::use_utf8_locale();
    setenv("MISTAKE", mistake.c_str(), 1);
    CheckRequest request;
    request.module = BAD_PLUGIN;
    request.limits = {std::chrono::seconds(2), std::chrono::seconds(60), std::size_t{1} << 30};
    if (mistake == "hangs_after_a_failure" || mistake == "waits_in_the_command")
        request.limits.time = std::chrono::seconds(2);
    return request;
}

Examination examined(const CheckRequest& request) {
    return examine(request, [](const TestResult&) {});
}

class BadPlugins : public testing::TestWithParam<BadPlugin> {};

TEST_P(BadPlugins, are_found_by_the_test_meant_for_them) {
    const BadPlugin& plugin = GetParam();
    CheckRequest request = request_for(plugin.mistake);
    request.only = {plugin.test};
    const Examination examination = examined(request);
    ASSERT_EQ(examination.results.size(), 1U);
    EXPECT_EQ(words(examination.results[0].verdict), words(plugin.verdict));
    EXPECT_THAT(examination.results[0].reason, HasSubstr(plugin.reason));
}

INSTANTIATE_TEST_SUITE_P(Mistakes, BadPlugins, testing::ValuesIn(kBadPlugins),
                         [](const auto& plugin) { return plugin.param.mistake; });

TEST(AGoodPlugin, is_found_good_by_every_test) {
    for (const TestResult& result : examined(request_for("")).results)
        EXPECT_TRUE(result.verdict == TestVerdict::ok || result.verdict == TestVerdict::not_applicable)
            << result.test->id << ": " << result.reason;
}

TEST(TheTests, are_named_once_and_climb_the_ladder) {
    std::set<std::string> ids;
    int rung = 1;
    for (const TestFacts& test : all_tests()) {
        EXPECT_TRUE(ids.insert(test.id).second) << test.id;
        EXPECT_GE(test.strictness, rung) << test.id;
        rung = test.strictness;
    }
    EXPECT_EQ(rung, kMostStrict);
}

TEST(TheTests, of_a_lower_rung_leave_out_what_is_above) {
    CheckRequest request = request_for("leaves_a_stream");
    request.strictness = 4;
    for (const TestResult& result : examined(request).results) {
        EXPECT_LE(result.test->strictness, 4);
        EXPECT_FALSE(is_bad(result.verdict)) << result.test->id;
    }
}

TEST(AMissingModule, is_reported_with_its_name) {
    CheckRequest request = request_for("");
    request.module = "no_such_module.so";
    EXPECT_THAT(examined(request).load_problem, HasSubstr("no_such_module.so"));
}

}  // namespace
}  // namespace validator
