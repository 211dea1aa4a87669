// Wide text where wchar_t has 16 bits.
#include <algorithm>

#include "platform_text.h"
#include "utf16_text.h"

static_assert(sizeof(wchar_t) == sizeof(char16_t));

namespace {

std::u16string units(const std::wstring& text) {
    return {text.begin(), text.end()};
}

std::wstring wide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace

std::size_t character_count(const wchar_t* text) {
    return utf16::character_count(units(text));
}

std::wstring first_characters(const std::wstring& text, std::size_t count) {
    return wide(utf16::first_characters(units(text), count));
}

void write_utf16(const wchar_t* text, std::size_t characters, A_UTF16Char* out) {
    std::copy_n(utf16::valid_text(units(text)).begin(), characters, out);
}

std::wstring padded_wide_text(const char* narrow) {
    return wide(utf16::padded_from_utf8(narrow));
}

std::wstring wide_text(const char* narrow) {
    return wide(utf16::from_utf8(narrow));
}

std::string utf8_text(const std::wstring& text) {
    return utf16::to_utf8(units(text));
}
