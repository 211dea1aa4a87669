// Numbers of 64 bits in the shape of pointers: a table of those that do not fit.
#include "base/number_in_pointer.h"

#include <new>
#include <unordered_map>
#include <vector>

namespace host::base {
namespace {

// Memory of 32-bit programs ends at 2 GiB here.
constexpr std::uint32_t kFirst = 0x8000'0000;

std::unordered_map<std::uint64_t, std::uint32_t> short_of;
std::vector<std::uint64_t> long_of;  // by the distance from kFirst

}  // namespace

std::uint32_t short_number(std::uint64_t number) {
    if (number < kFirst) return static_cast<std::uint32_t>(number);
    const auto [entry, is_new] = short_of.try_emplace(number, kFirst + static_cast<std::uint32_t>(long_of.size()));
    if (is_new) {
        if (long_of.size() == kFirst) throw std::bad_alloc();
        long_of.push_back(number);
    }
    return entry->second;
}

std::uint64_t long_number(std::uint32_t number) {
    if (number < kFirst || number - kFirst >= long_of.size()) return number;
    return long_of[number - kFirst];
}

}  // namespace host::base
