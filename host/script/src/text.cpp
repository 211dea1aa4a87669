// Text on its way into the engine and out of it.
#include "text.h"

#include <algorithm>
#include <cstdint>

namespace host::script {

namespace {

constexpr std::uint32_t kByteSurrogates = 0xDC00;  // + 0x80..0xFF
constexpr std::uint32_t kReplacement = 0xFFFD;

std::uint8_t byte_at(std::string_view s, std::size_t i) {
    return static_cast<std::uint8_t>(s[i]);
}
bool is_continuation(std::string_view s, std::size_t i) {
    return i < s.size() && (byte_at(s, i) & 0xC0) == 0x80;
}

// Length of the valid UTF-8 sequence at `i`, 0 if there is none: no surrogates, no overlong forms, nothing above
// U+10FFFF.
std::size_t utf8_length(std::string_view s, std::size_t i) {
    const std::uint8_t lead = byte_at(s, i);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return is_continuation(s, i + 1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        if (!is_continuation(s, i + 1) || !is_continuation(s, i + 2)) return 0;
        if (lead == 0xE0 && byte_at(s, i + 1) < 0xA0) return 0;
        if (lead == 0xED && byte_at(s, i + 1) > 0x9F) return 0;
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (!is_continuation(s, i + 1) || !is_continuation(s, i + 2) || !is_continuation(s, i + 3)) return 0;
        if (lead == 0xF0 && byte_at(s, i + 1) < 0x90) return 0;
        if (lead == 0xF4 && byte_at(s, i + 1) > 0x8F) return 0;
        return 4;
    }
    return 0;
}

void append(std::string& out, std::uint32_t code) {
    const auto put = [&](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6)), put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12)), put(0x80 | ((code >> 6) & 0x3F)), put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18)), put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F)), put(0x80 | (code & 0x3F));
    }
}

std::uint32_t low_bits(std::string_view s, std::size_t i) {
    return byte_at(s, i) & 0x3FU;
}

// The surrogate written in three bytes at `i`, 0 if there is none.
std::uint32_t surrogate_at(std::string_view s, std::size_t i) {
    if (i >= s.size() || byte_at(s, i) != 0xED || !is_continuation(s, i + 1) || !is_continuation(s, i + 2)) return 0;
    const std::uint32_t code = 0xD000 | (low_bits(s, i + 1) << 6) | low_bits(s, i + 2);
    return code >= 0xD800 ? code : 0;
}

std::string from_engine(std::string_view s, bool bytes_come_back) {
    const auto other = std::find_if(s.begin(), s.end(), [](char c) { return (c & 0x80) != 0; });
    std::string out(s.begin(), other);  // mostly all of it
    out.reserve(s.size());
    for (std::size_t i = out.size(); i < s.size();) {
        if (const std::size_t length = utf8_length(s, i)) {
            out.append(s, i, length);
            i += length;
            continue;
        }
        const std::uint32_t first = surrogate_at(s, i);
        const std::uint32_t second = surrogate_at(s, i + 3);
        if (first != 0 && first < 0xDC00 && second >= 0xDC00) {
            append(out, 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00));
            i += 6;
        } else if (bytes_come_back && first >= kByteSurrogates + 0x80 && first <= kByteSurrogates + 0xFF) {
            out.push_back(static_cast<char>(first - kByteSurrogates));
            i += 3;
        } else {
            append(out, kReplacement);
            i += first != 0 ? 3 : 1;
        }
    }
    return out;
}

}  // namespace

bool is_engine_text(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = utf8_length(bytes, i);
        if (length == 0 || length == 4) return false;
        i += length;
    }
    return true;
}

std::string to_engine(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = utf8_length(bytes, i);
        if (length == 0) {
            append(out, kByteSurrogates + byte_at(bytes, i));
            i += 1;
        } else if (length == 4) {
            const std::uint32_t code = ((byte_at(bytes, i) & 7U) << 18 | low_bits(bytes, i + 1) << 12 |
                                        low_bits(bytes, i + 2) << 6 | low_bits(bytes, i + 3)) -
                                       0x10000;
            append(out, 0xD800 + (code >> 10));
            append(out, 0xDC00 + (code & 0x3FF));
            i += 4;
        } else {
            out.append(bytes, i, length);
            i += length;
        }
    }
    return out;
}

std::string to_utf8(std::string_view engine_text) {
    return from_engine(engine_text, false);
}

std::string to_bytes(std::string_view engine_text) {
    return from_engine(engine_text, true);
}

void push_text(duk_context* ctx, std::string_view bytes) {
    if (is_engine_text(bytes)) {
        duk_push_lstring(ctx, bytes.data(), bytes.size());
    } else {
        const std::string converted = to_engine(bytes);
        duk_push_lstring(ctx, converted.data(), converted.size());
    }
}

}  // namespace host::script
