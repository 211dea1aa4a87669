// One visit to a plug-in in one scenario under one fault, and everything that came of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "call_log.h"
#include "runner/session.h"
#include "scenario.h"

namespace faults {

struct PlannedFault {
    enum class Kind {
        none,
        call_once,            // the n-th call
        call_from_then_on,    // that and every later one
        suite_once,           // the n-th acquisition
        suite_from_then_on,   // that and every later one of that suite
        call_then_no_suites,  // the n-th call, and every acquisition after it
    };
    Kind kind = Kind::none;
    std::uint64_t n = 0;

    std::string words() const;
};

// Codes that no host returns.
inline constexpr A_Err kFirstCode = 4711;   // the failing call
inline constexpr A_Err kLaterCode = 4712;   // calls refused after it
inline constexpr A_Err kRefusedSuite = 17;  // the plug-in may turn it into another code

struct SweepVisit {
    std::vector<MadeCall> calls;  // of the door alone
    host::runner::VisitResult outcome;
    bool is_group_left_open = false;
    std::vector<host::suites::HandedOut> left;   // handles made during the visit and never disposed of
    std::vector<std::uint64_t> freed_locked_by;  // numbers of the calls that freed locked memory
    std::vector<std::string> misused;            // handles disposed of twice or used after disposal
    std::vector<std::string> held;               // suites
    std::string not_restored;                    // how the project differs after undo; empty if it does not
};

// `clean` is the same scenario without a fault: it tells where calls and acquisitions stand. Null for that visit
// itself.
SweepVisit visit(const host::runner::PluginModule& module, const Scenario& scenario, const PlannedFault& fault,
                 const SweepVisit* clean);

// The suite calls and the acquisitions among them, in order.
std::vector<const MadeCall*> of_kind(const std::vector<MadeCall>& calls, MadeCall::Kind kind);

}  // namespace faults
