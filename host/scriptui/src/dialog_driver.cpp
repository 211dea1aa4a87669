// Defaults for drivers that show nothing.
#include "scriptui/dialog_driver.h"

namespace host::scriptui {

void DialogDriver::show(const Alert&) {}

const TextMeasure& DialogDriver::text_measure() const {
    static const EstimatedTextMeasure measure;
    return measure;
}

}  // namespace host::scriptui
