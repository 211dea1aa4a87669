// The text helpers and the string table.
#include "string_util.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <cwchar>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "Exflate_Strings.h"
#include "platform_text.h"

namespace {

std::u16string utf16(const wchar_t* text) {
    // One unit more than may be written, to see that it is not.
    std::vector<A_UTF16Char> out(std::char_traits<wchar_t>::length(text) + 2, 0xBEEF);
    copyConvertStringLiteralIntoUTF16(text, out.data());
    EXPECT_EQ(out[out.size() - 2], 0);
    EXPECT_EQ(out.back(), 0xBEEF);
    return std::u16string(out.begin(), out.end() - 2);
}

std::u16string text_of(const A_UTF16Char* text) {
    std::u16string units;
    for (; *text != 0; ++text) units += static_cast<char16_t>(*text);
    return units;
}

std::vector<A_UTF16Char> units(const std::u16string& text) {
    std::vector<A_UTF16Char> copy(text.begin(), text.end());
    copy.push_back(0);
    return copy;
}

}  // namespace

TEST(Utf16, plain_text_is_copied_and_terminated) {
    EXPECT_EQ(utf16(L"Exflate"), u"Exflate");
    EXPECT_EQ(utf16(L""), u"");
    EXPECT_EQ(utf16(L"caf\u00e9 \u4e2d\uffff"), u"caf\u00e9 \u4e2d\uffff");
}

TEST(Utf16, character_of_two_units_is_cut_where_it_stands_last) {
    EXPECT_EQ(utf16(L"\U0001F600"), std::u16string(1, u'\xd83d'));
}

TEST(Utf16, each_character_of_two_units_shortens_the_text_by_one) {
    EXPECT_EQ(utf16(L"a\U0001F600bc"), std::u16string(u"a\U0001F600b"));
    EXPECT_EQ(utf16(L"\U0010FFFF\U00010000x"), std::u16string(u"\U0010FFFF") + u'\xd800');
}

TEST(Utf16, what_is_no_code_point_becomes_the_replacement_character) {
    const wchar_t bad[] = {L'a', 0x110000, static_cast<wchar_t>(-1), 0xD800, L'b', 0};
    EXPECT_EQ(utf16(bad), u"a\ufffd\ufffd\ufffdb");
}

TEST(Utf16, replaces_no_more_than_the_surrogates_and_what_lies_beyond_the_last_code_point) {
    const wchar_t edges[] = {0xD7FF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFFFD, 0xFFFF, 0};
    EXPECT_EQ(utf16(edges), u"\ud7ff\ufffd\ufffd\ufffd\ufffd\ue000\ufffd\uffff");
    const wchar_t last[] = {0x10FFFF, 0x110000, L'x', 0};
    EXPECT_EQ(utf16(last), u"\U0010FFFF\ufffd");
}

TEST(Utf16, other_direction_gives_a_fixed_text) {
    A_UTF16Char text[] = {u'x', 0};
    char out[2] = "o";
    EXPECT_STREQ(copyConvertUTF16IntoStringLiteral(text, out), "testing");
    EXPECT_STREQ(out, "o");
    EXPECT_STREQ(copyConvertUTF16IntoStringLiteral(nullptr, nullptr), "testing");
}

TEST(Utf16, size_counts_units) {
    EXPECT_EQ(utf16Size(nullptr), 0);
    EXPECT_EQ(utf16Size(units(u"").data()), 0);
    EXPECT_EQ(utf16Size(units(u"a\U0001F600").data()), 3);
}

TEST(Utf16, joining_keeps_up_to_fifteen_units) {
    const auto join = [](const std::u16string& a, const std::u16string& b) {
        return text_of(std::unique_ptr<A_UTF16Char[]>(concatUTF16(units(a).data(), units(b).data())).get());
    };
    EXPECT_EQ(join(u"", u""), u"");
    EXPECT_EQ(join(u"ab", u"cd"), u"abcd");
    EXPECT_EQ(join(u"0123456789", u"abcde"), u"0123456789abcde");
    EXPECT_EQ(join(u"0123456789", u"abcdefgh"), u"0123456789abcde");
    EXPECT_EQ(join(u"0123456789abcdefgh", u"x"), u"0123456789abcde");
}

TEST(Utf16, new_copy_holds_the_whole_text) {
    const std::unique_ptr<A_UTF16Char[]> copy(initUTF16(L"Exflate"));
    EXPECT_EQ(text_of(copy.get()), u"Exflate");
    const std::unique_ptr<A_UTF16Char[]> empty(initUTF16(L""));
    EXPECT_EQ(text_of(empty.get()), u"");
}

TEST(Utf8Text, ends_with_the_last_code_point) {
    EXPECT_EQ(utf8_text({wchar_t{0x10FFFF}}), "\xF4\x8F\xBF\xBF");
    EXPECT_THROW(utf8_text({wchar_t{0x110000}}), std::range_error);
}

TEST(WideText, ends_behind_its_last_character) {
    for (const char* narrow : {"", "abc", "a name of some length"}) {
        EXPECT_EQ(std::wcslen(padded_wide_text(narrow).c_str()), std::strlen(narrow));
        EXPECT_EQ(wide_text(narrow).size(), std::strlen(narrow));
    }
}

