// Measures text in the windows' font.
#pragma once

#include <QFontMetricsF>

#include "scriptui/text_measure.h"

namespace desktop {

// Needs a running toolkit.
class FontMeasure : public host::scriptui::TextMeasure {
  public:
    FontMeasure();
    double width(std::string_view line) const override;
    double line_height() const override;

  private:
    QFontMetricsF metrics_;
};

}  // namespace desktop
