// Strings and numbers as JSON spells them.
#include "document/json_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "base/number_text.h"
#include "base/unicode.h"

namespace lottie::document {
namespace {

std::uint32_t hex4(std::string_view digits) {
    std::uint32_t value = 0;
    std::from_chars(digits.data(), digits.data() + 4, value, 16);
    return value;
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
    char32_t c = hex4(literal.substr(at + 2));
    at += 6;
    if (host::base::is_high_surrogate(c)) {
        c = host::base::from_surrogates(c, hex4(literal.substr(at + 2)));
        at += 6;
    }
    host::base::append_utf8(out, c);
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
        char32_t character = 0;
        const std::size_t length = host::base::decode_utf8(bytes, character);
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
    return host::base::number_from(spelling).value_or(0);
}

std::optional<std::int64_t> whole_number(double number) {
    constexpr double kMaxWhole = 9007199254740992.0;  // 2^53
    if (number != std::trunc(number) || !(std::abs(number) <= kMaxWhole)) return std::nullopt;
    return static_cast<std::int64_t>(number);
}

void append_number(std::string& out, double number) {
    if (!std::isfinite(number)) throw std::range_error("a number is not finite");
    if (number == 0) number = 0;  // no negative zero
    const double size = std::abs(number);
    const bool plain = number == 0 || (size >= 1e-7 && size < 1e15);
    plain ? host::base::append_shortest_plain(out, number) : host::base::append_shortest(out, number);
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
