// A plug-in whose entry point registers everything, says so in a message box, and then fails.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean, A_Boolean*) {
    return A_Err_NONE;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    AEGP_SuiteHandler suites(pica_basicP);
    A_Err err = A_Err_NONE;
    AEGP_Command command = 0;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&command));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(command, "Half Done", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.UtilitySuite3()->AEGP_ReportInfo(id, "cannot start"));
    ERR(13);
    return err;
}
