// The sweep: every fault of every kind in one scenario, each in a visit of its own.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "checks.h"

namespace faults {

struct Subject {
    std::string module;
    Promise promise;
};

inline constexpr Fault::Kind kSweptKinds[] = {
    Fault::Kind::call_once,          Fault::Kind::call_from_then_on,   Fault::Kind::suite_once,
    Fault::Kind::suite_from_then_on, Fault::Kind::call_then_no_suites,
};

struct Figures {
    std::uint64_t calls = 0;  // of the visit without a fault
    std::uint64_t acquisitions = 0;
    std::array<std::uint64_t, std::size(kSweptKinds)> swept{};  // visits, by kind
    std::uint64_t returned = 0;
    std::uint64_t dropped = 0;  // the visit went on and succeeded
    std::uint64_t broken = 0;   // visits with findings

    std::uint64_t visits() const;
    Figures& operator+=(const Figures& other);
};

struct SweepReport {
    Figures figures;
    std::uint64_t stride = 1;  // of the n that were taken
    // "call-swallowed: call 12 fails (moving out: LayerSuite5.AEGP_GetLayerParent): ...", one for each finding.
    std::vector<std::string> findings;
};

struct Effort {
    std::uint64_t most_per_kind = 0;  // visits for one kind of fault, chosen at an even stride; 0: all
    unsigned seconds_per_visit = 60;  // a longer one counts as hanging
};

// For an ordinary test run: bounded, unless EXFLATE_SWEEP is "full".
Effort usual_effort();

// Throws std::runtime_error if the plug-in cannot be swept at
// all.
SweepReport sweep(const Subject& subject, const Scenario& scenario, const Effort& effort = {});

}  // namespace faults
