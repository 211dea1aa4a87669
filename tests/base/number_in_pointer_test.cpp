// Numbers of 64 bits in the shape of shorter pointers.
#include "base/number_in_pointer.h"

#include <gtest/gtest.h>

namespace host::base {
namespace {

TEST(NumberInPointer, SmallNumbersStandForThemselves) {
    for (const std::uint64_t number : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{0x7FFF'FFFF}}) {
        EXPECT_EQ(short_number(number), number);
        EXPECT_EQ(long_number(static_cast<std::uint32_t>(number)), number);
    }
}

TEST(NumberInPointer, EachLargeNumberGetsOneShortNumberBeyondAllAddresses) {
    constexpr std::uint64_t kNumbers[] = {0x8000'0000, 0x5300'0001'0000'0010, 0xFFFF'FFFF'FFFF'FFFF};
    for (const std::uint64_t number : kNumbers) EXPECT_GE(short_number(number), 0x8000'0000U);
    for (const std::uint64_t number : kNumbers) EXPECT_EQ(long_number(short_number(number)), number);
    EXPECT_EQ(short_number(kNumbers[1]), short_number(kNumbers[1]));
    EXPECT_NE(short_number(kNumbers[1]), short_number(kNumbers[2]));
}

TEST(NumberInPointer, APointerCarriesTheNumber) {
    struct Opaque;
    constexpr std::uint64_t kNumber = 0x5300'0001'0000'0010;
    EXPECT_EQ(number_in(pointer_with<Opaque*>(kNumber)), kNumber);
}

}  // namespace
}  // namespace host::base
