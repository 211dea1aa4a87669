// Journals of a plug-in's command, and what a replay makes of them.
#include "journal/replay.h"

#include <gmock/gmock.h>

#include <csignal>
#include <random>

#include "recording.h"

namespace {

using host::journal::ReplayVerdict;
using test::Chosen;
using test::Recording;
using test::words;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

std::string at_line(std::size_t line) {
    return ' ' + std::to_string(line) + ": ";
}

struct TalkerRecording : Recording {
    TalkerRecording() : Recording(TALKER) {
        const auto outcome = run();
        EXPECT_FALSE(outcome.has_failed()) << outcome.error;
    }
};

TEST(AJournal, holds_every_visit_and_call_with_arguments_and_results) {
    const TalkerRecording talk;
    EXPECT_EQ(talk.lines().front(), "plug-in journal 1");
    EXPECT_EQ(talk.lines().back(), "end");
    const auto has = [&talk](const std::string& line) { return talk.line_of(line) != 0; };
    EXPECT_TRUE(has("enter entry_point(1, \"talker\", 114, 0)"));
    EXPECT_TRUE(has("leave entry_point = 0 (refcon#1)"));
    EXPECT_TRUE(has("enter command_hook(function#1, refcon#1, null, 1, 1, 0)"));
    EXPECT_TRUE(has("leave command_hook = 0 (1)"));
    EXPECT_TRUE(has("SPBasicSuite.ReleaseSuite(\"AEGP Layer Suite\", 11)"));
    EXPECT_TRUE(has("LayerSuite5.AEGP_GetLayerName(layer#1, out, null)"));
    EXPECT_TRUE(has(" = 0 (\"Nest\", null)"));
    EXPECT_TRUE(has("LayerSuite7.AEGP_SetLayerName(layer#1, L\"N\\uD800x\xF0\x9F\xA6\x81\\n\\\"\")"));
    EXPECT_TRUE(has("StreamSuite4.AEGP_GetNewStreamValue(1, stream#1, 1, {value: 1, scale: 3}, 1, out)"));
    EXPECT_TRUE(has("= 0 ({value: value#1, one_d: 80})"));
    EXPECT_TRUE(has("StreamSuite4.AEGP_SetStreamValue(1, stream#1, {value: value#1, one_d: 26.666666666666668})"));
    EXPECT_TRUE(
        has("AEGP_SetExpression(1, stream#1, \"a\\nb\\r\\\"c\\\"\\\\ \\x1B[31m \\xFF\\xC3 \\xE2\\x80\\xA8 end"));
    EXPECT_TRUE(has("KeyframeSuite4.AEGP_SetKeyframeValue(stream#2, 1, {value: value#2, x: "));
    EXPECT_TRUE(has("AEGP_SetKeyframeTemporalEase(stream#2, 1, 0, {speed: 0.1, influence: 33.3}, null)"));
    EXPECT_TRUE(has("memory(mem#2, \"\" + 300 zeros)"));
    EXPECT_TRUE(has("wrote(mem#2, \"x\\0\\xFFy\" + 296 zeros)"));
    EXPECT_TRUE(has("memory(mem#2, \"x\\0\\xFFy\\0\\0\\0\\0\\0\\0\")"));
    EXPECT_TRUE(has("SPBasicSuite.ReallocateBlock(block#1, 1000, out)"));
    EXPECT_TRUE(has("SPBasicSuite.FreeBlock(block#2)"));
    EXPECT_TRUE(has("SPBasicSuite.AcquireSuite(\"AEGP Dream Suite\", 7, out)"));
    EXPECT_TRUE(has("LayerSuite5.AEGP_GetLayerSourceItem(unknown#1, out)"));
    EXPECT_TRUE(has("{type: 1, layer: {layer: layer#1}}"));
    EXPECT_TRUE(has("{alpha: 1, red: 0.1, green: 0.2, blue: 0.3333333333333333}"));
}

TEST(AJournal, is_the_same_for_the_same_run) {
    const TalkerRecording once;
    const TalkerRecording again;
    EXPECT_EQ(once.text(), again.text());
}

TEST(AReplay, finds_nothing_when_the_plugin_does_the_same) {
    const TalkerRecording talk;
    const ReplayVerdict verdict = talk.replay();
    EXPECT_EQ(words(verdict), "same");
    EXPECT_THAT(verdict.sentence, HasSubstr("in 3 visits"));
}

TEST(AReplay, treats_values_written_in_another_way_as_the_same) {
    const TalkerRecording talk;
    std::string text = talk.text();
    const std::string written = "{speed: 0.1, influence: 33.3}, null)";
    text.replace(text.find(written), written.size(), "{speed: 0.1, influence: 33.3}, null) # \"a remark\"");
    EXPECT_EQ(words(talk.replay(text)), "same");
}

TEST(AReplay, reports_the_first_call_argument_or_content_that_differs) {
    const TalkerRecording talk;
    const auto verdict_when = [&talk](const char* what) {
        const Chosen chosen("TALKER", what);
        return words(talk.replay());
    };
    const auto line_of = [&talk](const std::string& begin) { return at_line(talk.line_of(begin)); };
    EXPECT_EQ(verdict_when("other argument"),
              "differs" + line_of("AEGP_GetCompLayerByIndex") +
                  "LayerSuite5.AEGP_GetCompLayerByIndex, argument 2: expected 0, got 1");
    EXPECT_EQ(verdict_when("other text"), "differs" + line_of("AEGP_ReportInfo") +
                                              "UtilitySuite6.AEGP_ReportInfo, argument 2: expected \"hello\", got "
                                              "\"hallo\"");
    EXPECT_THAT(verdict_when("other value"), AllOf(StartsWith("differs" + line_of("AEGP_SetKeyframeValue")),
                                                   HasSubstr("argument 3: expected {value")));
    EXPECT_EQ(verdict_when("other memory"),
              "differs" + line_of("wrote(mem#2") +
                  "expected mem#2 to hold \"x\\0\\xFFy\" + 296 zeros, got mem#2 with \"x\\0\\xFFz\" + 296 zeros");
    EXPECT_THAT(
        verdict_when("late write"),
        AllOf(StartsWith("differs"), HasSubstr("expected the call "
                                               "MemorySuite1.AEGP_UnlockMemHandle(mem#2), got mem#2 with \"x")));
    EXPECT_THAT(
        verdict_when("one call more"),
        AllOf(StartsWith("differs"), HasSubstr("expected the call SPBasicSuite.ReleaseSuite(\"AEGP Utility Suite"),
              HasSubstr("got the call ItemSuite6.AEGP_SelectItem(item#1, 1, 0)")));
    EXPECT_EQ(verdict_when("one call less").substr(0, 8), "differs ");
}

TEST(AReplay, reports_another_way_of_returning) {
    const TalkerRecording talk;
    const auto verdict_when = [&talk](const char* what) {
        const Chosen chosen("TALKER", what);
        return words(talk.replay());
    };
    const std::string begin = "differs" + at_line(talk.line_of("leave command_hook"));
    EXPECT_EQ(verdict_when("other code"), begin + "expected command_hook to come back with 0 (1), got 7 (1)");
    EXPECT_EQ(verdict_when("not handled"), begin + "expected command_hook to come back with 0 (1), got 0 (0)");
    EXPECT_EQ(verdict_when("throw"), begin + "expected command_hook to come back with 0 (1), got an exception (1)");
    EXPECT_THAT(verdict_when("exit"),
                AllOf(StartsWith("differs"), HasSubstr("got nothing: the plug-in ended the program "
                                                       "with code 5")));
}

TEST(AReplay, reports_a_crash_that_is_not_in_the_journal) {
    const TalkerRecording talk;
    const Chosen chosen("TALKER_ENDS", "2 " + std::to_string(SIGKILL));
    EXPECT_THAT(words(talk.replay()),
                AllOf(StartsWith("differs"), HasSubstr("got nothing: the plug-in crashed (Killed)")));
}

TEST(AReplay, repeats_an_exception) {
    const Chosen chosen("TALKER", "throw");
    Recording talk(TALKER);
    EXPECT_TRUE(talk.run().has_thrown);
    EXPECT_NE(talk.line_of("leave command_hook = 2 thrown (1)"), 0U);
    EXPECT_EQ(words(talk.replay()), "same");
}

TEST(AReplay, calls_idle_and_death_hooks_as_in_the_journal) {
    Recording caretaker(CARETAKER);
    caretaker.run();
    EXPECT_NE(caretaker.line_of("enter idle_hook(function#1, null, null, 1000)"), 0U);
    EXPECT_NE(caretaker.line_of("leave idle_hook = 0 (5)"), 0U);
    EXPECT_NE(caretaker.line_of("leave death_hook = 0 ()"), 0U);
    EXPECT_EQ(words(caretaker.replay()), "same");
    std::string other = caretaker.text();
    other.replace(other.find("= 0 (5)"), 7, "= 0 (6)");
    EXPECT_THAT(words(caretaker.replay(other)), StartsWith("differs"));
}

TEST(AReplay, goes_as_far_as_a_cut_journal) {
    const TalkerRecording talk;
    std::size_t line = 0;
    for (std::size_t end = talk.text().find('\n'); end + 1 < talk.text().size();
         end = talk.text().find('\n', end + 1)) {
        ++line;
        if (line % 5 != 0) continue;  // a process for each
        const ReplayVerdict verdict = talk.replay(talk.text().substr(0, end + 4));
        EXPECT_EQ(verdict.kind, ReplayVerdict::Kind::same_to_cut) << words(verdict);
        EXPECT_EQ(verdict.line, line);
        EXPECT_EQ(verdict.sentence,
                  "the journal is cut after line " + std::to_string(line) + "; up to there the plug-in did the same");
    }
    EXPECT_GT(line, 100U);
}

TEST(AReplay, reports_a_difference_before_the_cut) {
    const TalkerRecording talk;
    const Chosen chosen("TALKER", "other argument");
    const std::size_t end = talk.text().find("AEGP_GetLayerName");
    EXPECT_THAT(words(talk.replay(talk.text().substr(0, end))), StartsWith("differs"));
}

TEST(AReplay, names_the_line_that_cannot_be_played) {
    const TalkerRecording talk;
    const auto verdict_with = [&talk](const std::string& old, const std::string& other) {
        std::string text = talk.text();
        text.replace(text.find(old), old.size(), other);
        return words(talk.replay(text));
    };
    EXPECT_THAT(verdict_with("({value: value#1, one_d: 80})", "({value: value#1, one_d: layer#2})"),
                AllOf(StartsWith("damaged"), HasSubstr("a number is expected")));
    EXPECT_THAT(verdict_with("({value: value#1, one_d: 80})", "({one_d: 80})"),
                HasSubstr("the field value is missing"));
    EXPECT_THAT(verdict_with("({value: value#1, one_d: 80})", "({value: value#1, one_d: 80, two_d: 80})"),
                HasSubstr("the field two_d is not known"));
    EXPECT_THAT(verdict_with("({value: value#1, one_d: 80})", "()"), HasSubstr("more or fewer results"));
    EXPECT_THAT(verdict_with("(\"Nest\", null)", "(\"" + std::string(32, 'x') + "\", null)"),
                HasSubstr("a text is longer than its room"));
    EXPECT_THAT(verdict_with("\" + 300 zeros)", "\" + 99999999999999 zeros)"), HasSubstr("more than a gigabyte"));
    EXPECT_THAT(verdict_with("memory(mem#2, \"\" + 300 zeros)", "memory(mem#9, \"\" + 300 zeros)"),
                HasSubstr("memory is locked whose content was never told"));
    EXPECT_THAT(verdict_with("enter command_hook(function#1", "enter command_hook(function#8"),
                HasSubstr("function#8 is nothing that the plug-in ever gave"));
    EXPECT_THAT(verdict_with("enter command_hook(function#1", "enter command_hook(null"), HasSubstr("no hook to call"));
    EXPECT_THAT(verdict_with(", 1, 1, 0)\n", ", 1, 99999999999, 0)\n"), HasSubstr("too large for its place"));
}

TEST(AReplay, repeats_calls_of_every_function_with_any_arguments) {
    const unsigned first = std::random_device{}() % 1'000'000;
    for (unsigned seed = first; seed < first + 5; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Chosen chosen("RAMBLER_SEED", std::to_string(seed));
        Recording ramble(RAMBLER);
        ramble.run();
        EXPECT_GT(ramble.lines().size(), 8000U);
        EXPECT_EQ(words(ramble.replay()), "same");
    }
}

TEST(AReplay, reports_another_course_of_random_calls) {
    Recording ramble(RAMBLER);
    {
        const Chosen chosen("RAMBLER_SEED", "1");
        ramble.run();
    }
    const Chosen chosen("RAMBLER_SEED", "2");
    EXPECT_THAT(words(ramble.replay()), StartsWith("differs"));
}

A_Err never_ends(SPBasicSuite*, A_long, A_long, AEGP_PluginID, AEGP_GlobalRefcon*) {
    for (volatile bool goes_on = true; goes_on;) {
    }
    return A_Err_NONE;
}

TEST(AReplay, ends_a_plug_in_that_never_does) {
    const auto journal = std::get<host::journal::Journal>(host::journal::read(TalkerRecording().text()));
    const ReplayVerdict verdict = host::journal::replay(journal, never_ends, std::chrono::seconds(1));
    EXPECT_EQ(verdict.kind, ReplayVerdict::Kind::differs);
    EXPECT_THAT(verdict.sentence, HasSubstr("got nothing: the plug-in took too much of the processor's time"));
}

}  // namespace
