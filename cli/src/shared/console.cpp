// Standard error: sentences for people, in colour where that is wanted.
#include "cli/shared/console.h"

#include <cstdio>
#include <cstdlib>

#include "base/terminal.h"

namespace cli {
namespace {

using host::base::OutStream;

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

bool wants_colors(OutStream stream) {
    const char* terminal = std::getenv("TERM");
    const bool is_dumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return host::base::is_terminal(stream) && !is_dumb && !is_set("NO_COLOR");
}

}  // namespace

Console Console::for_this_process() {
    return Console(wants_colors(OutStream::errors));
}

Console Console::for_output() {
    return Console(wants_colors(OutStream::output));
}

std::string Console::paint(Tone tone, std::string_view text) const {
    const std::string_view color = has_colors_ ? color_of(tone) : "";
    std::string painted(color);
    painted += text;
    if (!color.empty()) painted += kNoColor;
    return painted;
}

Console Console::quiet() const {
    Console quiet = *this;
    quiet.is_quiet_ = true;
    return quiet;
}

void Console::say(Tone tone, std::string_view subject, std::string_view sentence) const {
    if (is_quiet_ && (tone == Tone::plain || tone == Tone::good)) return;
    write(paint(tone, printable(subject) + ':') + ' ' + printable(sentence) + '\n');
}

void Console::pass_on(std::string_view text) const {
    write(text);
}

void Console::show_progress(std::string_view line) const {
    if (!has_colors_ || is_quiet_) return;
    shows_progress_ = shows_progress_ || !line.empty();
    write(printable(line));
    shows_progress_ = !line.empty();
}

// In one call, so that lines of several processes do not mix.
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
