// A small plug-in that hides the selected layers and turns them a little: as it should be, or with the one mistake that
// the environment's MISTAKE names.
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

// The mistake that it makes; "" or none for none.
bool makes(const char* mistake) {
    static const std::string chosen = [] {
        const char* value = std::getenv("MISTAKE");
        return std::string(value != nullptr ? value : "");
    }();
    return chosen == mistake;
}

SPBasicSuite* sP = nullptr;
AEGP_PluginID S_my_id = 0;
AEGP_Command S_hide_cmd = 0;
int S_runs = 0;
AEGP_CompH S_first_compH = nullptr;
AEGP_LayerH S_kept_layerH = nullptr;

[[noreturn]] void crash() {
    std::abort();
}

void hang() {
    for (volatile bool goes_on = true; goes_on;) {
    }
}

// A process that runs until somebody ends it, in a session of its own.
void start_daemon() {
    if (fork() != 0) return;
    setsid();
    for (;;) pause();
}

struct AtLoading {
    AtLoading() {
        if (makes("crashes_while_it_is_loaded")) crash();
    }
    ~AtLoading() {
        if (makes("crashes_when_it_is_unloaded")) crash();
    }
} S_at_loading;

bool is_locked(AEGP_LayerFlags flags) {
    return (flags & AEGP_LayerFlag_LOCKED) != 0;
}

A_Err look_at_name(AEGP_SuiteHandler& suites, AEGP_LayerH layer) {
    A_Err err = A_Err_NONE;
    A_char name[AEGP_MAX_LAYER_NAME_SIZE] = {};
    A_char source_name[AEGP_MAX_LAYER_NAME_SIZE] = {};
    ERR(suites.LayerSuite5()->AEGP_GetLayerName(layer, name, source_name));
    if (err != A_Err_NONE) return err;
    if (makes("crashes_on_unnamed_layers") && name[0] == '\0') crash();
    if (makes("copies_names_into_a_short_buffer")) {
        std::array<char, 24> buffer{};
        volatile std::size_t size = std::strlen(name);
        std::vector<char> heap(8);
        if (size >= buffer.size()) crash();  // what a stack protector would do
        std::memcpy(buffer.data(), name, size);
    }
    if (makes("writes_past_a_buffer")) {
        std::vector<char> heap(std::strlen(name));  // no place for the end
        std::strcpy(heap.data(), name);
    }
    if (makes("breaks_on_names_beyond_ascii")) {
        for (const char* c = name; *c != '\0'; ++c)
            if ((static_cast<unsigned char>(*c) & 0x80) != 0) return A_Err_GENERIC;
    }
    if (makes("prints_names_as_formats") && std::strchr(name, '%') != nullptr) crash();
    return err;
}

A_Err move_a_little(AEGP_SuiteHandler& suites, AEGP_LayerH layer) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_StreamRefH stream = nullptr;
    AEGP_StreamValue2 value = {};
    A_Boolean is_varying = false;
    bool has_value = false;
    const A_Time start = {0, 1};
    const AEGP_KeyframeSuite4* keyframes = suites.KeyframeSuite4();
    ERR(suites.StreamSuite4()->AEGP_GetNewLayerStream(S_my_id, layer, AEGP_LayerStream_ROTATION, &stream));
    ERR(suites.StreamSuite4()->AEGP_IsStreamTimevarying(stream, &is_varying));
    if (err == A_Err_NONE && !is_varying) {
        ERR(suites.StreamSuite4()->AEGP_GetNewStreamValue(S_my_id, stream, AEGP_LTimeMode_CompTime, &start, true,
                                                          &value));
        has_value = err == A_Err_NONE;
        value.val.one_d += makes("counts_its_runs") ? S_runs : 1;
        ERR(suites.StreamSuite4()->AEGP_SetStreamValue(S_my_id, stream, &value));
    }
    if (makes("leaves_a_keyframe_batch")) {
        AEGP_AddKeyframesInfoH batch = nullptr;
        ERR(keyframes->AEGP_StartAddKeyframes(stream, &batch));
    }
    if (has_value && !makes("leaves_a_stream_value")) ERR2(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    if (stream != nullptr && !makes("leaves_a_stream")) ERR2(suites.StreamSuite4()->AEGP_DisposeStream(stream));
    if (makes("uses_after_disposal")) {
        A_long count = 0;
        (void)keyframes->AEGP_GetStreamNumKFs(stream, &count);
    }
    return err;
}

