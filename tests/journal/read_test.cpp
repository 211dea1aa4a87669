// Reading journals: what is one, what is cut, what is damaged and where.
#include <gmock/gmock.h>

#include "journal/journal.h"

namespace host::journal {
namespace {

using testing::HasSubstr;

constexpr const char* kWhole =
    "plug-in journal 1\n"
    "session(\"film.json\")\n"
    "enter entry_point(1, \"Any\", 114, 0)\n"
    "call 1 SPBasicSuite.AcquireSuite(\"AEGP Memory Suite\", 1, out)\n"
    "done 1 = 0 (table)\n"
    "call 2 MemorySuite1.AEGP_LockMemHandle(mem#1, out)\n"
    "memory(mem#1, \"abc\\0\")\n"
    "done 2 = 0 (mem#1)\n"
    "wrote(mem#1, \"xbc\\0\")\n"
    "call 3 MemorySuite1.AEGP_UnlockMemHandle(mem#1)\n"
    "done 3 = 4 injected ()\n"
    "call 4 LayerSuite5.AEGP_DeleteLayer(null)\n"
    "done 4 = 3 () # \"The layer handle is null.\"\n"
    "leave entry_point = 3 (refcon#1)\n"
    "end\n";

Journal journal_from(const std::string& text) {
    auto result = read(text);
    if (const auto* damage = std::get_if<Damage>(&result)) {
        ADD_FAILURE() << damage->line << ": " << damage->sentence;
        return {};
    }
    return std::get<Journal>(result);
}

// "LINE: sentence", or nothing.
std::string damage_of(const std::string& text) {
    const auto result = read(text);
    const auto* damage = std::get_if<Damage>(&result);
    return damage ? std::to_string(damage->line) + ": " + damage->sentence : "";
}

// A journal of these lines after the first.
std::string lines(const std::string& text) {
    return "plug-in journal 1\n" + text;
}

TEST(ReadingAJournal, gives_each_line_with_what_it_says) {
    const std::string text = kWhole;
    const Journal journal = journal_from(text);
    ASSERT_EQ(journal.lines.size(), 14U);
    EXPECT_TRUE(journal.is_complete);
    EXPECT_EQ(journal.last_line, 15U);
    const JournalLine& call = journal.lines[2];
    EXPECT_EQ(call.kind, JournalLine::Kind::call);
    EXPECT_EQ(call.line_number, 4U);
    EXPECT_EQ(call.call_number, 1U);
    EXPECT_EQ(call.slot, slot_named("SPBasicSuite.AcquireSuite"));
    ASSERT_EQ(call.values().size(), 3U);
    EXPECT_EQ(call.values()[0].text, "AEGP Memory Suite");
    EXPECT_TRUE(call.values()[2].is_word("out"));
    EXPECT_TRUE(journal.lines[9].is_injected);
    EXPECT_EQ(journal.lines[9].code, 4);
    EXPECT_EQ(journal.lines[11].values_text, "");
    EXPECT_EQ(journal.lines[12].function, PluginFunction::entry_point);
    EXPECT_EQ(journal.lines[12].code, 3);
    EXPECT_FALSE(journal.lines[12].has_thrown);
}

TEST(ReadingAJournal, takes_a_journal_cut_at_any_byte) {
    const std::string whole = kWhole;
    const std::size_t first_line = whole.find('\n') + 1;
    for (std::size_t length = first_line; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        EXPECT_FALSE(journal_from(cut).is_complete) << length;
    }
    EXPECT_EQ(damage_of(whole.substr(0, first_line - 1)), "1: this is not a journal: there is no whole line in it");
    EXPECT_EQ(damage_of(""), "1: this is not a journal: there is no whole line in it");
}

TEST(ReadingAJournal, refuses_another_version_and_other_files) {
    EXPECT_EQ(damage_of("plug-in journal 2\n"), "1: this is not a journal: the first line is not 'plug-in journal 1'");
    EXPECT_EQ(damage_of("{\n}\n"), "1: this is not a journal: the first line is not 'plug-in journal 1'");
}

TEST(ReadingAJournal, names_the_line_that_is_damaged) {
    EXPECT_EQ(damage_of(lines("session(\"a\")\nnonsense\n")),
              "3: this is not a journal line: no journal line begins like this");
    EXPECT_THAT(damage_of(lines("session(\"a)\n")), HasSubstr("2: "));
    EXPECT_THAT(damage_of(lines("session(\"a\") more\n")), HasSubstr("more after the closing bracket"));
    EXPECT_THAT(damage_of(lines("session(\"a\") # more\n")), HasSubstr("a remark must be one text"));
    EXPECT_THAT(damage_of(lines("session(\"\\q\")\n")), HasSubstr("there is no such escape"));
    EXPECT_THAT(damage_of(lines("session(\"\\x4\")\n")), HasSubstr("an escape is not complete"));
    EXPECT_THAT(damage_of(lines("session(\"\xFF\")\n")), HasSubstr("a text is not UTF-8"));
    EXPECT_THAT(damage_of(lines("session(1 2)\n")), HasSubstr("a comma or a closing bracket is missing"));
    EXPECT_THAT(damage_of(lines("session({1})\n")), HasSubstr("the name of a field is missing"));
    EXPECT_THAT(damage_of(lines("session(layer#x)\n")), HasSubstr("a whole number is expected"));
    EXPECT_THAT(damage_of(lines("session(0x12)\n")), HasSubstr("a number is expected"));
    EXPECT_THAT(damage_of(lines("session(nan:7FF0000000000000)\n")), HasSubstr("a number is expected"));
    EXPECT_THAT(damage_of(lines("session(\"a\" + 3 bytes)\n")), HasSubstr("the word zeros is missing"));
    EXPECT_THAT(damage_of(lines("session(\"a\")\nenter window(1)\n")), HasSubstr("has no function 'window'"));
    EXPECT_THAT(damage_of(lines("session(\"a\")\nenter command_hook()\ncall 1 Suite9.Call()\n")),
                HasSubstr("4: this is not a journal line: there is no function of that name and suite"));
    EXPECT_THAT(damage_of(lines("session(\"a\")\nenter command_hook()\nleave command_hook = x ()\n")),
                HasSubstr("a code is expected"));
}

TEST(ReadingAJournal, names_lines_out_of_order) {
    const std::string in_hook = "session(\"a\")\nenter command_hook()\n";
    const std::string in_call = in_hook + "call 1 MemorySuite1.AEGP_FreeMemHandle(null)\n";
    EXPECT_THAT(damage_of(lines("enter command_hook()\n")), HasSubstr("a session must begin first"));
    EXPECT_THAT(damage_of(lines(in_hook + "enter command_hook()\n")), HasSubstr("in the plug-in already"));
    EXPECT_THAT(damage_of(lines(in_hook + "session(\"b\")\n")), HasSubstr("inside a visit"));
    EXPECT_THAT(damage_of(lines(in_hook + "leave entry_point = 0 ()\n")), HasSubstr("was not entered last"));
    EXPECT_THAT(damage_of(lines(in_hook + "done 1 = 0 ()\n")), HasSubstr("not the last one that began"));
    EXPECT_THAT(damage_of(lines(in_hook + "memory(mem#1, \"\")\n")), HasSubstr("inside a call only"));
    EXPECT_THAT(damage_of(lines(in_hook + "end\n")), HasSubstr("the end comes before"));
    EXPECT_THAT(damage_of(lines(in_call + "call 2 MemorySuite1.AEGP_FreeMemHandle(null)\n")),
                HasSubstr("only a plug-in that was entered calls"));
    EXPECT_THAT(damage_of(lines(in_call + "wrote(mem#1, \"\")\n")), HasSubstr("writes to memory"));
    EXPECT_THAT(damage_of(lines(in_call + "done 2 = 0 ()\n")), HasSubstr("not the last one that began"));
    EXPECT_THAT(damage_of(lines("end\nend\n")), HasSubstr("nothing can follow the end"));
}

TEST(ReadingAJournal, takes_visits_inside_calls_to_a_sane_depth) {
    std::string text = "session(\"a\")\n";
    for (int i = 0; i < 32; ++i)
        text += "enter command_hook()\ncall " + std::to_string(i + 1) + " MemorySuite1.AEGP_FreeMemHandle(null)\n";
    EXPECT_EQ(damage_of(lines(text)), "");
    EXPECT_THAT(damage_of(lines(text + "enter command_hook()\n")), HasSubstr("67: "));
}

TEST(ReadingAJournal, bounds_how_much_one_line_can_hold) {
    EXPECT_THAT(damage_of(lines("session([[[[[[[[[1]]]]]]]]])\n")), HasSubstr("too deep"));
    std::string many = "0";
    for (int i = 0; i < 64; ++i) many += ", 0";
    EXPECT_THAT(damage_of(lines("session(" + many + ")\n")), HasSubstr("too many values"));
    // Zeros are only counted.
    EXPECT_EQ(damage_of(lines("session(\"\" + 18446744073709551615 zeros)\n")), "");
}

TEST(ReadingAJournal, does_not_mind_what_the_bytes_are) {
    std::string bytes = kWhole;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (const char damaged : {'\0', '\n', '"', '\\', '(', '\xFF', '9'}) {
            std::string changed = bytes;
            changed[i] = damaged;
            const auto result = read(changed);
            if (const auto* damage = std::get_if<Damage>(&result)) {
                EXPECT_GE(damage->line, 1U);
                EXPECT_NE(damage->sentence, "");
            }
        }
    }
}

}  // namespace
}  // namespace host::journal
