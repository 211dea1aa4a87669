// How large texts are in the windows' letters.
#pragma once

#include <QFontMetricsF>

#include "script/dialog/text_measure.h"

namespace host::dialog {

// Needs the toolkit started.
class FontMeasure : public script::TextMeasure {
  public:
    FontMeasure();
    double width(std::string_view line) const override;
    double line_height() const override;

  private:
    QFontMetricsF metrics_;
};

}  // namespace host::dialog
