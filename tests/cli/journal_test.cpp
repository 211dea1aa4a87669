// The journal of a run, and replaying it.
#include <gmock/gmock.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Environment = std::map<std::string, std::string>;

const std::vector<std::string> kRecord = {"a.json", "-o", "flat.json", "--journal", "run.journal"};
const std::vector<std::string> kReplay = {"replay", "run.journal"};

// The talker in the place of the plug-in.
Environment talker(Environment more = {}) {
    more["EXFLATE_PLUGIN"] = TALKER;
    return more;
}

Finished record(const Sandbox& sandbox, const Environment& environment = {}) {
    sandbox.write("a.json", test::one_nest());
    return exflate(sandbox, {.arguments = kRecord, .environment = environment});
}

Finished replay(const Sandbox& sandbox, const Environment& environment = {}) {
    return exflate(sandbox, {.arguments = kReplay, .environment = environment});
}

std::string demo() {
    std::ifstream stream(DEMO_ANIMATION, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Journal, changes_nothing_about_a_run) {
    const Sandbox sandbox;
    const Finished with = record(sandbox);
    EXPECT_EQ(with.exit_code, 0);
    const std::string result = sandbox.read("flat.json");
    const Finished without = exflate(sandbox, {"a.json", "-o", "flat.json"});
    EXPECT_EQ(with.err, without.err);
    EXPECT_EQ(result, sandbox.read("flat.json"));
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json", "flat.json", "run.journal"));
}

TEST(Journal, has_all_that_a_replay_needs) {
    const Sandbox recorded;
    record(recorded);
    const Sandbox sandbox;
    sandbox.write("run.journal", recorded.read("run.journal"));
    const Finished replayed = replay(sandbox);
    EXPECT_EQ(replayed.exit_code, 0);
    EXPECT_EQ(replayed.out, "");
    EXPECT_THAT(replayed.err,
                testing::MatchesRegex("run.journal: the plug-in did the same: [0-9]+ calls in 3 visits\n"));
    EXPECT_THAT(sandbox.names(), ElementsAre("run.journal"));
    EXPECT_EQ(exflate(sandbox, {"replay", "-"}, recorded.read("run.journal")).err.substr(0, 29),
              "standard input: the plug-in d");
}

TEST(Journal, replays_the_demo_with_every_option) {
    const Sandbox sandbox(demo());
    for (const char* option : {"--discard-attributes", "--delete-source", "--keep-in-comp", "--prefix=Löwe\n\"x",
                               "--prepend-name", "--fix-random", "--recursive"}) {
        std::vector<std::string> arguments = kRecord;
        arguments.emplace_back(option);
        EXPECT_EQ(exflate(sandbox, arguments).exit_code, 0) << option;
        EXPECT_EQ(replay(sandbox).exit_code, 0) << option;
    }
}

TEST(Journal, covers_several_files_and_rounds) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("b.json", test::three_nests());
    EXPECT_EQ(exflate(sandbox, {"a.json", "b.json", "--recursive", "-i", "--journal", "run.journal"}).exit_code, 0);
    EXPECT_THAT(sandbox.read("run.journal"), AllOf(HasSubstr("session(\"a.json\")"), HasSubstr("session(\"b.json\")")));
    const Finished replayed = replay(sandbox);
    EXPECT_EQ(replayed.exit_code, 0);
    EXPECT_THAT(replayed.err, HasSubstr("in 8 visits"));
}

TEST(Journal, covers_a_run_that_failed) {
    const Sandbox sandbox;
    EXPECT_EQ(record(sandbox, {{"EXFLATE_PLUGIN", EDITS_THEN_FAILS}}).exit_code, 4);
    EXPECT_THAT(sandbox.read("run.journal"), HasSubstr("leave command_hook = 7 (1)"));
    EXPECT_EQ(replay(sandbox, {{"EXFLATE_PLUGIN", EDITS_THEN_FAILS}}).exit_code, 0);
}

