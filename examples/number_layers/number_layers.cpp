// A plug-in with a dialog made by a script, and hooks for idle moments and for the end: "Number Layers..." in the Layer
// menu asks for a name and names the selected layers with it and a number each. While nothing else goes on, the menu
// item shows how often that was done.
#include <cstdlib>
#include <new>
#include <string>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

// What the plug-in keeps from its start to its end; the host hands it to every hook.
struct State {
    SPBasicSuite* basic = nullptr;
    AEGP_PluginID id = 0;
    AEGP_Command command = 0;
    int times_done = 0;
    int times_shown = 0;  // in the menu
};

State& state_of(AEGP_GlobalRefcon refcon) {
    return *reinterpret_cast<State*>(refcon);
}

// Gives the name that was typed as the numbers of its characters, "76,97,121", so that no encoding matters on the way;
// nothing if the dialog was cancelled.
constexpr const char* kDialog = R"((function () {
    var window = new Window("dialog", "Number Layers");
    var field = window.add("edittext", undefined, "Layer", {name: "name"});
    field.characters = 30;
    var buttons = window.add("group");
    buttons.add("button", undefined, "Ok");
    buttons.add("button", undefined, "Cancel");
    if (window.show() !== 1) return "";
    var codes = [];
    for (var i = 0; i < field.text.length; i++) codes.push(field.text.charCodeAt(i));
    return codes.join(",");
})();)";

std::u16string name_from(const char* codes) {
    std::u16string name;
    char* end = nullptr;
    for (const char* at = codes; *at != '\0'; at = *end == ',' ? end + 1 : end) {
        const long code = std::strtol(at, &end, 10);
        if (end == at) break;
        name += static_cast<char16_t>(code);
    }
    return name;
}

A_Err ask_for_name(AEGP_SuiteHandler& suites, const State& state, std::u16string* name) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_MemHandle answer = nullptr;
    void* codes = nullptr;
    const AEGP_MemorySuite1* memory = suites.MemorySuite1();
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(state.id, kDialog, false, &answer, nullptr));
    if (answer == nullptr) return err;
    ERR(memory->AEGP_LockMemHandle(answer, &codes));
    if (codes != nullptr) {
        *name = name_from(static_cast<const char*>(codes));
        ERR2(memory->AEGP_UnlockMemHandle(answer));
    }
    ERR2(memory->AEGP_FreeMemHandle(answer));
    return err;
}

A_Err number_layers(const AEGP_CollectionSuite2* collections, const AEGP_LayerSuite7* layers,
                    AEGP_Collection2H selection, const std::u16string& name) {
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    A_u_long number = 0;
    ERR(collections->AEGP_GetCollectionNumItems(selection, &count));
    for (A_u_long i = 0; i < count && err == A_Err_NONE; ++i) {
        AEGP_CollectionItemV2 picked = {};
        ERR(collections->AEGP_GetCollectionItemByIndex(selection, i, &picked));
        if (picked.type != AEGP_CollectionItemType_LAYER) continue;
        std::u16string numbered = name + u' ';
        for (const char digit : std::to_string(++number)) numbered += static_cast<char16_t>(digit);
        ERR(layers->AEGP_SetLayerName(picked.u.layer.layerH, reinterpret_cast<const A_UTF16Char*>(numbered.c_str())));
    }
    return err;
}

// The composition that the user works in; null for none.
A_Err get_active_comp(AEGP_SuiteHandler& suites, AEGP_CompH* comp) {
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_ItemType type = AEGP_ItemType_NONE;
    *comp = nullptr;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    if (item != nullptr) ERR(suites.ItemSuite6()->AEGP_GetItemType(item, &type));
    if (type == AEGP_ItemType_COMP) ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, comp));
    return err;
}

