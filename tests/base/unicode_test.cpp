// Characters as UTF-8 and UTF-16.
#include "base/unicode.h"

#include <gmock/gmock.h>

namespace {

using namespace host::base;

std::string encoded(char32_t character) {
    std::string bytes;
    append_utf8(bytes, character);
    return bytes;
}

TEST(Unicode, every_character_comes_back_from_both_forms) {
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (is_high_surrogate(c) || is_low_surrogate(c)) continue;
        const std::string bytes = encoded(c);
        char32_t decoded = 0;
        ASSERT_EQ(decode_utf8(bytes + "x", decoded), bytes.size()) << std::hex << std::uint32_t{c};
        ASSERT_EQ(decoded, c);
        ASSERT_EQ(utf8_from_utf16(utf16_from_utf8(bytes)), bytes) << std::hex << std::uint32_t{c};
    }
}

TEST(Unicode, invalid_utf8_is_no_character) {
    for (const char* bytes :
         {"", "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2x", "\xE0\x9F\xBF", "\xE2\x82", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        char32_t untouched = U'?';
        EXPECT_EQ(decode_utf8(bytes, untouched), 0U) << bytes;
        EXPECT_EQ(untouched, U'?');
    }
}

// Every start of two bytes and a sample of the rest, against the rules as a table of ranges.
TEST(Unicode, agrees_with_the_table_of_well_formed_sequences) {
    struct Row {
        unsigned char first_least, first_most, second_least, second_most;
        std::size_t length;
    };
    constexpr Row kTable[] = {{0x00, 0x7F, 0, 0xFF, 1},    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
                              {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
                              {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4}};
    for (unsigned first = 0; first < 256; ++first) {
        for (unsigned second = 0; second < 256; ++second) {
            const std::string bytes = {static_cast<char>(first), static_cast<char>(second), '\xBF', '\x80'};
            std::size_t expected = 0;
            for (const Row& row : kTable) {
                const bool fits = first >= row.first_least && first <= row.first_most && second >= row.second_least &&
                                  second <= row.second_most;
                if (fits) expected = row.length;
            }
            char32_t character = 0;
            ASSERT_EQ(decode_utf8(bytes, character), expected) << std::hex << first << ' ' << second;
        }
    }
}

TEST(Unicode, damage_becomes_the_replacement_byte_by_byte) {
    EXPECT_EQ(valid_utf8("a\xE2\x82z\xFF"), "a\uFFFD\uFFFDz\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xE2\x82z"), u"\uFFFD\uFFFDz");
    const char16_t lone[] = {0xDC00, u'x', 0xD800, 0xD800, 0xDC00, 0xD800};
    EXPECT_EQ(utf8_from_utf16({lone, 6}), "\uFFFDx\uFFFD\U00010000\uFFFD");
}

TEST(Unicode, a_lone_surrogate_is_written_in_three_bytes) {
    EXPECT_EQ(encoded(0xD83D), "\xED\xA0\xBD");
}

TEST(Unicode, is_cut_between_characters) {
    const std::string text = "a\u00E9\u20AC\U0001F600";
    std::string lengths;
    for (std::size_t limit = 0; limit <= text.size(); ++limit) lengths += std::to_string(cut_utf8(text, limit).size());
    EXPECT_EQ(lengths, "011333666610");
    EXPECT_EQ(character_count(text), 4U);
}

}  // namespace
