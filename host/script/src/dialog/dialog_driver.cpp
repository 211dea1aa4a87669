// Who works the controls of a dialog: what a driver does that does not show anything.
#include "script/dialog_driver.h"

namespace host::script {

void DialogDriver::show(const Alert&) {}

const TextMeasure& DialogDriver::text_measure() const {
    static const EstimatedTextMeasure measure;
    return measure;
}

}  // namespace host::script
