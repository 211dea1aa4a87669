// UTF-8 and UTF-16, cutting, quoting.
#include "text.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace host::suites {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kLongestQuote = 200;  // bytes

void append_utf8(std::string& out, char32_t c) {
    const auto byte = [&out](std::uint32_t b) { out.push_back(static_cast<char>(static_cast<unsigned char>(b))); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | c >> 6);
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | c >> 12);
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | c >> 18);
        byte(0x80 | (c >> 12 & 0x3F));
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

// The character at the front of `bytes` and its length; the replacement and 1 if there is none.
std::pair<char32_t, std::size_t> first_character(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    const std::uint32_t lead = at(0);
    if (lead < 0x80) return {static_cast<char32_t>(lead), 1};
    std::size_t length = 0;
    std::uint32_t c = 0;
    std::uint32_t least = 0;
    if (lead >> 5 == 0x6) {
        length = 2, c = lead & 0x1F, least = 0x80;
    } else if (lead >> 4 == 0xE) {
        length = 3, c = lead & 0x0F, least = 0x800;
    } else if (lead >> 3 == 0x1E) {
        length = 4, c = lead & 0x07, least = 0x10000;
    }
    if (length == 0 || bytes.size() < length) return {kReplacement, 1};
    for (std::size_t i = 1; i < length; ++i) {
        if (at(i) >> 6 != 0x2) return {kReplacement, 1};
        c = c << 6 | (at(i) & 0x3F);
    }
    const bool surrogate = c >= 0xD800 && c < 0xE000;
    if (c < least || c > 0x10FFFF || surrogate) return {kReplacement, 1};
    return {static_cast<char32_t>(c), length};
}

bool is_continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string utf8_from_utf16(std::u16string_view units) {
    std::string out;
    out.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i];
        if (unit < 0xD800 || unit >= 0xE000) {
            append_utf8(out, unit);
        } else if (unit < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000) {
            append_utf8(out, 0x10000 + ((unit - 0xD800) << 10) + (units[i + 1] - char32_t{0xDC00}));
            ++i;
        } else {
            append_utf8(out, kReplacement);
        }
    }
    return out;
}

std::u16string utf16_from_utf8(std::string_view bytes) {
    std::u16string out;
    out.reserve(bytes.size());
    while (!bytes.empty()) {
        const auto [c, length] = first_character(bytes);
        if (c < 0x10000) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
        bytes.remove_prefix(length);
    }
    return out;
}

std::u16string from_plugin(const A_UTF16Char* text) {
    std::u16string units;
    for (; *text != 0; ++text) units.push_back(static_cast<char16_t>(*text));
    return units;
}

std::string_view cut(std::string_view text, std::size_t limit, bool at_character) {
    if (text.size() <= limit) return text;
    std::size_t end = limit;
    while (at_character && end > 0 && is_continuation(text[end])) --end;
    return text.substr(0, end);
}

std::string quoted(std::string_view text) {
    const std::string_view shown = cut(text, kLongestQuote, true);
    std::string out = "\"";
    for (const char c : shown) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            std::array<char, 5> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(c)));
            out += escape.data();
        } else {
            out += c;
        }
    }
    out += shown.size() < text.size() ? "\"..." : "\"";
    return out;
}

}  // namespace host::suites
