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

struct Invocation {
    const SlotFacts& slot;
    bool is_implemented;
    std::string_view requested_suite;  // see Call
    void* arguments;                   // a tuple of the C arguments
    void (*run)(HostState& host, void* arguments);
    const CallText& text;
};

A_Err dispatch(const Invocation& invocation) noexcept;

}  // namespace host::suites
