// Measures text in the windows' font.
#include "font_measure.h"

#include <cmath>

#include "texts.h"
#include "theme.h"

namespace desktop {

FontMeasure::FontMeasure() : metrics_(theme::font()) {}

double FontMeasure::width(std::string_view line) const {
    return metrics_.horizontalAdvance(to_qt(line));
}

double FontMeasure::line_height() const {
    return std::ceil(metrics_.height());
}

}  // namespace desktop