TEST(Journal, shows_a_plugin_that_does_something_else) {
    const Sandbox sandbox;
    EXPECT_EQ(record(sandbox, talker()).exit_code, 0);
    EXPECT_EQ(replay(sandbox, talker()).exit_code, 0);
    const std::string journal = sandbox.read("run.journal");
    const auto place = static_cast<std::ptrdiff_t>(journal.find("AEGP_GetCompLayerByIndex"));
    const auto line = 1 + std::count(journal.begin(), journal.begin() + place, '\n');
    const Finished replayed = replay(sandbox, talker({{"TALKER", "other argument"}}));
    EXPECT_EQ(replayed.exit_code, 1);
    EXPECT_EQ(replayed.err, "run.journal:" + std::to_string(line) +
                                ": LayerSuite5.AEGP_GetCompLayerByIndex, argument 2: expected 0, got 1\n");
    EXPECT_EQ(replay(sandbox).exit_code, 1);  // and another plug-in altogether
}

TEST(Journal, covers_everything_up_to_a_crash_and_a_replay_reaches_it) {
    for (const int signal : {SIGABRT, SIGKILL}) {
        const Sandbox sandbox;
        const Environment crash = talker({{"TALKER_ENDS", "3 " + std::to_string(signal)}});
        const Finished recorded = record(sandbox, crash);
        EXPECT_EQ(recorded.exit_code, 4);
        EXPECT_THAT(recorded.err, HasSubstr(std::string(TALKER) + ": the plug-in crashed ("));
        const std::string journal = sandbox.read("run.journal");
        EXPECT_THAT(journal, testing::EndsWith("\n"));
        // Nothing is missing before the crash, and nothing was done after it.
        EXPECT_THAT(journal, HasSubstr("AEGP_EndAddKeyframes"));
        EXPECT_THAT(journal, Not(HasSubstr("AEGP_NewMemHandle")));
        EXPECT_THAT(journal.substr(journal.rfind("call ")), HasSubstr("SPBasicSuite.ReleaseSuite"));

        const Finished there = replay(sandbox, crash);
        EXPECT_EQ(there.exit_code, 0);
        EXPECT_THAT(there.err, HasSubstr("; up to there the plug-in did the same, and there it crashed ("));
        const Finished mended = replay(sandbox, talker());
        EXPECT_EQ(mended.exit_code, 0);
        EXPECT_THAT(mended.err, HasSubstr("; up to there the plug-in did the same\n"));
        EXPECT_EQ(replay(sandbox, talker({{"TALKER", "other value"}})).exit_code, 1);
    }
}

TEST(Journal, shows_a_crash_that_was_not_recorded) {
    const Sandbox sandbox;
    record(sandbox, talker());
    const Finished replayed = replay(sandbox, talker({{"TALKER_ENDS", "3 " + std::to_string(SIGABRT)}}));
    EXPECT_EQ(replayed.exit_code, 1);
    EXPECT_THAT(replayed.err, HasSubstr("got nothing: the plug-in crashed (Aborted)"));
}

TEST(Journal, that_is_not_a_journal_is_bad_input) {
    const Sandbox sandbox;
    sandbox.write("run.journal", test::one_nest() + "\n");
    const Finished other = replay(sandbox);
    EXPECT_EQ(other.exit_code, 3);
    EXPECT_EQ(other.err, "run.journal:1: this is not a journal: the first line is not 'plug-in journal 1'\n");

    record(sandbox);
    std::string journal = sandbox.read("run.journal");
    journal.insert(journal.find("call 3"), "call me\n");
    sandbox.write("run.journal", journal);
    const Finished damaged = replay(sandbox);
    EXPECT_EQ(damaged.exit_code, 3);
    EXPECT_THAT(damaged.err, StartsWith("run.journal:8: this is not a journal line: "));

    const Finished missing = exflate(sandbox, {"replay", "nothing.journal"});
    EXPECT_EQ(missing.exit_code, 3);
    EXPECT_EQ(missing.err, "nothing.journal: cannot be read: No such file or directory\n");
}

