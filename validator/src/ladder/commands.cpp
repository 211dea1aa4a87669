// Rungs 3 and 4: commands where there is nothing to work on, and on what people have every day.
#include <algorithm>
#include <optional>

#include "base/printable.h"
#include "examiner.h"
#include "findings.h"
#include "suites/error_codes.h"

namespace validator {
namespace {

constexpr const char* kEmpty = "empty.";
constexpr const char* kTypical = "typical.";
constexpr const char* kEnabled = "typical.enabled";
constexpr const char* kHandled = "typical.handled";
constexpr const char* kExceptions = "typical.exceptions";
constexpr const char* kMainThread = "typical.main-thread";
constexpr const char* kCalls = "typical.calls";
constexpr const char* kQuiet = "typical.quiet";
constexpr const char* kCancelled = "typical.cancelled";
constexpr const char* kSwitched = "typical.switched";
constexpr const char* kSecondRun = "typical.second-run";
constexpr const char* kAfterUndo = "typical.run-after-undo";
constexpr const char* kInFront = "typical.composition-in-front";
constexpr const char* kDeleted = "typical.after-deletion";
constexpr const char* kProcesses = "typical.processes";

std::string command_words(const Examiner& examiner, std::size_t item) {
    const auto& items = examiner.registered().items;
    return items.size() == 1 ? "command hook" : "command '" + items[item].text + "'";
}

// The situation's own test: does the command do its work there, or decline?
void examine_situation(Examiner& examiner, const std::string& test, const VisitPlan& plan, const VisitRecord& record) {
    if (const auto bad = bad_end(plan, record, examiner.request().limits))
        return examiner.note(test, *bad, plan, record);
    const Outcome& outcome = record.outcomes.front();
    if (!outcome.is_enabled) {
        if (test.starts_with(kEmpty)) return examiner.note_ok(test);
        return examiner.note_not_applicable(test,
                                            "the command is disabled " + when(plan).substr(0, when(plan).size() - 2));
    }
    const std::string function = command_words(examiner, plan.item);
    if (const auto thrown = exception_in(plan, outcome, function)) return examiner.note(test, *thrown, plan, record);
    if (const auto error = error_in(plan, outcome, function)) return examiner.note(test, *error, plan, record);
    examiner.note_ok(test);
}

bool is_only_printing(const VisitRecord& record) {
    return record.has_finished() && !record.printed.empty();
}

// What goes for every visit.
void examine_surroundings(Examiner& examiner, const VisitPlan& plan, const VisitRecord& record) {
    if (is_only_printing(record))
        examiner.note(kQuiet,
                      {TestVerdict::warning, "it writes to the standard streams, where no user looks: " +
                                                 host::base::in_quotes(record.printed.substr(0, 60))},
                      plan, record);
    else
        examiner.note_ok(kQuiet);
    if (record.has_left_processes)
        examiner.note(
            kProcesses,
            {TestVerdict::failed, when(plan) + "it starts a process that still runs when the plug-in has been "
                                               "unloaded: end it, at the latest in the death hook"},
            plan, record);
    else
        examiner.note_ok(kProcesses);
}

// What goes for the command wherever it runs.
void examine_manners(Examiner& examiner, const VisitPlan& plan, const VisitRecord& record) {
    examine_surroundings(examiner, plan, record);
    const Outcome* outcome = record.outcomes.empty() ? nullptr : &record.outcomes.front();
    if (outcome == nullptr || !outcome->is_enabled) return;
    examiner.note_ok(kEnabled);
    if (const auto thrown = exception_in(plan, *outcome, command_words(examiner, plan.item)))
        examiner.note(kExceptions, *thrown, plan, record);
    else
        examiner.note_ok(kExceptions);
    if (outcome->is_handled || outcome->error != A_Err_NONE)
        examiner.note_ok(kHandled);
    else
        examiner.note(
            kHandled,
            {TestVerdict::failed, when(plan) + "it does not say that it handled its own command: set *handledPB"}, plan,
            record);
    examiner.note_ok(kMainThread);
    examiner.note_ok(kCalls);
    if (!outcome->script_problems.empty())
        examiner.note(kCalls,
                      {TestVerdict::warning, when(plan) +
                                                 "a script of it failed here, so the command was perhaps not "
                                                 "tried: " +
                                                 outcome->script_problems.front()},
                      plan, record);
    for (const Refusal& refusal : outcome->refusals) {
        if (refusal.code == host::suites::kWrongThread)
            examiner.note(kMainThread,
                          {TestVerdict::failed, when(plan) + "it called " + refusal.function +
                                                    " from a thread of its own; the host may be called from "
                                                    "the main thread only"},
                          plan, record);
        else if (refusal.code == host::suites::kBadArgument || refusal.code == host::suites::kNotAllowed)
            examiner.note(
                kCalls,
                {TestVerdict::warning, when(plan) + "the host refused " + refusal.function + ": " + refusal.sentence},
                plan, record);
    }
}

std::vector<VisitPlan> plans_of(const Examiner& examiner, const std::vector<Situation>& situations) {
    std::vector<VisitPlan> plans;
    for (const std::size_t item : examiner.items)
        for (const Situation& situation : situations)
            plans.push_back(
                {.situation = &situation, .acts = examiner.to_the_end({Act::command, Act::undo}), .item = item});
    return plans;
}

bool is_enabled(const Examiner& examiner, std::size_t item, const std::string& situation) {
    return std::any_of(examiner.clean.begin(), examiner.clean.end(), [&](const CleanVisit& visit) {
        return visit.item == item && visit.situation->name == situation &&
               (visit.command() == nullptr || visit.command()->is_enabled);
    });
}

// Until the first one hangs: more would take minutes and say the same.
void examine_plans(Examiner& examiner, const std::string& prefix, const std::vector<VisitPlan>& plans) {
    for (const std::size_t item : examiner.items) {
        std::vector<VisitPlan> of_item = plans;
        std::erase_if(of_item, [&](const VisitPlan& plan) { return plan.item != item; });
        bool has_ever_hung = prefix == kTypical && examiner.hanging.contains(item);
        if (!has_ever_hung)
            examiner.visit(of_item, [&](const VisitPlan& plan, const VisitRecord& record) {
                examine_situation(examiner, prefix + plan.situation->name, plan, record);
                examine_manners(examiner, plan, record);
                examiner.clean.push_back({plan.situation, plan.item, plan, record});
                has_ever_hung = has_hung(record);
                return !has_ever_hung;
            });
        if (!has_ever_hung) continue;
        if (prefix == kTypical) examiner.hanging.insert(item);
        for (const VisitPlan& plan : of_item) examiner.note_not_applicable(prefix + plan.situation->name, kHangs);
    }
}

const CleanVisit* good_visit(const Examiner& examiner, std::size_t item, const std::string& situation = {}) {
    for (const CleanVisit& visit : examiner.clean) {
        const bool is_meant = situation.empty() ? visit.command() != nullptr && !visit.command()->change.empty()
                                                : visit.situation->name == situation;
        if (visit.item == item && is_meant && visit.is_good()) return &visit;
    }
    return nullptr;
}

// Runs the acts and looks at the last command among them, as `judge` does.
template <class Judge>
void examine_course(Examiner& examiner, const std::string& test, const CleanVisit& clean, std::vector<Act> acts,
                    std::size_t last, Judge judge) {
    VisitPlan plan{.situation = clean.situation, .acts = examiner.to_the_end(std::move(acts)), .item = clean.item};
    examiner.visit({plan}, [&](const VisitPlan&, const VisitRecord& record) {
        const std::string function = command_words(examiner, plan.item);
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            examiner.note(test, *bad, plan, record);
        } else {
            const Outcome& outcome = record.outcomes[last];
            if (const auto thrown = exception_in(plan, outcome, function)) {
                examiner.note(test, *thrown, plan, record);
            } else if (const auto error = error_in(plan, outcome, function)) {
                examiner.note(test, {error->verdict, "on a later run, " + error->reason}, plan, record);
            } else if (const std::string reason = judge(outcome); !reason.empty()) {
                examiner.note(test, {TestVerdict::failed, when(plan) + reason}, plan, record);
            } else {
                examiner.note_ok(test);
            }
        }
        examiner.clean.push_back({plan.situation, plan.item, plan, record});
        return true;
    });
}

void examine_later_runs(Examiner& examiner, std::size_t item) {
    const CleanVisit* found = good_visit(examiner, item);
    if (found == nullptr) found = good_visit(examiner, item, "one-layer");
    if (found == nullptr) return;
    const CleanVisit first = *found;
    examine_course(examiner, kSecondRun, first, {Act::command, Act::command, Act::undo}, 1,
                   [](const Outcome&) { return std::string(); });
    examine_course(
        examiner, kAfterUndo, first, {Act::command, Act::undo, Act::command}, 2, [&](const Outcome& outcome) {
            const bool is_alike = outcome.change_from_first.empty() || examiner.declared().remembers();
            return is_alike
                       ? std::string()
                       : "the command does something else when it is run again after it was taken back, so it keeps "
                         "something of the first run: " +
                             outcome.change_from_first;
        });
}

// A command that remembers the composition of its first run works on that one for ever.
void examine_front(Examiner& examiner, std::size_t item) {
    const Situation& situation = situation_named(examiner.typical, "two-compositions");
    std::uint64_t expected = 0;
    bool is_known = false;
    const VisitPlan fresh{.situation = &situation, .acts = {Act::other_comp, Act::command}, .item = item};
    examiner.visit({fresh}, [&](const VisitPlan&, const VisitRecord& record) {
        is_known = record.has_finished() && record.outcomes.size() > 1 && record.outcomes[1].is_enabled &&
                   record.outcomes[1].error == A_Err_NONE;
        if (is_known) expected = record.outcomes[1].project;
        return true;
    });
    const CleanVisit* first = good_visit(examiner, item, "two-compositions");
    if (!is_known || first == nullptr)
        return examiner.note_not_applicable(kInFront, "the command does nothing with two compositions");
    const CleanVisit copy = *first;
    examine_course(examiner, kInFront, copy, {Act::command, Act::undo, Act::other_comp, Act::command}, 3,
                   [&](const Outcome& outcome) {
                       return outcome.project == expected || examiner.declared().remembers()
                                  ? std::string()
                                  : std::string(
                                        "and another composition comes to the front, the command does not do "
                                        "there what it does at once: it seems to keep handles of the first");
                   });
}

// Somebody who keeps a handle looks behind it when a menu opens, in an idle moment, or when the command runs again.
void examine_deletion(Examiner& examiner, const std::optional<std::size_t>& item) {
    if (item && good_visit(examiner, *item, "two-compositions") == nullptr)
        return examiner.note_not_applicable(kDeleted, "the command does nothing with two compositions");
    std::vector<Act> hooks;
    if (examiner.registered().update_menu_hooks > 0) hooks.push_back(Act::update_menus);
    if (examiner.registered().idle_hooks > 0 && !examiner.has_failed("hooks.idle")) hooks.push_back(Act::idle);
    if (item) hooks.push_back(Act::command);
    std::vector<Act> acts = hooks;
    acts.push_back(Act::delete_comp);
    acts.insert(acts.end(), hooks.begin(), hooks.end());
    const VisitPlan plan{.situation = &situation_named(examiner.typical, "two-compositions"),
                         .acts = examiner.to_the_end(acts),
                         .item = item.value_or(0)};
    examiner.visit({plan}, [&](const VisitPlan&, const VisitRecord& record) {
        const std::string beginning = when(plan) + "and the composition in front was deleted, ";
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            examiner.note(kDeleted, *bad, plan, record);
            return true;
        }
        examiner.note_ok(kDeleted);
        for (std::size_t i = hooks.size() + 1; i < record.outcomes.size(); ++i) {
            const Outcome& outcome = record.outcomes[i];
            if (const Refusal* gone = refusal_of_what_is_gone(outcome))
                examiner.note(kDeleted,
                              {TestVerdict::failed, beginning + "it calls " + gone->function +
                                                        " with a handle that it has kept (" + gone->sentence +
                                                        "); the application would crash there"},
                              plan, record);
            else if (const auto thrown = exception_in(plan, outcome))
                examiner.note(kDeleted, *thrown, plan, record);
            else if (const auto error = error_in(plan, outcome))
                examiner.note(kDeleted, {error->verdict, beginning + error_words(outcome)}, plan, record);
        }
        return true;
    });
}

