// Numbers of 64 bits in the shape of pointers, on systems whose pointers are shorter too.
#pragma once

#include <cstdint>

namespace host::base {

// A number below 2^32 that stands for this one until the program ends: the same for equal ones. Beyond the addresses
// that a program of 32 bits has here. Throws std::bad_alloc when there are too many.
std::uint32_t short_number(std::uint64_t number);
// The number that it stands for; itself if short_number() never gave it.
std::uint64_t long_number(std::uint32_t number);

template <class Pointer>
Pointer pointer_with(std::uint64_t number) {
    if constexpr (sizeof(Pointer) >= sizeof number) {
        return reinterpret_cast<Pointer>(static_cast<std::uintptr_t>(number));
    } else {
        return reinterpret_cast<Pointer>(static_cast<std::uintptr_t>(short_number(number)));
    }
}

template <class Pointer>
std::uint64_t number_in(Pointer pointer) {
    const auto bits = reinterpret_cast<std::uintptr_t>(pointer);
    if constexpr (sizeof bits >= sizeof(std::uint64_t)) {
        return bits;
    } else {
        return long_number(static_cast<std::uint32_t>(bits));
    }
}

}  // namespace host::base
