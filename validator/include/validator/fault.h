// One failure that is made to happen while a function of the plug-in runs.
#pragma once

#include <cstdint>
#include <string>

#include "suites/call.h"

namespace validator {

struct Fault {
    enum class Kind : std::uint8_t {
        none,
        call_once,            // the n-th call
        call_from_then_on,    // that and every later one
        suite_once,           // the n-th acquisition
        suite_from_then_on,   // that and every later one of that suite
        call_then_no_suites,  // the n-th call, and every acquisition after it
    };
    Kind kind = Kind::none;
    std::uint64_t n = 0;  // from 1, counted in the first run of the function
    host::suites::PluginFunction function = host::suites::PluginFunction::command_hook;

    // "call 3 fails"
    std::string words() const;
};

// Whether the n of such a fault counts acquisitions, not calls of suites.
constexpr bool counts_suites(Fault::Kind kind) {
    return kind == Fault::Kind::suite_once || kind == Fault::Kind::suite_from_then_on;
}

// Codes that no host returns.
inline constexpr A_Err kFirstCode = 4711;   // the failing call
inline constexpr A_Err kLaterCode = 4712;   // calls refused after it
inline constexpr A_Err kRefusedSuite = 17;  // the plug-in may turn it into another code

// Makes it happen.
class FaultMaker : public host::suites::Observer {
  public:
    explicit FaultMaker(const Fault& fault) : fault_(fault) {}

    void entering(const host::suites::PluginCall& call) override;
    void left(const host::suites::PluginCall& call, A_Err result, bool has_thrown) override;
    std::optional<A_Err> before(const host::suites::SuiteCall& call) override;
    void after(const host::suites::SuiteCall&) override {}

  private:
    std::optional<A_Err> fail_call();
    std::optional<A_Err> refuse_suite(std::string_view suite);

    Fault fault_;
    bool is_counting_ = false;
    bool is_over_ = false;  // the function has run
    std::uint64_t calls_ = 0;
    std::uint64_t acquisitions_ = 0;
    std::string missing_;
};

}  // namespace validator
