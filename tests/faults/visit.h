// One visit to a plug-in in one scenario under one fault, and everything that came of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scenario.h"
#include "validator/visit.h"

namespace faults {

using validator::Fault;
using validator::MadeCall;

struct SweepVisit {
    host::base::ProcessEnd end;   // how the process ended; if it did not finish, there is nothing else
    std::vector<MadeCall> calls;  // of the door alone
    validator::Outcome outcome;
    bool is_group_left_open = false;
    std::vector<host::suites::HandedOut> left;   // handles made during the visit and never disposed of
    std::vector<std::uint64_t> freed_locked_by;  // numbers of the calls that freed locked memory
    std::vector<std::string> misused;            // handles disposed of twice or used after disposal
    std::vector<std::string> held;               // suites
    std::string not_restored;                    // how the project differs after undo; empty if it does not
};

// Visits under each of the faults, each in a process of its own, told in their order; Fault() is none. Throws
// std::runtime_error if the plug-in does not start.
void visit(const std::string& module, const Scenario& scenario, const std::vector<Fault>& faults, unsigned seconds,
           const std::function<void(const Fault&, const SweepVisit&)>& tell);

// The suite calls and the acquisitions among them, in order.
std::vector<const MadeCall*> of_kind(const std::vector<MadeCall>& calls, MadeCall::Kind kind);

}  // namespace faults
