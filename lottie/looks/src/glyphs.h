// The letters that a file brings along for its texts.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "hull.h"

namespace lottie::looks {

// In percent of the text's size, from where the letter stands on the line.
struct Glyph {
    double advance = 0;  // to the next letter
    Box reach;
};

class Glyphs {
  public:
    Glyphs() = default;
    // The file's lists of letters and of fonts; empty if it has none. Throws std::runtime_error if they are not JSON.
    Glyphs(std::string_view letters, std::string_view fonts);

    // Of a letter in UTF-8; null if the file has no outline of it.
    const Glyph* find(const std::string& font, const std::string& letter) const;

  private:
    struct Face {
        std::string family, style;
    };
    std::map<std::string, Face> faces_;                                          // by the names of fonts
    std::map<std::tuple<std::string, std::string, std::string>, Glyph> glyphs_;  // by family, style and letter
};

}  // namespace lottie::looks
