// Memory handles.
#include <algorithm>
#include <cstring>

#include "world.h"

namespace host::suites {

class Memory : public World {
  public:
    const AEGP_MemorySuite1* table = memory();

    AEGP_MemHandle make(A_u_long size) {
        AEGP_MemHandle made = nullptr;
        EXPECT_EQ(table->AEGP_NewMemHandle(plugin, "test", size, AEGP_MemFlag_NONE, &made), 0);
        return made;
    }
    char* lock(AEGP_MemHandle handle) {
        void* data = nullptr;
        EXPECT_EQ(table->AEGP_LockMemHandle(handle, &data), 0);
        return static_cast<char*>(data);
    }
    A_u_long size(AEGP_MemHandle handle) {
        A_u_long found = 999;
        EXPECT_EQ(table->AEGP_GetMemHandleSize(handle, &found), 0);
        return found;
    }
};

TEST_F(Memory, is_aligned_and_cleared) {
    for (const A_u_long bytes : {1U, 7U, 100U, 10'000U}) {
        const AEGP_MemHandle handle = make(bytes);
        const char* data = lock(handle);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(data) % 16, 0U);
        EXPECT_TRUE(std::all_of(data, data + bytes, [](char c) { return c == 0; }));
        EXPECT_EQ(size(handle), bytes);
    }
}

TEST_F(Memory, of_no_size_is_memory_all_the_same) {
    const AEGP_MemHandle handle = make(0);
    EXPECT_EQ(size(handle), 0U);
    EXPECT_NE(lock(handle), nullptr);
}

TEST_F(Memory, stays_where_it_is_after_unlocking) {
    const AEGP_MemHandle handle = make(8);
    char* data = lock(handle);
    std::memcpy(data, "stays", 6);
    EXPECT_EQ(table->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_STREQ(data, "stays");
    EXPECT_EQ(lock(handle), data);
}

TEST_F(Memory, is_unlocked_as_often_as_it_was_locked) {
    const AEGP_MemHandle handle = make(8);
    EXPECT_EQ(lock(handle), lock(handle));
    EXPECT_EQ(table->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(table->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(table->AEGP_UnlockMemHandle(handle), kNotAllowed);
    EXPECT_EQ(last_complaint(), "The memory is not locked.");
}

TEST_F(Memory, may_be_freed_while_locked_and_that_is_noted) {
    const AEGP_MemHandle locked = make(8);
    const AEGP_MemHandle unlocked = make(8);
    lock(locked);
    EXPECT_EQ(table->AEGP_FreeMemHandle(locked), 0);
    EXPECT_EQ(table->AEGP_FreeMemHandle(unlocked), 0);
    EXPECT_EQ(host.ledger().freed_while_locked.size(), 1U);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
    EXPECT_EQ(table->AEGP_FreeMemHandle(locked), kBadArgument);
}

TEST_F(Memory, that_is_null_leaves_the_pointer_alone) {
    void* data = this;
    EXPECT_EQ(table->AEGP_LockMemHandle(nullptr, &data), kBadArgument);
    EXPECT_EQ(data, this);
    EXPECT_EQ(table->AEGP_LockMemHandle(make(8), nullptr), kBadArgument);
}

TEST_F(Memory, keeps_what_fits_when_resized_and_clears_the_rest) {
    const AEGP_MemHandle handle = make(4);
    std::memcpy(lock(handle), "abcd", 4);
    EXPECT_EQ(table->AEGP_ResizeMemHandle("test", 6, handle), kNotAllowed);
    EXPECT_EQ(size(handle), 4U);
    EXPECT_EQ(table->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(table->AEGP_ResizeMemHandle("test", 6, handle), 0);
    EXPECT_EQ(size(handle), 6U);
    EXPECT_EQ(std::memcmp(lock(handle), "abcd\0\0", 6), 0);
    EXPECT_EQ(table->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(table->AEGP_ResizeMemHandle("test", 2, handle), 0);
    EXPECT_EQ(size(handle), 2U);
    EXPECT_EQ(std::memcmp(lock(handle), "ab", 2), 0);
}

TEST_F(Memory, needs_a_purpose_and_a_place_for_its_handle) {
    AEGP_MemHandle made = nullptr;
    EXPECT_EQ(table->AEGP_NewMemHandle(plugin, nullptr, 8, 0, &made), kBadArgument);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(table->AEGP_NewMemHandle(plugin, "test", 8, 0, nullptr), kBadArgument);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

}  // namespace host::suites