A_Err look_at_effects(AEGP_SuiteHandler& suites, AEGP_LayerH layer) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    A_long count = 0;
    ERR(suites.EffectSuite3()->AEGP_GetLayerNumEffects(layer, &count));
    for (A_long i = 0; i < count && err == A_Err_NONE; ++i) {
        AEGP_EffectRefH effect = nullptr;
        ERR(suites.EffectSuite3()->AEGP_GetLayerEffectByIndex(S_my_id, layer, i, &effect));
        if (effect != nullptr && !makes("leaves_an_effect")) ERR2(suites.EffectSuite3()->AEGP_DisposeEffect(effect));
    }
    return err;
}

A_Err hide_layer(AEGP_SuiteHandler& suites, AEGP_LayerH layer) {
    A_Err err = A_Err_NONE;
    AEGP_LayerFlags flags = 0;
    ERR(suites.LayerSuite5()->AEGP_GetLayerFlags(layer, &flags));
    if (makes("fails_on_locked_layers") && is_locked(flags)) return A_Err_GENERIC;
    ERR(look_at_name(suites, layer));
    ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    ERR(move_a_little(suites, layer));
    ERR(look_at_effects(suites, layer));
    return err;
}

A_Err hide_layers(AEGP_SuiteHandler& suites, AEGP_Collection2H layers) {
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    if (makes("crashes_without_a_selection") && err == A_Err_NONE && count == 0) crash();
    const A_u_long rounds = makes("compares_all_layers_with_all") ? count : 1;
    for (A_u_long i = 0; i < count * rounds && err == A_Err_NONE; ++i) {
        AEGP_CollectionItemV2 item = {};
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i % count, &item));
        if (i < count) ERR(hide_layer(suites, item.u.layer.layerH));
    }
    return err;
}

A_Err ask_whether_to_crash(AEGP_SuiteHandler& suites) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_MemHandle answer = nullptr;
    void* text = nullptr;
    constexpr const char* kDialog =
        "var window = new Window('dialog'); var box = window.add('checkbox', undefined, 'Crash');"
        "window.add('button', undefined, 'Ok'); window.show() === 1 && box.value ? 'yes' : 'no';";
    const AEGP_MemorySuite1* memory = suites.MemorySuite1();
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, kDialog, false, &answer, nullptr));
    ERR(memory->AEGP_LockMemHandle(answer, &text));
    if (text != nullptr && std::strcmp(static_cast<const char*>(text), "yes") == 0) crash();
    if (text != nullptr) ERR2(memory->AEGP_UnlockMemHandle(answer));
    if (answer != nullptr) ERR2(memory->AEGP_FreeMemHandle(answer));
    return err;
}

A_Err read_answer(AEGP_SuiteHandler& suites) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_MemHandle result = nullptr;
    void* text = nullptr;
    const AEGP_MemorySuite1* memory = suites.MemorySuite1();
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, "'done';", false, &result, nullptr));
    if (makes("leaves_memory")) return err;
    ERR(memory->AEGP_LockMemHandle(result, &text));
    if (!makes("frees_locked_memory") && text != nullptr) ERR2(memory->AEGP_UnlockMemHandle(result));
    if (result != nullptr) ERR2(memory->AEGP_FreeMemHandle(result));
    return err;
}

// The composition in the timeline or in the Project panel; null if there is none.
A_Err get_comp(AEGP_SuiteHandler& suites, AEGP_CompH* comp) {
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_ItemType type = AEGP_ItemType_NONE;
    *comp = nullptr;
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    if (err == A_Err_NONE && item != nullptr) ERR(suites.ItemSuite6()->AEGP_GetItemType(item, &type));
    if (err == A_Err_NONE && type == AEGP_ItemType_COMP) ERR(suites.CompSuite11()->AEGP_GetCompFromItem(item, comp));
    return err;
}

