// One failure that is made to happen while a function of the plug-in runs.
#include "validator/fault.h"

#include <stdexcept>

namespace validator {

std::string Fault::words() const {
    const std::string number = std::to_string(n);
    switch (kind) {
        case Kind::none:
            return "no fault";
        case Kind::call_once:
            return "call " + number + " fails";
        case Kind::call_from_then_on:
            return "call " + number + " and all later ones fail";
        case Kind::suite_once:
            return "acquisition " + number + " is refused";
        case Kind::suite_from_then_on:
            return "the suite of acquisition " + number + " is missing from there on";
        case Kind::call_then_no_suites:
            return "call " + number + " fails and no suite is given after it";
    }
    throw std::logic_error("no such fault");
}

void FaultMaker::entering(const host::suites::PluginCall& call) {
    is_counting_ = !is_over_ && call.function == fault_.function;
}

void FaultMaker::left(const host::suites::PluginCall&, A_Err, bool) {
    is_over_ = is_over_ || is_counting_;
    is_counting_ = false;
}

std::optional<A_Err> FaultMaker::before(const host::suites::SuiteCall& call) {
    if (!is_counting_ || fault_.kind == Fault::Kind::none) return std::nullopt;
    if (!call.is_basic()) return fail_call();
    return call.function() == "AcquireSuite" ? refuse_suite(call.requested_suite()) : std::nullopt;
}

std::optional<A_Err> FaultMaker::fail_call() {
    if (counts_suites(fault_.kind)) return std::nullopt;
    ++calls_;
    if (calls_ == fault_.n) return kFirstCode;
    if (calls_ > fault_.n && fault_.kind == Fault::Kind::call_from_then_on) return kLaterCode;
    return std::nullopt;
}

std::optional<A_Err> FaultMaker::refuse_suite(std::string_view suite) {
    if (fault_.kind == Fault::Kind::call_then_no_suites && calls_ >= fault_.n) return kRefusedSuite;
    if (!counts_suites(fault_.kind)) return std::nullopt;
    if (++acquisitions_ == fault_.n) {
        missing_ = suite;
        return kRefusedSuite;
    }
    const bool is_gone =
        fault_.kind == Fault::Kind::suite_from_then_on && acquisitions_ > fault_.n && suite == missing_;
    return is_gone ? std::optional(kRefusedSuite) : std::nullopt;
}

}  // namespace validator
