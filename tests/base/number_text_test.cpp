// Numbers as text and back.
#include "base/number_text.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>

namespace {

using namespace host::base;

std::string plain(double number) {
    std::string text;
    append_shortest_plain(text, number);
    return text;
}

TEST(NumberText, shortest_forms) {
    EXPECT_EQ(shortest_text(0.1), "0.1");
    EXPECT_EQ(shortest_text(1e23), "1e+23");
    EXPECT_EQ(shortest_text(100000), "1e+05");
    EXPECT_EQ(shortest_text(12345678), "12345678");
    EXPECT_EQ(shortest_text(1e-5), "1e-05");
    EXPECT_EQ(shortest_text(0.001), "0.001");
    EXPECT_EQ(shortest_text(-0.0), "-0");
    EXPECT_EQ(shortest_text(5e-324), "5e-324");
    EXPECT_EQ(shortest_text(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(plain(1e-7), "0.0000001");
    EXPECT_EQ(plain(123456789012345.0), "123456789012345");
    EXPECT_EQ(plain(5e-324).size(), 326U);
    EXPECT_EQ(fixed_text(2.5, 0), "2");
    EXPECT_EQ(fixed_text(-0.04, 1), "-0.0");
    EXPECT_EQ(fixed_text(1.005, 2), "1.00");
}

TEST(NumberText, every_number_comes_back_and_no_shorter_text_would_do) {
    std::mt19937_64 random(20240607);
    for (int i = 0; i < 200'000; ++i) {
        const auto number = std::bit_cast<double>(random());
        if (!std::isfinite(number)) continue;
        const std::string text = shortest_text(number);
        ASSERT_EQ(number_from(text), number) << text;
        const std::size_t digits = text.find_first_of('e') - (text[0] == '-') - (text.find('.') != std::string::npos);
        if (text.find('e') == std::string::npos || digits < 2) continue;
        char shorter[40];
        std::snprintf(shorter, sizeof shorter, "%.*e", static_cast<int>(digits) - 2, number);
        ASSERT_NE(std::strtod(shorter, nullptr), number) << text;
    }
}

TEST(NumberText, reads_the_whole_text_or_nothing) {
    EXPECT_EQ(number_from("-1.5e3"), -1500.0);
    EXPECT_EQ(number_from("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(number_from("-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(number_from("1e-999"), 0.0);
    for (const char* text : {"", " 1", "1 ", "+1", "1,5", "0x10", "x", "-", "1e"})
        EXPECT_EQ(number_from(text), std::nullopt) << text;
}

}  // namespace
