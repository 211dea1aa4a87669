// Text as UTF-16 units, on any platform: what platform_text.h promises, for where wchar_t is such a unit.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// A character is a code point: a pair of surrogates, or any other unit, a surrogate without its partner included.
namespace utf16 {

std::size_t character_count(std::u16string_view text);
std::u16string_view first_characters(std::u16string_view text, std::size_t count);

// Every surrogate without its partner becomes the replacement character.
std::u16string valid_text(std::u16string_view text);

// Up to the first bytes that are not valid.
std::u16string from_utf8(std::string_view bytes);

// The same, followed by "#" up to as many characters as there are bytes.
std::u16string padded_from_utf8(std::string_view bytes);

// Throws std::range_error for a surrogate without its partner.
std::string to_utf8(std::u16string_view text);

}  // namespace utf16
