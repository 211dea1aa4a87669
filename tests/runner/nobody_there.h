// A dialog driver that works no control, so that every dialog counts as cancelled.
#pragma once

#include "scriptui/dialog_driver.h"

namespace test {

struct NobodyThere : host::scriptui::DialogDriver {
    void drive(host::scriptui::Window&) override {}
};

}  // namespace test
