// What calls cost when nobody watches: queries allocate nothing, and what is handed out and given back leaves no cost
// behind.
#include <array>

#include "counted_allocations.h"
#include "handle_pool.h"

namespace host::suites {

class Costs : public World {
  public:
    // Allocations of one call that has been made before.
    template <class Ask>
    std::size_t allocations_of(Ask ask) {
        EXPECT_EQ(ask(), 0);
        const std::size_t before = allocations_so_far();
        const A_Err result = ask();
        const std::size_t after = allocations_so_far();
        EXPECT_EQ(result, 0);
        return after - before;
    }

    const HandlePool pool{*this};
    const AEGP_LayerSuite5* layer_table = layers();
    const AEGP_StreamSuite4* stream_table = streams();
    const AEGP_KeyframeSuite4* key_table = keyframes();
    A_long number = 0;
    A_Boolean flag = 0;
    A_Time time{};
};

TEST_F(Costs, the_counter_sees_what_is_handed_out) {
    AEGP_MemHandle made = nullptr;
    EXPECT_GT(allocations_of([&] { return memory()->AEGP_NewMemHandle(plugin, "", 64, 0, &made); }), 0U);
}

TEST_F(Costs, questions_about_layers_allocate_nothing) {
    AEGP_LayerH layer = nullptr;
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    std::array<A_char, AEGP_MAX_LAYER_NAME_SIZE> own{};
    std::array<A_char, AEGP_MAX_LAYER_NAME_SIZE> source{};
    const auto* t = layer_table;
    const auto* wide = suite<AEGP_LayerSuite7>();
    const AEGP_LayerH of = pool.layer;
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerIndex(of, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetCompNumLayers(pool.comp, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetCompLayerByIndex(pool.comp, 0, &layer); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerSourceItem(of, &item); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerParentComp(of, &comp); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerParent(of, &layer); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerName(of, own.data(), source.data()); }), 0U);
    EXPECT_EQ(allocations_of([&] { return wide->AEGP_GetLayerName(plugin, of, nullptr, nullptr); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerObjectType(of, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_IsLayer3D(of, &flag); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerInPoint(of, 1, &time); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerDuration(of, 0, &time); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetLayerOffset(of, &time); }), 0U);
}

TEST_F(Costs, questions_about_items_and_effects_allocate_nothing) {
    const auto* items = suite<AEGP_ItemSuite8>();
    const auto* effects = suite<AEGP_EffectSuite3>();
    AEGP_ItemH item = nullptr;
    AEGP_CompH comp = nullptr;
    AEGP_ItemType type = 0;
    A_Ratio aspect{};
    AEGP_FootageInterp interpretation{};
    const auto* footages = suite<AEGP_FootageSuite5>();
    const auto* comps = suite<AEGP_CompSuite11>();
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetActiveItem(&item); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetFirstProjItem(pool.project, &item); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetNextProjItem(pool.project, pool.item, &item); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_IsItemSelected(pool.item, &flag); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetItemType(pool.item, &type); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetItemID(pool.item, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetItemParentFolder(pool.item, &item); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetItemDimensions(pool.item, &number, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return items->AEGP_GetItemPixelAspectRatio(pool.item, &aspect); }), 0U);
    EXPECT_EQ(allocations_of([&] { return comps->AEGP_GetCompFromItem(pool.item, &comp); }), 0U);
    EXPECT_EQ(allocations_of([&] { return comps->AEGP_GetItemFromComp(pool.comp, &item); }), 0U);
    EXPECT_EQ(
        allocations_of([&] { return footages->AEGP_GetFootageInterpretation(pool.item, false, &interpretation); }), 0U);
    EXPECT_EQ(allocations_of([&] { return effects->AEGP_GetLayerNumEffects(pool.layer, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return effects->AEGP_GetInstalledKeyFromLayerEffect(pool.effect, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return effects->AEGP_GetEffectFlags(pool.effect, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return stream_table->AEGP_GetEffectNumParamStreams(pool.effect, &number); }), 0U);
}

TEST_F(Costs, questions_about_streams_and_keyframes_allocate_nothing) {
    const auto* t = stream_table;
    const auto* k = key_table;
    A_short dimensions = 0;
    A_long other = 0;
    AEGP_MemHandle expression = nullptr;
    AEGP_KeyframeEase ease{};
    ASSERT_EQ(k->AEGP_InsertKeyframe(pool.stream, 1, &kZero, &number), 0);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_IsStreamLegal(pool.layer, 1, &flag); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_CanVaryOverTime(pool.stream, &flag); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_IsStreamTimevarying(pool.stream, &flag); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetStreamType(pool.stream, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetExpression(plugin, pool.stream, &expression); }), 0U);
    EXPECT_EQ(allocations_of([&] { return t->AEGP_GetExpressionState(plugin, pool.stream, &flag); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_GetStreamNumKFs(pool.stream, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_GetKeyframeTime(pool.stream, 0, 1, &time); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_InsertKeyframe(pool.stream, 1, &kZero, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_GetStreamTemporalDimensionality(pool.stream, &dimensions); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_GetKeyframeTemporalEase(pool.stream, 0, 0, &ease, nullptr); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_GetKeyframeFlags(pool.stream, 0, &number); }), 0U);
    EXPECT_EQ(allocations_of([&] { return k->AEGP_GetKeyframeInterpolation(pool.stream, 0, &number, &other); }), 0U);
}

TEST_F(Costs, suites_collections_and_memory_are_asked_without_allocating) {
    SPBasicSuite* basic = host.basic_suite();
    const auto* memory_table = memory();
    const auto* collection_table = collections();
    const void* found = nullptr;
    void* data = nullptr;
    A_u_long count = 0;
    EXPECT_EQ(allocations_of([&] { return basic->AcquireSuite("AEGP Stream Suite", 9, &found); }), 0U);
    EXPECT_EQ(allocations_of([&] { return basic->ReleaseSuite("AEGP Stream Suite", 9); }), 0U);
    EXPECT_EQ(allocations_of([&] { return memory_table->AEGP_LockMemHandle(pool.memory, &data); }), 0U);
    EXPECT_EQ(allocations_of([&] { return memory_table->AEGP_UnlockMemHandle(pool.memory); }), 0U);
    EXPECT_EQ(allocations_of([&] { return collection_table->AEGP_GetCollectionNumItems(pool.collection, &count); }),
              0U);
}

TEST_F(Costs, values_handed_out_and_given_back_share_the_same_room) {
    const auto take_and_return = [&](int times) {
        for (int i = 0; i < times; ++i) {
            AEGP_StreamValue2 value{};
            ASSERT_EQ(stream_table->AEGP_GetNewStreamValue(plugin, pool.stream, 1, &kZero, true, &value), 0);
            ASSERT_EQ(stream_table->AEGP_DisposeStreamValue(&value), 0);
        }
    };
    take_and_return(6'000);
    const std::size_t before = allocations_so_far();
    take_and_return(6'000);
    EXPECT_LT(allocations_so_far() - before, 100U);  // now and then a page of the list of free places
}

}  // namespace host::suites
