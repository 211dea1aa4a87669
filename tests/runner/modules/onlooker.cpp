// A plug-in without a command of its own: it says what it was told about the plug-ins asked before it.
#include "AEGP_SuiteHandler.h"
#include "entry.h"

namespace {

SPBasicSuite* S_basic = nullptr;
AEGP_PluginID S_id = 0;

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean already_handledB,
                   A_Boolean*) {
    const char* text = already_handledB ? "handled before" : "not handled before";
    return AEGP_SuiteHandler(S_basic).UtilitySuite6()->AEGP_ReportInfo(S_id, text);
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    S_basic = pica_basicP;
    S_id = id;
    return AEGP_SuiteHandler(S_basic).RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL,
                                                                                 command_hook, nullptr);
}
