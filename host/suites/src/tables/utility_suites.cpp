// Utility suites 3 and 6: messages, undo groups, scripts.
#include <tuple>
#include <utility>

#include "calls/slot.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

void report(HostState& host, Caller caller, std::string text) {
    if (!host.ports.report) refuse_as_unsupported("This session shows no messages.");
    host.ports.report(host.plugin_name(caller.id), text);
}

void start_undo_group(HostState& host, std::string name) {
    host.project.undo().begin_group(std::move(name));
}
void end_undo_group(HostState& host) {
    host.project.undo().end_group();
}

// Narrow text is UTF-8, so both encodings are the same. If the script fails, the call still succeeds, with an empty
// result, unless the rules are strict.
std::tuple<OrNull<NarrowText>, OrNull<NarrowText>> execute_script(HostState& host, Caller, std::string_view text,
                                                                  bool) {
    if (!host.ports.run_script) refuse_as_unsupported("This session runs no scripts.");
    ScriptReply outcome = host.ports.run_script(text);
    if (outcome.failed && host.project.rules().failing_script_is_an_error) refuse_state(outcome.error);
    return {{{"script result", outcome.failed ? std::string() : std::move(outcome.result)}},
            {{"script error", outcome.failed ? std::move(outcome.error) : std::string()}}};
}

template <class Suite>
Suite utility_suite() {
    Suite s = trapped_suite<Suite>();
    s.AEGP_ReportInfo = slot<&Suite::AEGP_ReportInfo, report>;
    s.AEGP_StartUndoGroup = slot<&Suite::AEGP_StartUndoGroup, start_undo_group>;
    s.AEGP_EndUndoGroup = slot<&Suite::AEGP_EndUndoGroup, end_undo_group>;
    if constexpr (requires { &Suite::AEGP_ReportInfoUnicode; })
        s.AEGP_ReportInfoUnicode = slot<&Suite::AEGP_ReportInfoUnicode, report>;
    if constexpr (requires { &Suite::AEGP_ExecuteScript; })
        s.AEGP_ExecuteScript = slot<&Suite::AEGP_ExecuteScript, execute_script>;
    return s;
}

}  // namespace

template <>
AEGP_UtilitySuite3 make_suite() {
    return utility_suite<AEGP_UtilitySuite3>();
}
template <>
AEGP_UtilitySuite6 make_suite() {
    return utility_suite<AEGP_UtilitySuite6>();
}

}  // namespace host::suites
