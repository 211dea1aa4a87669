// Standard error: sentences for people, in colour where that is wanted. Nothing in them can control the terminal.
#pragma once

#include <string>
#include <string_view>

#include "base/printable.h"

namespace cli {

class Console {
  public:
    enum class Tone { plain, good, warning, error };

    // In colour if standard error is a terminal that has colours and NO_COLOR is not set.
    static Console for_this_process();
    explicit Console(bool has_colors) : has_colors_(has_colors) {}

    // For standard output, by the same rules.
    static Console for_output();
    // The text in the tone's colour, if this console uses colours.
    std::string paint(Tone tone, std::string_view text) const;

    // A console that prints only warnings and errors.
    Console quiet() const;

    // `subject` (a file, the command) in the tone's colour, a colon, the sentence.
    void say(Tone tone, std::string_view subject, std::string_view sentence) const;

    // What a console like this one wrote in another process.
    void pass_on(std::string_view text) const;
    // A status line, replaced by the next one and by any message; an empty one clears it. Only where there are
    // colours: elsewhere nothing can be erased.
    void show_progress(std::string_view line) const;

  private:
    void write(std::string_view text) const;

    bool has_colors_;
    bool is_quiet_ = false;
    mutable bool shows_progress_ = false;
};

using host::base::in_quotes;
using host::base::printable;
using host::base::printable_lines;

// "1 layer", "2 layers".
std::string counted(std::size_t count, std::string_view noun);

}  // namespace cli