int depth_of(AEGP_SuiteHandler& suites, AEGP_CompH comp) {
    AEGP_LayerH layer = nullptr;
    AEGP_ItemH source = nullptr;
    AEGP_ItemType type = AEGP_ItemType_NONE;
    AEGP_CompH inner = nullptr;
    A_Err err = A_Err_NONE;
    A_long count = 0;
    ERR(suites.LayerSuite5()->AEGP_GetCompNumLayers(comp, &count));
    if (err != A_Err_NONE || count == 0) return 1;
    ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &layer));
    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(layer, &source));
    if (err == A_Err_NONE && source != nullptr) ERR(suites.ItemSuite6()->AEGP_GetItemType(source, &type));
    if (type != AEGP_ItemType_COMP) return 1;
    ERR(suites.CompSuite11()->AEGP_GetCompFromItem(source, &inner));
    return err == A_Err_NONE ? 1 + depth_of(suites, inner) : 1;
}

// Mistakes that need no failing call: what stands here would be made in the midst of the work.
A_Err blunder(AEGP_SuiteHandler& suites, AEGP_CompH comp) {
    A_Err err = A_Err_NONE;
    if (makes("crashes_in_the_command")) crash();
    if (makes("hangs_in_the_command")) hang();
    if (makes("leaves_a_process")) start_daemon();
    if (makes("waits_in_the_command")) std::this_thread::sleep_for(std::chrono::hours(1));
    if (makes("ends_the_program")) std::exit(0);
    if (makes("prints")) std::printf("hiding layers\n"), std::fflush(stdout);
    if (makes("eats_all_memory")) {
        std::vector<std::vector<char>> eaten;
        for (;;) eaten.emplace_back(std::size_t{64} << 20, 'x');
    }
    if (makes("throws_in_the_command")) throw std::runtime_error("thrown through C");
    if (makes("calls_from_a_thread")) {
        const AEGP_LayerSuite5* layers = suites.LayerSuite5();
        std::thread([&] {
            A_long count = 0;
            (void)layers->AEGP_GetCompNumLayers(comp, &count);
        }).join();
    }
    if (makes("keeps_a_layer")) {
        AEGP_LayerFlags flags = 0;
        if (S_kept_layerH != nullptr) (void)suites.LayerSuite5()->AEGP_GetLayerFlags(S_kept_layerH, &flags);
        (void)suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &S_kept_layerH);
    }
    if (makes("divides_by_the_number_of_layers")) {
        A_long count = 0;
        ERR(suites.LayerSuite5()->AEGP_GetCompNumLayers(comp, &count));
        if (err == A_Err_NONE && count == 0) crash();
    }
    if (makes("asks_for_a_suite_that_nobody_has")) {
        const void* table = nullptr;
        (void)sP->AcquireSuite("AEGP Suite Of Tomorrow", 99, &table);
        const auto* tomorrow = static_cast<const AEGP_ItemSuite6*>(table);
        AEGP_ItemH item = nullptr;
        ERR(tomorrow->AEGP_GetActiveItem(&item));
    }
    if (makes("runs_a_broken_script"))
        (void)suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, "nobody.knows()", false, nullptr, nullptr);
    if (makes("crashes_behind_an_option")) ERR(ask_whether_to_crash(suites));
    if (makes("leaves_a_block")) {
        void* block = nullptr;
        (void)sP->AllocateBlock(100, &block);
    }
    if (makes("leaves_footage")) {
        AEGP_FootageH footage = nullptr;
        const AEGP_ColorVal red = {1, 1, 0, 0};
        ERR(suites.FootageSuite5()->AEGP_NewSolidFootage("Red", 10, 10, &red, &footage));
    }
    if (makes("releases_twice")) {
        const void* table = nullptr;
        (void)sP->AcquireSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6, &table);
        (void)sP->ReleaseSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6);
        (void)sP->ReleaseSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6);
    }
    if (makes("holds_a_suite")) {
        const void* table = nullptr;
        (void)sP->AcquireSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6, &table);
    }
    if (makes("crashes_without_a_suite")) {
        const void* table = nullptr;
        (void)sP->AcquireSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6, &table);
        A_long count = 0;
        ERR(static_cast<const AEGP_ProjSuite6*>(table)->AEGP_GetNumProjects(&count));
        (void)sP->ReleaseSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6);
        err = A_Err_NONE;
    }
    if (makes("cannot_nest_deeply") && depth_of(suites, comp) > 40) crash();
    return err;
}

