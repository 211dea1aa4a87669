// The same bits as another type; not every standard library here has it.
#pragma once

#include <type_traits>

namespace host::base {

template <class To, class From>
constexpr To bit_cast(const From& from) {
    static_assert(sizeof(To) == sizeof(From));
    static_assert(std::is_trivially_copyable_v<To> && std::is_trivially_copyable_v<From>);
    return __builtin_bit_cast(To, from);
}

}  // namespace host::base