TEST(FormattedText, is_built_as_by_the_c_library) {
    char out[64] = {};
    EXPECT_EQ(_sprintf(out, 0, "%s %i %c", "text", -12, 'x'), 10);
    EXPECT_STREQ(out, "text -12 x");
}

TEST(FormattedText, counted_form_makes_room_for_its_numbers) {
    const std::unique_ptr<char[]> line(sprintf("app.project.item(%i).layer(%i).name = tempName;", 2, 12, 3));
    EXPECT_STREQ(line.get(), "app.project.item(12).layer(3).name = tempName;");
    const std::unique_ptr<char[]> large(sprintf("%i,%i", 2, INT_MAX, 0));
    EXPECT_STREQ(large.get(), "2147483647,0");
}

TEST(FormattedText, counted_form_never_writes_beyond_its_buffer) {
    // No counted number, no conversion: one byte short of the terminator.
    EXPECT_STREQ(std::unique_ptr<char[]>(sprintf("abc", 0)).get(), "ab");
    EXPECT_STREQ(std::unique_ptr<char[]>(sprintf("", 0)).get(), "");
    EXPECT_STREQ(std::unique_ptr<char[]>(sprintf("a", 0)).get(), "");
    EXPECT_STREQ(std::unique_ptr<char[]>(sprintf("%s", 0, "a long text")).get(), "a");
}

TEST(FormattedText, empty_text_is_terminated_whatever_its_buffer_held_before) {
    std::vector<std::unique_ptr<char[]>> blocks;
    for (int i = 0; i < 6; ++i) {
        blocks.emplace_back(new char[24]);
        std::memset(blocks.back().get(), 'x', 24);
    }
    blocks.clear();
    for (int i = 0; i < 6; ++i) {
        blocks.emplace_back(sprintf("", 0));
        EXPECT_STREQ(blocks.back().get(), "");
    }
}

TEST(FormattedText, counted_form_fits_numbers_of_every_length) {
    for (int digits = 1, value = 1; digits <= 10; ++digits, value = digits < 10 ? value * 10 : INT_MAX) {
        const std::unique_ptr<char[]> line(sprintf("item(%i).layer(%i)", 2, value, value));
        const std::string number = std::to_string(value);
        EXPECT_EQ(std::string(line.get()), "item(" + number + ").layer(" + number + ")");
    }
    const std::unique_ptr<char[]> three(sprintf("%i%i%i", 3, 1, 22, 333));
    EXPECT_STREQ(three.get(), "122333");
}

TEST(FormattedText, counted_form_takes_the_length_of_the_format_and_of_the_counted_numbers) {
    // Seven for the format, two and four for the numbers: the text may have twelve characters.
    const auto with_text = [](const char* text) {
        return std::string(std::unique_ptr<char[]>(sprintf("%i%i%s,", 2, 12, 3456, text)).get());
    };
    EXPECT_EQ(with_text("fghij"), "123456fghij,");
    EXPECT_EQ(with_text("fghijk"), "123456fghijk");
    // A number that is not counted makes no room.
    EXPECT_STREQ(std::unique_ptr<char[]>(sprintf("%i%i", 1, 123, 456)).get(), "123456");
    EXPECT_STREQ(std::unique_ptr<char[]>(sprintf("%i%i", 1, 123, 4567)).get(), "123456");
}

TEST(DigitCount, grows_at_every_power_of_ten) {
    int power = 1;
    for (int digits = 1; digits < 10; ++digits) {
        power *= 10;
        EXPECT_EQ(simple_int_count(power - 1), digits);
        EXPECT_EQ(simple_int_count(power), digits + 1);
        EXPECT_EQ(simple_int_count(1 - power), digits);
        EXPECT_EQ(simple_int_count(-power), digits + 1);
    }
}

TEST(DigitCount, is_that_of_the_magnitude) {
    EXPECT_EQ(simple_int_count(0), 1);
    EXPECT_EQ(simple_int_count(9), 1);
    EXPECT_EQ(simple_int_count(10), 2);
    EXPECT_EQ(simple_int_count(99), 2);
    EXPECT_EQ(simple_int_count(100), 3);
    EXPECT_EQ(simple_int_count(999999999), 9);
    EXPECT_EQ(simple_int_count(1000000000), 10);
    EXPECT_EQ(simple_int_count(INT_MAX), 10);
    EXPECT_EQ(simple_int_count(-5), 1);
    EXPECT_EQ(simple_int_count(-10), 2);
    EXPECT_EQ(simple_int_count(-INT_MAX), 10);
    EXPECT_EQ(simple_int_count(INT_MIN), 10);
}

TEST(StringTable, gives_the_text_at_a_position) {
    EXPECT_STREQ(GetStringPtr(0), "");
    EXPECT_STREQ(GetStringPtr(1), "Exflate");
    EXPECT_STREQ(GetStringPtr(2), "Exflate | Select a pre-comp layer");
    EXPECT_STREQ(GetStringPtr(3), "Exflate Selection");
    EXPECT_STREQ(GetStringPtr(4), "Exflate: Problems encountered during exflate.");
}

TEST(StringTable, rows_stand_at_their_ids) {
    for (int id = 0; id < 5; ++id) EXPECT_EQ(g_strs[id].id, id);
    EXPECT_EQ(sizeof g_strs[0].text, 256u);
}
