// Memory for RapidJSON.
#include "base/json_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

using host::base::JsonMemory;

TEST(JsonMemory, that_there_is_not_is_an_error) {
    EXPECT_THROW(JsonMemory::Malloc(PTRDIFF_MAX), std::bad_alloc);
    void* some = JsonMemory::Malloc(8);
    EXPECT_THROW(JsonMemory::Realloc(some, 8, PTRDIFF_MAX), std::bad_alloc);
    JsonMemory::Free(some);
}

TEST(JsonMemory, keeps_what_is_in_it_when_it_grows_and_is_none_where_none_is_asked_for) {
    void* some = JsonMemory::Malloc(4);
    std::memcpy(some, "abc", 4);
    some = JsonMemory::Realloc(some, 4, 100'000);
    EXPECT_STREQ(static_cast<const char*>(some), "abc");
    EXPECT_EQ(JsonMemory::Realloc(some, 100'000, 0), nullptr);
    EXPECT_EQ(JsonMemory::Malloc(0), nullptr);
}

}  // namespace