TEST(Journal, that_cannot_be_replayed_is_bad_input) {
    const Sandbox sandbox;
    record(sandbox);
    std::string journal = sandbox.read("run.journal");
    const std::string command = "done 2 = 0 (1)";
    journal.replace(journal.find(command), command.size(), "done 2 = 0 (\"one\")");
    sandbox.write("run.journal", journal);
    const Finished replayed = replay(sandbox);
    EXPECT_EQ(replayed.exit_code, 3);
    EXPECT_EQ(replayed.err, "run.journal:7: this line cannot be played: a whole number is expected\n");
}

TEST(Journal, never_overwrites_what_the_run_reads_or_writes) {
    const Sandbox sandbox(test::one_nest());
    const std::vector<std::vector<std::string>> wrong = {
        {"a.json", "--journal", "a.json"},
        {"a.json", "-i", "--journal", "./a.json"},
        {"a.json", "-o", "flat.json", "--journal", "flat.json"},
        {"a.json", "--out-dir", "out", "--journal", "out/a.json"},
    };
    for (const std::vector<std::string>& arguments : wrong) {
        const Finished finished = exflate(sandbox, arguments);
        EXPECT_EQ(finished.exit_code, 2);
        EXPECT_THAT(finished.err, StartsWith("exflate: the journal would overwrite '"));
        EXPECT_EQ(sandbox.read("a.json"), test::one_nest());
        EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
    }
    EXPECT_EQ(exflate(sandbox, {"a.json", "--journal", "-"}).exit_code, 2);
}

TEST(Journal, never_becomes_the_file_of_a_result_that_is_not_there_yet) {
    const Sandbox sandbox(test::one_nest());
    std::filesystem::create_symlink("flat.json", sandbox.path("link"));
    std::filesystem::create_directory_symlink(".", sandbox.path("here"));
    for (const char* journal : {"link", "here/flat.json", "./here/./flat.json", "here/link"}) {
        const Finished finished = exflate(sandbox, {"a.json", "-o", "flat.json", "--journal", journal});
        EXPECT_EQ(finished.exit_code, 2) << journal;
        EXPECT_THAT(finished.err, StartsWith("exflate: the journal would overwrite 'flat.json': "));
        EXPECT_THAT(sandbox.names(), ElementsAre("a.json", "here", "link"));
    }
}

TEST(Journal, never_takes_the_place_of_a_closed_standard_output) {
    const Sandbox sandbox(test::one_nest());
    const Finished finished =
        exflate(sandbox, {.arguments = {"a.json", "--journal", "run.journal"}, .has_no_output = true});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_EQ(finished.err, "a.json: standard output cannot be written: Bad file descriptor\n");
    EXPECT_THAT(sandbox.read("run.journal"), Not(HasSubstr("\"layers\"")));
}

TEST(Journal, that_cannot_be_made_stops_the_run) {
    const Sandbox sandbox(test::one_nest());
    const Finished finished = exflate(sandbox, {"a.json", "-o", "flat.json", "--journal", "none/run.journal"});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_EQ(finished.err, "exflate: the journal 'none/run.journal' cannot be written: No such file or directory\n");
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
}

TEST(Journal, that_does_not_fit_on_the_disk_is_reported_and_harms_no_result) {
    const Sandbox sandbox(test::one_nest());
    const Finished finished = exflate(sandbox, {.arguments = kRecord, .most_bytes_per_file = 6000});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.err, HasSubstr("exflate: the journal 'run.journal' cannot be written: File too large\n"));
    EXPECT_EQ(test::layer_names(sandbox.read("flat.json")).size(), 4U);
    EXPECT_EQ(replay(sandbox).exit_code, 0);  // cut, with the last whole line
}

}  // namespace
