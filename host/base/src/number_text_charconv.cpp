// Numbers as text and back, by the standard library.
#include <array>
#include <charconv>
#include <cstdlib>

#include "base/number_text.h"

namespace host::base {

void append_shortest(std::string& text, double number) {
    std::array<char, 32> digits;
    text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

std::string shortest_text(double number) {
    std::string text;
    append_shortest(text, number);
    return text;
}

void append_shortest_plain(std::string& text, double number) {
    std::array<char, 400> digits;  // the smallest number has 324 places behind the point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed).ptr;
    text.append(digits.data(), end);
}

std::string fixed_text(double number, int decimals) {
    std::array<char, 400> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals).ptr;
    return {digits.data(), end};
}

std::optional<double> number_from(std::string_view text) {
    double number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (stop != text.data() + text.size() || error == std::errc::invalid_argument) return std::nullopt;
    // from_chars leaves the number alone both beyond the largest and below the smallest.
    if (error == std::errc::result_out_of_range) return std::strtod(std::string(text).c_str(), nullptr);
    return number;
}

}  // namespace host::base
