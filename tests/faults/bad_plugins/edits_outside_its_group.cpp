// Opens its undo group when the work is already done.
#include "small_plugin.h"

A_Err run(A_Boolean* handledPB) try {
    *handledPB = true;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;
    const AEGP_UtilitySuite6* utility = suites.UtilitySuite6();
    ERR(get_selection(suites, &selection));
    ERR(hide_layers(suites, selection));
    ERR(utility->AEGP_StartUndoGroup("Hide"));
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    if (err == A_Err_NONE) (void)finish();
    ERR2(utility->AEGP_EndUndoGroup());
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
