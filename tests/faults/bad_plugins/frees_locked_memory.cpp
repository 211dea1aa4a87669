// Frees memory that it has locked.
#include "small_plugin.h"

namespace {

// Forgets to unlock the result.
A_Err run_script_carelessly() try {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_MemHandle result = nullptr;
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, "'done';", false, &result, nullptr));
    void* text = nullptr;
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(result, &text));
    ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(result));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

}  // namespace

A_Err run(A_Boolean* handledPB) try {
    *handledPB = true;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;
    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup("Hide"));
    ERR(get_selection(suites, &selection));
    ERR(hide_layers(suites, selection));
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    if (err == A_Err_NONE) (void)run_script_carelessly();
    ERR2(suites.UtilitySuite6()->AEGP_EndUndoGroup());
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
