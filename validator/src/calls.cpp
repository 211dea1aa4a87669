// What a plug-in asked of the host, in order.
#include "validator/calls.h"

#include <utility>

namespace validator {
namespace {

constexpr std::string_view kTypePrefix = "AEGP_";

bool has_telling_arguments(const host::suites::SuiteCall& call) {
    return call.accessor() == "MemorySuite1" || call.function() == "AEGP_ExecuteScript";
}

std::string requested(const host::suites::SuiteCall& call) {
    std::string_view suite = call.requested_suite();
    if (suite.empty()) {
        const std::string arguments = call.arguments();
        const std::string name_and_version = arguments.substr(0, arguments.find(", ", arguments.rfind('"')));
        const std::size_t version = arguments.find(", ", name_and_version.size());
        if (version == std::string::npos) return name_and_version;
        return name_and_version + " version " +
               arguments.substr(version + 2, arguments.find(',', version + 2) - version - 2);
    }
    if (suite.starts_with(kTypePrefix)) suite.remove_prefix(kTypePrefix.size());
    return std::string(suite);
}

}  // namespace

std::string MadeCall::words() const {
    if (kind == Kind::suite) return accessor + "." + function;
    return "the suite " + accessor;
}

std::optional<A_Err> CallLog::before(const host::suites::SuiteCall& call) {
    if (++count_ > kMostKept) return std::nullopt;
    MadeCall made;
    made.made_in = function_;
    made.number = call.number();
    made.accessor = call.accessor();
    made.function = call.function();
    made.is_offered = call.is_implemented();
    if (call.is_basic()) {
        made.kind = call.function() == "AcquireSuite" ? MadeCall::Kind::acquisition : MadeCall::Kind::release;
        made.is_offered = made.kind != MadeCall::Kind::acquisition || !call.requested_suite().empty();
        if (call.function() == "AcquireSuite" || call.function() == "ReleaseSuite") made.accessor = requested(call);
    } else if (has_telling_arguments(call)) {
        made.arguments = call.arguments();
    }
    calls_.push_back(std::move(made));
    return std::nullopt;
}

void CallLog::after(const host::suites::SuiteCall& call) {
    if (count_ > kMostKept) return;
    // Scripts make no calls, so the call that ends is the one that began last.
    calls_.back().result = call.result();
    calls_.back().injected = call.is_injected();
}

void CallLog::left(const host::suites::PluginCall& call, A_Err result, bool has_thrown) {
    if (has_failed_ || (result == A_Err_NONE && !has_thrown)) return;
    has_failed_ = true;
    failed_ = call.function;
}

std::vector<MadeCall> CallLog::take() {
    return std::exchange(calls_, {});
}

std::uint64_t CallLog::take_count() {
    return std::exchange(count_, 0);
}

PluginFunction CallLog::take_failed() {
    has_failed_ = false;
    return std::exchange(failed_, PluginFunction::entry_point);
}

}  // namespace validator
