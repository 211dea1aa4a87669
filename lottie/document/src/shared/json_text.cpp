// Strings and numbers as JSON spells them.
#include "document/json_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace lottie::document {
namespace {

std::uint32_t hex4(std::string_view digits) {
    std::uint32_t value = 0;
    std::from_chars(digits.data(), digits.data() + 4, value, 16);
    return value;
}

void append_utf8(std::string& out, std::uint32_t c) {
    const auto byte = [&out](std::uint32_t value) { out.push_back(static_cast<char>(value)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6)), byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12)), byte(0x80 | ((c >> 6) & 0x3F)), byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18)), byte(0x80 | ((c >> 12) & 0x3F)), byte(0x80 | ((c >> 6) & 0x3F)),
            byte(0x80 | (c & 0x3F));
    }
}

// Decodes the escape that begins at `at` and moves `at` behind it.
void append_escape(std::string& out, std::string_view literal, std::size_t& at) {
    const char kind = literal[at + 1];
    if (kind != 'u') {
        constexpr std::string_view kLetters = "bfnrt";
        constexpr std::string_view kMeanings = "\b\f\n\r\t";
        const std::size_t which = kLetters.find(kind);
        out.push_back(which == std::string_view::npos ? kind : kMeanings[which]);
        at += 2;
        return;
    }
    std::uint32_t c = hex4(literal.substr(at + 2));
    at += 6;
    if (c >= 0xD800 && c < 0xDC00) {
        c = 0x10000 + ((c - 0xD800) << 10) + (hex4(literal.substr(at + 2)) - 0xDC00);
        at += 6;
    }
    append_utf8(out, c);
}

// Length of the UTF-8 sequence at the front, 0 if there is none.
std::size_t utf8_length(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u; };
    const auto follows = [&at](std::size_t i) { return (at(i) & 0xC0) == 0x80; };
    const unsigned first = at(0);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first < 0xF0) {
        const bool in_range = (first != 0xE0 || at(1) >= 0xA0) && (first != 0xED || at(1) < 0xA0);
        return in_range && follows(1) && follows(2) ? 3 : 0;
    }
    if (first >= 0xF0 && first < 0xF5) {
        const bool in_range = (first != 0xF0 || at(1) >= 0x90) && (first != 0xF4 || at(1) < 0x90);
        return in_range && follows(1) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

void append_encoded(std::string& out, std::string_view character) {
    constexpr std::string_view kHex = "0123456789abcdef";
    const auto c = static_cast<unsigned char>(character[0]);
    switch (c) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    if (c < 0x20) {
        out += "\\u00";
        out.push_back(kHex[c >> 4]);
        out.push_back(kHex[c & 0xF]);
    } else {
        out += character;
    }
}

}  // namespace

std::string decode_string(std::string_view literal) {
    std::string out;
    if (literal.size() < 2) return out;
    const std::size_t end = literal.size() - 1;
    out.reserve(end);
    for (std::size_t at = 1; at < end;) {
        if (literal[at] == '\\') {
            append_escape(out, literal, at);
        } else {
            out.push_back(literal[at++]);
        }
    }
    return out;
}

bool string_equals(std::string_view literal, std::string_view decoded) {
    if (literal.size() < 2) return false;
    const std::string_view inner = literal.substr(1, literal.size() - 2);
    // Escapes only make a text longer.
    if (inner.size() < decoded.size()) return false;
    if (inner.size() == decoded.size()) return inner == decoded && inner.find('\\') == std::string_view::npos;
    return inner.find('\\') != std::string_view::npos && decode_string(literal) == decoded;
}

std::string encode_string(std::string_view bytes) {
    std::string out = "\"";
    out.reserve(bytes.size() + 2);
    while (!bytes.empty()) {
        const std::size_t length = utf8_length(bytes);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            bytes.remove_prefix(1);
        } else {
            append_encoded(out, bytes.substr(0, length));
            bytes.remove_prefix(length);
        }
    }
    out.push_back('"');
    return out;
}

double read_number(std::string_view spelling) {
    double number = 0;
    const auto result = std::from_chars(spelling.data(), spelling.data() + spelling.size(), number);
    // from_chars leaves the number alone both beyond the largest double and below the smallest.
    if (result.ec == std::errc::result_out_of_range) return std::strtod(std::string(spelling).c_str(), nullptr);
    return number;
}

std::optional<std::int64_t> whole_number(double number) {
    constexpr double kMaxWhole = 9007199254740992.0;  // 2^53
    if (number != std::trunc(number) || !(std::abs(number) <= kMaxWhole)) return std::nullopt;
    return static_cast<std::int64_t>(number);
}

void append_number(std::string& out, double number) {
    if (number == 0 || !std::isfinite(number)) number = 0;  // no negative zero, and JSON has no infinity
    std::array<char, 40> buffer{};
    const double size = std::abs(number);
    const bool plain = number == 0 || (size >= 1e-7 && size < 1e15);
    const auto result =
        plain ? std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed)
              : std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    out.append(buffer.data(), result.ptr);
}

std::string number_array(std::span<const double> numbers, std::string_view text, std::span<const Slice> spellings) {
    std::string out = "[";
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0) out.push_back(',');
        if (i < spellings.size() && read_number(spellings[i].of(text)) == numbers[i]) {
            out += spellings[i].of(text);
        } else {
            append_number(out, numbers[i]);
        }
    }
    out.push_back(']');
    return out;
}

}  // namespace lottie::document
