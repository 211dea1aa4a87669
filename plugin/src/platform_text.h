// Conversions that lean on the platform: its locale, its string services, the width of its wchar_t. Which unit carries
// them is chosen at build.
#pragma once

#include <cstddef>
#include <string>

#include "AE_GeneralPlug.h"

// A character is a code point, and counts as one where it takes two wchar_t. Narrow text is in the process's locale; on
// Windows, whose C library has no locale for what the host says, in UTF-8.

std::size_t character_count(const wchar_t* text);

// All of the text when it has no more than count characters.
std::wstring first_characters(const std::wstring& text, std::size_t count);

// The wide text as UTF-16 in host byte order, cut at as many units as it has characters, which the caller counted;
// nothing terminates it.
void write_utf16(const wchar_t* text, std::size_t characters, A_UTF16Char* out);

// The narrow text as exactly strlen(narrow) characters: what the conversion does not fill, because a character had
// several bytes or because the bytes are not valid, is "#".
std::wstring padded_wide_text(const char* narrow);

// The narrow text up to the first bytes that are not valid.
std::wstring wide_text(const char* narrow);

// Throws std::range_error for a wide character above 0x10FFFF.
std::string utf8_text(const std::wstring& text);
