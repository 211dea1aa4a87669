// The bits of a handle.
//
// A handle is a number shaped like a pointer: a kind, an index, a generation and a host. It is not a readable address,
// so dereferencing it by accident fails at once. Looking one up is arithmetic and an array access.
#pragma once

#include <cstdint>
#include <optional>

#include "AE_GeneralPlug.h"
#include "base/number_in_pointer.h"
#include "suites/ledger_report.h"

namespace host::suites {

using RawHandle = std::uint64_t;

struct HandleParts {
    HandleKind kind;
    std::uint32_t index;       // the object's id, or the entry's index in the ledger; below 2^28
    std::uint16_t generation;  // of the entry; 0 for the host's own objects
    std::uint8_t host;         // which host handed it out
};

constexpr RawHandle encode(const HandleParts& parts) {
    return std::uint64_t{0x5} << 60 | std::uint64_t{static_cast<std::uint8_t>(parts.kind)} << 56 |
           std::uint64_t{parts.host} << 48 | std::uint64_t{parts.generation} << 32 | std::uint64_t{parts.index} << 4;
}

constexpr std::uint32_t index_in(RawHandle handle) {
    return static_cast<std::uint32_t>(handle >> 4 & 0x0FFF'FFFF);
}

// Whether it is a handle of this kind and host, whatever its index and generation.
constexpr bool is_of(RawHandle handle, HandleKind kind, std::uint8_t host) {
    constexpr RawHandle kThing = RawHandle{0xFFFF'FFFF'FFF0};
    return (handle & ~kThing) == encode({kind, 0, 0, host});
}

// nullopt for numbers that are not handles.
constexpr std::optional<HandleParts> decode(RawHandle handle) {
    if (handle >> 60 != 0x5 || (handle & 0xF) != 0) return std::nullopt;
    const auto kind = static_cast<std::uint8_t>(handle >> 56 & 0xF);
    if (kind < static_cast<std::uint8_t>(HandleKind::project) ||
        kind > static_cast<std::uint8_t>(HandleKind::keyframe_batch))
        return std::nullopt;
    return HandleParts{static_cast<HandleKind>(kind), index_in(handle), static_cast<std::uint16_t>(handle >> 32),
                       static_cast<std::uint8_t>(handle >> 48)};
}

template <class Pointer>
RawHandle raw(Pointer handle) {
    return base::number_in(handle);
}

template <class Pointer>
Pointer as_pointer(RawHandle handle) {
    return base::pointer_with<Pointer>(handle);
}

// The kind of the interface's handle types; {} for other types.
template <class Pointer>
inline constexpr HandleKind kind_of{};
template <>
inline constexpr HandleKind kind_of<AEGP_ProjectH> = HandleKind::project;
template <>
inline constexpr HandleKind kind_of<AEGP_ItemH> = HandleKind::item;
template <>
inline constexpr HandleKind kind_of<AEGP_CompH> = HandleKind::comp;
template <>
inline constexpr HandleKind kind_of<AEGP_LayerH> = HandleKind::layer;
template <>
inline constexpr HandleKind kind_of<AEGP_FootageH> = HandleKind::footage;
template <>
inline constexpr HandleKind kind_of<AEGP_Collection2H> = HandleKind::collection;
template <>
inline constexpr HandleKind kind_of<AEGP_StreamRefH> = HandleKind::stream;
template <>
inline constexpr HandleKind kind_of<AEGP_EffectRefH> = HandleKind::effect;
template <>
inline constexpr HandleKind kind_of<AEGP_MemHandle> = HandleKind::memory;
template <>
inline constexpr HandleKind kind_of<AEGP_AddKeyframesInfoH> = HandleKind::keyframe_batch;

template <class Pointer>
inline constexpr bool is_handle = kind_of<Pointer> != HandleKind{};

}  // namespace host::suites
