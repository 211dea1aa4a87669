// Texts of plug-ins, cutting, quoting.
#include "text.h"

#include <array>
#include <cstdio>

#include "base/unicode.h"

namespace host::suites {

namespace {

constexpr std::size_t kLongestQuote = 200;  // bytes

}  // namespace

std::u16string from_plugin(const A_UTF16Char* text) {
    std::u16string units;
    for (; *text != 0; ++text) units.push_back(static_cast<char16_t>(*text));
    return units;
}

std::string_view cut(std::string_view text, std::size_t limit, bool at_character) {
    return at_character ? base::cut_utf8(text, limit) : text.substr(0, limit);
}

std::string quoted(std::string_view text) {
    const std::string_view shown = base::cut_utf8(text, kLongestQuote);
    std::string out = "\"";
    for (const char c : shown) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            std::array<char, 5> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(c)));
            out += escape.data();
        } else {
            out += c;
        }
    }
    out += shown.size() < text.size() ? "\"..." : "\"";
    return out;
}

}  // namespace host::suites
