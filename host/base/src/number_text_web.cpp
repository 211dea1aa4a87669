// Numbers as text and back where the standard library cannot do it: JavaScript knows the shortest digits.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "base/number_text.h"
#include "web_imports.h"

namespace host::base {
namespace {

// The digits without their point, and the power of ten of the first.
struct Digits {
    bool is_negative = false;
    std::string digits;
    int exponent = 0;
};

Digits shortest_digits(double number) {
    std::array<char, 32> buffer;
    std::string_view text(buffer.data(), web_shortest_digits(number, buffer.data()));
    Digits found;
    found.is_negative = std::signbit(number);  // JavaScript's zero has no sign
    if (text.front() == '-') text.remove_prefix(1);
    const std::size_t mark = text.find('e');
    for (const char c : text.substr(0, mark)) {
        if (c != '.') found.digits += c;
    }
    found.exponent = std::atoi(std::string(text.substr(mark + 1)).c_str());
    return found;
}

// All digits of a whole number, the shortest ones being not enough.
std::string whole_text(double number) {
    std::array<char, 400> digits;
    const int length = std::snprintf(digits.data(), digits.size(), "%.0f", number);
    return {digits.data(), static_cast<std::size_t>(length)};
}

std::string plain(double number, const Digits& number_digits) {
    const auto& [is_negative, digits, exponent] = number_digits;
    const int count = static_cast<int>(digits.size());
    if (exponent >= count) return whole_text(number);
    std::string text(is_negative ? "-" : "");
    if (exponent < 0) return text + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    text += digits.substr(0, whole);
    return digits.size() == whole ? text : text + '.' + digits.substr(whole);
}

std::string with_exponent(const Digits& number) {
    std::string text(number.is_negative ? "-" : "");
    text += number.digits[0];
    if (number.digits.size() > 1) text += '.' + number.digits.substr(1);
    std::array<char, 8> exponent;
    std::snprintf(exponent.data(), exponent.size(), "e%c%02d", number.exponent < 0 ? '-' : '+',
                  std::abs(number.exponent));
    return text + exponent.data();
}

std::string no_number(double number) {
    return std::string(std::signbit(number) ? "-" : "") + (std::isinf(number) ? "inf" : "nan");
}

// Exact when there are so few digits that neither the whole number nor the power of ten is rounded.
std::optional<double> short_number_from(std::string_view text) {
    static constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const bool is_negative = text.starts_with('-');
    if (is_negative) text.remove_prefix(1);
    if (text.empty() || text.size() > 16) return std::nullopt;
    std::uint64_t whole = 0;
    std::size_t decimals = 0;
    bool has_point = false;
    for (const char c : text) {
        if (c == '.' && !has_point) {
            has_point = true;
        } else if (c >= '0' && c <= '9') {
            whole = whole * 10 + static_cast<std::uint64_t>(c - '0');
            decimals += has_point ? 1 : 0;
        } else {
            return std::nullopt;
        }
    }
    if (text == "." || whole >= std::uint64_t{1} << 53) return std::nullopt;
    const double number = static_cast<double>(whole) / kPowers[decimals];
    return is_negative ? -number : number;
}

}  // namespace

void append_shortest(std::string& text, double number) {
    text += shortest_text(number);
}

std::string shortest_text(double number) {
    if (!std::isfinite(number)) return no_number(number);
    const Digits digits = shortest_digits(number);
    std::string first = plain(number, digits);
    std::string second = with_exponent(digits);
    return first.size() <= second.size() ? first : second;
}

void append_shortest_plain(std::string& text, double number) {
    text += std::isfinite(number) ? plain(number, shortest_digits(number)) : no_number(number);
}

std::string fixed_text(double number, int decimals) {
    if (!std::isfinite(number)) return no_number(number);
    std::array<char, 400> digits;
    const int length = std::snprintf(digits.data(), digits.size(), "%.*f", decimals, number);
    return {digits.data(), static_cast<std::size_t>(length)};
}

std::optional<double> number_from(std::string_view text) {
    if (const auto number = short_number_from(text)) return number;
    // strtod takes more than is allowed here: blanks, a plus sign and numbers to the base 16.
    constexpr std::string_view kBegin = "-.0123456789in";
    if (text.empty() || kBegin.find(text.front()) == std::string_view::npos) return std::nullopt;
    if (text.find_first_of("xX") != std::string_view::npos) return std::nullopt;
    const std::string copy(text);
    char* stop = nullptr;
    const double number = std::strtod(copy.c_str(), &stop);
    if (stop != copy.c_str() + copy.size()) return std::nullopt;
    return number;
}

}  // namespace host::base
