// Wide text where wchar_t has 32 bits.
#include <codecvt>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <locale>

#include "platform_text.h"

static_assert(sizeof(wchar_t) == 4);

// std::wstring_convert is deprecated without a successor, and its errors are the behaviour wanted here.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

std::size_t character_count(const wchar_t* text) {
    return std::wcslen(text);
}

std::wstring first_characters(const std::wstring& text, std::size_t count) {
    return text.substr(0, count);
}

std::wstring padded_wide_text(const char* narrow) {
    const std::size_t length = std::strlen(narrow);
    std::wstring text(length, L'#');
    const std::size_t converted = std::mbstowcs(text.data(), narrow, length);
    // A short conversion ends with a zero; a failed one does not, and gives the largest size.
    if (converted < length) text[converted] = L'#';
    return text;
}

std::wstring wide_text(const char* narrow) {
    std::wstring text(std::strlen(narrow) + 1, L'\0');
    std::mbstate_t state = {};
    // Only what was written counts, so a failure needs no look.
    (void)std::mbsrtowcs(text.data(), &narrow, text.size(), &state);
    text.resize(std::wcslen(text.c_str()));
    return text;
}

std::string utf8_text(const std::wstring& text) {
    std::wstring_convert<std::codecvt_utf8<wchar_t, 0x10FFFF>> converter;
    return converter.to_bytes(text);
}
