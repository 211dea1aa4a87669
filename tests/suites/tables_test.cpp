// The 24 tables: nothing is empty, what is not implemented says so, what is offered is what was promised.
#include <array>
#include <cstring>
#include <set>

#include "world.h"

namespace host::suites {

namespace {

// What a general plug-in of the supported kind calls: offered in every version of its suite.
const std::set<std::string> kOffered = {
    "AEGP_AddFootageToProject",
    "AEGP_AddKeyframes",
    "AEGP_AddLayer",
    "AEGP_ApplyEffect",
    "AEGP_CanVaryOverTime",
    "AEGP_CollectionPushBack",
    "AEGP_CreateNullInComp",
    "AEGP_DeleteItem",
    "AEGP_DeleteLayer",
    "AEGP_DisableCommand",
    "AEGP_DisposeCollection",
    "AEGP_DisposeEffect",
    "AEGP_DisposeStream",
    "AEGP_DisposeStreamValue",
    "AEGP_EnableCommand",
    "AEGP_EndAddKeyframes",
    "AEGP_EndUndoGroup",
    "AEGP_ExecuteScript",
    "AEGP_FreeMemHandle",
    "AEGP_GetActiveItem",
    "AEGP_GetCollectionItemByIndex",
    "AEGP_GetCollectionNumItems",
    "AEGP_GetCompFromItem",
    "AEGP_GetCompLayerByIndex",
    "AEGP_GetCompNumLayers",
    "AEGP_GetEffectFlags",
    "AEGP_GetEffectNumParamStreams",
    "AEGP_GetExpression",
    "AEGP_GetExpressionState",
    "AEGP_GetFirstProjItem",
    "AEGP_GetFootageInterpretation",
    "AEGP_GetInstalledKeyFromLayerEffect",
    "AEGP_GetItemDimensions",
    "AEGP_GetItemFromComp",
    "AEGP_GetItemID",
    "AEGP_GetItemParentFolder",
    "AEGP_GetItemPixelAspectRatio",
    "AEGP_GetItemType",
    "AEGP_GetKeyframeFlags",
    "AEGP_GetKeyframeInterpolation",
    "AEGP_GetKeyframeTemporalEase",
    "AEGP_GetKeyframeTime",
    "AEGP_GetLayerDuration",
    "AEGP_GetLayerEffectByIndex",
    "AEGP_GetLayerInPoint",
    "AEGP_GetLayerIndex",
    "AEGP_GetLayerName",
    "AEGP_GetLayerNumEffects",
    "AEGP_GetLayerObjectType",
    "AEGP_GetLayerOffset",
    "AEGP_GetLayerParent",
    "AEGP_GetLayerParentComp",
    "AEGP_GetLayerSourceItem",
    "AEGP_GetNewCollectionFromCompSelection",
    "AEGP_GetNewEffectStreamByIndex",
    "AEGP_GetNewKeyframeSpatialTangents",
    "AEGP_GetNewKeyframeValue",
    "AEGP_GetNewLayerStream",
    "AEGP_GetNewStreamValue",
    "AEGP_GetNextProjItem",
    "AEGP_GetProjectByIndex",
    "AEGP_GetStreamNumKFs",
    "AEGP_GetStreamTemporalDimensionality",
    "AEGP_GetStreamType",
    "AEGP_GetUniqueCommand",
    "AEGP_InsertKeyframe",
    "AEGP_InsertMenuCommand",
    "AEGP_IsItemSelected",
    "AEGP_IsLayer3D",
    "AEGP_IsStreamLegal",
    "AEGP_IsStreamTimevarying",
    "AEGP_LockMemHandle",
    "AEGP_NewCollection",
    "AEGP_NewSolidFootage",
    "AEGP_RegisterCommandHook",
    "AEGP_RegisterDeathHook",
    "AEGP_RegisterIdleHook",
    "AEGP_RegisterUpdateMenuHook",
    "AEGP_ReorderLayer",
    "AEGP_ReportInfo",
    "AEGP_SetAddKeyframe",
    "AEGP_SetEffectFlags",
    "AEGP_SetExpression",
    "AEGP_SetExpressionState",
    "AEGP_SetFootageInterpretation",
    "AEGP_SetKeyframeFlag",
    "AEGP_SetKeyframeInterpolation",
    "AEGP_SetKeyframeSpatialTangents",
    "AEGP_SetKeyframeTemporalEase",
    "AEGP_SetKeyframeValue",
    "AEGP_SetLayerFlag",
    "AEGP_SetLayerInPointAndDuration",
    "AEGP_SetLayerName",
    "AEGP_SetLayerOffset",
    "AEGP_SetLayerParent",
    "AEGP_SetMenuCommandName",
    "AEGP_SetSelection",
    "AEGP_SetStreamValue",
    "AEGP_StartAddKeyframes",
    "AEGP_StartUndoGroup",
    "AEGP_UnlockMemHandle",
};

template <class... Args>
A_Err call_with_nothing(A_Err (*function)(Args...)) {
    return function(Args{}...);
}

}  // namespace

using Tables = World;

TEST_F(Tables, there_are_24_suites_with_620_slots) {
    std::set<std::string_view> suites;
    for (const SlotUse& slot : host.coverage()) suites.insert(slot.suite);
    EXPECT_EQ(suites.size(), 24U);
    EXPECT_EQ(host.coverage().size(), 620U);
}

TEST_F(Tables, no_slot_is_empty) {
    int slots = 0;
#define SLOT(structure, index, function)                                          \
    EXPECT_NE(suite<structure>()->function, nullptr) << #structure "." #function; \
    ++slots;
#include "suites.def"
    EXPECT_EQ(slots, 620);
}

TEST_F(Tables, each_table_is_answered_under_its_published_integer_only){
#define SUITE(structure, accessor, suite_name, version)                                                  \
    {                                                                                                    \
        const void* table = &table;                                                                      \
        EXPECT_NE(host.basic_suite()->AcquireSuite(suite_name, version + 100, &table), 0) << #structure; \
        EXPECT_EQ(table, nullptr);                                                                       \
    }
#include "suites.def"
}

TEST_F(Tables, the_101_functions_are_offered_in_every_version) {
    ASSERT_EQ(kOffered.size(), 101U);
    std::set<std::string> seen;
    for (const SlotUse& slot : host.coverage()) {
        if (!kOffered.contains(std::string(slot.function))) continue;
        seen.insert(std::string(slot.function));
        EXPECT_TRUE(slot.is_implemented) << slot.suite << "." << slot.function;
    }
    EXPECT_EQ(seen, kOffered);
}

TEST_F(Tables, a_slot_that_is_not_implemented_says_so_by_name) {
    int trapped = 0;
    std::size_t place = 0;
    const auto slots = host.coverage();
    const auto try_slot = [&](std::string_view suite, std::string_view function, auto call) {
        ASSERT_EQ(slots[place].suite, suite);
        ASSERT_EQ(slots[place].function, function);
        if (slots[place++].is_implemented) return;
        EXPECT_EQ(call(), kNotImplemented) << suite << "." << function;
        const Diagnostic said = host.diagnostics().back();
        EXPECT_EQ(said.function, std::string(suite.substr(5)) + "." + std::string(function));
        EXPECT_THAT(said.sentence, testing::HasSubstr(std::string(function) + " is not implemented by this host."));
        ++trapped;
    };
#define SLOT(structure, index, function) \
    try_slot(#structure, #function, [this] { return call_with_nothing(suite<structure>()->function); });
#include "suites.def"
    EXPECT_GT(trapped, 300);
}

TEST_F(Tables, calls_are_counted_slot_by_slot) {
    const auto suites_called = [this] {
        std::vector<std::string_view> called;
        for (const SlotUse& slot : host.coverage()) called.insert(called.end(), slot.calls, slot.suite);
        return called;
    };
    EXPECT_THAT(suites_called(), testing::IsEmpty());
    A_long count = 0;
    ASSERT_EQ(layers()->AEGP_GetCompNumLayers(host.comp_handle(main), &count), 0);
    ASSERT_EQ(suite<AEGP_LayerSuite7>()->AEGP_GetCompNumLayers(host.comp_handle(main), &count), 0);
    EXPECT_THAT(suites_called(), testing::ElementsAre("AEGP_LayerSuite5", "AEGP_LayerSuite7"));
}

}  // namespace host::suites
