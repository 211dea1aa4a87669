// A plug-in with one command for each thing that a plug-in can do right or wrong in its hooks.
#include <stdexcept>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* S_basic = nullptr;
AEGP_PluginID S_id = 0;
int S_refcon_target = 0;
AEGP_GlobalRefcon refcon_given() {
    return reinterpret_cast<AEGP_GlobalRefcon>(&S_refcon_target);
}

A_Err add_null() {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_LayerH layer = nullptr;
    const A_Time duration = {1, 1};
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite6()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.CompSuite6()->AEGP_CreateNullInComp("made by the test", comp, &duration, &layer));
    return err;
}

A_Err report(const char* text) {
    return AEGP_SuiteHandler(S_basic).UtilitySuite6()->AEGP_ReportInfo(S_id, text);
}

A_Err run_script(const char* text) {
    return AEGP_SuiteHandler(S_basic).UtilitySuite6()->AEGP_ExecuteScript(S_id, text, false, nullptr, nullptr);
}

A_Err begin_undo(const char* name) {
    return AEGP_SuiteHandler(S_basic).UtilitySuite6()->AEGP_StartUndoGroup(name);
}
A_Err end_undo() {
    return AEGP_SuiteHandler(S_basic).UtilitySuite6()->AEGP_EndUndoGroup();
}

A_Err add_null_in_a_group() {
    A_Err err = A_Err_NONE;
    ERR(begin_undo("Add"));
    ERR(add_null());
    ERR(end_undo());
    return err;
}

A_Err throw_exception() {
    throw std::runtime_error("boom");
}
A_Err throw_number() {
    throw 516;
}

A_Err leave_group_open() {
    A_Err err = A_Err_NONE;
    ERR(begin_undo("Outer"));
    ERR(begin_undo("Inner"));
    ERR(add_null());
    return err;
}

A_Err talk() {
    A_Err err = A_Err_NONE;
    ERR(report("a box"));
    ERR(run_script("alert('a script says', 'Title')"));
    return err;
}

A_Err make_a_bad_call() {
    return AEGP_SuiteHandler(S_basic).LayerSuite5()->AEGP_DeleteLayer(nullptr);
}

A_Err ignore_a_bad_call() {
    (void)make_a_bad_call();
    return A_Err_NONE;
}

A_Err edit_then_fail() {
    A_Err err = A_Err_NONE;
    ERR(add_null_in_a_group());
    ERR(7);
    return err;
}

A_Err leak() {
    const void* table = nullptr;
    A_Err err = S_basic->AcquireSuite(kAEGPCollectionSuite, kAEGPCollectionSuiteVersion2, &table);
    AEGP_Collection2H collection = nullptr;
    ERR(static_cast<const AEGP_CollectionSuite2*>(table)->AEGP_NewCollection(S_id, &collection));
    return err;
}

A_Err run_a_broken_script() {
    return run_script("1 +");
}

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean, A_Boolean*);

A_Err register_late() {
    return AEGP_SuiteHandler(S_basic).RegisterSuite5()->AEGP_RegisterCommandHook(
        S_id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook, nullptr);
}

A_Err do_nothing() {
    return A_Err_NONE;
}

struct Command {
    const char* text;
    A_Err (*run)();
    bool is_claimed = true;
    bool is_enabled = true;
    AEGP_Command id = 0;
};

Command S_commands[] = {
    {"Add", add_null_in_a_group},
    {"Throw Exception", throw_exception},
    {"Throw Number", throw_number},
    {"Leave Group Open", leave_group_open},
    {"Talk", talk},
    {"Bad Call", make_a_bad_call},
    {"Ignored Bad Call", ignore_a_bad_call},
    {"Edit Then Fail", edit_then_fail},
    {"Leak", leak},
    {"Broken Script", run_a_broken_script},
    {"Register Late", register_late},
    {"Unclaimed", do_nothing, false},
    {"Never Enabled", do_nothing, true, false},
};

A_Err command_hook(AEGP_GlobalRefcon global, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) {
    if (global != refcon_given()) return 1000;
    for (const Command& known : S_commands) {
        if (known.id != command || !known.is_claimed) continue;
        *handledPB = true;
        return known.run();
    }
    return A_Err_NONE;
}

A_Err update_menu_hook(AEGP_GlobalRefcon global, AEGP_UpdateMenuRefcon, AEGP_WindowType) {
    A_Err err = A_Err_NONE;
    if (global != refcon_given()) return 1000;
    AEGP_SuiteHandler suites(S_basic);
    for (const Command& known : S_commands) {
        if (known.is_enabled) ERR(suites.CommandSuite1()->AEGP_EnableCommand(known.id));
    }
    return err;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon* global_refconP) {
    S_basic = pica_basicP;
    S_id = id;
    *global_refconP = refcon_given();
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    for (Command& command : S_commands) {
        ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&command.id));
        ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(command.id, command.text, AEGP_Menu_LAYER,
                                                           AEGP_MENU_INSERT_AT_BOTTOM));
    }
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    return err;
}
