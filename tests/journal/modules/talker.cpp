// A plug-in whose command has one conversation with the host in which every kind of value occurs. The environment
// variable TALKER names something that it does differently; TALKER_ENDS="N SIGNAL" makes it end with that signal
// instead of its N-th step.
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* S_basic = nullptr;
AEGP_PluginID S_id = 0;
AEGP_Command S_command = 0;
int S_refcon_target = 0;

bool does(const char* what) {
    const char* chosen = std::getenv("TALKER");
    return chosen != nullptr && std::strcmp(chosen, what) == 0;
}

void step(int number) {
    const char* chosen = std::getenv("TALKER_ENDS");
    if (chosen != nullptr && std::atoi(chosen) == number) std::raise(std::atoi(std::strchr(chosen, ' ')));
}

// Newlines, quotes, a backslash, a terminal's escape, bytes that are not UTF-8.
constexpr const char* kHostile = "a\nb\r\"c\"\\ \x1B[31m \xFF\xC3 \xE2\x80\xA8 end # (,) done 1 = 0 ()";
// A lone surrogate, a pair, a newline.
constexpr A_UTF16Char kWideHostile[] = {'N', 0xD800, 'x', 0xD83E, 0xDD81, '\n', '"', 0};

A_Err talk_of_layers(AEGP_LayerH layer) {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    A_char name[AEGP_MAX_LAYER_NAME_SIZE] = {};
    A_Time in = {};
    AEGP_MemHandle wide_name = nullptr;
    void* text = nullptr;
    ERR(suites.LayerSuite5()->AEGP_GetLayerName(layer, name, nullptr));
    ERR(suites.LayerSuite5()->AEGP_GetLayerInPoint(layer, AEGP_LTimeMode_CompTime, &in));
    ERR(suites.LayerSuite7()->AEGP_SetLayerName(layer, kWideHostile));
    ERR(suites.LayerSuite7()->AEGP_GetLayerName(S_id, layer, &wide_name, nullptr));
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(wide_name, &text));
    // The name that the host gave decides what is said next: a replay without it would say something else.
    ERR(suites.LayerSuite7()->AEGP_SetLayerName(layer, static_cast<const A_UTF16Char*>(text) + 2));
    ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(wide_name));
    ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(wide_name));
    return err;
}

A_Err talk_of_streams(AEGP_LayerH layer) {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    AEGP_StreamRefH opacity = nullptr;
    AEGP_StreamRefH position = nullptr;
    AEGP_StreamValue2 value = {};
    AEGP_KeyframeEase in_ease = {};
    AEGP_KeyframeIndex index = 0;
    AEGP_AddKeyframesInfoH batch = nullptr;
    A_Boolean has_expression = 0;
    const A_Time time = {1, 3};
    const AEGP_KeyframeEase ease = {0.1, 33.3};
    ERR(suites.StreamSuite4()->AEGP_GetNewLayerStream(S_id, layer, AEGP_LayerStream_OPACITY, &opacity));
    ERR(suites.StreamSuite4()->AEGP_GetNewStreamValue(S_id, opacity, AEGP_LTimeMode_CompTime, &time, true, &value));
    value.val.one_d = value.val.one_d / 3;
    ERR(suites.StreamSuite4()->AEGP_SetStreamValue(S_id, opacity, &value));
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    ERR(suites.StreamSuite4()->AEGP_SetExpression(S_id, opacity, kHostile));
    ERR(suites.StreamSuite4()->AEGP_GetExpressionState(S_id, opacity, &has_expression));
    ERR(suites.StreamSuite4()->AEGP_GetNewLayerStream(S_id, layer, AEGP_LayerStream_POSITION, &position));
    ERR(suites.KeyframeSuite4()->AEGP_InsertKeyframe(position, AEGP_LTimeMode_CompTime, &time, &index));
    ERR(suites.KeyframeSuite4()->AEGP_GetNewKeyframeValue(S_id, position, index, &value));
    if (does("other value")) value.val.three_d.y += 0.5;
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeValue(position, index, &value));
    ERR(suites.StreamSuite4()->AEGP_DisposeStreamValue(&value));
    ERR(suites.KeyframeSuite4()->AEGP_SetKeyframeTemporalEase(position, index, 0, &ease, nullptr));
    ERR(suites.KeyframeSuite4()->AEGP_GetKeyframeTemporalEase(position, index, 0, &in_ease, nullptr));
    ERR(suites.KeyframeSuite4()->AEGP_StartAddKeyframes(opacity, &batch));
    ERR(suites.KeyframeSuite4()->AEGP_EndAddKeyframes(false, batch));
    ERR(suites.StreamSuite4()->AEGP_DisposeStream(position));
    ERR(suites.StreamSuite4()->AEGP_DisposeStream(opacity));
    return err;
}

