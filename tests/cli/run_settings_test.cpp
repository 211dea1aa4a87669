// What the dialog remembers between runs: a file that people and other programs can reach.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* kFile = "config/exflate/settings";
constexpr const char* kTooLong = "a.json: Script Alert: Error: the value of a setting is longer than 1999 bytes\n";

class RunSettings : public testing::Test {
  protected:
    RunSettings() {
        sandbox.write("a.json", test::one_nest());
        std::filesystem::create_directories(sandbox.path("config/exflate"));
        const Sandbox other;
        other.write("a.json", test::one_nest());
        fresh = exflate(other, {"a.json"}).out;
    }

    Finished run(std::vector<std::string> flags = {}) const {
        flags.insert(flags.begin(), "a.json");
        return exflate(sandbox, {.arguments = flags,
                                 .environment = {{"XDG_CONFIG_HOME", sandbox.path("config")}},
                                 .without_settings_folder = true});
    }

    // Without flags the run must do what it does where nothing is remembered.
    Finished run_and_expect_the_usual() const {
        Finished finished = run();
        EXPECT_EQ(finished.exit_code, 0) << finished.err;
        EXPECT_EQ(finished.out, fresh);
        return finished;
    }

    Sandbox sandbox;
    std::string fresh;
};

TEST_F(RunSettings, the_answers_of_the_last_run_are_there_for_the_next) {
    run({"--discard-attributes", "--delete-source", "--prefix", "f\"x", "--prepend-name", "--fix-random"});
    EXPECT_THAT(sandbox.read(kFile), testing::EndsWith("[\"corvane.exflate\"]\n"
                                                       "\"settingCopyPrecompAttr\" = \"false\"\n"
                                                       "\"settingDeleteSource\" = \"true\"\n"
                                                       "\"settingFixRandomExpressions\" = \"true\"\n"
                                                       "\"settingKeepInComp\" = \"false\"\n"
                                                       "\"settingPrefixInput\" = \"f\\\"x\"\n"
                                                       "\"settingPrependPrecompName\" = \"true\"\n"));
    run_and_expect_the_usual();
}

TEST_F(RunSettings, settings_of_other_scripts_are_kept) {
    const std::string others =
        "[\"another\"]\n\"\" = \"\"\n\"k\\x0a\" = \"\\x00\\\" \\\\ \xFF\xC3 \xC3\xA9 # [x] = \"\n\n"
        "[\"corvane.exflate \"]\n\"settingPrefixInput\" = \"not ours\"\n";
    sandbox.write(kFile, others);
    EXPECT_THAT(run({"--prefix", "fx"}).err, Not(HasSubstr("settings")));
    const std::string text = sandbox.read(kFile);
    EXPECT_THAT(text, HasSubstr(others.substr(0, others.find("\n\n") + 2)));
    EXPECT_THAT(text, HasSubstr(others.substr(others.find("\n\n") + 2)));
    EXPECT_THAT(text, HasSubstr("\n[\"corvane.exflate\"]\n"));
}

TEST_F(RunSettings, a_damaged_file_is_reported_and_set_aside_and_the_run_goes_on) {
    for (const std::string damaged :
         {"nonsense\n", "[\"corvane.exflate\"]\n\"settingPrefixInput\" = \"cut", "\x01\x02"}) {
        sandbox.write(kFile, damaged);
        EXPECT_THAT(run_and_expect_the_usual().err, HasSubstr("is damaged in line"));
        EXPECT_EQ(sandbox.read("config/exflate/settings.damaged"), damaged);
        EXPECT_THAT(run_and_expect_the_usual().err, Not(HasSubstr("damaged")));
    }
}

TEST_F(RunSettings, an_unwritable_file_makes_the_dialog_show_an_alert) {
    std::filesystem::create_directories(sandbox.path(kFile));  // a folder in its place
    const Finished finished = run_and_expect_the_usual();
    EXPECT_THAT(finished.err, HasSubstr("exflate: Cannot read settings file"));
    EXPECT_THAT(finished.err, HasSubstr("a.json: Script Alert: Error: Cannot "));
    EXPECT_TRUE(std::filesystem::is_directory(sandbox.path(kFile)));
    EXPECT_THAT(sandbox.names("config/exflate"), ElementsAre("settings"));
}

TEST_F(RunSettings, a_value_too_long_to_read_makes_the_dialog_show_an_alert) {
    for (const std::string key : {"settingCopyPrecompAttr", "settingPrefixInput", "settingDeleteSource",
                                  "settingKeepInComp", "settingPrependPrecompName", "settingFixRandomExpressions"}) {
        sandbox.write(kFile, "[\"corvane.exflate\"]\n\"" + key + "\" = \"" + std::string(2000, 'x') + "\"\n");
        EXPECT_THAT(run_and_expect_the_usual().err, HasSubstr(kTooLong)) << key;
        EXPECT_THAT(run_and_expect_the_usual().err, Not(HasSubstr("Alert"))) << key;
    }
}

TEST_F(RunSettings, values_written_by_others_decide_nothing_and_are_not_executed) {
    for (const std::string value : {"\\\"]);alert(1);([\\\"", "true", "false", "TRUE", " true", "1", "\\x00",
                                    "\xFF\xFE", "\xED\xA0\x80", "\\x0aalert(1)\\x0a", "[true,true,true]"}) {
        std::string text = "[\"corvane.exflate\"]\n";
        for (const char* key : {"settingCopyPrecompAttr", "settingPrefixInput", "settingDeleteSource",
                                "settingKeepInComp", "settingPrependPrecompName", "settingFixRandomExpressions"}) {
            text += std::string("\"") + key + "\" = \"" + value + "\"\n";
        }
        sandbox.write(kFile, text);
        EXPECT_THAT(run_and_expect_the_usual().err, Not(HasSubstr("Alert"))) << value;
    }
}

TEST_F(RunSettings, a_prefix_too_long_to_be_saved_is_reported_before_the_refusal) {
    const Finished finished = run({"--prefix", std::string(2000, 'p')});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.out, IsEmpty());
    EXPECT_THAT(finished.err, testing::StartsWith(
                                  "a.json: the plug-in's command changed nothing: Script Alert: Error: the value of a "
                                  "setting is longer than 1999 bytes; Prefix Too Long: "));
}

TEST_F(RunSettings, a_refused_prefix_is_kept_and_the_next_run_is_not_refused) {
    const std::string prefix(51, 'p');
    EXPECT_EQ(run({"--prefix", prefix}).exit_code, 4);
    EXPECT_THAT(sandbox.read(kFile), HasSubstr("\"settingPrefixInput\" = \"" + prefix + "\"\n"));
    run_and_expect_the_usual();
}

TEST_F(RunSettings, a_relative_settings_folder_is_not_used) {
    const Finished finished = exflate(sandbox, {.arguments = {"a.json"},
                                                .environment = {{"XDG_CONFIG_HOME", "here"}, {"HOME", "there"}},
                                                .without_settings_folder = true});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, fresh);
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json", "config"));
}

}  // namespace
