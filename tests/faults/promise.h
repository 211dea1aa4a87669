// What a plug-in promises about failing calls, in a form that can be checked.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "scenario.h"
#include "suites/ledger_report.h"
#include "visit.h"

namespace faults {

// A visit falls into parts: runs of calls for which one promise holds.
using Part = std::string_view;

// What becomes of a failed call's code. Dropped: the visit goes on and that code is never returned.
enum class Code { returned, dropped };

struct Rule {
    Part part;
    Code code;
    // Returned: the parts whose calls may still follow. Dropped: the parts whose calls may be missing afterwards.
    std::vector<Part> parts;
    // Returned: a function that is called in this pass as often as if nothing had failed; empty for none.
    std::string_view still_calls = {};
    // A suite that is missing here is reported even after an earlier failure.
    bool missing_suite_wins = false;
};

// A handle that is left to the host on purpose.
struct LeftToHost {
    Part made_in;
    host::suites::HandleKind kind;
};

// Follows a visit call by call and tells the parts.
class PartReader {
  public:
    virtual ~PartReader() = default;
    virtual Part part_of(const MadeCall& call) = 0;  // suite calls
    // The part in which a suite is asked for, before it is known for which call.
    virtual Part part_of_acquisition(std::string_view accessor) = 0;
    // A returned failure in that part: from here on only what must be done is done.
    virtual void note_failure(Part) {}
    virtual int pass() const { return 0; }  // counts up where the visit does the same again for another layer
};

struct Promise {
    std::vector<Rule> rules;
    std::vector<LeftToHost> left_to_host;
    std::vector<Part> frees_locked_memory_in;
    Part group_end;  // "" if no undo group is made; every returned failure that allows it must be followed by it
    std::function<std::unique_ptr<PartReader>(const Scenario&)> reader;

    const Rule& rule(Part part) const;  // throws std::logic_error if there is none
};

// This plug-in's.
Promise exflate_promise();

}  // namespace faults
