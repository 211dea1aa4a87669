// Texts on their way in and out: UTF-8 inside, narrow and UTF-16 outside.
#pragma once

#include <string>
#include <string_view>

#include "A.h"

namespace host::suites {

// Units that belong to no pair become U+FFFD: names inside are always valid UTF-8, whatever a plug-in cut in two.
std::string utf8_from_utf16(std::u16string_view units);
// Bytes that are no UTF-8 become U+FFFD, one each.
std::u16string utf16_from_utf8(std::string_view bytes);
std::u16string from_plugin(const A_UTF16Char* text);  // zero-terminated

// The first bytes of `text`, at most `limit` of them; at a character boundary if asked, else wherever it falls.
std::string_view cut(std::string_view text, std::size_t limit, bool at_character);

// In double quotes, control characters and quotes escaped; long texts are cut with an ellipsis.
std::string quoted(std::string_view text);

}  // namespace host::suites
