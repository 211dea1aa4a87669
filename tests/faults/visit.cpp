// Visits to a plug-in in one scenario.
#include "visit.h"

#include <stdexcept>

#include "runner/utf8_locale.h"

namespace faults {
namespace {

using host::suites::PluginFunction;
using validator::Act;

struct SceneStage : validator::Stage {
    explicit SceneStage(const Scenario& scenario) : scene(scenario.rules) { scenario.build(scene); }
    host::model::Project& project() override { return scene.project; }

    Scene scene;
};

validator::Situation situation_of(const Scenario& scenario) {
    return {
        .name = scenario.name,
        .sentence = scenario.name,
        .build = [&scenario] { return std::make_unique<SceneStage>(scenario); },
        .dialogs = [&scenario] { return std::make_unique<host::scriptui::ScriptedDriver>(scenario.choices.actions()); },
        .change_before_command = scenario.change_before_visit};
}

PluginFunction function_of(VisitedDoor door) {
    switch (door) {
        case VisitedDoor::entry_point:
            return PluginFunction::entry_point;
        case VisitedDoor::menu_update:
            return PluginFunction::update_menu_hook;
        case VisitedDoor::command:
            return PluginFunction::command_hook;
    }
    throw std::logic_error("no such door");
}

std::vector<Act> acts_of(VisitedDoor door) {
    if (door == VisitedDoor::entry_point) return {};
    if (door == VisitedDoor::menu_update) return {Act::update_menus};
    return {Act::command, Act::undo};
}

SweepVisit visit_of(const validator::VisitRecord& record, VisitedDoor door) {
    SweepVisit visit;
    visit.end = record.end;
    if (!record.has_finished()) return visit;
    const bool is_entry = door == VisitedDoor::entry_point;
    if (!is_entry && record.start.error != A_Err_NONE) throw std::runtime_error("the plug-in does not start");
    visit.outcome = is_entry ? record.start : record.outcomes.at(0);
    for (const MadeCall& call : visit.outcome.calls)
        if (call.made_in == function_of(door)) visit.calls.push_back(call);
    visit.is_group_left_open = visit.outcome.groups_left_open > 0;
    const std::uint64_t first = visit.calls.empty() ? 0 : visit.calls.front().number;
    for (const auto& handle : record.left)
        if (handle.made_by_call >= first) visit.left.push_back(handle);
    for (const auto& freed : record.freed_while_locked)
        if (freed.misused_by_call >= first) visit.freed_locked_by.push_back(freed.misused_by_call);
    for (const auto* list : {&record.disposed_twice, &record.used_after_disposal})
        for (const auto& misuse : *list)
            visit.misused.push_back("a " + std::string(name_of(misuse.kind)) + " by " + misuse.misused_by);
    visit.held = record.held;
    // One step back, as a person takes it, must be enough.
    if (visit.outcome.undo_steps.size() > 1)
        visit.not_restored = std::to_string(visit.outcome.undo_steps.size()) + " steps to take back";
    else if (door == VisitedDoor::command)
        visit.not_restored = record.outcomes.at(1).change;
    return visit;
}

}  // namespace

std::vector<const MadeCall*> of_kind(const std::vector<MadeCall>& calls, MadeCall::Kind kind) {
    std::vector<const MadeCall*> found;
    for (const MadeCall& call : calls)
        if (call.kind == kind) found.push_back(&call);
    return found;
}

void visit(const std::string& module, const Scenario& scenario, const std::vector<Fault>& faults, unsigned seconds,
           const std::function<void(const Fault&, const SweepVisit&)>& tell) {
    host::runner::use_utf8_locale();
    const validator::Situation situation = situation_of(scenario);
    std::vector<validator::VisitPlan> plans;
    for (Fault fault : faults) {
        fault.function = function_of(scenario.door);
        plans.push_back({.situation = &situation, .acts = acts_of(scenario.door), .fault = fault});
    }
    const validator::VisitLimits limits{std::chrono::seconds(seconds), std::chrono::seconds(seconds), std::nullopt};
    validator::make_visits(
        module, plans, limits, 1, [&](const validator::VisitPlan& plan, const validator::VisitRecord& record) {
            const std::string& problem = record.load_problem.empty() ? record.host_problem : record.load_problem;
            if (!problem.empty()) throw std::runtime_error(problem);
            tell(plan.fault, visit_of(record, scenario.door));
            return true;
        });
}

}  // namespace faults
