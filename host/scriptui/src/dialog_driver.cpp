// Who works the controls of a dialog: what a driver does that does not show anything.
#include "scriptui/dialog_driver.h"

namespace host::scriptui {

void DialogDriver::show(const Alert&) {}

const TextMeasure& DialogDriver::text_measure() const {
    static const EstimatedTextMeasure measure;
    return measure;
}

}  // namespace host::scriptui
