// The calls that lock, unlock, resize and free memory.
#pragma once

#include <cstdint>
#include <tuple>

#include "slots.h"

namespace host::journal {

inline constexpr std::int32_t kLockMemory = suites::slot_ordinal<&AEGP_MemorySuite1::AEGP_LockMemHandle>;
inline constexpr std::int32_t kUnlockMemory = suites::slot_ordinal<&AEGP_MemorySuite1::AEGP_UnlockMemHandle>;
inline constexpr std::int32_t kFreeMemory = suites::slot_ordinal<&AEGP_MemorySuite1::AEGP_FreeMemHandle>;
inline constexpr std::int32_t kResizeMemory = suites::slot_ordinal<&AEGP_MemorySuite1::AEGP_ResizeMemHandle>;

inline AEGP_MemHandle locked_by(const void* arguments) {
    return std::get<AEGP_MemHandle>(*static_cast<const std::tuple<AEGP_MemHandle, void**>*>(arguments));
}

// The memory that a call hands back to the host, which may then read what the plug-in left there, or discard it. Null
// for other calls.
inline AEGP_MemHandle handed_back_by(std::int32_t slot, const void* arguments) {
    if (slot == kUnlockMemory || slot == kFreeMemory)
        return std::get<0>(*static_cast<const std::tuple<AEGP_MemHandle>*>(arguments));
    if (slot == kResizeMemory)
        return std::get<AEGP_MemHandle>(
            *static_cast<const std::tuple<const A_char*, AEGP_MemSize, AEGP_MemHandle>*>(arguments));
    return nullptr;
}

}  // namespace host::journal