// A dialog that is closed means that nothing shall happen.
void examine_cancelled(Examiner& examiner, std::size_t item) {
    const CleanVisit* good = good_visit(examiner, item);
    if (good == nullptr) return;
    Situation cancelled = *good->situation;
    cancelled.sentence += " and its dialogs are cancelled";
    cancelled.dialogs = cancel_dialogs;
    const VisitPlan plan{.situation = &examiner.keep(std::move(cancelled)),
                         .acts = examiner.to_the_end({Act::command, Act::undo}),
                         .item = item};
    examiner.visit({plan}, [&](const VisitPlan&, const VisitRecord& record) {
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            examiner.note(kCancelled, *bad, plan, record);
            return true;
        }
        const Outcome& outcome = record.outcomes.front();
        const bool has_dialog = outcome.project != good->command()->project;
        if (const auto thrown = exception_in(plan, outcome))
            examiner.note(kCancelled, *thrown, plan, record);
        else if (const auto error = error_in(plan, outcome))
            examiner.note(kCancelled, *error, plan, record);
        else if (has_dialog && !outcome.change.empty())
            examiner.note(kCancelled,
                          {TestVerdict::warning, when(plan) + "it changes the project all the same: " + outcome.change},
                          plan, record);
        else if (has_dialog)
            examiner.note_ok(kCancelled);
        else
            examiner.note_not_applicable(kCancelled, "nothing the command does depends on a dialog");
        examiner.clean.push_back({plan.situation, plan.item, plan, record});
        return true;
    });
}

