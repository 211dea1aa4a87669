// One visit to a plug-in under one fault.
#include "visit.h"

#include <algorithm>
#include <stdexcept>

#include "runner/utf8_locale.h"
#include "snapshot.h"
#include "suites/fault_injector.h"

namespace faults {
namespace {

using host::suites::FaultInjector;
using Lasting = FaultInjector::Lasting;

// What the host was asked for before the door opened: faults count from there.
struct Before {
    std::uint64_t calls = 0;
    std::uint64_t acquisitions = 0;
    std::vector<MadeCall> log;
};

std::uint64_t count_of(const std::vector<MadeCall>& calls, MadeCall::Kind kind, std::string_view accessor = {}) {
    return static_cast<std::uint64_t>(std::count_if(calls.begin(), calls.end(), [&](const MadeCall& call) {
        return call.kind == kind && (accessor.empty() || call.accessor == accessor);
    }));
}

void arm(FaultInjector& injector, const PlannedFault& fault, const Before& before, const SweepVisit* clean) {
    using Kind = MadeCall::Kind;
    const std::uint64_t call = before.calls + fault.n;
    const std::uint64_t acquisition = before.acquisitions + fault.n;
    switch (fault.kind) {
        case PlannedFault::Kind::none:
            return;
        case PlannedFault::Kind::call_once:
            return injector.fail_call(call, kFirstCode);
        case PlannedFault::Kind::call_from_then_on:
            injector.fail_call(call, kFirstCode);
            return injector.fail_call(call + 1, kLaterCode, Lasting::from_then_on);
        case PlannedFault::Kind::suite_once:
            return injector.fail_acquisition(acquisition, kRefusedSuite);
        case PlannedFault::Kind::suite_from_then_on: {
            const MadeCall* refused = of_kind(clean->calls, Kind::acquisition).at(fault.n - 1);
            std::uint64_t ordinal = count_of(before.log, Kind::acquisition, refused->accessor);
            for (const MadeCall& made : clean->calls) {
                if (made.kind == Kind::acquisition && made.accessor == refused->accessor) ++ordinal;
                if (&made == refused) break;
            }
            return injector.fail_acquisition(ordinal, kRefusedSuite, Lasting::from_then_on,
                                             "AEGP_" + std::string(refused->accessor));
        }
        case PlannedFault::Kind::call_then_no_suites: {
            std::uint64_t acquisitions = before.acquisitions;
            std::uint64_t calls = 0;
            for (const MadeCall& made : clean->calls) {
                if (made.kind == Kind::acquisition) ++acquisitions;
                if (made.kind == Kind::suite && ++calls == fault.n) break;
            }
            injector.fail_call(call, kFirstCode);
            return injector.fail_acquisition(acquisitions + 1, kRefusedSuite, Lasting::from_then_on);
        }
    }
}

host::runner::VisitResult open_door(host::runner::Session& session, const host::runner::PluginModule& module,
                                    VisitedDoor door) {
    switch (door) {
        case VisitedDoor::entry_point:
            return session.start(module);
        case VisitedDoor::menu_update:
            return session.update_menus();
        case VisitedDoor::command:
            return session.run_command(session.menu_items().at(0).command);
    }
    throw std::logic_error("no such door");
}

// An orderly start, up to the door.
void approach(host::runner::Session& session, const host::runner::PluginModule& module, const Scenario& scenario,
              Scene& scene) {
    if (scenario.door == VisitedDoor::entry_point) return;
    if (session.start(module).has_failed()) throw std::runtime_error("the plug-in does not start");
    session.update_menus();
    scenario.change_before_visit(scene);
}

std::string first_difference(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        const std::string was = i < before.size() ? before[i] : "nothing";
        const std::string is = i < after.size() ? after[i] : "nothing";
        if (was != is) return "was:" + was + " is:" + is;
    }
    return {};
}

// One step back, as a person takes it, must be enough.
std::string restore(Scene& scene, const host::runner::VisitResult& outcome, const std::vector<std::string>& before) {
    if (outcome.undo_steps.size() > 1) return std::to_string(outcome.undo_steps.size()) + " steps to take back";
    if (!outcome.undo_steps.empty()) scene.project.undo().undo();
    return first_difference(before, host::model::testing::snapshot(scene.project));
}

void read_ledger(const host::suites::LedgerReport& ledger, std::uint64_t calls_before, SweepVisit& visit) {
    for (const host::suites::HandedOut& handle : ledger.never_disposed) {
        if (handle.made_by_call > calls_before) visit.left.push_back(handle);
    }
    for (const host::suites::Misuse& freed : ledger.freed_while_locked) {
        if (freed.misused_by_call > calls_before) visit.freed_locked_by.push_back(freed.misused_by_call);
    }
    for (const auto* list : {&ledger.disposed_twice, &ledger.used_after_disposal}) {
        for (const host::suites::Misuse& misuse : *list) {
            visit.misused.push_back("a " + std::string(name_of(misuse.kind)) + " by " + misuse.misused_by);
        }
    }
}

}  // namespace

std::string PlannedFault::words() const {
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

std::vector<const MadeCall*> of_kind(const std::vector<MadeCall>& calls, MadeCall::Kind kind) {
    std::vector<const MadeCall*> found;
    for (const MadeCall& call : calls)
        if (call.kind == kind) found.push_back(&call);
    return found;
}

SweepVisit visit(const host::runner::PluginModule& module, const Scenario& scenario, const PlannedFault& fault,
                 const SweepVisit* clean) {
    host::runner::use_utf8_locale();
    Scene scene(scenario.rules);
    scenario.build(scene);
    scene.project.undo().clear();
    host::script::Settings settings = host::script::Settings::in_memory();
    host::scriptui::ScriptedDriver driver(scenario.choices.actions());
    host::runner::Session session(scene.project, settings, driver);
    approach(session, module, scenario, scene);

    // A command is picked from a menu that was just updated; those calls are another door's.
    Before before;
    CallLog log;
    if (scenario.door == VisitedDoor::command) {
        session.suites().add_observer(log);
        session.update_menus();
        session.suites().remove_observer(log);
        before.log = log.calls();
        before.calls = count_of(before.log, MadeCall::Kind::suite);
        before.acquisitions = count_of(before.log, MadeCall::Kind::acquisition);
    }
    const std::vector<std::string> project_before = host::model::testing::snapshot(scene.project);
    const std::size_t skipped = before.log.size();
    const std::uint64_t calls_before = session.suites().calls_made() + skipped;

    CallLog visit_log;
    FaultInjector injector;
    arm(injector, fault, before, clean);
    session.suites().add_observer(visit_log);
    session.suites().add_observer(injector);
    SweepVisit result;
    result.outcome = open_door(session, module, scenario.door);
    session.suites().remove_observer(injector);
    session.suites().remove_observer(visit_log);

    const auto first =
        visit_log.calls().begin() + static_cast<std::ptrdiff_t>(std::min(skipped, visit_log.calls().size()));
    result.calls.assign(first, visit_log.calls().end());
    for (const std::string& line : result.outcome.log) {
        if (line.find("open; the host closed") != std::string::npos) result.is_group_left_open = true;
    }
    read_ledger(session.suites().ledger(), calls_before, result);
    for (const host::suites::HeldSuite& suite : session.suites().suites_held()) result.held.push_back(suite.structure);
    result.not_restored = restore(scene, result.outcome, project_before);
    return result;
}

}  // namespace faults
