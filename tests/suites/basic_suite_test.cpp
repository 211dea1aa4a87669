// The basic suite: acquiring, releasing, blocks.
#include <cstring>

#include "world.h"

namespace host::suites {

class BasicSuite : public World {
  public:
    SPBasicSuite* basic = host.basic_suite();
    const void* table = this;
};

TEST_F(BasicSuite, the_same_name_and_version_give_the_same_table) {
    const void* again = nullptr;
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &table), 0);
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &again), 0);
    EXPECT_NE(table, nullptr);
    EXPECT_EQ(table, again);
}

TEST_F(BasicSuite, versions_of_a_suite_are_held_side_by_side) {
    const void* other = nullptr;
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &table), 0);
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 12, &other), 0);
    EXPECT_NE(table, other);
}

TEST_F(BasicSuite, an_unknown_name_gives_an_error_and_a_null_pointer) {
    EXPECT_NE(basic->AcquireSuite("AEGP Dream Suite", 1, &table), 0);
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(last_complaint(), "There is no suite \"AEGP Dream Suite\" of version 1.");
}

TEST_F(BasicSuite, an_unknown_version_gives_an_error_and_a_null_pointer) {
    EXPECT_NE(basic->AcquireSuite("AEGP Layer Suite", 5, &table), 0);
    EXPECT_EQ(table, nullptr);
}

TEST_F(BasicSuite, null_arguments_are_errors) {
    EXPECT_NE(basic->AcquireSuite(nullptr, 1, &table), 0);
    EXPECT_EQ(table, nullptr);
    EXPECT_NE(basic->AcquireSuite("AEGP Layer Suite", 11, nullptr), 0);
    EXPECT_NE(basic->ReleaseSuite(nullptr, 1), 0);
    EXPECT_TRUE(host.suites_held().empty());
}

TEST_F(BasicSuite, acquisitions_are_counted_until_released) {
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &table), 0);
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &table), 0);
    ASSERT_EQ(host.suites_held().size(), 1U);
    const HeldSuite held = host.suites_held().front();
    EXPECT_EQ(held.structure, "AEGP_LayerSuite5");
    EXPECT_EQ(held.name, "AEGP Layer Suite");
    EXPECT_EQ(held.version, 11);
    EXPECT_EQ(held.count, 2U);
    EXPECT_EQ(basic->ReleaseSuite("AEGP Layer Suite", 11), 0);
    EXPECT_EQ(basic->ReleaseSuite("AEGP Layer Suite", 11), 0);
    EXPECT_TRUE(host.suites_held().empty());
}

TEST_F(BasicSuite, a_release_too_many_is_an_error) {
    ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &table), 0);
    EXPECT_EQ(basic->ReleaseSuite("AEGP Layer Suite", 11), 0);
    EXPECT_NE(basic->ReleaseSuite("AEGP Layer Suite", 11), 0);
    EXPECT_EQ(last_complaint(), "AEGP_LayerSuite5 is not held.");
    EXPECT_NE(basic->ReleaseSuite("AEGP Dream Suite", 1), 0);
}

TEST_F(BasicSuite, equal_names_are_equal) {
    EXPECT_TRUE(basic->IsEqual("one", std::string("one").c_str()));
    EXPECT_FALSE(basic->IsEqual("one", "two"));
    EXPECT_FALSE(basic->IsEqual("one", nullptr));
    EXPECT_TRUE(basic->IsEqual(nullptr, nullptr));
}

TEST_F(BasicSuite, a_block_can_be_written_grown_and_freed) {
    void* block = nullptr;
    ASSERT_EQ(basic->AllocateBlock(5, &block), 0);
    std::memcpy(block, "four", 5);
    ASSERT_EQ(basic->ReallocateBlock(block, 50'000, &block), 0);
    EXPECT_STREQ(static_cast<const char*>(block), "four");
    EXPECT_EQ(host.ledger().never_disposed.size(), 1U);
    EXPECT_EQ(basic->FreeBlock(block), 0);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

TEST_F(BasicSuite, foreign_and_freed_blocks_are_refused) {
    void* block = nullptr;
    ASSERT_EQ(basic->AllocateBlock(5, &block), 0);
    ASSERT_EQ(basic->FreeBlock(block), 0);
    int foreign = 0;
    EXPECT_NE(basic->FreeBlock(&foreign), 0);
    EXPECT_NE(basic->ReallocateBlock(&foreign, 10, &block), 0);
    EXPECT_NE(basic->AllocateBlock(5, nullptr), 0);
    EXPECT_EQ(basic->FreeBlock(nullptr), 0);
}

TEST_F(BasicSuite, blocks_never_freed_are_reported_and_go_with_the_host) {
    void* block = nullptr;
    ASSERT_EQ(basic->AllocateBlock(5, &block), 0);
    ASSERT_EQ(host.ledger().never_disposed.size(), 1U);
    EXPECT_EQ(host.ledger().never_disposed[0].kind, HandleKind::block);
    EXPECT_EQ(host.ledger().never_disposed[0].made_by, "SPBasicSuite.AllocateBlock");
}

TEST_F(BasicSuite, the_undefined_function_fails) {
    EXPECT_EQ(basic->Undefined(), kNotImplemented);
}

}  // namespace host::suites
