// Writes a function's results through the pointers of a C call.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "AE_GeneralPlug.h"
#include "handles/held.h"
#include "handles/objects.h"
#include "host_state.h"
#include "model/comp.h"
#include "model/error.h"
#include "values.h"

namespace host::suites {

// A result that the caller may decline with a null pointer.
template <class T>
struct OrNull {
    T value;
};

// Text that becomes a memory block if the caller asks for it.
struct NarrowText {
    const char* purpose;
    std::string text;
};
struct WideText {
    const char* purpose;
    std::string_view text;  // UTF-8, alive until the call ends
};

// A value of a stream; the caller disposes of it.
struct NewValue {
    StreamRef of;
    model::Value value;
};

// A handle that may be null.
template <class T>
struct Maybe {
    std::optional<T> thing;
};

template <class T>
inline constexpr bool is_optional_result = false;
template <class T>
inline constexpr bool is_optional_result<OrNull<T>> = true;

template <class Result, class Pointer>
void require_result(Pointer pointer) {
    if (!is_optional_result<Result> && !pointer)
        throw model::Error(model::ErrorKind::bad_argument, "A pointer for a result is null.");
}

inline void give(HostState&, bool value, A_Boolean* out) {
    *out = value ? 1 : 0;
}
template <class Number>
requires std::is_integral_v<Number>
void give(HostState&, int value, Number* out) {
    *out = static_cast<Number>(value);
}

// Records are copied.
template <class Record>
requires std::is_class_v<Record>
void give(HostState&, Record value, Record* out) {
    *out = value;
}

inline void give(HostState&, void* address, void** out) {
    *out = address;
}

inline void give(HostState& host, model::Project* project, AEGP_ProjectH* out) {
    *out = project ? handle_of(host, *project) : nullptr;
}
inline void give(HostState& host, model::Item* item, AEGP_ItemH* out) {
    *out = item ? handle_of(host, *item) : nullptr;
}
inline void give(HostState& host, model::Comp* comp, AEGP_CompH* out) {
    *out = comp ? comp_handle_of(host, *comp) : nullptr;
}
inline void give(HostState& host, model::Layer* layer, AEGP_LayerH* out) {
    *out = layer ? handle_of(host, *layer) : nullptr;
}

// What the plug-in has to dispose of is entered in the ledger.
template <class T>
requires requires {
    T::kKind;
}
void give(HostState& host, T thing, typename T::Handle* out) {
    *out = host.ledger.record(std::move(thing));
}
template <class T>
void give(HostState& host, Maybe<T> result, typename T::Handle* out) {
    *out = result.thing ? host.ledger.record(std::move(*result.thing)) : nullptr;
}

inline void give(HostState& host, NarrowText text, AEGP_MemHandle* out) {
    *out = host.ledger.record(MemoryBlock::of_text(text.purpose, text.text));
}
inline void give(HostState& host, WideText text, AEGP_MemHandle* out) {
    *out = host.ledger.record(MemoryBlock::of_utf16_text(text.purpose, text.text));
}

inline void give(HostState& host, NewValue value, AEGP_StreamValue2* out) {
    out->val = to_plugin(value.value, value.of.stream->type());
    out->streamH = host.ledger.record(ValueRef{value.of});
}

template <class T, class Pointer>
void give(HostState& host, OrNull<T> result, Pointer out) {
    if (out) give(host, std::move(result.value), out);
}

}  // namespace host::suites