// What stands behind an option is a command by itself.
void examine_switched(Examiner& examiner, std::size_t item) {
    std::vector<VisitPlan> plans;
    for (const CleanVisit& visit : examiner.clean) {
        if (visit.item != item || !visit.is_good() || visit.plan.acts.size() < 2 || visit.plan.acts[1] != Act::undo)
            continue;
        const auto& calls = visit.command()->calls;
        const auto is_script = [](const MadeCall& call) { return call.is("AEGP_ExecuteScript"); };
        if (std::none_of(calls.begin(), calls.end(), is_script)) continue;
        Situation switched = *visit.situation;
        switched.sentence += " and every switch of its dialogs is the other way";
        switched.dialogs = accept_switched_dialogs;
        plans.push_back({.situation = &examiner.keep(std::move(switched)),
                         .acts = examiner.to_the_end({Act::command, Act::undo}),
                         .item = item});
    }
    if (plans.empty()) return examiner.note_not_applicable(kSwitched, "the command runs no script");
    examiner.visit(plans, [&](const VisitPlan& plan, const VisitRecord& record) {
        if (const auto bad = bad_end(plan, record, examiner.request().limits))
            examiner.note(kSwitched, *bad, plan, record);
        else if (const auto thrown = exception_in(plan, record.outcomes.front()))
            examiner.note(kSwitched, *thrown, plan, record);
        else if (const auto error = error_in(plan, record.outcomes.front()))
            examiner.note(kSwitched, *error, plan, record);
        else
            examiner.note_ok(kSwitched);
        examiner.clean.push_back({plan.situation, plan.item, plan, record});
        return !has_hung(record);
    });
}

}  // namespace

