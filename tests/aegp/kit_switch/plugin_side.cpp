// Sees the kit's headers and runs the kit's handler, whose stand-in throws a code of its own.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

#ifndef STAND_IN_KIT
#error "these are not the kit's headers"
#endif

int main() {
    SPBasicSuite basic = {};
    basic.AcquireSuite = [](const char*, int32, const void** suite) -> SPErr {
        *suite = nullptr;
        return 1;
    };
    try {
        AEGP_SuiteHandler(&basic).LayerSuite5();
    } catch (A_Err missing_suite) {
        return missing_suite == STAND_IN_KIT ? 0 : 1;
    }
    return 1;
}
