// The window of a message box.
#pragma once

#include <QDialog>

#include "script/dialog_driver.h"

namespace host::dialog {

// Closes by its button, Enter, Space, Esc or its close box: use exec().
class AlertBox : public QDialog {
  public:
    explicit AlertBox(const script::Alert& alert);
};

}  // namespace host::dialog
