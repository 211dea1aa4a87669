// A small plug-in with one command, always enabled, that hides the selected layers in one undo group: as it should be,
// or with one mistake, which is chosen when it is built.
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

enum class Mistake {
    keeps_every_promise,
    crashes,                    // ends the whole process when a call failed
    disposes_twice,             // disposes of its collection a second time
    edits_outside_its_group,    // opens its undo group when the work is already done
    forgets_that_it_handled,    // says that it handled the command only when that succeeded
    frees_locked_memory,        // forgets to unlock what its script gave back
    goes_on_after_an_error,     // cleans up after a failed call, which it did not promise
    hangs,                      // waits forever for its undo group when that was refused
    holds_a_suite,              // never gives one of its suites back
    leaves_a_handle,            // never frees what its script gave back
    leaves_the_group_open,      // ends its undo group only when nothing failed
    returns_another_code,       // says that something failed, but not what
    stops_for_a_minor_failure,  // gives up when its finishing touch fails, which should not matter
    swallows_an_error,          // stops after a failed call, and then says that all went well
    throws,                     // lets an exception out when a call failed
};

constexpr bool makes(Mistake mistake) {
    return mistake == Mistake::MISTAKE;
}

SPBasicSuite* sP = nullptr;
AEGP_PluginID S_my_id = 0;
AEGP_Command S_hide_cmd = 0;

A_Err get_selection(AEGP_SuiteHandler& suites, AEGP_Collection2H* selection) {
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.CompSuite11()->AEGP_GetNewCollectionFromCompSelection(S_my_id, comp, selection));
    return err;
}

A_Err hide_layers(AEGP_SuiteHandler& suites, AEGP_Collection2H layers) {
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = 0; i < count; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i, &item));
        ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(item.u.layer.layerH, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    }
    return err;
}

// The finishing touch: it does not matter if it fails. Comes after the selection was disposed of.
A_Err finish() try {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_MemHandle result = nullptr;
    void* text = nullptr;
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, "'done';", false, &result, nullptr));
    if (makes(Mistake::leaves_a_handle)) return err;
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(result, &text));
    if (!makes(Mistake::frees_locked_memory)) ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(result));
    ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(result));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err run(A_Boolean* handledPB) try {
    *handledPB = !makes(Mistake::forgets_that_it_handled);
    const void* held = nullptr;
    if (makes(Mistake::holds_a_suite) && sP->AcquireSuite(kAEGPItemSuite, kAEGPItemSuiteVersion6, &held) != A_Err_NONE)
        return 516;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;
    const AEGP_UtilitySuite6* utility = suites.UtilitySuite6();

    if (!makes(Mistake::edits_outside_its_group)) ERR(utility->AEGP_StartUndoGroup("Hide"));
    while (makes(Mistake::hangs) && err != A_Err_NONE) sleep(1);
    ERR(get_selection(suites, &selection));
    ERR(hide_layers(suites, selection));
    if (makes(Mistake::edits_outside_its_group)) ERR(utility->AEGP_StartUndoGroup("Hide"));
    if (makes(Mistake::goes_on_after_an_error) && selection != nullptr)
        ERR2(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    else
        ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(selection));
    if (makes(Mistake::stops_for_a_minor_failure)) {
        ERR(finish());
    } else if (err == A_Err_NONE) {
        (void)finish();
        if (makes(Mistake::disposes_twice)) (void)suites.CollectionSuite2()->AEGP_DisposeCollection(selection);
    }
    if (makes(Mistake::crashes) && err != A_Err_NONE) std::abort();
    if (makes(Mistake::leaves_the_group_open))
        ERR(utility->AEGP_EndUndoGroup());
    else
        ERR2(utility->AEGP_EndUndoGroup());

    if (makes(Mistake::forgets_that_it_handled)) *handledPB = err == A_Err_NONE;
    if (makes(Mistake::throws) && err != A_Err_NONE) throw std::runtime_error("a call failed");
    if (makes(Mistake::returns_another_code) && err != A_Err_NONE) return A_Err_GENERIC;
    return makes(Mistake::swallows_an_error) ? static_cast<A_Err>(A_Err_NONE) : err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) {
    return command == S_hide_cmd ? run(handledPB) : static_cast<A_Err>(A_Err_NONE);
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    sP = pica_basicP;
    S_my_id = id;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_hide_cmd));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_hide_cmd, "Hide", AEGP_Menu_LAYER,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.CommandSuite1()->AEGP_EnableCommand(S_hide_cmd));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    return err;
}
