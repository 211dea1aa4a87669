// How large texts are in the windows' letters.
#pragma once

#include <QFontMetricsF>

#include "scriptui/text_measure.h"

namespace desktop {

// Needs the toolkit started.
class FontMeasure : public host::scriptui::TextMeasure {
  public:
    FontMeasure();
    double width(std::string_view line) const override;
    double line_height() const override;

  private:
    QFontMetricsF metrics_;
};

}  // namespace desktop
