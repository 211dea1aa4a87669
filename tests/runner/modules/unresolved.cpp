// A module that needs a function that nothing provides, so that it cannot be loaded.
#include "AE_GeneralPlug.h"
#include "entry.h"

extern "C" A_Err function_that_nobody_has();

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite*, A_long, A_long, AEGP_PluginID, AEGP_GlobalRefcon*) {
    return function_that_nobody_has();
}
