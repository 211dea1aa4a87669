// Collections: vectors of records that a plug-in fills, reads and gives back.
#include "handle_pool.h"

namespace host::suites {

class Collections : public World {
  public:
    AEGP_Collection2H make() {
        AEGP_Collection2H made = nullptr;
        EXPECT_EQ(collections()->AEGP_NewCollection(plugin, &made), 0);
        return made;
    }
    AEGP_CollectionItemV2 member(const model::Layer& layer) {
        AEGP_CollectionItemV2 item{};
        item.type = AEGP_CollectionItemType_LAYER;
        item.u.layer.layerH = host.handle(layer);
        return item;
    }
    AEGP_CollectionItemV2 member(AEGP_StreamRefH ref) {
        AEGP_CollectionItemV2 item{};
        item.type = AEGP_CollectionItemType_STREAMREF;
        item.stream_refH = ref;
        return item;
    }
    A_u_long count(AEGP_Collection2H collection) {
        A_u_long number = 99;
        EXPECT_EQ(collections()->AEGP_GetCollectionNumItems(collection, &number), 0);
        return number;
    }
    AEGP_LayerH layer_at(AEGP_Collection2H collection, A_u_long index) {
        AEGP_CollectionItemV2 item{};
        EXPECT_EQ(collections()->AEGP_GetCollectionItemByIndex(collection, index, &item), 0);
        EXPECT_EQ(item.type, AEGP_CollectionItemType_LAYER);
        return item.u.layer.layerH;
    }
    void push(AEGP_Collection2H collection, const AEGP_CollectionItemV2& item) {
        ASSERT_EQ(collections()->AEGP_CollectionPushBack(collection, &item), 0);
    }
};

TEST_F(Collections, are_empty_when_new) {
    EXPECT_EQ(count(make()), 0U);
}

TEST_F(Collections, give_records_back_in_the_order_of_pushing) {
    const model::Layer& a = add_layer("A");
    const model::Layer& b = add_layer("B");
    const AEGP_Collection2H collection = make();
    push(collection, member(b));
    push(collection, member(a));
    push(collection, member(b));
    ASSERT_EQ(count(collection), 3U);
    EXPECT_EQ(layer_at(collection, 0), host.handle(b));
    EXPECT_EQ(layer_at(collection, 1), host.handle(a));
    EXPECT_EQ(layer_at(collection, 2), host.handle(b));
}

TEST_F(Collections, leave_the_record_alone_when_the_index_is_out_of_range) {
    const AEGP_Collection2H collection = make();
    push(collection, member(add_layer("A")));
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_MASK;
    EXPECT_EQ(collections()->AEGP_GetCollectionItemByIndex(collection, 1, &item), kBadArgument);
    EXPECT_EQ(item.type, AEGP_CollectionItemType_MASK);
    EXPECT_EQ(last_complaint(), "The collection has 1 items, none at 1.");
    EXPECT_EQ(collections()->AEGP_GetCollectionItemByIndex(collection, 0, nullptr), kBadArgument);
}

TEST_F(Collections, lose_a_half_open_range_by_erasing) {
    const AEGP_Collection2H collection = make();
    std::vector<AEGP_LayerH> pushed;
    for (const char* name : {"A", "B", "C", "D"}) {
        const model::Layer& layer = add_layer(name);
        pushed.push_back(host.handle(layer));
        push(collection, member(layer));
    }
    EXPECT_EQ(collections()->AEGP_CollectionErase(collection, 1, 3), 0);
    ASSERT_EQ(count(collection), 2U);
    EXPECT_EQ(layer_at(collection, 0), pushed[0]);
    EXPECT_EQ(layer_at(collection, 1), pushed[3]);
    EXPECT_EQ(collections()->AEGP_CollectionErase(collection, 2, 2), 0);
    EXPECT_EQ(count(collection), 2U);
}

TEST_F(Collections, refuse_ranges_that_are_none) {
    const AEGP_Collection2H collection = make();
    push(collection, member(add_layer("A")));
    EXPECT_EQ(collections()->AEGP_CollectionErase(collection, 1, 0), kBadArgument);
    EXPECT_EQ(collections()->AEGP_CollectionErase(collection, 0, 2), kBadArgument);
    EXPECT_EQ(count(collection), 1U);
}

TEST_F(Collections, are_disposed_of_once) {
    const AEGP_Collection2H collection = make();
    EXPECT_EQ(collections()->AEGP_DisposeCollection(collection), 0);
    EXPECT_EQ(collections()->AEGP_DisposeCollection(collection), kBadArgument);
    EXPECT_EQ(host.ledger().disposed_twice.size(), 1U);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

TEST_F(Collections, own_the_streams_pushed_into_them) {
    const AEGP_Collection2H collection = make();
    const AEGP_StreamRefH ref = stream(add_layer("A"), AEGP_LayerStream_POSITION);
    push(collection, member(ref));
    EXPECT_EQ(streams()->AEGP_DisposeStream(ref), kNotAllowed);
    AEGP_StreamType type = -1;
    EXPECT_EQ(streams()->AEGP_GetStreamType(ref, &type), 0);
    EXPECT_EQ(collections()->AEGP_DisposeCollection(collection), 0);
    EXPECT_EQ(streams()->AEGP_GetStreamType(ref, &type), kBadArgument);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

TEST_F(Collections, take_no_stream_that_another_owns) {
    const AEGP_Collection2H first = make();
    const AEGP_Collection2H second = make();
    const AEGP_CollectionItemV2 item = member(stream(add_layer("A"), AEGP_LayerStream_SCALE));
    push(first, item);
    EXPECT_EQ(collections()->AEGP_CollectionPushBack(second, &item), kNotAllowed);
    EXPECT_EQ(count(second), 0U);
}

TEST_F(Collections, do_not_own_effects_pushed_into_them) {
    const HandlePool pool(*this);
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_EFFECT;
    item.u.effect = {pool.layer, 0};
    const AEGP_Collection2H collection = make();
    push(collection, item);
    EXPECT_EQ(collections()->AEGP_DisposeCollection(collection), 0);
    EXPECT_EQ(suite<AEGP_EffectSuite3>()->AEGP_DisposeEffect(pool.effect), 0);
}

}  // namespace host::suites
