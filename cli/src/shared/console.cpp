// Standard error: sentences for people, coloured where that is wanted.
#include "cli/shared/console.h"

#include <cstdio>
#include <cstdlib>

#include "base/terminal.h"

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

bool is_set(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

Console Console::for_this_process() {
    const char* terminal = std::getenv("TERM");
    const bool is_dumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return Console(host::base::is_terminal() && !is_dumb && !is_set("NO_COLOR"));
}

void Console::say(Tone tone, std::string_view subject, std::string_view sentence) const {
    const std::string_view color = has_colors_ ? color_of(tone) : "";
    std::string line(color);
    line += printable(subject);
    line += ':';
    if (!color.empty()) line += kNoColor;
    line += ' ';
    line += printable(sentence);
    line += '\n';
    write(line);
}

void Console::pass_on(std::string_view text) const {
    write(text);
}

void Console::show_progress(std::string_view line) const {
    if (!has_colors_) return;
    shows_progress_ = shows_progress_ || !line.empty();
    write(printable(line));
    shows_progress_ = !line.empty();
}

// With one call, so that lines of several processes do not mix.
void Console::write(std::string_view text) const {
    constexpr std::string_view kEraseLine = "\r\033[K";
    std::string all(shows_progress_ ? kEraseLine : "");
    all += text;
    shows_progress_ = false;
    std::fwrite(all.data(), 1, all.size(), stderr);
}

std::string counted(std::size_t count, std::string_view noun) {
    return std::to_string(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace cli
