// Rung 2: menus, idle moments and the end.
#include <algorithm>

#include "examiner.h"
#include "findings.h"

namespace validator {
namespace {

constexpr const char* kItems = "menu.items";
constexpr const char* kUpdate = "menu.update";
constexpr const char* kUnchanged = "menu.changes-nothing";
constexpr const char* kForeign = "menu.foreign-commands";
constexpr const char* kIdle = "hooks.idle";
constexpr const char* kDeath = "hooks.death";

void examine_items(Examiner& examiner) {
    const VisitPlan& plan = examiner.start_plan;
    const VisitRecord& record = examiner.start;
    const Registered& registered = examiner.registered();
    const auto commands = static_cast<std::size_t>(std::count_if(
        record.start.calls.begin(), record.start.calls.end(),
        [](const MadeCall& call) { return call.is("AEGP_GetUniqueCommand") && call.result == A_Err_NONE; }));
    const auto fail = [&](const std::string& reason) {
        examiner.note(kItems, {TestVerdict::failed, reason}, plan, record);
    };
    if (registered.items.empty() && registered.command_hooks == 0 && commands == 0)
        return examiner.note_not_applicable(kItems, "the plug-in has no command");
    if (registered.items.empty() && commands > 0)
        return fail("it asks for a command's number and inserts no menu item for it, so nobody can pick the command");
    if (registered.items.empty())
        return examiner.note_not_applicable(kItems, "the plug-in has no menu item of its own");
    if (registered.command_hooks == 0)
        return fail("its menu item '" + registered.items.front().text +
                    "' has no command hook behind it: register one in the entry point");
    if (registered.items.size() < commands)
        return fail("it asks for the numbers of " + std::to_string(commands) + " commands and inserts " +
                    std::to_string(registered.items.size()) +
                    " menu item(s), so nobody can pick the others: insert one for each");
    for (const OfferedItem& item : registered.items)
        if (item.text.find_first_not_of(' ') == std::string::npos) return fail("a menu item of it has no text");
    if (registered.update_menu_hooks == 0)
        return examiner.note(kItems,
                             {TestVerdict::warning,
                              "it has no update-menu hook: the application greys a menu item that no "
                              "such hook enables, this host only until it is enabled once"},
                             plan, record);
    examiner.note_ok(kItems);
}

// What a hook must not do that is called without anybody's wish.
void examine_quiet(Examiner& examiner, const std::string& test, const VisitPlan& plan, const VisitRecord& record) {
    for (const Outcome& outcome : record.outcomes) {
        if (auto thrown = exception_in(plan, outcome)) return examiner.note(test, *thrown, plan, record);
        if (outcome.error != A_Err_NONE) {
            const std::string missing = not_offered_in(outcome);
            const TestVerdict verdict = missing.empty() ? TestVerdict::failed : TestVerdict::not_applicable;
            return examiner.note(test,
                                 {verdict, when(plan) + error_words(outcome) +
                                               (missing.empty() ? "" : "; it needs " + missing + ", not offered here")},
                                 plan, record);
        }
    }
    examiner.note_ok(test);
}

void examine_menu_visits(Examiner& examiner) {
    std::vector<VisitPlan> plans;
    for (const auto* situations : {&examiner.empty, &examiner.typical})
        for (const Situation& situation : *situations)
            plans.push_back({.situation = &situation, .acts = examiner.to_the_end({Act::update_menus})});
    examiner.visit(plans, [&](const VisitPlan& plan, const VisitRecord& record) {
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            examiner.note(kUpdate, *bad, plan, record);
            return bad->verdict != TestVerdict::hung;
        }
        examine_quiet(examiner, kUpdate, plan, record);
        const Outcome& outcome = record.outcomes.front();
        if (outcome.change.empty() && outcome.undo_steps.empty())
            examiner.note_ok(kUnchanged);
        else
            examiner.note(kUnchanged,
                          {TestVerdict::failed, when(plan) +
                                                    "its update-menu hook changes the project, which nobody has "
                                                    "asked for: " +
                                                    outcome.change},
                          plan, record);
        return true;
    });
}

std::vector<VisitPlan> plans_with(const Examiner& examiner, const std::vector<Act>& acts) {
    std::vector<VisitPlan> plans;
    for (const Situation& situation : examiner.empty) plans.push_back({.situation = &situation, .acts = acts});
    plans.push_back({.situation = &examiner.typical.front(), .acts = acts});
    return plans;
}

void examine_hook_visits(Examiner& examiner, const std::string& test, const std::string& hook, bool is_there,
                         const std::vector<Act>& acts) {
    if (!is_there) return examiner.note_not_applicable(test, "the plug-in has no " + hook);
    examiner.visit(plans_with(examiner, acts), [&](const VisitPlan& plan, const VisitRecord& record) {
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            examiner.note(test, *bad, plan, record);
            return false;
        }
        examine_quiet(examiner, test, plan, record);
        for (const Outcome& outcome : record.outcomes) {
            if (outcome.change.empty()) continue;
            const bool is_one_step = outcome.undo_steps.size() == 1 && !outcome.undo_steps.front().empty();
            examiner.note(
                test,
                {is_one_step ? TestVerdict::warning : TestVerdict::failed,
                 when(plan) + "its " + hook + " changes the project, which nobody has asked for: " + outcome.change},
                plan, record);
        }
        return true;
    });
}

