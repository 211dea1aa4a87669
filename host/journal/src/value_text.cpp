// Values as text: writing them.
#include "journal/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "base/bits.h"
#include "base/number_text.h"
#include "base/unicode.h"

namespace host::journal {
namespace {

constexpr std::size_t kCountedZeros = 16;  // at least so many zeros at the end are counted instead of written

void append_hex(std::string& text, const char* format, std::uint32_t number) {
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), format, static_cast<unsigned>(number));
    text += escape.data();
}

// Control characters and what some programs take for the end of a line.
bool is_steering(std::uint32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 || character == 0x2029;
}

// The short escapes; false if the character has none.
bool append_short_escape(std::string& text, std::uint32_t character) {
    switch (character) {
        case '"':
            text += "\\\"";
            return true;
        case '\\':
            text += "\\\\";
            return true;
        case '\n':
            text += "\\n";
            return true;
        case '\r':
            text += "\\r";
            return true;
        case '\t':
            text += "\\t";
            return true;
        case 0:
            text += "\\0";
            return true;
        default:
            return false;
    }
}

char16_t unit_at(std::string_view bytes, std::size_t i) {
    const auto low = static_cast<unsigned char>(bytes[i * 2]);
    const auto high = static_cast<unsigned char>(bytes[i * 2 + 1]);
    return static_cast<char16_t>(low | high << 8);
}

// Text that ends with its one zero and has nothing in it that would have to be escaped as a number.
bool reads_as_bytes(std::string_view bytes) {
    if (bytes.empty() || bytes.find('\0') != bytes.size() - 1) return bytes.empty();
    for (bytes.remove_suffix(1); !bytes.empty();) {
        char32_t character = 0;
        const std::size_t length = base::decode_utf8(bytes, character);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

bool reads_as_units(std::string_view bytes) {
    if (bytes.size() < 2 || bytes.size() % 2 != 0) return false;
    const std::size_t count = bytes.size() / 2;
    for (std::size_t i = 0; i < count; ++i)
        if ((unit_at(bytes, i) == 0) != (i + 1 == count)) return false;
    return true;
}

}  // namespace

std::string quoted_bytes(std::string_view bytes) {
    std::string text = "\"";
    while (!bytes.empty()) {
        char32_t character = 0;
        const std::size_t length = base::decode_utf8(bytes, character);
        const std::size_t taken = std::max<std::size_t>(length, 1);
        if (length != 0 && append_short_escape(text, character)) {
            // written
        } else if (length == 0 || is_steering(character)) {
            for (std::size_t i = 0; i < taken; ++i) append_hex(text, "\\x%02X", static_cast<unsigned char>(bytes[i]));
        } else {
            text += bytes.substr(0, length);
        }
        bytes.remove_prefix(taken);
    }
    return text + '"';
}

std::string quoted_units(std::string_view bytes) {
    std::string text = "L\"";
    const std::size_t count = bytes.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const char16_t unit = unit_at(bytes, i);
        if (append_short_escape(text, unit)) continue;
        if (base::is_high_surrogate(unit) && i + 1 < count && base::is_low_surrogate(unit_at(bytes, i + 1))) {
            base::append_utf8(text, base::from_surrogates(unit, unit_at(bytes, ++i)));
        } else if (base::is_high_surrogate(unit) || base::is_low_surrogate(unit) || is_steering(unit)) {
            append_hex(text, "\\u%04X", unit);
        } else {
            base::append_utf8(text, unit);
        }
    }
    return text + '"';
}

std::string content_text(std::string_view bytes) {
    if (reads_as_bytes(bytes)) return quoted_bytes(bytes);
    if (reads_as_units(bytes)) return quoted_units(bytes);
    const std::size_t kept = bytes.find_last_not_of('\0') + 1;  // npos + 1 is 0
    const std::size_t zeros = bytes.size() - kept;
    if (zeros < kCountedZeros) return quoted_bytes(bytes);
    return quoted_bytes(bytes.substr(0, kept)) + " + " + std::to_string(zeros) + " zeros";
}

std::string real_text(double number) {
    if (std::isnan(number)) {
        std::array<char, 24> text{};
        std::snprintf(text.data(), text.size(), "nan:%016llX",
                      static_cast<unsigned long long>(base::bit_cast<std::uint64_t>(number)));
        return text.data();
    }
    return base::shortest_text(number);
}

double real_from(const JournalValue& value) {
    const std::string_view text = value.text;
    const char* end = text.data() + text.size();
    if (value.kind == JournalValue::Kind::number && text.starts_with("nan:") && text.size() == 20) {
        std::uint64_t bits = 0;
        const auto [stop, error] = std::from_chars(text.data() + 4, end, bits, 16);
        const double number = base::bit_cast<double>(bits);
        if (error == std::errc() && stop == end && std::isnan(number)) return number;
    } else if (value.kind == JournalValue::Kind::number) {
        const auto number = base::number_from(text);
        if (number && !std::isnan(*number)) return *number;
    }
    throw BadValue("a number is expected");
}

}  // namespace host::journal
