// The arguments of a C call as text.
#pragma once

#include <string>
#include <tuple>
#include <type_traits>

#include "AE_GeneralPlug.h"
#include "base/number_text.h"
#include "base/unicode.h"
#include "calls/dispatch.h"
#include "handles/handle.h"
#include "handles/objects.h"
#include "numbers.h"
#include "text.h"

namespace host::suites {

std::string show(const HostState& host, const A_Time& time);
std::string show(const HostState& host, const A_Ratio& ratio);
std::string show(const HostState& host, const AEGP_ColorVal& color);
std::string show(const HostState& host, const AEGP_StreamValue2& value);
std::string show(const HostState& host, const AEGP_KeyframeEase& ease);
std::string show(const HostState& host, const AEGP_CollectionItemV2& item);
std::string show(const HostState& host, const AEGP_FootageInterp& interpretation);

// Whether the host returns a result through a pointer of this type.
template <class Pointer>
inline constexpr bool is_output =
    std::is_pointer_v<Pointer> && !is_handle<Pointer> && !std::is_const_v<std::remove_pointer_t<Pointer>> &&
    !std::is_function_v<std::remove_pointer_t<Pointer>> && !std::is_void_v<std::remove_pointer_t<Pointer>>;
// False for opaque types: reference constants and the like.
template <class T, class = void>
inline constexpr bool is_known_type = false;
template <class T>
inline constexpr bool is_known_type<T, std::void_t<decltype(sizeof(T))>> = true;

template <class T>
std::string show_value(const HostState& host, const T& value) {
    if constexpr (is_handle<T>) {
        return describe(host, raw(value));
    } else if constexpr (std::is_floating_point_v<T>) {
        return base::shortest_text(value);
    } else if constexpr (std::is_arithmetic_v<T>) {
        return std::to_string(value);
    } else if constexpr (std::is_pointer_v<T>) {
        return value ? "pointer" : "null";
    } else if constexpr (requires { show(host, value); }) {
        return show(host, value);
    } else {
        return "record";
    }
}

template <class Pointer>
std::string show_input(const HostState& host, Pointer argument) {
    if constexpr (std::is_same_v<Pointer, const A_char*>) {
        return argument ? quoted(argument) : "null";
    } else if constexpr (std::is_same_v<Pointer, const A_UTF16Char*>) {
        return argument ? quoted(base::utf8_from_utf16(from_plugin(argument))) : "null";
    } else if constexpr (std::is_pointer_v<Pointer> && !is_handle<Pointer>) {
        using Pointee = std::remove_cv_t<std::remove_pointer_t<Pointer>>;
        if constexpr (is_known_type<Pointee>)
            return argument ? show_value<Pointee>(host, *argument) : "null";
        else
            return argument ? "pointer" : "null";
    } else {
        return show_value(host, argument);
    }
}

template <class Pointer>
std::string show_output(const HostState& host, Pointer argument) {
    using Pointee = std::remove_pointer_t<Pointer>;
    if (!argument) return "null";
    if constexpr (std::is_same_v<Pointer, A_char*>)
        return quoted(argument);
    else if constexpr (std::is_same_v<Pointer, A_Boolean*>)
        return *argument ? "true" : "false";
    else if constexpr (is_known_type<Pointee>)
        return show_value<Pointee>(host, *argument);
    else
        return "pointer";
}

// With kRecordsAreInputs, AEGP_StreamValue2* counts as an argument and not as an output.
template <bool kRecordsAreInputs, class... Args>
struct ArgumentText {
    template <class C>
    static constexpr bool kIsOutput = is_output<C> && !(kRecordsAreInputs && std::is_same_v<C, AEGP_StreamValue2*>);

    static std::string arguments(const HostState& host, const void* arguments) {
        return joined<false>(host, arguments);
    }
    static std::string outputs(const HostState& host, const void* arguments) { return joined<true>(host, arguments); }

    static constexpr CallText text{&ArgumentText::arguments, &ArgumentText::outputs};

  private:
    template <bool kWantOutputs>
    static std::string joined(const HostState& host, const void* arguments) {
        std::string all;
        const auto append = [&]<class C>(C argument) {
            if constexpr (kIsOutput<C> == kWantOutputs) {
                if (!all.empty()) all += ", ";
                if constexpr (kWantOutputs)
                    all += show_output(host, argument);
                else
                    all += show_input(host, argument);
            }
        };
        std::apply([&](auto... each) { (append(each), ...); }, *static_cast<const std::tuple<Args...>*>(arguments));
        static_cast<void>(append);
        return all;
    }
};

}  // namespace host::suites
