// Characters as UTF-8 and UTF-16: the one encoder and the one decoder.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host::base {

// Stands for what is not a character.
inline constexpr char32_t kReplacement = 0xFFFD;

constexpr bool is_high_surrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool is_low_surrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// The two units of UTF-16 for a character beyond U+FFFF, and back.
struct SurrogatePair {
    char16_t high;
    char16_t low;
};
constexpr SurrogatePair to_surrogates(char32_t character) {
    return {static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)),
            static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF))};
}
constexpr char32_t from_surrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// Whether a byte of UTF-8 belongs to the character that an earlier byte began.
constexpr bool continues_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How many bytes the well-formed character at the front of `bytes` has; 0 if there is none: no overlong forms, no
// surrogates, nothing above U+10FFFF. `character` is set if there is one.
std::size_t decode_utf8(std::string_view bytes, char32_t& character);

// A lone surrogate is written in three bytes, for those who keep UTF-16 that way.
void append_utf8(std::string& bytes, char32_t character);

// The number of characters; bytes that are no UTF-8 count by what they look like.
std::size_t character_count(std::string_view bytes);

// The first bytes, at most `limit` of them, that end between characters.
std::string_view cut_utf8(std::string_view bytes, std::size_t limit);

// Each byte that is not UTF-8 becomes U+FFFD.
std::string valid_utf8(std::string_view bytes);

// Units that belong to no pair become U+FFFD.
std::string utf8_from_utf16(std::u16string_view units);
// Each byte that is not UTF-8 becomes U+FFFD.
std::u16string utf16_from_utf8(std::string_view bytes);

}  // namespace host::base
