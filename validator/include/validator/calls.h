// What a plug-in asked of the host, in order, as records that can be judged afterwards and elsewhere.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "suites/call.h"

namespace validator {

using host::suites::PluginFunction;

struct MadeCall {
    enum class Kind : std::uint8_t { suite, acquisition, release };

    Kind kind = Kind::suite;
    PluginFunction made_in = PluginFunction::entry_point;  // the plug-in's function that was running
    std::uint64_t number = 0;                              // the host's
    std::string accessor;   // "LayerSuite5"; of acquisitions and releases the suite that is meant, or its name and
                            // version where the host has no such suite
    std::string function;   // "AEGP_GetLayerName"
    std::string arguments;  // only of scripts and of calls about memory
    A_Err result = A_Err_NONE;
    bool injected = false;
    bool is_offered = true;  // false: this host has no such function or suite

    bool is(std::string_view accessor_name, std::string_view function_name) const {
        return kind == Kind::suite && accessor == accessor_name && function == function_name;
    }
    bool is(std::string_view function_name) const { return kind == Kind::suite && function == function_name; }
    std::string words() const;  // "LayerSuite5.AEGP_DeleteLayer", "the suite LayerSuite5"
};

// Collects the calls of one session; of very many the first.
class CallLog : public host::suites::Observer {
  public:
    void entering(const host::suites::PluginCall& call) override { function_ = call.function; }
    void left(const host::suites::PluginCall& call, A_Err result, bool has_thrown) override;
    std::optional<A_Err> before(const host::suites::SuiteCall& call) override;
    void after(const host::suites::SuiteCall& call) override;

    // Those since the last time, and how many there were.
    std::vector<MadeCall> take();
    std::uint64_t take_count();
    // The first of the plug-in's functions since the last time that returned an error or threw; the entry point if
    // none.
    PluginFunction take_failed();

  private:
    static constexpr std::size_t kMostKept = 50'000;

    PluginFunction function_ = PluginFunction::entry_point;
    std::vector<MadeCall> calls_;
    std::uint64_t count_ = 0;
    bool has_failed_ = false;
    PluginFunction failed_ = PluginFunction::entry_point;
};

}  // namespace validator
