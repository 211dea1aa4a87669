// Counts calls and refuses the selected ones.
#include "suites/fault_injector.h"

#include <utility>

namespace host::suites {

void FaultInjector::fail_call(std::uint64_t n, A_Err code, Lasting lasting, std::string function) {
    faults_.push_back({false, n, code, lasting, std::move(function)});
}

void FaultInjector::fail_acquisition(std::uint64_t n, A_Err code, Lasting lasting, std::string suite) {
    faults_.push_back({true, n, code, lasting, std::move(suite)});
}

std::optional<A_Err> FaultInjector::before(const SuiteCall& call) {
    const bool acquisition = call.is_basic() && call.function() == "AcquireSuite";
    if (call.is_basic() && !acquisition) return std::nullopt;
    ++(acquisition ? acquisitions_ : calls_);

    const std::string_view name = acquisition ? call.requested_suite() : call.function();
    std::optional<A_Err> code;
    for (Fault& fault : faults_) {
        if (fault.acquisition != acquisition || (!fault.name.empty() && fault.name != name)) continue;
        ++fault.seen;
        const bool strikes = fault.lasting == Lasting::once ? fault.seen == fault.n : fault.seen >= fault.n;
        if (strikes && !code) code = fault.code;
    }
    if (code)
        fired_.push_back((acquisition ? "AcquireSuite " : std::string(call.accessor()) + ".") + std::string(name));
    return code;
}

}  // namespace host::suites
