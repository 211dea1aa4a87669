// A plug-in without a command: when idle it says how often it was asked and when it wants to be asked again, and at the
// end that it goes.
#include <string>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* S_basic = nullptr;
AEGP_PluginID S_id = 0;
int S_times_idle = 0;

A_Err say(const std::string& text) {
    return AEGP_SuiteHandler(S_basic).UtilitySuite6()->AEGP_ReportInfo(S_id, text.c_str());
}

A_Err idle_hook(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long* max_sleepPL) {
    *max_sleepPL = 5;
    return say("idle " + std::to_string(++S_times_idle));
}

A_Err death_hook(AEGP_GlobalRefcon, AEGP_DeathRefcon) {
    return say("goodbye");
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    S_basic = pica_basicP;
    S_id = id;
    S_times_idle = 0;
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    ERR(suites.RegisterSuite5()->AEGP_RegisterIdleHook(id, idle_hook, nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterDeathHook(id, death_hook, nullptr));
    return err;
}
