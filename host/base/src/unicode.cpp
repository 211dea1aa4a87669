// Characters as UTF-8 and UTF-16: the one encoder and the one decoder.
#include "base/unicode.h"

#include <algorithm>
#include <cstdint>

namespace host::base {

std::size_t decode_utf8(std::string_view bytes, char32_t& character) {
    const auto at = [bytes](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    if (bytes.empty()) return 0;
    const std::uint32_t lead = at(0);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) return 0;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (bytes.size() < length) return 0;
    std::uint32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!continues_character(bytes[i])) return 0;
        code = code << 6 | (at(i) & 0x3F);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xD800 && code < 0xE000;
    if (code < kSmallest[length] || is_surrogate || code > 0x10FFFF) return 0;
    character = code;
    return length;
}

void append_utf8(std::string& bytes, char32_t character) {
    const std::uint32_t code = character;
    const auto append = [&bytes](std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    const auto append_rest = [&](int shift) { append(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xC0 | code >> 6);
        append_rest(0);
    } else if (code < 0x10000) {
        append(0xE0 | code >> 12);
        append_rest(6);
        append_rest(0);
    } else {
        append(0xF0 | code >> 18);
        append_rest(12);
        append_rest(6);
        append_rest(0);
    }
}

std::size_t character_count(std::string_view bytes) {
    return bytes.size() - static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), continues_character));
}

std::string_view cut_utf8(std::string_view bytes, std::size_t limit) {
    if (bytes.size() <= limit) return bytes;
    while (limit > 0 && continues_character(bytes[limit])) --limit;
    return bytes.substr(0, limit);
}

std::string valid_utf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        char32_t character = kReplacement;
        const std::size_t length = decode_utf8(bytes, character);
        append_utf8(text, character);
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string utf8_from_utf16(std::u16string_view units) {
    std::string bytes;
    bytes.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i];
        if (is_high_surrogate(unit) && i + 1 < units.size() && is_low_surrogate(units[i + 1])) {
            append_utf8(bytes, from_surrogates(unit, units[++i]));
        } else {
            append_utf8(bytes, is_high_surrogate(unit) || is_low_surrogate(unit) ? kReplacement : unit);
        }
    }
    return bytes;
}

std::u16string utf16_from_utf8(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    while (!bytes.empty()) {
        char32_t character = kReplacement;
        const std::size_t length = decode_utf8(bytes, character);
        if (character < 0x10000) {
            units.push_back(static_cast<char16_t>(character));
        } else {
            const auto [high, low] = to_surrogates(character);
            units.push_back(high);
            units.push_back(low);
        }
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return units;
}

}  // namespace host::base
