// Measures text: used by the layout, implemented by whoever draws, so that the two agree.
#pragma once

#include <string_view>

namespace host::scriptui {

// In pixels of the layout, whatever the display's scale.
class TextMeasure {
  public:
    virtual ~TextMeasure() = default;
    virtual double width(std::string_view line) const = 0;  // of one line of UTF-8
    virtual double line_height() const = 0;
};

// Estimates, for dialogs that are not drawn.
class EstimatedTextMeasure : public TextMeasure {
  public:
    double width(std::string_view line) const override;  // a fixed width per character
    double line_height() const override { return 17; }
};

}  // namespace host::scriptui
