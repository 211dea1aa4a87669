// The dialog's flags, and that nothing the dialog remembers changes a result.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::asset_ids;
using test::exflate;
using test::Finished;
using test::layer_names;
using test::Sandbox;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

using Flags = std::vector<std::string>;

Finished run(const Sandbox& sandbox, Flags flags) {
    flags.push_back(sandbox.write("a.json", test::one_nest()));
    return exflate(sandbox, flags);
}

Finished run(const Flags& flags) {
    return run(Sandbox(), flags);
}

TEST(RunDialog, layers_are_named_as_the_flags_say) {
    const std::string longest(50, 'p');
    const std::vector<std::pair<Flags, std::string>> answers = {{{}, ""},
                                                                {{"--prefix", "fx"}, "fx_"},
                                                                {{"--prefix", longest}, longest + "_"},
                                                                {{"--prepend-name"}, "Intro_"},
                                                                {{"--prepend-name", "--prefix", "é"}, "Intro_é_"}};
    for (const auto& [flags, start] : answers) {
        EXPECT_THAT(layer_names(run(flags).out),
                    ElementsAre("Title", start + "circle", start + "square", "Background"));
    }
}

TEST(RunDialog, the_source_is_deleted_only_on_request) {
    EXPECT_THAT(asset_ids(run({}).out), ElementsAre("comp_0"));
    const Finished deleted = run({"--delete-source"});
    EXPECT_THAT(asset_ids(deleted.out), IsEmpty());
    EXPECT_THAT(deleted.err, MatchesRegex("a.json: 1 nest of composition \"Main\" un-nested, 2 layers made, 1 nested "
                                          "composition deleted, [0-9]+ bytes became [0-9]+ .*%.\n"));
}

