// Text helpers: formatted text, the host's UTF-16 texts. They hold no state.
#pragma once

#include <cstdio>

#include "AE_GeneralPlug.h"

// Some C libraries make sprintf a macro, which would swallow the function of that name below.
#undef sprintf

// Converts to UTF-16, cut at as many units as the text has characters, and terminates: out needs one unit more than
// that. A character of two units therefore costs one unit at the end.
void copyConvertStringLiteralIntoUTF16(const wchar_t* text, A_UTF16Char* out);

// Formats into a new buffer of strlen(format) bytes plus the digits of the first count arguments, all of them int. That
// is room enough for formats of text and one %i for each counted, non-negative number; anything longer is cut to the
// buffer. The caller frees the result with array delete.
char* sprintf(const char* format, int count, ...);

// Decimal digits of the value's magnitude, 1 to 10; a minus sign is not counted.
int simple_int_count(int value);

// ---- Not called by anything: part of the set of helpers, but no operation needs them

// Gives the static text "testing" and ignores both arguments.
const char* copyConvertUTF16IntoStringLiteral(A_UTF16Char* text, char* out);

// Formats into out without any bound; size is ignored.
int _sprintf(char* out, int size, const char* format, ...);

// A new text of a followed by b, cut to 15 units. The caller frees it with array delete.
A_UTF16Char* concatUTF16(const A_UTF16Char* a, const A_UTF16Char* b);

// Units before the terminator; 0 for null.
int utf16Size(const A_UTF16Char* text);

// A new UTF-16 copy by copyConvertStringLiteralIntoUTF16. The caller frees it with array delete.
A_UTF16Char* initUTF16(const wchar_t* text);
