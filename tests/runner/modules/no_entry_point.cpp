// A loadable module that is not a plug-in: its entry point has another name.
#include "AE_GeneralPlug.h"
#include "entry.h"

extern "C" DllExport A_Err OtherEntry(SPBasicSuite*, A_long, A_long, AEGP_PluginID, AEGP_GlobalRefcon*) {
    return A_Err_NONE;
}