TEST(RunDialog, a_source_that_is_used_elsewhere_is_kept_and_the_alert_shown_in_full) {
    const Sandbox sandbox(test::three_nests());
    const Finished finished = exflate(sandbox, {"a.json", "--layer", "Left", "--delete-source"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(
        finished.err,
        StartsWith(
            "a.json: Source Not Deleted: The source could not be deleted because it is being used in other places\n"
            "a.json: 1 nest of composition \"Main\" un-nested, 1 layer made, 1 nested composition kept, "));
}

// "Shared" is in use when "Left" goes, "Deep" when "Box" does, and both are gone in the end.
TEST(RunDialog, a_notice_of_a_source_that_was_deleted_after_all_is_not_shown) {
    for (const Flags& flags : {Flags{}, {"--recursive"}, {"--recursive", "--only-exact"}, {"--only-exact"}}) {
        Flags all = flags;
        all.insert(all.end(), {"a.json", "--delete-source"});
        const Finished finished = exflate(Sandbox(test::three_nests()), all);
        EXPECT_EQ(finished.exit_code, 0);
        EXPECT_THAT(finished.err, Not(HasSubstr("Not Deleted")));
        EXPECT_THAT(finished.err, HasSubstr(" nested compositions deleted, "));
    }
}

TEST(RunDialog, notices_of_several_runs_become_one_that_fits) {
    std::string text = test::three_nests();
    const std::string spare =
        test::asset("spare", "Spare", {test::nest_layer(1, "x", "comp_0"), test::nest_layer(2, "y", "comp_2")});
    text.insert(text.find(R"({"id":"comp_0")"), spare + ",");
    const Finished finished = exflate(Sandbox(text), {"a.json", "--delete-source", "--recursive"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(finished.err,
                StartsWith("a.json: Sources Not Deleted: Some (or all) sources could not be deleted because "
                           "they are being used in other places\na.json: 4 nests of "));
    EXPECT_THAT(finished.err, HasSubstr("1 nested composition deleted, 2 kept"));
    EXPECT_EQ(finished.err.find("Not Deleted"), finished.err.rfind("Not Deleted"));
}

TEST(RunDialog, a_kept_nest_stays_switched_off) {
    const Finished finished = run({"--keep-in-comp"});
    EXPECT_THAT(layer_names(finished.out),
                testing::UnorderedElementsAre("Title", "circle", "square", "Intro", "Background"));
    EXPECT_THAT(finished.out, HasSubstr("\"hd\":true"));
}

TEST(RunDialog, attributes_are_copied_unless_they_are_discarded) {
    // The nest stands at 50, 40, as do the layers inside it.
    const auto x_of_circle = [](const std::string& text) {
        const rapidjson::Document document = test::parsed(text);
        return document["layers"][1]["ks"]["p"]["k"][0].GetDouble();
    };
    EXPECT_EQ(x_of_circle(run({}).out), 100);
    EXPECT_EQ(x_of_circle(run({"--copy-attributes"}).out), 100);
    EXPECT_EQ(x_of_circle(run({"--discard-attributes"}).out), 50);
}

TEST(RunDialog, random_expressions_get_a_seed_only_on_request) {
    std::string text = test::one_nest();
    const std::string plain = R"("r":{"a":0,"k":0})";
    text.replace(text.find(plain), plain.size(), R"x("r":{"a":0,"k":0,"x":"random(10)"})x");
    const Sandbox sandbox(text);
    EXPECT_THAT(exflate(sandbox, {"a.json", "--fix-random"}).out, HasSubstr("seedRandom("));
    EXPECT_THAT(exflate(sandbox, {"a.json"}).out, testing::Not(HasSubstr("seedRandom(")));
}

TEST(RunDialog, a_prefix_of_51_bytes_is_refused_with_the_plug_ins_alert) {
    std::string accents;
    for (int i = 0; i < 26; ++i) accents += "é";
    for (const std::string& prefix : {std::string(51, 'p'), accents, std::string(5000, 'p')}) {
        const Sandbox sandbox;
        const Finished finished = run(sandbox, {"--prefix", prefix, "-o", "out.json"});
        EXPECT_EQ(finished.exit_code, 4);
        const auto refusal =
            AllOf(StartsWith("a.json: the plug-in's command changed nothing: "),
                  testing::EndsWith("Prefix Too Long: The prefix you set it too long. Please limit prefixes to 50 "
                                    "characters.\n"));
        EXPECT_THAT(finished.err, refusal);
        EXPECT_THAT(run(sandbox, {"--strict", "--prefix", prefix, "-o", "out.json"}).err, refusal);
        EXPECT_THAT(exflate(sandbox, {"check", "a.json", "--prefix", prefix}).err, refusal);
        EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
    }
}

// All answers the dialog can be left with.
std::vector<Flags> all_answers() {
    std::vector<Flags> all;
    for (const char* attributes : {"--copy-attributes", "--discard-attributes"}) {
        for (const char* source : {"", "--delete-source", "--keep-in-comp"}) {
            for (const char* name : {"", "--prepend-name"}) {
                for (const char* random : {"", "--fix-random"}) {
                    Flags flags = {attributes, std::string("--prefix=") + (*name == '\0' ? "" : "p")};
                    for (const char* flag : {source, name, random}) {
                        if (*flag != '\0') flags.emplace_back(flag);
                    }
                    all.push_back(flags);
                }
            }
        }
    }
    return all;
}

TEST(RunDialog, earlier_answers_change_nothing) {
    const std::vector<Flags> all = all_answers();
    ASSERT_EQ(all.size(), 24U);
    std::vector<std::string> fresh;
    for (const Flags& flags : all) fresh.push_back(run(flags).out);
    const Sandbox sandbox;  // one settings folder for all that follow
    for (std::size_t before = 0; before < all.size(); ++before) {
        for (const std::size_t step : {1U, 5U, 12U, 19U}) {
            const std::size_t now = (before + step) % all.size();
            run(sandbox, all[before]);
            EXPECT_EQ(run(sandbox, all[now]).out, fresh[now]) << "settings " << before << ", then " << now;
        }
    }
}

TEST(RunDialog, nothing_is_remembered_without_a_home_folder) {
    const Sandbox sandbox(test::one_nest());
    const Finished finished = exflate(sandbox, {.arguments = {"a.json"}, .without_settings_folder = true});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, run({}).out);
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
}

TEST(RunDialog, the_settings_stand_in_the_home_folder_without_a_configuration_folder) {
    const Sandbox sandbox(test::one_nest());
    const Finished finished = exflate(
        sandbox,
        {.arguments = {"a.json"}, .environment = {{"HOME", sandbox.folder()}}, .without_settings_folder = true});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(sandbox.names(".config/exflate"), testing::Contains("settings"));
}

TEST(RunDialog, settings_that_cannot_be_saved_are_reported_and_change_nothing) {
    const Sandbox sandbox(test::one_nest());
    const Finished finished = exflate(sandbox, {.arguments = {"a.json", "--prefix", "x"},
                                                .environment = {{"XDG_CONFIG_HOME", "/dev/null"}},
                                                .without_settings_folder = true});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, run({"--prefix", "x"}).out);
    EXPECT_THAT(finished.err, HasSubstr("/dev/null"));
}

// Asked for a window in both ways, of a command with none of its parts beside it.
std::vector<Finished> without_windows(const Sandbox& sandbox) {
    std::vector<Finished> all;
    for (const Flags& arguments : {Flags{"run", "--dialog", "a.json"}, {"dialog", "--picture", "p.png"}}) {
        all.push_back(
            test::lone_exflate(sandbox, {.arguments = arguments, .environment = {{"EXFLATE_PLUGIN", EXFLATE_MODULE}}}));
    }
    return all;
}

TEST(RunDialog, a_build_without_windows_says_so) {
    for (const Finished& finished : without_windows(Sandbox(test::one_nest()))) {
        EXPECT_EQ(finished.exit_code, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(finished.err,
                  "exflate: there is no dialog window beside this command (Debian: install exflate-dialog): answer the "
                  "dialog "
                  "with its flags instead\n");
    }
}

TEST(RunDialog, windows_that_are_not_of_this_build_are_refused) {
    const Sandbox sandbox(test::one_nest());
    std::filesystem::create_directory(sandbox.path("desktop"));
    const std::string window = sandbox.write("desktop/dialog_window.so", "no module at all");
    for (const Finished& finished : without_windows(sandbox)) {
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_THAT(finished.err, MatchesRegex("exflate: the dialog window cannot be loaded: [^\n]+\n"));
    }
    std::filesystem::copy(EXFLATE_MODULE, sandbox.path(window), std::filesystem::copy_options::overwrite_existing);
    for (const Finished& finished : without_windows(sandbox)) {
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_EQ(finished.err, "exflate: '" + sandbox.path(window).string() + "' belongs to another build\n");
    }
}

TEST(RunDialog, check_boxes_that_disable_each_other_in_edited_settings_can_still_be_set) {
    const Sandbox sandbox;
    const auto settings = [&](const std::string& text) {
        std::string edited = text;
        for (std::size_t at = 0; (at = edited.find("false", at)) != std::string::npos;) edited.replace(at, 5, "true");
        return edited;
    };
    sandbox.write("a.json", test::one_nest());
    const test::Start start = {
        .arguments = {"a.json"}, .environment = {{"HOME", sandbox.folder()}}, .without_settings_folder = true};
    const std::string fresh = exflate(sandbox, start).out;
    const std::string saved = sandbox.read(".config/exflate/settings");
    ASSERT_THAT(saved, HasSubstr("false"));
    sandbox.write(".config/exflate/settings", settings(saved));
    EXPECT_EQ(exflate(sandbox, start).out, fresh);
}

TEST(RunDialog, its_controls_are_listed_by_the_names_for_click_and_type) {
    const Finished finished = exflate(Sandbox(), {"dialog", "--controls", "--first-use"});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("--type edittext \"prefixInput\", holds \"\"\n"));
    EXPECT_THAT(finished.out, HasSubstr("--click radiobutton \"Copy pre-comp attributes to layers\", on\n"));
    EXPECT_THAT(finished.out, HasSubstr("--click checkbox \"Delete source after exflating\", off\n"));
    EXPECT_THAT(finished.out, HasSubstr("--click button \"Ok\"\n"));
}

}  // namespace
