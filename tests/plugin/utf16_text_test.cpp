// Text in 16-bit units holds what text in 32-bit characters holds: one is compared with the other.
#include "utf16_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform_text.h"

static_assert(sizeof(wchar_t) == 4, "the other side of the comparison");

namespace {

std::u16string units_of(const std::wstring& characters) {
    std::u16string units;
    for (const wchar_t character : characters) {
        auto value = static_cast<char32_t>(character);
        if (value > 0xFFFF) {
            value -= 0x10000;
            units += static_cast<char16_t>(0xD800 + (value >> 10));
            value = 0xDC00 + (value & 0x3FF);
        }
        units += static_cast<char16_t>(value);
    }
    return units;
}

class Utf16Text : public testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }
    void TearDown() override { std::setlocale(LC_CTYPE, "C"); }

    // As names are read, changed, cut and written.
    static void expect_the_same(const std::string& bytes) {
        const std::wstring wide = wide_text(bytes.c_str());
        // Some C libraries read sequences for what lies beyond the last code point, which 16-bit units cannot say.
        if (std::any_of(wide.begin(), wide.end(), [](wchar_t character) { return character > 0x10FFFF; })) return;
        const std::u16string text = utf16::from_utf8(bytes);
        ASSERT_EQ(text, units_of(wide));
        ASSERT_EQ(utf16::padded_from_utf8(bytes), units_of(padded_wide_text(bytes.c_str())));
        ASSERT_EQ(utf16::to_utf8(text), utf8_text(wide));

        const std::size_t characters = character_count(wide.c_str());
        ASSERT_EQ(utf16::character_count(text), characters);
        for (std::size_t count = 0; count <= characters + 1; ++count)
            ASSERT_EQ(utf16::first_characters(text, count), units_of(first_characters(wide, count)));

        std::vector<A_UTF16Char> written(characters);
        write_utf16(wide.c_str(), characters, written.data());
        ASSERT_EQ(utf16::valid_text(text).substr(0, characters), std::u16string(written.begin(), written.end()));
    }
};

}  // namespace

TEST_F(Utf16Text, is_the_same_for_names_of_every_kind) {
    for (const char* name : {"", "Exflate", "Gr\u00f6\u00dfe", "\u4e2d\u6587", "\U0001F600", "a\U0001F600b\U0010FFFFc",
                             "\U00010000\uffff\ud7ff\ue000", "cut \xf0\x9f\x98", "cut \xc3", "bad \xff bytes", "\x80"})
        expect_the_same(name);
}

TEST_F(Utf16Text, is_the_same_at_the_edges_of_utf_8) {
    for (const char* bytes : {"\x80\x80",         "\xbf\xbf",         "\xc0\xbf",
                              "\xf8\xbf\xbf\xbf", "\xfc\x80\x80\x80", "\xc0\x80",
                              "\xc1\xbf",         "\xc2\x80",         "\xdf\xbf",
                              "\xe0\x9f\xbf",     "\xe0\xa0\x80",     "\xed\x9f\xbf",
                              "\xee\x80\x80",     "\xef\xbf\xbf",     "\xef\xbb\xbfmark",
                              "\xf0\x8f\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf",
                              "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xf8\x88\x80\x80\x80",
                              "\xe4\xb8",         "\xe4\xb8x",        "x\xf0\x9fx"})
        expect_the_same(std::string("a") + bytes + "b");
}

TEST_F(Utf16Text, is_the_same_for_random_bytes) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    // Lead bytes, what follows them, and what neither is.
    const std::string pool = "a\x7f\x80\x8f\x90\x9f\xa0\xbf\xc2\xc3\xe0\xe4\xed\xef\xf0\xf1\xf4\xf5\xff";
    for (int i = 0; i < 20000 && !HasFatalFailure(); ++i) {
        std::string bytes;
        for (auto length = random() % 9; length > 0; --length) bytes += pool[random() % pool.size()];
        expect_the_same(bytes);
    }
}

TEST_F(Utf16Text, is_the_same_for_random_characters) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 5000 && !HasFatalFailure(); ++i) {
        std::wstring characters;
        for (auto length = random() % 40; length > 0; --length) {
            auto character = static_cast<wchar_t>(1 + random() % (random() % 2 != 0 ? 0x10FFFF : 0xFF));
            if (character >= 0xD800 && character <= 0xDFFF) character = L'x';
            characters += character;
        }
        expect_the_same(utf8_text(characters));
    }
}

TEST_F(Utf16Text, zero_is_a_character_like_any_other) {
    EXPECT_EQ(utf16::from_utf8({"a\0b", 3}), std::u16string(u"a\0b", 3));
}

TEST_F(Utf16Text, ends_in_front_of_what_lies_beyond_the_last_code_point) {
    for (const char* bytes : {"a\xf4\x90\x80\x80z", "a\xf5\x80\x80\x80z", "a\xf8\x88\x80\x80\x80z"}) {
        EXPECT_EQ(utf16::from_utf8(bytes), u"a");
        EXPECT_EQ(utf16::padded_from_utf8(bytes), u"a" + std::u16string(std::string(bytes).size() - 1, u'#'));
    }
}

TEST_F(Utf16Text, surrogate_without_its_partner_is_a_character_and_no_text) {
    const std::u16string high(1, u'\xd83d');
    const std::u16string low(1, u'\xde00');
    for (const std::u16string& half : {high, low}) {
        EXPECT_EQ(utf16::character_count(u"a" + half + u"b"), 3u);
        EXPECT_EQ(utf16::valid_text(u"a" + half + u"b"), u"a\ufffdb");
        EXPECT_EQ(utf16::valid_text(half), u"\ufffd");
        EXPECT_THROW(utf16::to_utf8(u"a" + half), std::range_error);
    }
    EXPECT_EQ(utf16::character_count(low + high), 2u);
    EXPECT_EQ(utf16::valid_text(low + high + high + low), u"\ufffd\ufffd\U0001F600");
    EXPECT_EQ(utf16::first_characters(high + high + low + low, 2), high + high + low);
}

TEST_F(Utf16Text, surrogates_reach_from_the_first_to_the_last_of_both_kinds) {
    for (const char16_t unit : {u'\xd800', u'\xdbff', u'\xdc00', u'\xdfff'})
        EXPECT_EQ(utf16::valid_text(std::u16string(1, unit) + u"x"), u"\ufffdx") << static_cast<unsigned>(unit);
    for (const char16_t unit : {u'\xd7ff', u'\xe000'}) {
        const std::u16string text(2, unit);
        EXPECT_EQ(utf16::valid_text(text), text);
        EXPECT_EQ(utf16::character_count(text), 2u);
    }
    for (const char16_t high : {u'\xd800', u'\xdbff'}) {
        for (const char16_t low : {u'\xdc00', u'\xdfff'})
            EXPECT_EQ(utf16::character_count(std::u16string{high, low}), 1u);
        for (const char16_t other : {u'\xdbff', u'\xe000'})
            EXPECT_EQ(utf16::character_count(std::u16string{high, other}), 2u);
    }
    EXPECT_EQ(utf16::character_count(std::u16string{u'\xd7ff', u'\xdc00'}), 2u);
    EXPECT_EQ(utf16::character_count(std::u16string{u'\xdc00', u'\xdc00'}), 2u);
}

TEST_F(Utf16Text, partner_behind_the_end_does_not_count) {
    const std::u16string_view half = std::u16string_view(u"\U0001F600x").substr(0, 1);
    EXPECT_EQ(utf16::character_count(half), 1u);
    EXPECT_EQ(utf16::first_characters(half, 1), half);
}
