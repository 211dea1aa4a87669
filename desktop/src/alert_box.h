// A message box.
#pragma once

#include <QDialog>

#include "scriptui/dialog_driver.h"

namespace desktop {

// Closes by its button, Enter, Space, Esc or its close box: use exec().
class AlertBox : public QDialog {
  public:
    explicit AlertBox(const host::scriptui::Alert& alert);
};

}  // namespace desktop