A_Err work(AEGP_SuiteHandler& suites, AEGP_CompH comp) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_Collection2H selection = nullptr;
    const AEGP_CollectionSuite2* collections = suites.CollectionSuite2();  // so that it can be disposed of in any case
    if (makes("keeps_the_first_composition")) {
        if (S_first_compH == nullptr) S_first_compH = comp;
        comp = S_first_compH;
    }
    ERR(blunder(suites, comp));
    ERR(suites.CompSuite11()->AEGP_GetNewCollectionFromCompSelection(S_my_id, comp, &selection));
    if (makes("passes_on_what_it_never_got")) {
        A_u_long count = 0;
        err2 = collections->AEGP_GetCollectionNumItems(selection, &count);
    }
    if (makes("leaves_the_group_open_without_a_suite")) (void)suites.EffectSuite3();
    try {
        ERR(hide_layers(suites, selection));
        ERR(read_answer(suites));
    } catch (A_Err missing_suite) {
        err = missing_suite;
    }
    if (makes("leaves_a_collection")) return err;
    if (makes("leaves_a_collection_after_a_failure") && err != A_Err_NONE) return err;
    if (selection != nullptr) ERR2(collections->AEGP_DisposeCollection(selection));
    if (makes("disposes_twice")) (void)collections->AEGP_DisposeCollection(selection);
    if (makes("goes_on_after_an_error") && err != A_Err_NONE) {
        AEGP_LayerH layer = nullptr;
        if (suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &layer) == A_Err_NONE)
            (void)suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_SHY, true);
    }
    return err;
}

A_Err run(A_Boolean* handledPB) {
    *handledPB = !makes("does_not_say_that_it_handled");
    ++S_runs;
    if (makes("fails_on_a_second_run") && S_runs > 1) return A_Err_GENERIC;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    bool is_open = false;
    const bool is_late = makes("edits_outside_its_group");

    ERR(get_comp(suites, &comp));
    const bool goes_on_without = makes("is_enabled_with_nothing_open") || makes("takes_the_picture_for_a_composition");
    if (comp == nullptr && !goes_on_without) return err;
    const AEGP_UtilitySuite6* utility = suites.UtilitySuite6();
    if (!is_late) ERR(utility->AEGP_StartUndoGroup("Hide"));
    is_open = err == A_Err_NONE && !is_late;
    if (makes("leaves_the_group_open_without_a_suite")) {
        ERR(work(suites, comp));
    } else {
        try {
            ERR(work(suites, comp));
        } catch (A_Err missing_suite) {
            err = missing_suite;
        }
    }
    if (is_late) ERR(utility->AEGP_StartUndoGroup("Hide"));
    if (makes("crashes_after_a_failure") && err != A_Err_NONE) crash();
    while (makes("hangs_after_a_failure") && err != A_Err_NONE) sleep(1);
    if (makes("leaves_the_group_open_after_a_failure") && err != A_Err_NONE) return err;
    if ((is_open || is_late) && !makes("never_ends_its_group")) ERR2(utility->AEGP_EndUndoGroup());
    if (makes("ends_its_group_twice")) (void)utility->AEGP_EndUndoGroup();
    if (makes("makes_two_steps")) {
        AEGP_LayerH layer = nullptr;
        ERR(utility->AEGP_StartUndoGroup("Hide some more"));
        ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &layer));
        ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_SHY, true));
        ERR(utility->AEGP_EndUndoGroup());
    }
    if (makes("forgets_that_it_handled_after_a_failure")) *handledPB = err == A_Err_NONE;
    if (makes("throws_after_a_failure") && err != A_Err_NONE) throw std::runtime_error("a call failed");
    if (makes("returns_another_code") && err != A_Err_NONE) return A_Err_GENERIC;
    return makes("swallows_errors") ? static_cast<A_Err>(A_Err_NONE) : err;
}

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) try {
    if (makes("handles_every_command")) return run(handledPB);
    return command == S_hide_cmd ? run(handledPB) : static_cast<A_Err>(A_Err_NONE);
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err change_something() {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    AEGP_LayerH layer = nullptr;
    A_long count = 0;
    ERR(get_comp(suites, &comp));
    if (err == A_Err_NONE && comp != nullptr) ERR(suites.LayerSuite5()->AEGP_GetCompNumLayers(comp, &count));
    if (count == 0) return err;
    ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, 0, &layer));
    ERR(suites.LayerSuite5()->AEGP_SetLayerFlag(layer, AEGP_LayerFlag_SHY, true));
    return err;
}

