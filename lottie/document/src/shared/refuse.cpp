// Lines, columns and pointers for refusals.
#include "shared/refuse.h"

#include <algorithm>

#include "document/input_error.h"

namespace lottie::document {

void refuse(std::string_view text, std::size_t position, std::string pointer, const std::string& sentence) {
    const std::string_view before = text.substr(0, std::min(position, text.size()));
    const std::size_t line_start = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::string_view in_line = before.substr(line_start);
    const auto starts_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    auto column = static_cast<std::size_t>(std::count_if(in_line.begin(), in_line.end(), starts_character)) + 1;
    if (line == 1 && text.substr(0, 3) == "\xEF\xBB\xBF" && position >= 3)
        --column;  // the mark is no character of the line
    throw InputError(sentence, line, column, std::move(pointer));
}

std::string pointer_step(std::string_view key) {
    std::string step = "/";
    for (const char c : key) {
        if (c == '~') {
            step += "~0";
        } else if (c == '/') {
            step += "~1";
        } else {
            step.push_back(c);
        }
    }
    return step;
}

std::string quoted_name(std::string_view name) {
    constexpr std::size_t kMaxLength = 60;
    std::string out = "\"";
    std::size_t length = std::min(name.size(), kMaxLength);
    while (length > 0 && length < name.size() && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80) --length;
    for (const char c : name.substr(0, length)) out.push_back(static_cast<unsigned char>(c) < 0x20 ? ' ' : c);
    if (length < name.size()) out += "...";
    out.push_back('"');
    return out;
}

}  // namespace lottie::document