const std::vector<TestFacts>& command_tests() {
    static const std::vector<TestFacts> tests = [] {
        std::vector<TestFacts> all;
        for (const Situation& situation : empty_situations({}))
            all.push_back(
                {kEmpty + situation.name, "the command is disabled or declines when " + situation.sentence, 3});
        for (const Situation& situation : typical_situations({}))
            all.push_back({kTypical + situation.name, "the command works when " + situation.sentence, 4});
        all.push_back({std::string(kTypical) + "project", "the command works on the project given with --project", 4});
        all.push_back({kEnabled, "each command is enabled somewhere", 4});
        all.push_back({kHandled, "the command says that it handled itself", 4});
        all.push_back({kExceptions, "no exception leaves the command hook", 4});
        all.push_back({kMainThread, "the host is called from the main thread only", 4});
        all.push_back({kCalls, "the host has nothing to refuse", 4});
        all.push_back({kQuiet, "nothing is written to the standard streams", 4});
        all.push_back({kProcesses, "no process that the plug-in has started outlives it", 4});
        all.push_back({kCancelled, "a dialog that is cancelled changes nothing", 4});
        all.push_back({kSwitched, "the command works when every switch of its dialogs is the other way", 4});
        all.push_back({kSecondRun, "the command can be run a second time", 4});
        all.push_back({kAfterUndo, "the command does the same again after it was taken back", 4});
        all.push_back({kInFront, "the command works on the composition that is in front", 4});
        all.push_back({kDeleted, "nothing is kept that was deleted since the command ran", 4});
        return all;
    }();
    return tests;
}

