// Turns the arguments of a C call into a function's parameters.
#pragma once

#include <string>
#include <string_view>

#include "AE_GeneralPlug.h"
#include "base/unicode.h"
#include "handles/held.h"
#include "handles/objects.h"
#include "host_state.h"
#include "model/comp.h"
#include "model/error.h"
#include "text.h"
#include "times.h"

namespace host::suites {

// The plug-in named as the caller.
struct Caller {
    AEGP_PluginID id;
};

// A handle that the function disposes of.
template <class T>
struct HandleOf {
    RawHandle handle;
};

[[noreturn]] inline void refuse_null(const char* what) {
    throw model::Error(model::ErrorKind::bad_argument, std::string("The ") + what + " is null.");
}

// Numbers, and pointers, which may be null.
template <class Parameter>
struct Take {
    template <class Argument>
    static Parameter from(HostState&, Argument argument) {
        return argument;
    }
};

template <>
struct Take<bool> {
    static bool from(HostState&, A_Boolean argument) { return argument != 0; }
};

// A record, which must not be null.
template <class Record>
struct Take<Record&> {
    static Record& from(HostState&, Record* argument) {
        if (!argument) refuse_null("record or time");
        return *argument;
    }
};

template <>
struct Take<Caller> {
    static Caller from(HostState&, AEGP_PluginID id) { return {id}; }
};

// Any number except that of layer time means composition time, unless the rules are strict.
template <>
struct Take<TimeMode> {
    static TimeMode from(HostState& host, AEGP_LTimeMode mode) {
        const bool known = mode == AEGP_LTimeMode_LayerTime || mode == AEGP_LTimeMode_CompTime;
        if (!known && host.project.rules().unknown_time_mode == model::UnknownTimeMode::error)
            throw model::Error(model::ErrorKind::bad_argument, "There is no time mode " + std::to_string(mode) + ".");
        return mode == AEGP_LTimeMode_LayerTime ? TimeMode::layer : TimeMode::comp;
    }
};

// Text of either width becomes UTF-8.
template <>
struct Take<std::string> {
    static std::string from(HostState&, const A_char* text) {
        if (!text) refuse_null("text");
        return text;
    }
    static std::string from(HostState&, const A_UTF16Char* text) {
        if (!text) refuse_null("text");
        return base::utf8_from_utf16(from_plugin(text));
    }
};

// Narrow text, valid during the call.
template <>
struct Take<std::string_view> {
    static std::string_view from(HostState&, const A_char* text) {
        if (!text) refuse_null("text");
        return text;
    }
};

template <>
struct Take<model::Project&> {
    static model::Project& from(HostState& host, AEGP_ProjectH handle) { return living_project(host, handle); }
};

template <>
struct Take<model::Item&> {
    static model::Item& from(HostState& host, AEGP_ItemH handle) { return living_item(host, handle); }
};

template <>
struct Take<model::Comp&> {
    static model::Comp& from(HostState& host, AEGP_CompH handle) { return living_comp(host, handle); }
};

template <>
struct Take<model::Layer&> {
    static model::Layer& from(HostState& host, AEGP_LayerH handle) { return living_layer(host, handle); }
};

template <>
struct Take<model::Layer*> {
    static model::Layer* from(HostState& host, AEGP_LayerH handle) {
        return handle ? &living_layer(host, handle) : nullptr;
    }
};

template <>
struct Take<StreamRef> {
    static StreamRef from(HostState& host, AEGP_StreamRefH handle) { return living_stream(host, handle); }
};

template <>
struct Take<EffectRef> {
    static EffectRef from(HostState& host, AEGP_EffectRefH handle) { return living_effect(host, handle); }
};

template <class T>
struct TakeHeld {
    static T& from(HostState& host, typename T::Handle handle) { return host.ledger.find<T>(raw(handle)); }
};
template <>
struct Take<Collection&> : TakeHeld<Collection> {};
template <>
struct Take<MemoryBlock&> : TakeHeld<MemoryBlock> {};
template <>
struct Take<KeyframeBatch&> : TakeHeld<KeyframeBatch> {};
template <>
struct Take<SolidFootage&> : TakeHeld<SolidFootage> {};

template <class T>
struct Take<HandleOf<T>> {
    static HandleOf<T> from(HostState&, typename T::Handle handle) { return {raw(handle)}; }
};

}  // namespace host::suites
