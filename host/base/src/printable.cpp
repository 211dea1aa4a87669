// Makes text from anywhere safe to show.
#include "base/printable.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "base/unicode.h"

namespace host::base {
namespace {

bool is_control(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Terminals that support both directions reorder the text between such marks.
bool turns_direction(char32_t c) {
    return c == 0x61C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

void append_escape(std::string& text, const char* format, char32_t code) {
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), format, static_cast<unsigned>(code));
    text += escape.data();
}

enum class LineEnds { escaped, kept };

std::string escaped(std::string_view text, LineEnds ends) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        char32_t character = 0;
        const std::size_t length = decode_utf8(text, character);
        if (length == 0) {
            append_escape(result, "\\x%02X", static_cast<unsigned char>(text.front()));
            text.remove_prefix(1);
            continue;
        }
        const bool is_kept = character == '\n' && ends == LineEnds::kept;
        if (!is_kept && (is_control(character) || turns_direction(character))) {
            append_escape(result, "\\u%04X", character);
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return result;
}

}  // namespace

std::string printable(std::string_view text) {
    return escaped(text, LineEnds::escaped);
}

std::string printable_lines(std::string_view text) {
    return escaped(text, LineEnds::kept);
}

std::string in_quotes(std::string_view text) {
    std::string quotable;
    for (const char c : text) {
        if (c == '"' || c == '\\') quotable += '\\';
        quotable += c;
    }
    return '"' + printable(quotable) + '"';
}

std::string xml_text(std::string_view text) {
    std::string result;
    const std::string valid = valid_utf8(text);
    for (std::string_view rest = valid; !rest.empty();) {
        char32_t c = 0;
        const std::string_view bytes = rest.substr(0, decode_utf8(rest, c));
        const bool is_space = c == '\t' || c == '\n' || c == '\r';
        if ((c < 0x20 && !is_space) || c == 0xFFFE || c == 0xFFFF)
            append_utf8(result, kReplacement);
        else if (is_control(c) || turns_direction(c) || std::string_view("&<>\"").find(bytes) != std::string_view::npos)
            result += "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
        else
            result += bytes;
        rest.remove_prefix(bytes.size());
    }
    return result;
}

}  // namespace host::base
