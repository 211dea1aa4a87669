// A dialog driver that works no control, so that every dialog counts as cancelled.
#pragma once

#include "script/dialog_driver.h"

namespace test {

struct NobodyThere : host::script::DialogDriver {
    void drive(host::script::Window&) override {}
};

}  // namespace test
