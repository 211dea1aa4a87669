// A plug-in that works on streams and keyframes: "Ease Keyframes" in the Animation menu lets the selected layers start
// and stop softly at every keyframe of their position, scale, rotation and opacity.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

SPBasicSuite* sP = nullptr;
AEGP_PluginID S_my_id = 0;
AEGP_Command S_ease_cmd = 0;

constexpr AEGP_LayerStream kStreams[] = {AEGP_LayerStream_POSITION, AEGP_LayerStream_SCALE, AEGP_LayerStream_ROTATION,
                                         AEGP_LayerStream_OPACITY};

// At rest at the keyframe, for a third of the way to the next one.
constexpr AEGP_KeyframeEase kSoft = {0, 100.0 / 3};

// All the suites that the command uses. A suite that is missing makes its accessor throw, so all are asked for before
// anything begins that has to be ended, or is handed out that has to be given back.
struct Suites {
    explicit Suites(AEGP_SuiteHandler& suites)
        : collections(suites.CollectionSuite2()),
          comps(suites.CompSuite11()),
          keyframes(suites.KeyframeSuite4()),
          streams(suites.StreamSuite4()),
          utility(suites.UtilitySuite6()) {}

    const AEGP_CollectionSuite2* collections;
    const AEGP_CompSuite11* comps;
    const AEGP_KeyframeSuite4* keyframes;
    const AEGP_StreamSuite4* streams;
    const AEGP_UtilitySuite6* utility;
};

A_Err ease_keyframe(const Suites& suites, AEGP_StreamRefH stream, AEGP_KeyframeIndex key, A_short dimensions) {
    A_Err err = A_Err_NONE;
    ERR(suites.keyframes->AEGP_SetKeyframeInterpolation(stream, key, AEGP_KeyInterp_BEZIER, AEGP_KeyInterp_BEZIER));
    for (A_long dimension = 0; dimension < dimensions; ++dimension)
        ERR(suites.keyframes->AEGP_SetKeyframeTemporalEase(stream, key, dimension, &kSoft, &kSoft));
    return err;
}

A_Err ease_stream(const Suites& suites, AEGP_LayerH layer, AEGP_LayerStream which) {
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_StreamRefH stream = nullptr;
    A_Boolean is_legal = false;
    A_long count = 0;
    A_short dimensions = 0;
    // A camera has no scale.
    ERR(suites.streams->AEGP_IsStreamLegal(layer, which, &is_legal));
    if (err != A_Err_NONE || !is_legal) return err;
    ERR(suites.streams->AEGP_GetNewLayerStream(S_my_id, layer, which, &stream));
    if (stream == nullptr) return err;
    // A stream that holds nothing has -1 keyframes.
    ERR(suites.keyframes->AEGP_GetStreamNumKFs(stream, &count));
    if (count > 0) ERR(suites.keyframes->AEGP_GetStreamTemporalDimensionality(stream, &dimensions));
    for (A_long key = 0; key < count && err == A_Err_NONE; ++key) ERR(ease_keyframe(suites, stream, key, dimensions));
    ERR2(suites.streams->AEGP_DisposeStream(stream));
    return err;
}

A_Err ease_layers(const Suites& suites, AEGP_Collection2H selection) {
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    ERR(suites.collections->AEGP_GetCollectionNumItems(selection, &count));
    for (A_u_long i = 0; i < count && err == A_Err_NONE; ++i) {
        AEGP_CollectionItemV2 picked = {};
        ERR(suites.collections->AEGP_GetCollectionItemByIndex(selection, i, &picked));
        if (picked.type != AEGP_CollectionItemType_LAYER) continue;
        for (const AEGP_LayerStream which : kStreams) ERR(ease_stream(suites, picked.u.layer.layerH, which));
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

A_Err ease_selected_layers() {
    AEGP_SuiteHandler handler(sP);
    A_Err err = A_Err_NONE, err2 = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    AEGP_Collection2H selection = nullptr;

    ERR(get_active_comp(handler, &comp));
    if (err != A_Err_NONE || comp == nullptr) return err;
    const Suites suites(handler);
    ERR(suites.utility->AEGP_StartUndoGroup("Ease Keyframes"));
    if (err != A_Err_NONE) return err;
    ERR(suites.comps->AEGP_GetNewCollectionFromCompSelection(S_my_id, comp, &selection));
    ERR(ease_layers(suites, selection));
    if (selection != nullptr) ERR2(suites.collections->AEGP_DisposeCollection(selection));
    ERR2(suites.utility->AEGP_EndUndoGroup());
    return err;
}

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) try {
    if (command != S_ease_cmd) return A_Err_NONE;
    *handledPB = true;
    return ease_selected_layers();
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err update_menu_hook(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) try {
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    AEGP_CompH comp = nullptr;
    ERR(get_active_comp(suites, &comp));
    if (comp != nullptr) ERR(suites.CommandSuite1()->AEGP_EnableCommand(S_ease_cmd));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) try {
    sP = pica_basicP;
    S_my_id = id;
    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;

    ERR(suites.CommandSuite1()->AEGP_GetUniqueCommand(&S_ease_cmd));
    ERR(suites.CommandSuite1()->AEGP_InsertMenuCommand(S_ease_cmd, "Ease Keyframes", AEGP_Menu_ANIMATION,
                                                       AEGP_MENU_INSERT_AT_BOTTOM));
    ERR(suites.RegisterSuite5()->AEGP_RegisterCommandHook(id, AEGP_HP_BeforeAE, AEGP_Command_ALL, command_hook,
                                                          nullptr));
    ERR(suites.RegisterSuite5()->AEGP_RegisterUpdateMenuHook(id, update_menu_hook, nullptr));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
