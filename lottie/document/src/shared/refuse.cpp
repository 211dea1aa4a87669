// Lines, columns and pointers for refusals.
#include "shared/refuse.h"

#include <algorithm>

#include "base/unicode.h"

namespace lottie::document {

InputError error_at(std::string_view text, std::size_t position, std::string pointer, const std::string& sentence) {
    const std::string_view before = text.substr(0, std::min(position, text.size()));
    const std::size_t line_start = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::string_view in_line = before.substr(line_start);
    std::size_t column = host::base::character_count(in_line) + 1;
    if (line == 1 && text.substr(0, 3) == "\xEF\xBB\xBF" && position >= 3)
        --column;  // the mark is not a character of the line
    return {sentence, line, column, std::move(pointer)};
}

void refuse(std::string_view text, std::size_t position, std::string pointer, const std::string& sentence) {
    throw error_at(text, position, std::move(pointer), sentence);
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
    const std::string_view shown = host::base::cut_utf8(name, kMaxLength);
    for (const char c : shown) out.push_back(static_cast<unsigned char>(c) < 0x20 ? ' ' : c);
    if (shown.size() < name.size()) out += "...";
    out.push_back('"');
    return out;
}

}  // namespace lottie::document
