// UTF-16 by the C++ library, where the platform has no string services of its own.
#include <algorithm>
#include <codecvt>
#include <locale>
#include <string>

#include "platform_text.h"

static_assert(sizeof(wchar_t) == 4);

// std::wstring_convert is deprecated without a successor.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace {

bool is_code_point(wchar_t character) {
    const auto value = static_cast<char32_t>(character);
    return value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF);
}

}  // namespace

void write_utf16(const wchar_t* text, std::size_t characters, A_UTF16Char* out) {
    std::wstring code_points(text, characters);
    // The converter throws at anything that is not a code point; the host gets the replacement character instead.
    std::replace_if(
        code_points.begin(), code_points.end(), [](wchar_t character) { return !is_code_point(character); }, L'\xFFFD');

    std::wstring_convert<std::codecvt_utf8_utf16<char16_t, 0x10FFFF>, char16_t> converter;
    const std::u16string units = converter.from_bytes(utf8_text(code_points));
    std::copy_n(units.begin(), std::min(characters, units.size()), out);
}
