// How large texts are: asked by the layout, answered by whoever draws them, so that the two agree.
#pragma once

#include <string_view>

namespace host::scriptui {

// Lengths are in pixels of the layout, whatever the scale of the display.
class TextMeasure {
  public:
    virtual ~TextMeasure() = default;
    virtual double width(std::string_view line) const = 0;  // of one line of UTF-8
    virtual double line_height() const = 0;
};

// Guesses for dialogs that nobody draws.
class EstimatedTextMeasure : public TextMeasure {
  public:
    double width(std::string_view line) const override;  // the same for each character
    double line_height() const override { return 17; }
};

}  // namespace host::scriptui
