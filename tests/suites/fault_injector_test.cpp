// Calls that fail on purpose.
#include "suites/fault_injector.h"

#include "world.h"

namespace host::suites {

using testing::ElementsAre;

class Faults : public World {
  public:
    Faults() { host.add_observer(injector); }
    ~Faults() override { host.remove_observer(injector); }

    A_Err index() {
        A_long at = -1;
        return table->AEGP_GetLayerIndex(layer, &at);
    }
    A_Err count() {
        A_long layers_there = -1;
        return table->AEGP_GetCompNumLayers(host.comp_handle(main), &layers_there);
    }
    A_Err acquire(const char* name, int version) {
        const void* found = &found;
        const A_Err result = host.basic_suite()->AcquireSuite(name, version, &found);
        EXPECT_EQ(result == 0, found != nullptr);
        return result;
    }

    const AEGP_LayerSuite5* table = layers();
    const AEGP_LayerH layer = host.handle(add_layer("A"));
    FaultInjector injector;
};

TEST_F(Faults, strike_the_nth_call_once) {
    injector.fail_call(2, 77);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(count(), 77);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(injector.calls_seen(), 3U);
    EXPECT_THAT(injector.fired(), ElementsAre("LayerSuite5.AEGP_GetCompNumLayers"));
}

TEST_F(Faults, strike_from_the_nth_call_on) {
    injector.fail_call(2, 77, FaultInjector::Lasting::from_then_on);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(index(), 77);
    EXPECT_EQ(count(), 77);
    EXPECT_EQ(injector.fired().size(), 2U);
}

TEST_F(Faults, strike_the_nth_call_of_one_function) {
    injector.fail_call(2, 77, FaultInjector::Lasting::once, "AEGP_GetCompNumLayers");
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(count(), 77);
    EXPECT_EQ(count(), 0);
}

TEST_F(Faults, keep_the_call_from_running) {
    injector.fail_call(1, 77);
    EXPECT_EQ(table->AEGP_DeleteLayer(layer), 77);
    EXPECT_EQ(main.layer_count(), 1);
    EXPECT_TRUE(host.diagnostics().empty());
}

TEST_F(Faults, strike_acquisitions_with_a_count_of_their_own) {
    injector.fail_acquisition(2, 13);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(acquire("AEGP Item Suite", 13), 0);
    EXPECT_EQ(index(), 0);
    EXPECT_EQ(acquire("AEGP Memory Suite", 1), 13);
    EXPECT_EQ(acquire("AEGP Memory Suite", 1), 0);
    EXPECT_EQ(injector.acquisitions_seen(), 3U);
    EXPECT_EQ(injector.calls_seen(), 2U);
    EXPECT_THAT(injector.fired(), ElementsAre("AcquireSuite AEGP_MemorySuite1"));
}

TEST_F(Faults, strike_the_acquisitions_of_one_suite) {
    injector.fail_acquisition(1, 13, FaultInjector::Lasting::from_then_on, "AEGP_ItemSuite8");
    EXPECT_EQ(acquire("AEGP Item Suite", 10), 0);
    EXPECT_EQ(acquire("AEGP Item Suite", 13), 13);
    EXPECT_EQ(acquire("AEGP Item Suite", 13), 13);
    EXPECT_EQ(injector.fired().size(), 2U);
}

TEST_F(Faults, leave_releases_and_blocks_alone) {
    injector.fail_call(1, 77, FaultInjector::Lasting::from_then_on);
    injector.fail_acquisition(1, 13, FaultInjector::Lasting::from_then_on);
    void* block = nullptr;
    EXPECT_EQ(host.basic_suite()->AllocateBlock(8, &block), 0);
    EXPECT_EQ(host.basic_suite()->FreeBlock(block), 0);
    EXPECT_EQ(host.basic_suite()->ReleaseSuite("AEGP Layer Suite", 11), 0);
    EXPECT_EQ(injector.calls_seen(), 0U);
    EXPECT_EQ(injector.acquisitions_seen(), 0U);
}

TEST_F(Faults, that_meet_give_the_code_of_the_first) {
    injector.fail_call(1, 77);
    injector.fail_call(1, 78);
    EXPECT_EQ(index(), 77);
    EXPECT_EQ(injector.fired().size(), 1U);
}

}  // namespace host::suites
