// Text as UTF-16 units.
#include "utf16_text.h"

#include <codecvt>
#include <locale>
#include <optional>
#include <stdexcept>

// std::wstring_convert is deprecated without a successor.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace utf16 {
namespace {

bool is_surrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

bool starts_with_pair(std::u16string_view text) {
    return text.size() >= 2 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 && text[1] <= 0xDFFF;
}

// Units of the character that the text starts with.
std::size_t first_size(std::u16string_view text) {
    return starts_with_pair(text) ? 2 : 1;
}

// Takes the first character off the bytes; nothing when there is none or it is not valid.
std::optional<char32_t> take_character(std::string_view& bytes) {
    if (bytes.empty()) return std::nullopt;
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if ((lead >= 0x80 && lead < 0xC0) || lead >= 0xF8 || bytes.size() < size) return std::nullopt;

    char32_t character = size == 1 ? lead : lead & (0x7Fu >> size);
    for (const char byte : bytes.substr(1, size - 1)) {
        const auto following = static_cast<unsigned char>(byte);
        if ((following & 0xC0) != 0x80) return std::nullopt;
        character = (character << 6) | (following & 0x3Fu);
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (character < kSmallest[size - 1] || character > 0x10FFFF) return std::nullopt;
    if (character >= 0xD800 && character <= 0xDFFF) return std::nullopt;
    bytes.remove_prefix(size);
    return character;
}

void append(std::u16string& text, char32_t character) {
    if (character > 0xFFFF) {
        text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
        character = 0xDC00 + (character & 0x3FF);
    }
    text += static_cast<char16_t>(character);
}

}  // namespace

std::size_t character_count(std::u16string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(first_size(text))) ++count;
    return count;
}

std::u16string_view first_characters(std::u16string_view text, std::size_t count) {
    std::u16string_view rest = text;
    for (; count > 0 && !rest.empty(); --count) rest.remove_prefix(first_size(rest));
    return text.substr(0, text.size() - rest.size());
}

std::u16string valid_text(std::u16string_view text) {
    std::u16string valid;
    while (!text.empty()) {
        const std::u16string_view character = text.substr(0, first_size(text));
        valid += character.size() == 1 && is_surrogate(character[0]) ? u"\uFFFD" : character;
        text.remove_prefix(character.size());
    }
    return valid;
}

std::u16string from_utf8(std::string_view bytes) {
    std::u16string text;
    while (const std::optional<char32_t> character = take_character(bytes)) append(text, *character);
    return text;
}

std::u16string padded_from_utf8(std::string_view bytes) {
    std::u16string text = from_utf8(bytes);
    text.append(bytes.size() - character_count(text), u'#');
    return text;
}

std::string to_utf8(std::u16string_view text) {
    if (valid_text(text) != text) throw std::range_error("a surrogate without its partner");
    std::wstring_convert<std::codecvt_utf8_utf16<char16_t, 0x10FFFF>, char16_t> converter;
    return converter.to_bytes(std::u16string(text));
}

}  // namespace utf16
