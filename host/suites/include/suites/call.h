// One call of a plug-in into the host, and who may watch or refuse it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "A.h"

namespace host::suites {

struct HostState;
struct Invocation;

// Lives as long as the call. Text is made only when asked for.
class Call {
  public:
    Call(HostState& host, const Invocation& invocation, std::uint64_t number);
    Call(const Call&) = delete;

    std::string_view suite() const;     // the table's type: "AEGP_LayerSuite5", or "SPBasicSuite"
    std::string_view accessor() const;  // the same without its prefix: "LayerSuite5"
    std::string_view function() const;  // "AEGP_GetLayerName"
    // AcquireSuite and ReleaseSuite: the table's type asked for, empty when the host has none of that name and version.
    // Empty for every other function.
    std::string_view requested_suite() const;
    bool is_basic() const;                            // a function of the basic suite
    bool is_implemented() const;                      // false for a slot that only answers "not implemented"
    std::uint64_t number() const { return number_; }  // 1 for the session's first call

    // The inputs, comma separated. Ask before the call runs: it may delete what they name.
    std::string arguments() const;
    // After the call: the values it gave, comma separated; empty unless it succeeded.
    std::string outputs() const;

    A_Err result() const { return result_; }                     // valid in after()
    bool is_injected() const { return injected_; }               // an observer refused it, it never ran
    const std::string& complaint() const { return complaint_; }  // why it failed, one sentence; empty on success

  private:
    friend A_Err dispatch(const Invocation& invocation) noexcept;

    HostState* host_;
    const Invocation* invocation_;
    std::uint64_t number_;
    A_Err result_ = A_Err_NONE;
    bool injected_ = false;
    std::string complaint_;
};

// Sees every call: before() in the order in which observers were added, after() in the opposite order. An observer must
// not throw and must outlive its place in the host.
class Observer {
  public:
    virtual ~Observer() = default;
    // A code other than 0 is returned to the plug-in instead of running the call; the first observer that gives one
    // decides.
    virtual std::optional<A_Err> before(const Call& call) = 0;
    virtual void after(const Call& call) = 0;
};

}  // namespace host::suites