void examine_foreign_command(Examiner& examiner) {
    if (examiner.registered().command_hooks == 0)
        return examiner.note_not_applicable(kForeign, "the plug-in has no command hook");
    const VisitPlan plan{.situation = &examiner.typical.front(), .acts = examiner.to_the_end({Act::foreign_command})};
    examiner.visit({plan}, [&](const VisitPlan&, const VisitRecord& record) {
        const auto fail = [&](const std::string& reason) {
            examiner.note(kForeign,
                          {TestVerdict::failed, "when a person picks a command of the application, " + reason +
                                                    ": compare the command's number with your own"},
                          plan, record);
        };
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            examiner.note(kForeign, *bad, plan, record);
            return true;
        }
        examine_quiet(examiner, kForeign, plan, record);
        const Outcome& outcome = record.outcomes.front();
        if (outcome.is_handled)
            fail("its command hook says that it handled it, so the application does not");
        else if (!outcome.change.empty())
            fail("its command hook changes the project: " + outcome.change);
        return true;
    });
}

// Later rungs look at it too: a plug-in with idle hooks alone leaks as well.
void add_hook_visit(Examiner& examiner) {
    const Registered& registered = examiner.registered();
    std::vector<Act> acts;
    if (registered.update_menu_hooks > 0) acts.push_back(Act::update_menus);
    if (registered.idle_hooks > 0 && !examiner.has_failed(kIdle)) acts.insert(acts.end(), {Act::idle, Act::idle});
    const VisitPlan plan{.situation = &examiner.typical.front(), .acts = examiner.to_the_end(acts)};
    examiner.visit({plan}, [&](const VisitPlan&, const VisitRecord& record) {
        if (record.has_finished()) examiner.clean.push_back({plan.situation, ~std::size_t{0}, plan, record});
        return true;
    });
}

}  // namespace

const std::vector<TestFacts>& menu_tests() {
    static const std::vector<TestFacts> tests = {
        {kItems, "each command has a menu item and a hook", 2},
        {kUpdate, "the update-menu hook copes with whatever is open and selected", 2},
        {kUnchanged, "the update-menu hook changes nothing", 2},
        {kForeign, "the command hook leaves the commands of others alone", 2},
        {kIdle, "the idle hook copes with an empty project and changes nothing", 2},
        {kDeath, "the death hook comes back", 2},
    };
    return tests;
}

bool examine_menus(Examiner& examiner) {
    examine_items(examiner);
    // First, as every other visit ends with it.
    examine_hook_visits(examiner, kDeath, "death hook", examiner.registered().death_hooks > 0, {Act::quit});
    if (examiner.registered().update_menu_hooks > 0) {
        examine_menu_visits(examiner);
    } else {
        for (const char* test : {kUpdate, kUnchanged})
            examiner.note_not_applicable(test, "the plug-in has no update-menu hook");
    }
    examine_foreign_command(examiner);
    examine_hook_visits(examiner, kIdle, "idle hook", examiner.registered().idle_hooks > 0,
                        examiner.to_the_end({Act::idle, Act::idle, Act::idle}));
    add_hook_visit(examiner);
    return true;
}

}  // namespace validator
