// Standard error: sentences for people, coloured where that is wanted.
#include "cli/console.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace cli {
namespace {

constexpr std::string_view kNoColor = "\033[0m";

std::string_view color_of(Console::Tone tone) {
    switch (tone) {
        case Console::Tone::good:
            return "\033[32m";
        case Console::Tone::warning:
            return "\033[33m";
        case Console::Tone::error:
            return "\033[31m";
        case Console::Tone::plain:
            break;
    }
    return "";
}

void append_escape(std::string& text, unsigned code) {
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04X", code);
    text += escape.data();
}

bool is_set(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

Console Console::for_this_process() {
    const char* terminal = std::getenv("TERM");
    const bool is_dumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return Console(::isatty(STDERR_FILENO) == 1 && !is_dumb && !is_set("NO_COLOR"));
}

void Console::say(Tone tone, std::string_view subject, std::string_view sentence) const {
    const std::string_view color = has_colors_ ? color_of(tone) : "";
    std::string line(color);
    line += subject;
    line += ':';
    if (!color.empty()) line += kNoColor;
    line += ' ';
    line += sentence;
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void Console::pass_on(std::string_view text) const {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void Console::show_progress(std::string_view line) const {
    if (!has_colors_) return;
    constexpr std::string_view kEraseLine = "\r\033[K";
    const std::string text = std::string(kEraseLine) + std::string(line);
    std::fwrite(text.data(), 1, text.size(), stderr);
}

std::string in_quotes(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '"' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return '"' + printable(escaped) + '"';
}

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        if (byte < 0x20 || byte == 0x7F) {
            append_escape(result, byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // the second block of control characters, in UTF-8
            append_escape(result, next);
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace cli
