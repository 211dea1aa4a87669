// How a journal treats the interface's parameter types.
#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "AE_GeneralPlug.h"
#include "base/number_in_pointer.h"
#include "suites/slot_facts.h"

namespace host::journal {

// The word in a handle's name; empty for other types.
template <class T>
inline constexpr std::string_view handle_word{};
#define HANDLE(type, word) \
    template <>            \
    inline constexpr std::string_view handle_word<type> = word;
HANDLE(AEGP_ProjectH, "project")
HANDLE(AEGP_ItemH, "item")
HANDLE(AEGP_CompH, "comp")
HANDLE(AEGP_LayerH, "layer")
HANDLE(AEGP_FootageH, "footage")
HANDLE(AEGP_Collection2H, "collection")
HANDLE(AEGP_StreamRefH, "stream")
HANDLE(AEGP_EffectRefH, "effect")
HANDLE(AEGP_MaskRefH, "mask")
HANDLE(AEGP_SoundDataH, "sound")
HANDLE(AEGP_AddKeyframesInfoH, "batch")
HANDLE(AEGP_ItemViewP, "view")
HANDLE(AEGP_MemHandle, "mem")
#undef HANDLE

inline constexpr std::string_view kValueWord = "value";  // the handle inside a stream's value
inline constexpr std::string_view kBlockWord = "block";  // memory of the basic suite
inline constexpr std::string_view kMemoryWord = handle_word<AEGP_MemHandle>;
inline constexpr std::string_view kUnknownWord = "unknown";  // a handle the host never gave
inline constexpr std::string_view kRefconWord = "refcon";    // the plug-in's own, as is the next
inline constexpr std::string_view kFunctionWord = "function";

template <class T>
inline constexpr bool is_handle = !handle_word<T>.empty();

// Reference constants that a plug-in leaves with the host.
template <class T>
inline constexpr bool is_refcon = false;
#define REFCON(type) \
    template <>      \
    inline constexpr bool is_refcon<type> = true;
REFCON(AEGP_GlobalRefcon)
REFCON(AEGP_CommandRefcon)
REFCON(AEGP_UpdateMenuRefcon)
REFCON(AEGP_DeathRefcon)
REFCON(AEGP_VersionRefcon)
REFCON(AEGP_AboutStringRefcon)
REFCON(AEGP_AboutRefcon)
REFCON(AEGP_IdleRefcon)
REFCON(AEGP_IORefcon)
#undef REFCON

template <class T>
inline constexpr bool is_function = std::is_pointer_v<T>&& std::is_function_v<std::remove_pointer_t<T>>;

template <class T>
inline constexpr bool is_text = std::is_same_v<T, const A_char*> || std::is_same_v<T, const A_UTF16Char*>;

template <class T, class = void>
inline constexpr bool is_complete = false;
template <class T>
inline constexpr bool is_complete<T, std::enable_if_t<!std::is_void_v<T>, std::void_t<decltype(sizeof(T))>>> = true;

// A pointer to a complete type.
template <class T>
inline constexpr bool points_to_data =
    std::is_pointer_v<T> && !is_handle<T> && !is_refcon<T> && !is_function<T> && is_complete<std::remove_pointer_t<T>>;

// Whether the host returns a result through this argument.
template <auto Member, class T>
inline constexpr bool is_output = points_to_data<T> && !std::is_const_v<std::remove_pointer_t<T>> &&
                                  !(suites::records_are_inputs<Member> && std::is_same_v<T, AEGP_StreamValue2*>);

// Size of the buffers for a function's text results; kArgumentSays: given by the preceding argument.
inline constexpr std::size_t kArgumentSays = 0;
template <auto Member>
inline constexpr std::size_t text_room = 32;
#define ROOM(member, size) \
    template <>            \
    inline constexpr std::size_t text_room<&member> = size;
ROOM(AEGP_EffectSuite3::AEGP_GetEffectName, AEGP_MAX_EFFECT_NAME_SIZE)
ROOM(AEGP_EffectSuite3::AEGP_GetEffectMatchName, AEGP_MAX_EFFECT_MATCH_NAME_SIZE)
ROOM(AEGP_ProjSuite5::AEGP_GetProjectName, AEGP_MAX_PROJ_NAME_SIZE)
ROOM(AEGP_ProjSuite6::AEGP_GetProjectName, AEGP_MAX_PROJ_NAME_SIZE)
ROOM(AEGP_ItemSuite5::AEGP_GetItemComment, kArgumentSays)
ROOM(AEGP_ItemSuite6::AEGP_GetItemComment, kArgumentSays)
ROOM(AEGP_ItemSuite8::AEGP_GetItemComment, kArgumentSays)
ROOM(AEGP_UtilitySuite6::AEGP_GetLastErrorMessage, kArgumentSays)
#undef ROOM

template <class Pointer>
std::uint64_t raw(Pointer pointer) {
    return base::number_in(pointer);
}

template <class Pointer>
Pointer from_raw(std::uint64_t number) {
    return base::pointer_with<Pointer>(number);
}

}  // namespace host::journal
