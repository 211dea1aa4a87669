// Gives up when its finishing touch fails, which nobody minds.
#include "small_plugin.h"

A_Err run(A_Boolean* handledPB) try {
    *handledPB = true;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;
    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup("Hide"));
    ERR(get_selection(suites, &selection));
    ERR(hide_layers(suites, selection));
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    ERR(finish());
    ERR2(suites.UtilitySuite6()->AEGP_EndUndoGroup());
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
