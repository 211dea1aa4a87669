// Conversions that lean on the platform: its locale, its string services, the width of its wchar_t. Which unit carries
// them is chosen at build.
#ifndef EXFLATE_PLUGIN_PLATFORM_TEXT_H_
#define EXFLATE_PLUGIN_PLATFORM_TEXT_H_

#include <cstddef>
#include <string>

#include "AE_GeneralPlug.h"

// The wide text as UTF-16 in host byte order, at most length units of it; nothing terminates it. length is the text's
// number of wide characters.
void write_utf16(const wchar_t* text, std::size_t length, A_UTF16Char* out);

// The narrow text in the process's locale, as exactly strlen(narrow) wide characters: what the conversion does not
// fill, because a character had several bytes or because the bytes are not valid, is "#".
std::wstring padded_wide_text(const char* narrow);

// The narrow text in the process's locale, up to the first bytes that are not valid.
std::wstring wide_text(const char* narrow);

// Throws std::range_error for a wide character above 0x10FFFF.
std::string utf8_text(const std::wstring& text);

#endif  // EXFLATE_PLUGIN_PLATFORM_TEXT_H_
