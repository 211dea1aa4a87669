// The path of every call: counted, observed, run, failures turned into codes.
#pragma once

#include <string>
#include <string_view>

#include "host_state.h"
#include "suites/slot_facts.h"

namespace host::suites {

// Prints a call's arguments and results. One per C signature.
struct CallText {
    std::string (*arguments)(const HostState& host, const void* arguments);
    std::string (*outputs)(const HostState& host, const void* arguments);
};

// One function of a suite.
struct SlotEntry {
    const SlotFacts& slot;
    bool is_implemented;
    void (*run)(HostState& host, void* arguments);
    const CallText& text;
};

struct Invocation {
    const SlotEntry& entry;
    void* arguments;                     // a tuple of the C arguments
    std::string_view requested_suite{};  // see Call
};

A_Err dispatch(const Invocation& invocation) noexcept;

// The part with observers, which may refuse the call.
A_Err run_watched(HostState& host, const Invocation& invocation, std::uint64_t number);

}  // namespace host::suites
