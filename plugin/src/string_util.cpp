// Text helpers.
#include "string_util.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstring>

#include "platform_text.h"

void copyConvertStringLiteralIntoUTF16(const wchar_t* text, A_UTF16Char* out) {
    const std::size_t characters = character_count(text);
    write_utf16(text, characters, out);
    out[characters] = 0;
}

char* sprintf(const char* format, int count, ...) {
    std::size_t size = std::strlen(format);
    va_list arguments;
    va_start(arguments, count);
    for (int i = 0; i < count; ++i) size += static_cast<std::size_t>(simple_int_count(va_arg(arguments, int)));
    va_end(arguments);

    size = std::max<std::size_t>(size, 1);  // an empty format still gets its terminator
    char* buffer = new char[size];
    va_start(arguments, count);
    (void)std::vsnprintf(buffer, size, format, arguments);
    va_end(arguments);
    return buffer;
}

int simple_int_count(int value) {
    int magnitude = value;
    if (value < 0) magnitude = value == INT_MIN ? INT_MAX : -value;
    int digits = 1;
    for (; magnitude >= 10; magnitude /= 10) ++digits;
    return digits;
}

// ---- Not called by anything

const char* copyConvertUTF16IntoStringLiteral(A_UTF16Char* /*text*/, char* /*out*/) {
    return "testing";
}

int _sprintf(char* out, int /*size*/, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int written = std::vsprintf(out, format, arguments);
    va_end(arguments);
    return written;
}

A_UTF16Char* concatUTF16(const A_UTF16Char* a, const A_UTF16Char* b) {
    constexpr int kUnits = 16;  // the terminator included, however long the two texts are
    A_UTF16Char* joined = new A_UTF16Char[kUnits];
    const int from_a = std::min(utf16Size(a), kUnits - 1);
    const int from_b = std::min(utf16Size(b), kUnits - 1 - from_a);
    std::copy_n(a, from_a, joined);
    std::copy_n(b, from_b, joined + from_a);
    joined[from_a + from_b] = 0;
    return joined;
}

int utf16Size(const A_UTF16Char* text) {
    int size = 0;
    if (text != nullptr) {
        while (text[size] != 0) ++size;
    }
    return size;
}

A_UTF16Char* initUTF16(const wchar_t* text) {
    A_UTF16Char* copy = new A_UTF16Char[character_count(text) + 1];
    copyConvertStringLiteralIntoUTF16(text, copy);
    return copy;
}
