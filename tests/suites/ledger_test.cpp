// The account of what was handed out.
#include "handle_pool.h"

namespace host::suites {

using testing::ElementsAre;
using testing::HasSubstr;

class Ledgers : public World {
  public:
    AEGP_MemHandle memory_of(A_u_long size) {
        AEGP_MemHandle made = nullptr;
        EXPECT_EQ(memory()->AEGP_NewMemHandle(plugin, "test", size, AEGP_MemFlag_NONE, &made), 0);
        return made;
    }
};

TEST_F(Ledgers, list_what_was_never_disposed_of_in_the_order_of_making) {
    const HandlePool pool(*this);
    std::vector<std::string> made_by;
    for (const HandedOut& thing : host.ledger().never_disposed) made_by.push_back(thing.made_by);
    EXPECT_THAT(made_by, ElementsAre("FootageSuite5.AEGP_NewSolidFootage", "CollectionSuite2.AEGP_NewCollection",
                                     "EffectSuite3.AEGP_ApplyEffect", "MemorySuite1.AEGP_NewMemHandle",
                                     "StreamSuite4.AEGP_GetNewLayerStream", "KeyframeSuite4.AEGP_StartAddKeyframes"));
}

TEST_F(Ledgers, describe_what_is_left) {
    const HandlePool pool(*this);
    std::vector<std::string> what;
    for (const HandedOut& thing : host.ledger().never_disposed) what.push_back(thing.what);
    EXPECT_THAT(what, ElementsAre("\"Solid\"", "0 items", HasSubstr("\"Mixer\" of layer"), "\"pool\": 64 bytes",
                                  HasSubstr("\"Position\" of layer"), "0 keyframes"));
    EXPECT_EQ(layers()->AEGP_DeleteLayer(pool.layer), 0);
    EXPECT_EQ(host.ledger().never_disposed[2].what, "deleted");
    EXPECT_EQ(host.ledger().never_disposed[4].what, "of something deleted");
}

TEST_F(Ledgers, count_what_was_handed_out_by_kind) {
    EXPECT_EQ(memory()->AEGP_FreeMemHandle(memory_of(1)), 0);
    memory_of(2);
    EXPECT_EQ(host.ledger().handed_out.at(HandleKind::memory), 2U);
    EXPECT_EQ(host.ledger().handed_out.count(HandleKind::stream), 0U);
}

TEST_F(Ledgers, remember_who_disposed_twice) {
    const AEGP_StreamRefH ref = stream(add_layer("A"), AEGP_LayerStream_POSITION);
    EXPECT_EQ(streams()->AEGP_DisposeStream(ref), 0);
    EXPECT_EQ(streams()->AEGP_DisposeStream(ref), kBadArgument);
    const LedgerReport report = host.ledger();
    ASSERT_EQ(report.disposed_twice.size(), 1U);
    EXPECT_EQ(report.disposed_twice[0].kind, HandleKind::stream);
    EXPECT_EQ(report.disposed_twice[0].made_by, "StreamSuite4.AEGP_GetNewLayerStream");
    EXPECT_EQ(report.disposed_twice[0].misused_by, "StreamSuite4.AEGP_DisposeStream");
    EXPECT_LT(report.disposed_twice[0].made_by_call, report.disposed_twice[0].misused_by_call);
    EXPECT_TRUE(report.used_after_disposal.empty());
}

TEST_F(Ledgers, remember_who_used_what_was_disposed_of) {
    const AEGP_MemHandle block = memory_of(1);
    EXPECT_EQ(memory()->AEGP_FreeMemHandle(block), 0);
    void* data = nullptr;
    EXPECT_EQ(memory()->AEGP_LockMemHandle(block, &data), kBadArgument);
    EXPECT_EQ(data, nullptr);
    ASSERT_EQ(host.ledger().used_after_disposal.size(), 1U);
    EXPECT_EQ(host.ledger().used_after_disposal[0].misused_by, "MemorySuite1.AEGP_LockMemHandle");
    EXPECT_TRUE(host.ledger().disposed_twice.empty());
}

TEST_F(Ledgers, never_take_a_dead_handle_for_a_living_one) {
    const AEGP_MemHandle dead = memory_of(1);
    EXPECT_EQ(memory()->AEGP_FreeMemHandle(dead), 0);
    void* data = nullptr;
    for (int i = 0; i < 12'000; ++i) {
        const AEGP_MemHandle next = memory_of(1);
        ASSERT_NE(next, dead);
        ASSERT_EQ(memory()->AEGP_FreeMemHandle(next), 0);
    }
    EXPECT_EQ(memory()->AEGP_LockMemHandle(dead, &data), kBadArgument);
    EXPECT_EQ(last_complaint(), "The memory handle was disposed of long ago, or never given.");
    EXPECT_EQ(data, nullptr);
}

TEST_F(Ledgers, name_every_kind) {
    for (int kind = 1; kind <= static_cast<int>(HandleKind::block); ++kind) {
        EXPECT_NE(name_of(static_cast<HandleKind>(kind)), "unknown");
        EXPECT_FALSE(name_of(static_cast<HandleKind>(kind)).empty());
    }
}

}  // namespace host::suites
