// Names and numbers as they stand in sentences.
#include "words.h"

#include <cstdio>

namespace lottie::looks {

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        const bool is_second_block = byte == 0xC2 && next >= 0x80 && next < 0xA0;  // of control characters, in UTF-8
        if (byte < 0x20 || byte == 0x7F || is_second_block) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04X", is_second_block ? next : byte);
            result += escaped;
            i += is_second_block ? 1 : 0;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::string quoted(const std::string& name) {
    std::string escaped;
    for (const char c : name) {
        if (c == '"' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return '"' + printable(escaped) + '"';
}

std::string layers_named(const std::string& first, std::size_t count) {
    if (count <= 1) return "layer " + quoted(first);
    return "layers " + quoted(first) + " and " + std::to_string(count - 1) + " more";
}

std::string in_number(std::size_t count, const char* one, const char* several) {
    return count > 1 ? several : one;
}

std::string plain(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result == "-0" ? "0" : result;
}

}  // namespace lottie::looks
