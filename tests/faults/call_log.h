// What a plug-in asked of the host, in order, as records that can be judged afterwards.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "suites/call.h"

namespace faults {

struct MadeCall {
    enum class Kind { suite, acquisition, release };

    Kind kind = Kind::suite;
    std::uint64_t number = 0;   // the host's
    std::string_view accessor;  // "LayerSuite5"; of acquisitions and releases the suite that is meant
    std::string_view function;
    std::string arguments;  // only of scripts and of calls about memory
    A_Err result = A_Err_NONE;
    bool injected = false;

    bool is(std::string_view accessor_name, std::string_view function_name) const {
        return kind == Kind::suite && accessor == accessor_name && function == function_name;
    }
    bool is(std::string_view function_name) const { return kind == Kind::suite && function == function_name; }
    std::string words() const;  // "LayerSuite5.AEGP_DeleteLayer", "the suite LayerSuite5"
};

class CallLog : public host::suites::Observer {
  public:
    std::optional<A_Err> before(const host::suites::SuiteCall& call) override;
    void after(const host::suites::SuiteCall& call) override;

    const std::vector<MadeCall>& calls() const { return calls_; }

  private:
    std::vector<MadeCall> calls_;
};

}  // namespace faults
