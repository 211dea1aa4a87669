// What a plug-in asked of the host, in order.
#include "call_log.h"

namespace faults {
namespace {

constexpr std::string_view kTypePrefix = "AEGP_";

bool has_telling_arguments(const host::suites::SuiteCall& call) {
    return call.accessor() == "MemorySuite1" || call.function() == "AEGP_ExecuteScript";
}

}  // namespace

std::string MadeCall::words() const {
    if (kind == Kind::suite) return std::string(accessor) + "." + std::string(function);
    return "the suite " + std::string(accessor);
}

std::optional<A_Err> CallLog::before(const host::suites::SuiteCall& call) {
    MadeCall made;
    made.number = call.number();
    made.accessor = call.accessor();
    made.function = call.function();
    if (call.is_basic()) {
        made.kind = call.function() == "AcquireSuite" ? MadeCall::Kind::acquisition : MadeCall::Kind::release;
        made.accessor = call.requested_suite();
        if (made.accessor.starts_with(kTypePrefix)) made.accessor.remove_prefix(kTypePrefix.size());
    } else if (has_telling_arguments(call)) {
        made.arguments = call.arguments();
    }
    calls_.push_back(std::move(made));
    return std::nullopt;
}

void CallLog::after(const host::suites::SuiteCall& call) {
    // Scripts make no calls, so the call that ends is the one that began last.
    calls_.back().result = call.result();
    calls_.back().injected = call.is_injected();
}

}  // namespace faults
