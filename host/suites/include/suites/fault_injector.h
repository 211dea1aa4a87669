// Makes selected calls fail as if the host had refused them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "suites/call.h"

namespace host::suites {

// Counts from its construction. Suite calls and acquisitions are counted separately; releases and the basic
// suite's other functions are neither counted nor failed.
class FaultInjector : public Observer {
  public:
    enum class Lasting { once, from_then_on };

    // The n-th suite call, from 1; with a function name, the n-th call of that function in any suite.
    void fail_call(std::uint64_t n, A_Err code, Lasting lasting = Lasting::once, std::string function = {});
    // The n-th AcquireSuite, from 1; with a table's type ("AEGP_LayerSuite5"), the n-th of that suite.
    void fail_acquisition(std::uint64_t n, A_Err code, Lasting lasting = Lasting::once, std::string suite = {});

    std::uint64_t calls_seen() const { return calls_; }
    std::uint64_t acquisitions_seen() const { return acquisitions_; }
    // The failed calls, as "LayerSuite5.AEGP_DeleteLayer" or "AcquireSuite AEGP_LayerSuite5".
    const std::vector<std::string>& fired() const { return fired_; }

    std::optional<A_Err> before(const SuiteCall& call) override;
    void after(const SuiteCall&) override {}

  private:
    struct Fault {
        bool acquisition;
        std::uint64_t n;
        A_Err code;
        Lasting lasting;
        std::string name;  // function or suite; empty for any
        std::uint64_t seen = 0;
    };

    std::vector<Fault> faults_;
    std::uint64_t calls_ = 0;
    std::uint64_t acquisitions_ = 0;
    std::vector<std::string> fired_;
};

}  // namespace host::suites
