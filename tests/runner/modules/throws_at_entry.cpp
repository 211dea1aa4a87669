// A plug-in whose entry point throws an exception.
#include <stdexcept>

#include "AE_GeneralPlug.h"
#include "entry.h"

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite*, A_long, A_long, AEGP_PluginID, AEGP_GlobalRefcon*) {
    throw std::runtime_error("no start");
}
