// Calls between a plug-in and the host, and the observers that may watch or refuse them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "AE_GeneralPlug.h"
#include "suites/plugin_function.h"

namespace host::suites {

struct HostState;
struct Invocation;

// One call of a plug-in into the host. Lives as long as the call; text is made on demand.
class SuiteCall {
  public:
    SuiteCall(HostState& host, const Invocation& invocation, std::uint64_t number);
    SuiteCall(const SuiteCall&) = delete;

    std::string_view suite() const;     // the table's type: "AEGP_LayerSuite5", or "SPBasicSuite"
    std::string_view accessor() const;  // the same without its prefix: "LayerSuite5"
    std::string_view function() const;  // "AEGP_GetLayerName"
    // AcquireSuite and ReleaseSuite: the table's type; empty if the host has no such suite, and for all other
    // functions.
    std::string_view requested_suite() const;
    bool is_basic() const;                            // a function of the basic suite
    bool is_implemented() const;                      // false for a slot that returns "not implemented"
    std::uint64_t number() const { return number_; }  // 1 for the session's first call

    // The inputs, comma separated. Ask before the call runs, which may delete what they name.
    std::string arguments() const;
    // After the call: its results, comma separated; empty unless it succeeded.
    std::string outputs() const;

    // For observers that need more than text. The arguments are a std::tuple of the C function's parameter types and
    // live as long as the call.
    int slot() const;  // its number in the order of suites.def; -1 for the basic suite
    const void* raw_arguments() const;
    // The content of live memory; nullopt for any other handle. Valid until the plug-in or the host changes it.
    std::optional<std::span<const std::byte>> memory(AEGP_MemHandle handle) const;
    // The type of the stream behind the handle of a stream, a stream value or a keyframe batch;
    // AEGP_StreamType_NO_DATA if there is none.
    AEGP_StreamType stream_type(const void* handle) const;

    A_Err result() const { return result_; }                     // valid in after()
    bool is_injected() const { return injected_; }               // an observer refused it, so it did not run
    const std::string& complaint() const { return complaint_; }  // why it failed, in one sentence; empty on success

  private:
    friend A_Err run_watched(HostState& host, const Invocation& invocation, std::uint64_t number);

    HostState* host_;
    const Invocation* invocation_;
    std::uint64_t number_;
    A_Err result_ = A_Err_NONE;
    bool injected_ = false;
    std::string complaint_;
};

// One call of the host into a plug-in. The pointers are valid for the duration of the call.
struct PluginCall {
    PluginFunction function;
    AEGP_PluginID plugin;
    std::string_view plugin_name = {};
    AEGP_GlobalRefcon* global_refcon = nullptr;  // the plug-in's own, set by the entry point
    // Entry point
    A_long major = 0;
    A_long minor = 0;
    // Hooks
    const void* hook = nullptr;
    const void* refcon = nullptr;
    AEGP_WindowType window = AEGP_WindType_NONE;  // update-menu hook
    AEGP_Command command = 0;                     // command hook, as are the following
    AEGP_HookPriority priority = 0;
    A_Boolean already_handled = 0;
    const A_Boolean* handled = nullptr;
    const A_long* max_sleep = nullptr;  // idle hook: milliseconds until it wants to be asked again
};

// Sees every call in both directions. before() and entering() run in the order in which observers were added, after()
// and left() in reverse. Must not throw, and must be removed before it is destroyed.
class Observer {
  public:
    virtual ~Observer() = default;
    virtual void entering(const PluginCall&) {}
    virtual void left(const PluginCall&, A_Err /*result*/, bool /*has_thrown*/) {}
    // A code other than 0 is returned to the plug-in and the call does not run; the first such code counts.
    virtual std::optional<A_Err> before(const SuiteCall& call) = 0;
    virtual void after(const SuiteCall& call) = 0;
};

}  // namespace host::suites