A_Err number_selected_layers(State& state) {
    AEGP_SuiteHandler suites(state.basic);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    AEGP_Collection2H selection = nullptr;
    std::u16string name;

    ERR(get_active_comp(suites, &comp));
    if (err != A_Err_NONE || comp == nullptr) return err;
    ERR(ask_for_name(suites, state, &name));
    if (err != A_Err_NONE || name.empty()) return err;

    // A suite that is missing makes its accessor throw. So all are asked for before anything begins that has to be
    // ended, or is handed out that has to be given back.
    const AEGP_CompSuite11* comps = suites.CompSuite11();
    const AEGP_CollectionSuite2* collections = suites.CollectionSuite2();
    const AEGP_LayerSuite7* layers = suites.LayerSuite7();
    const AEGP_UtilitySuite6* utility = suites.UtilitySuite6();

    ERR(utility->AEGP_StartUndoGroup("Number Layers"));
    if (err != A_Err_NONE) return err;
    ERR(comps->AEGP_GetNewCollectionFromCompSelection(state.id, comp, &selection));
    ERR(number_layers(collections, layers, selection, name));
    if (selection != nullptr) ERR2(collections->AEGP_DisposeCollection(selection));
    ERR2(utility->AEGP_EndUndoGroup());
    if (err == A_Err_NONE) ++state.times_done;
    return err;
}

// The host is written in C: nothing that is thrown may reach it.
template <class Work>
A_Err guarded(Work work) {
    try {
        return work();
    } catch (A_Err missing_suite) {
        return missing_suite;
    } catch (const std::bad_alloc&) {
        return A_Err_ALLOC;
    } catch (...) {
        return A_Err_GENERIC;
    }
}

A_Err command_hook(AEGP_GlobalRefcon refcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) {
    State& state = state_of(refcon);
    if (command != state.command) return A_Err_NONE;
    *handledPB = true;
    return guarded([&] { return number_selected_layers(state); });
}

A_Err update_menu_hook(AEGP_GlobalRefcon refcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) {
    return guarded([&] {
        AEGP_SuiteHandler suites(state_of(refcon).basic);
        A_Err err = A_Err_NONE;
        AEGP_CompH comp = nullptr;
        ERR(get_active_comp(suites, &comp));
        if (comp != nullptr) ERR(suites.CommandSuite1()->AEGP_EnableCommand(state_of(refcon).command));
        return err;
    });
}

A_Err idle_hook(AEGP_GlobalRefcon refcon, AEGP_IdleRefcon, A_long* max_sleepPL) {
    constexpr A_long kMilliseconds = 500;
    *max_sleepPL = kMilliseconds;
    return guarded([&] {
        State& state = state_of(refcon);
        A_Err err = A_Err_NONE;
        if (state.times_shown == state.times_done) return err;
        const std::string text = "Number Layers... (done " + std::to_string(state.times_done) + " times)";
        ERR(AEGP_SuiteHandler(state.basic).CommandSuite1()->AEGP_SetMenuCommandName(state.command, text.c_str()));
        if (err == A_Err_NONE) state.times_shown = state.times_done;
        return err;
    });
}

A_Err death_hook(AEGP_GlobalRefcon refcon, AEGP_DeathRefcon) {
    delete &state_of(refcon);
    return A_Err_NONE;
}

A_Err start(State& state) {
    AEGP_SuiteHandler suites(state.basic);
    A_Err err = A_Err_NONE;
    const AEGP_CommandSuite1* commands = suites.CommandSuite1();
    const AEGP_RegisterSuite5* hooks = suites.RegisterSuite5();
    ERR(commands->AEGP_GetUniqueCommand(&state.command));
    ERR(commands->AEGP_InsertMenuCommand(state.command, "Number Layers...", AEGP_Menu_LAYER,
                                         AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(hooks->AEGP_RegisterCommandHook(state.id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook, nullptr));
    ERR(hooks->AEGP_RegisterUpdateMenuHook(state.id, update_menu_hook, nullptr));
    ERR(hooks->AEGP_RegisterIdleHook(state.id, idle_hook, nullptr));
    ERR(hooks->AEGP_RegisterDeathHook(state.id, death_hook, nullptr));
    return err;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon* global_refconP) {
    State* const state = new (std::nothrow) State{.basic = pica_basicP, .id = id};
    if (state == nullptr) return A_Err_ALLOC;
    const A_Err err = guarded([&] { return start(*state); });
    if (err != A_Err_NONE) {
        delete state;  // the host drops a plug-in that does not start, without asking its death hook
        return err;
    }
    *global_refconP = reinterpret_cast<AEGP_GlobalRefcon>(state);
    return err;
}
