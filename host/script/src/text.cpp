// Text on its way into the engine and out of it.
#include "text.h"

#include <algorithm>
#include <cstdint>

#include "base/unicode.h"

namespace host::script {

namespace {

constexpr char32_t kByteSurrogates = 0xDC00;  // + 0x80..0xFF

std::uint8_t byte_at(std::string_view s, std::size_t i) {
    return static_cast<std::uint8_t>(s[i]);
}

// The surrogate written in three bytes at `i`, 0 if there is none.
char32_t surrogate_at(std::string_view s, std::size_t i) {
    if (i + 2 >= s.size() || byte_at(s, i) != 0xED) return 0;
    if (!base::continues_character(s[i + 1]) || !base::continues_character(s[i + 2])) return 0;
    const char32_t code = 0xD000 | (byte_at(s, i + 1) & 0x3FU) << 6 | (byte_at(s, i + 2) & 0x3FU);
    return code >= 0xD800 ? code : 0;
}

std::string from_engine(std::string_view s, bool bytes_come_back) {
    const auto other = std::find_if(s.begin(), s.end(), [](char c) { return (c & 0x80) != 0; });
    std::string out(s.begin(), other);  // usually all of it
    out.reserve(s.size());
    for (std::size_t i = out.size(); i < s.size();) {
        char32_t character = 0;
        if (const std::size_t length = base::decode_utf8(s.substr(i), character)) {
            out.append(s, i, length);
            i += length;
            continue;
        }
        const char32_t first = surrogate_at(s, i);
        const char32_t second = surrogate_at(s, i + 3);
        if (base::is_high_surrogate(first) && base::is_low_surrogate(second)) {
            base::append_utf8(out, base::from_surrogates(first, second));
            i += 6;
        } else if (bytes_come_back && first >= kByteSurrogates + 0x80 && first <= kByteSurrogates + 0xFF) {
            out.push_back(static_cast<char>(first - kByteSurrogates));
            i += 3;
        } else {
            base::append_utf8(out, base::kReplacement);
            i += first != 0 ? 3 : 1;
        }
    }
    return out;
}

}  // namespace

bool is_engine_text(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        char32_t character = 0;
        const std::size_t length = base::decode_utf8(bytes.substr(i), character);
        if (length == 0 || length == 4) return false;
        i += length;
    }
    return true;
}

std::string to_engine(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size();) {
        char32_t character = 0;
        const std::size_t length = base::decode_utf8(bytes.substr(i), character);
        if (length == 0) {
            base::append_utf8(out, kByteSurrogates + byte_at(bytes, i));
            i += 1;
        } else if (length == 4) {
            const auto [high, low] = base::to_surrogates(character);
            base::append_utf8(out, high);
            base::append_utf8(out, low);
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
