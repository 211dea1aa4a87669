// Rung 6: a person can take back what the command did.
#include <algorithm>

#include "examiner.h"
#include "findings.h"

namespace validator {
namespace {

constexpr const char* kOpen = "undo.group-closed";
constexpr const char* kUnbalanced = "undo.group-balanced";
constexpr const char* kInGroup = "undo.in-a-group";
constexpr const char* kOneStep = "undo.one-step";
constexpr const char* kRestores = "undo.restores";

const char* hook_words(Act act) {
    switch (act) {
        case Act::update_menus:
            return "its update-menu hook";
        case Act::idle:
            return "its idle hook";
        case Act::quit:
            return "its death hook";
        default:
            return "it";
    }
}

// Groups are left open by any function.
void examine_groups(Examiner& examiner, const CleanVisit& visit) {
    examiner.note_ok(kOpen);
    const auto look = [&](const Outcome& outcome, const std::string& who) {
        if (outcome.groups_left_open > 0)
            examiner.note(
                kOpen,
                {TestVerdict::failed, when(visit.plan) + who + " leaves " + std::to_string(outcome.groups_left_open) +
                                          " undo group(s) open: each AEGP_StartUndoGroup needs its "
                                          "AEGP_EndUndoGroup"},
                visit.plan, visit.record);
    };
    look(visit.record.start, "its entry point");
    for (std::size_t i = 0; i < visit.record.outcomes.size(); ++i)
        look(visit.record.outcomes[i], hook_words(visit.plan.acts[i]));
}

void examine_command(Examiner& examiner, const CleanVisit& visit) {
    const Outcome& outcome = *visit.command();
    const auto fail = [&](const char* test, TestVerdict verdict, const std::string& reason) {
        examiner.note(test, {verdict, when(visit.plan) + reason}, visit.plan, visit.record);
    };
    examiner.note_ok(kUnbalanced);
    for (const MadeCall& call : outcome.calls) {
        if (call.is("AEGP_EndUndoGroup") && call.result != A_Err_NONE)
            fail(kUnbalanced, TestVerdict::failed, "it ends an undo group when none is open");
    }
    examiner.note_ok(kInGroup);
    if (std::find(outcome.undo_steps.begin(), outcome.undo_steps.end(), "") != outcome.undo_steps.end())
        fail(kInGroup, TestVerdict::failed,
             "it changes the project outside an undo group: open a group before the first change and end it after "
             "the last");
    examiner.note_ok(kOneStep);
    if (outcome.undo_steps.size() > 1)
        fail(kOneStep, TestVerdict::warning,
             "a person has to undo " + std::to_string(outcome.undo_steps.size()) + " times to take one command back");
    const auto undone = std::find(visit.plan.acts.begin(), visit.plan.acts.end(), Act::undo);
    const auto at = static_cast<std::size_t>(undone - visit.plan.acts.begin());
    if (at != 1 || at >= visit.record.outcomes.size()) return;
    examiner.note_ok(kRestores);
    if (const std::string& change = visit.record.outcomes[at].change; !change.empty())
        fail(kRestores, TestVerdict::failed, "undo does not give the project back: " + change);
}

}  // namespace

const std::vector<TestFacts>& undo_tests() {
    static const std::vector<TestFacts> tests = {
        {kOpen, "every undo group is ended", 6},
        {kUnbalanced, "no undo group is ended that is not open", 6},
        {kInGroup, "the project is changed inside an undo group only", 6},
        {kOneStep, "one undo takes a command back", 6},
        {kRestores, "undo gives back the project as it was, in every detail", 6},
    };
    return tests;
}

bool examine_undo(Examiner& examiner) {
    for (const CleanVisit& visit : examiner.clean) {
        if (!visit.record.has_finished()) continue;
        examine_groups(examiner, visit);
        if (visit.plan.acts.empty() || visit.plan.acts.front() != Act::command) continue;
        if (visit.command()->is_enabled) examine_command(examiner, visit);
    }
    return true;
}

}  // namespace validator