bool examine_commands(Examiner& examiner) {
    if (!examiner.clean.empty())
        examine_surroundings(examiner, examiner.clean.front().plan, examiner.clean.front().record);
    if (examiner.items.empty()) {
        if (examiner.request().strictness >= 4) examine_deletion(examiner, std::nullopt);
        for (const TestFacts& test : command_tests())
            examiner.note_not_applicable(test.id, "the plug-in has no command");
        return true;
    }
    if (examiner.request().strictness < 3) return true;
    examine_plans(examiner, kEmpty, plans_of(examiner, examiner.empty));
    if (examiner.request().strictness < 4) return true;
    examine_plans(examiner, kTypical, plans_of(examiner, examiner.typical));
    // Some commands are for layers that show compositions only.
    std::vector<VisitPlan> nests = plans_of(examiner, examiner.typical_of_nests);
    std::erase_if(nests, [&](const VisitPlan& plan) { return is_enabled(examiner, plan.item, plan.situation->name); });
    examine_plans(examiner, kTypical, nests);
    if (examiner.request().animation.empty())
        examiner.note_not_applicable(std::string(kTypical) + "project", "no project was given");
    for (const std::size_t item : examiner.items) {
        const bool is_ever_enabled =
            std::any_of(examiner.clean.begin(), examiner.clean.end(), [&](const CleanVisit& visit) {
                return visit.item == item && visit.command() != nullptr && visit.command()->is_enabled;
            });
        if (!is_ever_enabled && !examiner.hanging.contains(item))
            examiner.note(
                kEnabled,
                {TestVerdict::warning, "'" + examiner.registered().items[item].text +
                                           "' is enabled nowhere, so it could not be tried: give a project in "
                                           "which it is, with --project and --select"},
                examiner.start_plan, examiner.start);
        examine_later_runs(examiner, item);
        examine_front(examiner, item);
        examine_deletion(examiner, item);
        examine_cancelled(examiner, item);
        examine_switched(examiner, item);
    }
    return true;
}

}  // namespace validator
