// The checks of the sweep: was a failing call treated as promised?
#pragma once

#include <string>
#include <vector>

#include "promise.h"
#include "visit.h"

namespace faults {

// A check that a visit did not pass.
struct FailedCheck {
    std::string check;     // its id, below
    std::string sentence;  // what was seen
};

// Ids and what each asks; "lives" is seen from outside, by the sweep.
inline constexpr std::pair<std::string_view, std::string_view> kChecks[] = {
    {"lives", "the visit comes to its end"},
    {"exception", "no exception leaves the plug-in"},
    {"error-swallowed", "a failure that counts is returned"},
    {"code-changed", "the code returned is that of the first failure that counts"},
    {"run-stopped", "a failure that is dropped on purpose changes nothing but its own part"},
    {"calls-after", "after a failure only the calls that must be made are made"},
    {"undo-group", "the undo group is ended after a failed call, and left to the host after a missing suite"},
    {"suite-held", "every suite is released"},
    {"handle-left", "no handle is left but those promised and those held when the call failed"},
    {"handle-locked", "no memory stays locked, or is freed locked, but where promised"},
    {"handle-misused", "no handle is disposed of twice or used afterwards"},
    {"not-handled", "the command counts as handled"},
    {"not-undone", "one undo gives the project back"},
};

enum class Ending { clean, returned, dropped };  // dropped: the visit went on

struct Judgement {
    Ending ending = Ending::clean;
    std::string where;  // the part and the call of the first failure; empty if nothing failed
    std::vector<FailedCheck> findings;
};

Judgement judge(const Promise& promise, const Scenario& scenario, const Fault& fault, const SweepVisit& visit,
                const SweepVisit& clean);

}  // namespace faults