A_Err talk_of_memory() {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    AEGP_MemHandle memory = nullptr;
    void* bytes = nullptr;
    void* block = nullptr;
    AEGP_MemSize size = 0;
    ERR(suites.MemorySuite1()->AEGP_NewMemHandle(S_id, "bytes", 300, AEGP_MemFlag_CLEAR, &memory));
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(memory, &bytes));
    if (!err) std::memcpy(bytes, does("other memory") ? "x\0\xFFz" : "x\0\xFFy", 4);
    ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(memory));
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(memory, &bytes));
    if (does("late write") && !err) static_cast<char*>(bytes)[100] = 1;
    ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(memory));
    ERR(suites.MemorySuite1()->AEGP_ResizeMemHandle("bytes", 10, memory));
    ERR(suites.MemorySuite1()->AEGP_GetMemHandleSize(memory, &size));
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(memory, &bytes));
    if (!err && std::memcmp(bytes, "x\0\xFFy", 4) != 0 && !does("other memory")) err = 99;
    ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(memory));
    ERR(S_basic->AllocateBlock(10, &block));
    if (!err) std::memset(block, 1, 10);
    ERR(S_basic->ReallocateBlock(block, 1000, &block));
    ERR(S_basic->FreeBlock(block));
    return err;
}

// Calls that fail, on purpose without consequences.
void talk_nonsense(AEGP_LayerH layer) {
    AEGP_SuiteHandler suites(S_basic);
    const void* table = nullptr;
    AEGP_ItemH item = nullptr;
    A_FloatRect bounds = {};
    const A_Time time = {0, 1};
    (void)S_basic->AcquireSuite("AEGP Dream Suite", 7, &table);
    (void)suites.LayerSuite5()->AEGP_GetLayerSourceItem(nullptr, &item);
    (void)suites.LayerSuite5()->AEGP_GetLayerSourceItem(reinterpret_cast<AEGP_LayerH>(0x1234560), &item);
    (void)suites.LayerSuite5()->AEGP_GetLayerMaskedBounds(layer, AEGP_LTimeMode_CompTime, &time, &bounds);
}

A_Err talk_of_the_rest(AEGP_CompH comp, AEGP_ItemH item) {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    A_Ratio aspect = {};
    AEGP_Collection2H collection = nullptr;
    AEGP_CollectionItemV2 member = {};
    AEGP_FootageH footage = nullptr;
    const AEGP_ColorVal color = {1, 0.1, 0.2, 1.0 / 3};
    ERR(suites.ItemSuite6()->AEGP_GetItemPixelAspectRatio(item, &aspect));
    ERR(suites.CompSuite6()->AEGP_GetNewCollectionFromCompSelection(S_id, comp, &collection));
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(collection, 0, &member));
    ERR(suites.CollectionSuite2()->AEGP_CollectionPushBack(collection, &member));
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(collection));
    ERR(suites.FootageSuite5()->AEGP_NewSolidFootage(kHostile, 10, 20, &color, &footage));
    ERR(suites.FootageSuite5()->AEGP_DisposeFootage(footage));
    ERR(suites.UtilitySuite6()->AEGP_ReportInfo(S_id, does("other text") ? "hallo" : "hello"));
    if (does("one call more")) ERR(suites.ItemSuite6()->AEGP_SelectItem(item, true, false));
    return err;
}

A_Err command_hook(AEGP_GlobalRefcon global, AEGP_CommandRefcon refcon, AEGP_Command command, AEGP_HookPriority,
                   A_Boolean, A_Boolean* handledPB) {
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_LayerH layer = nullptr;
    if (command != S_command || refcon || reinterpret_cast<void*>(global) != &S_refcon_target) return 1000;
    *handledPB = true;
    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup("Talk"));
    step(1);
    ERR(suites.ItemSuite6()->AEGP_GetActiveItem(&item));
    ERR(suites.CompSuite6()->AEGP_GetCompFromItem(item, &comp));
    ERR(suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp, does("other argument") ? 1 : 0, &layer));
    ERR(talk_of_layers(layer));
    step(2);
    ERR(talk_of_streams(layer));
    step(3);
    ERR(talk_of_memory());
    if (!does("one call less")) talk_nonsense(layer);
    ERR(talk_of_the_rest(comp, item));
    ERR(suites.UtilitySuite6()->AEGP_EndUndoGroup());
    step(4);
    if (does("throw")) throw std::runtime_error("thrown");
    if (does("exit")) std::_Exit(5);
    if (does("other code")) return 7;
    if (does("not handled")) *handledPB = false;
    return err;
}

A_Err update_menu_hook(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) {
    return AEGP_SuiteHandler(S_basic).CommandSuite1()->AEGP_EnableCommand(S_command);
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon* global_refconP) {
    S_basic = pica_basicP;
    S_id = id;
    *global_refconP = reinterpret_cast<AEGP_GlobalRefcon>(&S_refcon_target);
    AEGP_SuiteHandler suites(S_basic);
    A_Err err = A_Err_NONE;
    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_command));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_command, "Talk", AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    return err;
}