A_Err update_menu_hook(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) try {
    if (makes("crashes_in_the_menu_hook")) crash();
    A_Err err = A_Err_NONE;
    if (makes("changes_something_in_the_menu_hook")) ERR(change_something());
    ERR(AEGP_SuiteHandler(sP).CommandSuite1()->AEGP_EnableCommand(S_hide_cmd));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err idle_hook(AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long*) try {
    if (makes("crashes_when_idle")) crash();
    if (makes("prints_when_idle")) std::printf("idle\n"), std::fflush(stdout);
    if (makes("leaves_a_group_open_when_idle")) return AEGP_SuiteHandler(sP).UtilitySuite6()->AEGP_StartUndoGroup("");
    if (makes("asks_for_the_type_of_nothing_when_idle")) {
        AEGP_ItemType type = AEGP_ItemType_NONE;
        return AEGP_SuiteHandler(sP).ItemSuite6()->AEGP_GetItemType(nullptr, &type);
    }
    return makes("changes_something_when_idle") ? change_something() : static_cast<A_Err>(A_Err_NONE);
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err death_hook(AEGP_GlobalRefcon, AEGP_DeathRefcon) {
    if (makes("crashes_at_the_end")) crash();
    if (makes("throws_at_the_end")) throw 5;
    return A_Err_NONE;
}

A_Err start(AEGP_PluginID id) {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    if (makes("crashes_at_its_start")) crash();
    if (makes("throws_at_its_start")) throw std::runtime_error("at the start");
    if (makes("hangs_at_its_start")) hang();
    if (makes("ends_the_program_at_its_start")) std::exit(7);
    if (makes("fails_at_its_start")) return A_Err_GENERIC;
    if (makes("registers_nothing")) return err;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_hide_cmd));
    if (!makes("has_no_menu_item"))
        ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_hide_cmd, "Hide", AEGP_Menu_LAYER,
                                                           AEGP_MENU_INSERT_AT_BOTTOM));
    if (makes("has_one_menu_item_for_two_commands")) {
        AEGP_Command second = 0;
        ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&second));
    }
    if (makes("registers_a_null_hook"))
        ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, nullptr,
                                                              nullptr));
    if (makes("holds_a_suite_when_it_does_not_start") && err != A_Err_NONE) {
        const void* table = nullptr;
        (void)sP->AcquireSuite(kAEGPProjSuite, kAEGPProjSuiteVersion6, &table);
    }
    if (!makes("has_no_command_hook"))
        ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                              nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterIdleHook(id, idle_hook, nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterDeathHook(id, death_hook, nullptr));
    return makes("swallows_errors_at_its_start") ? static_cast<A_Err>(A_Err_NONE) : err;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) try {
    sP = pica_basicP;
    S_my_id = id;
    return start(id);
} catch (A_Err missing_suite) {
    return makes("swallows_errors_at_its_start") ? static_cast<A_Err>(A_Err_NONE) : missing_suite;
}
