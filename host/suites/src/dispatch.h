// The way of every call: counted, watched, run, its failure turned into a code.
#pragma once

#include <string>
#include <string_view>

#include "host_state.h"
#include "suites/slot_facts.h"

namespace host::suites {

// How a call's arguments read as text. One for each C signature.
struct CallText {
    std::string (*arguments)(const HostState& host, const void* arguments);
    std::string (*outputs)(const HostState& host, const void* arguments);
};

// What is the same for every call of one function.
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

// The part of it that observers see: they may refuse the call, and hear what became of it.
A_Err run_watched(HostState& host, const Invocation& invocation, std::uint64_t number);

}  // namespace host::suites
