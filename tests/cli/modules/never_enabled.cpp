// A plug-in whose command is in the menu and never enabled.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID,
                                          AEGP_GlobalRefcon*) {
    AEGP_SuiteHandler suites(pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_Command command = 0;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&command));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(command, "Not Now", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    return err;
}
