// Values as text and back.
#include "journal/value_text.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace host::journal {
namespace {

using std::string_literals::operator""s;

JournalValue only(const std::string& text) {
    const std::vector<JournalValue> values = parse_values(text);
    EXPECT_EQ(values.size(), 1U) << text;
    return values.at(0);
}

std::string bytes_of(const JournalValue& value) {
    return value.text + std::string(value.number, '\0');
}

// Units as the bytes they are in memory.
std::string bytes_of(std::u16string_view units) {
    std::string bytes;
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

TEST(Bytes, are_readable_on_one_line_whatever_they_are) {
    EXPECT_EQ(quoted_bytes("plain \xC3\xA9"), "\"plain \xC3\xA9\"");
    EXPECT_EQ(quoted_bytes("a\nb\r\t\"\\"), R"("a\nb\r\t\"\\")");
    EXPECT_EQ(quoted_bytes("a\0b"s), R"("a\0b")");
    EXPECT_EQ(quoted_bytes("\x1B[31m\x7F"), R"("\x1B[31m\x7F")");
    EXPECT_EQ(quoted_bytes("\xFF\xC3"), R"("\xFF\xC3")");
    EXPECT_EQ(quoted_bytes("\xC2\x85 \xE2\x80\xA8"), R"("\xC2\x85 \xE2\x80\xA8")");
    EXPECT_EQ(quoted_bytes("\xED\xA0\x80\xC0\x80"), R"("\xED\xA0\x80\xC0\x80")");
}

TEST(Units, are_readable_on_one_line_whatever_they_are) {
    EXPECT_EQ(quoted_units(bytes_of(u"Löwe \U0001F981\n")), "L\"Löwe \U0001F981\\n\"");
    const char16_t lone[] = {0xD800, u'x', 0xDC00, 0x85, 0x1B, 0};
    EXPECT_EQ(quoted_units(bytes_of(std::u16string_view(lone, 6))), R"(L"\uD800x\uDC00\u0085\u001B\0")");
}

TEST(Texts, read_back_as_the_same_bytes) {
    std::mt19937 random(20260);
    std::uniform_int_distribution<int> any_byte(0, 255);
    std::uniform_int_distribution<std::size_t> any_length(0, 12);
    for (int i = 0; i < 20'000; ++i) {
        std::string bytes(any_length(random), '\0');
        for (char& byte : bytes) byte = static_cast<char>(any_byte(random));
        EXPECT_EQ(bytes_of(only(quoted_bytes(bytes))), bytes);
        EXPECT_EQ(bytes_of(only(content_text(bytes))), bytes);
        const std::string even = bytes.substr(0, bytes.size() / 2 * 2);
        EXPECT_EQ(bytes_of(only(quoted_units(even))), even);
        EXPECT_EQ(quoted_bytes(bytes).find_first_of("\n\r"s + '\0'), std::string::npos);
    }
}

TEST(Content, is_shown_as_what_it_looks_like) {
    EXPECT_EQ(content_text("wiggle(1)\0"s), R"("wiggle(1)\0")");
    EXPECT_EQ(content_text(bytes_of(std::u16string_view(u"Nest\0", 5))), R"(L"Nest\0")");
    EXPECT_EQ(content_text(bytes_of(std::u16string_view(u"中\0", 2))), "L\"中\\0\"");
    EXPECT_EQ(content_text(""), R"("")");
    EXPECT_EQ(content_text(std::string(5000, '\0')), R"("" + 5000 zeros)");
    EXPECT_EQ(content_text("abc" + std::string(16, '\0')), R"("abc" + 16 zeros)");
    EXPECT_EQ(content_text("\1\2\3"), R"("\x01\x02\x03")");
    EXPECT_EQ(bytes_of(only(R"("abc" + 16 zeros)")), "abc" + std::string(16, '\0'));
}

TEST(RealNumbers, read_back_as_the_same_bits) {
    std::mt19937_64 random(20261);
    std::vector<double> numbers{0.0,
                                -0.0,
                                0.1,
                                1.0 / 3,
                                1e300,
                                -5e-324,
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::nan(""),
                                -std::nan("7")};
    for (int i = 0; i < 10'000; ++i) numbers.push_back(std::bit_cast<double>(random()));
    for (const double number : numbers) {
        const double again = real_from(only(real_text(number)));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(again), std::bit_cast<std::uint64_t>(number)) << real_text(number);
    }
}

TEST(Values, come_with_their_kinds_and_fields) {
    const std::vector<JournalValue> values = parse_values(R"(-3, null, layer#12, {num: 1, at: [0.5, inf]}, L"a", "b")");
    ASSERT_EQ(values.size(), 6U);
    EXPECT_EQ(values[0].kind, JournalValue::Kind::number);
    EXPECT_TRUE(values[1].is_word("null"));
    EXPECT_EQ(values[2].kind, JournalValue::Kind::name);
    EXPECT_EQ(values[2].text, "layer");
    EXPECT_EQ(values[2].number, 12U);
    ASSERT_EQ(values[3].parts.size(), 2U);
    EXPECT_EQ(values[3].parts[0].field, "num");
    EXPECT_EQ(values[3].parts[1].field, "at");
    EXPECT_EQ(values[3].parts[1].parts.at(1).text, "inf");
    EXPECT_EQ(values[4].kind, JournalValue::Kind::units);
    EXPECT_EQ(values[5].kind, JournalValue::Kind::bytes);
}

}  // namespace
}  // namespace host::journal
