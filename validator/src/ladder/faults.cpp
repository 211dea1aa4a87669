// Rungs 7 and 8: calls fail and suites are missing, one at a time.
#include <algorithm>
#include <set>

#include "examiner.h"
#include "findings.h"
#include "suites/error_codes.h"

namespace validator {
namespace {

using FaultKind = Fault::Kind;

// A way of failing, with tests of its own.
struct Way {
    const char* prefix;
    const char* words;
    int strictness;
    std::vector<FaultKind> kinds;
};

const std::vector<Way>& ways() {
    static const std::vector<Way> all = {
        {"once.", "when any one call fails", 7, {FaultKind::call_once}},
        {"on.",
         "when a call and all later ones fail",
         8,
         {FaultKind::call_from_then_on, FaultKind::call_then_no_suites}},
        {"missing.", "when any one suite is missing", 8, {FaultKind::suite_once, FaultKind::suite_from_then_on}},
    };
    return all;
}

struct Question {
    const char* name;
    const char* sentence;
};

constexpr Question kLives = {"lives", "it neither crashes nor hangs"};
constexpr Question kExceptions = {"exceptions", "no exception leaves the command hook"};
constexpr Question kSwallowed = {"errors-told", "the user or the application is told"};
constexpr Question kCode = {"code-kept", "the code of the failed call is returned"};
constexpr Question kStops = {"stops", "the project is not changed any further"};
constexpr Question kResults = {"results-unused", "no result of a failed call is passed on"};
constexpr Question kGroup = {"undo-group", "the undo group is ended all the same"};
constexpr Question kUndo = {"undo", "undo gives the project back"};
constexpr Question kLeaks = {"leaks", "nothing is left undisposed"};
constexpr Question kHandles = {"handles", "nothing is disposed of twice, used afterwards or freed locked"};
constexpr Question kSuites = {"suites", "every suite is released"};
constexpr Question kHandled = {"handled", "the command counts as handled"};
constexpr Question kStart = {"entry-point", "the entry point says so"};
constexpr Question kHooks = {"other-hooks", "the other hooks neither crash nor throw"};
constexpr Question kQuestions[] = {kLives, kExceptions, kSwallowed, kCode,   kStops,   kResults, kGroup,
                                   kUndo,  kLeaks,      kHandles,   kSuites, kHandled, kStart,   kHooks};

constexpr std::uint64_t kMostPerKind = 200;  // faults of one kind in one situation
constexpr std::size_t kMostSituations = 5;

// Of the calls of a function: all, or an even choice if there are too many.
std::vector<VisitPlan> plans_of(const VisitPlan& base, const VisitRecord& record, PluginFunction function,
                                const Way& way) {
    std::uint64_t calls = 0;
    std::uint64_t acquisitions = 0;
    const auto count = [&](const Outcome& outcome) {
        for (const MadeCall& call : outcome.calls) {
            if (call.made_in != function) continue;
            if (call.kind == MadeCall::Kind::suite) ++calls;
            if (call.kind == MadeCall::Kind::acquisition && call.function == "AcquireSuite") ++acquisitions;
        }
    };
    count(record.start);
    if (!record.outcomes.empty()) count(record.outcomes.front());
    std::vector<VisitPlan> plans;
    std::uint64_t first = 0;
    for (const FaultKind kind : way.kinds) {
        const std::uint64_t last = counts_suites(kind) ? acquisitions : calls;
        const std::uint64_t stride = (last + kMostPerKind - 1) / kMostPerKind;
        for (std::uint64_t n = 1 + (stride > 0 ? first % stride : 0); n <= last; n += stride) {
            plans.push_back(base);
            plans.back().fault = {kind, n, function};
        }
        ++first;
    }
    return plans;
}

std::string name_in_declarations(const MadeCall& call) {
    return call.kind == MadeCall::Kind::suite ? call.words() : call.accessor;
}

// One record of a command in which something was made to fail.
class FaultJudge {
  public:
    FaultJudge(Examiner& examiner, const Way& way, const CleanVisit& clean, const VisitPlan& plan,
               const VisitRecord& record)
        : examiner_(examiner), way_(way), clean_(clean), plan_(plan), record_(record) {
        struck_ = struck_call(plan.fault, record, clean.record);
    }

    void judge() {
        if (const auto bad = bad_end(plan_, record_, examiner_.request().limits))
            return find(kLives, bad->reason, bad->verdict);
        const MadeCall* failed = injected_call(record_);
        if (failed == nullptr || record_.outcomes.empty()) return;
        is_only_giving_back_ = gives_back(failed->function);
        examiner_.note_ok(id(kLives));
        judge_exception();
        judge_code(*failed);
        judge_calls();
        judge_undo();
        if (plan_.fault.kind != FaultKind::call_from_then_on) judge_leaks();
        judge_handles();
        check(kSuites, new_suite_held().empty(), new_suite_held() + " is never released");
        check(kHandled, outcome().is_handled || !clean_.command()->is_handled,
              "the command does not count as handled any more: set *handledPB first");
    }

  private:
    const Outcome& outcome() const { return record_.outcomes.front(); }
    std::string id(const Question& question) const { return std::string(way_.prefix) + question.name; }

    std::string after() const {
        const std::string beginning = when(plan_);
        switch (plan_.fault.kind) {
            case FaultKind::call_from_then_on:
                return beginning + "after " + struck_ + " and all later calls failed, ";
            case FaultKind::call_then_no_suites:
                return beginning + "after " + struck_ + " failed and no suite was given any more, ";
            case FaultKind::suite_once:
            case FaultKind::suite_from_then_on:
                return beginning + "without " + struck_ + ", ";
            default:
                return beginning + "after " + struck_ + " failed, ";
        }
    }

    void find(const Question& question, std::string what, TestVerdict verdict = TestVerdict::failed) {
        if (what.starts_with(when(plan_))) what = what.substr(when(plan_).size());
        examiner_.note(id(question), {verdict, after() + what}, plan_, record_);
    }

    void check(const Question& question, bool is_right, const std::string& what) {
        if (is_right)
            examiner_.note_ok(id(question));
        else
            find(question, what);
    }

    void judge_exception() {
        check(kExceptions, !outcome().has_thrown,
              "an exception left its command hook, which would end the application: catch all of them there");
    }

    // Whoever gets by without the call has swallowed nothing.
    bool did_everything_or_told() const {
        const Outcome& clean = *clean_.command();
        const bool is_same = outcome().project == clean.project && outcome().told == clean.told;
        const bool has_told_more =
            std::any_of(outcome().told.begin(), outcome().told.end(), [&](const std::string& text) {
                return std::find(clean.told.begin(), clean.told.end(), text) == clean.told.end();
            });
        return is_same || has_told_more;
    }

    void judge_code(const MadeCall& failed) {
        if (outcome().has_thrown || is_only_giving_back_) return;
        const bool is_dropped = examiner_.declared().drops(name_in_declarations(failed)) || did_everything_or_told();
        if (outcome().error == A_Err_NONE)
            return check(kSwallowed, is_dropped, "it returned 0 and told nobody, though not everything was done");
        examiner_.note_ok(id(kSwallowed));
        if (counts_suites(plan_.fault.kind)) return examiner_.note_ok(id(kCode));
        const A_Err error = outcome().error;
        const bool is_later = error == kLaterCode || error == kRefusedSuite || error == PF_Err_BAD_CALLBACK_PARAM;
        const bool may_be_later = plan_.fault.kind != FaultKind::call_once;
        check(kCode, error == kFirstCode || (may_be_later && is_later),
              "it returned error " + std::to_string(error) + " instead of that call's code " +
                  std::to_string(kFirstCode));
    }

    // What is called after the failure that ended the work.
    void judge_calls() {
        if (outcome().error == A_Err_NONE) return;
        examiner_.note_ok(id(kStops));
        examiner_.note_ok(id(kResults));
        bool is_after = false;
        for (const MadeCall& call : outcome().calls) {
            if (is_after && call.kind == MadeCall::Kind::suite && !examiner_.declared().continues_with(call.words())) {
                if (changes_the_project(call.function)) find(kStops, "it went on with " + call.words());
                const bool is_refused = call.result == host::suites::kBadArgument && !call.injected;
                if (is_refused && !gives_back(call.function))
                    find(kResults, "it called " + call.words() +
                                       " with something that it never got; the application would crash there");
            }
            is_after = is_after || (call.injected && !examiner_.declared().drops(name_in_declarations(call)));
        }
    }

    void judge_undo() {
        const bool is_end_refused =
            std::any_of(outcome().calls.begin(), outcome().calls.end(),
                        [](const MadeCall& call) { return call.is("AEGP_EndUndoGroup") && call.injected; });
        const bool is_left_on_purpose =
            counts_suites(plan_.fault.kind) || plan_.fault.kind == FaultKind::call_then_no_suites
                ? examiner_.declared().leaves_group_open_without(missing_suite())
                : false;
        check(kGroup, outcome().groups_left_open == 0 || is_end_refused || is_left_on_purpose,
              "the undo group was never ended" + (missing_suite().empty() ? "" : "; missing was " + missing_suite()));
        const auto at = std::find(plan_.acts.begin(), plan_.acts.end(), Act::undo) - plan_.acts.begin();
        const std::string& change = record_.outcomes.at(static_cast<std::size_t>(at)).change;
        check(kUndo, change.empty(), "undo did not give the project back: " + change);
    }

    std::string missing_suite() const {
        for (const MadeCall& call : outcome().calls)
            if (call.injected && call.kind == MadeCall::Kind::acquisition) return call.accessor;
        return {};
    }

    // A call that gives back and fails leaves what it should have given back.
    void judge_leaks() {
        if (is_only_giving_back_) return;
        examiner_.note_ok(id(kLeaks));
        for (const auto& handle : undeclared_leaks(record_, examiner_.declared())) {
            if (is_of_start(record_, handle) || leaks_without_fault(handle.made_by)) continue;
            find(kLeaks, "the " + std::string(name_of(handle.kind)) + " that " + handle.made_by +
                             " had given was never disposed of");
        }
    }

    bool leaks_without_fault(const std::string& made_by) const {
        return std::any_of(clean_.record.left.begin(), clean_.record.left.end(),
                           [&](const auto& handle) { return handle.made_by == made_by; });
    }

    void judge_handles() {
        examiner_.note_ok(id(kHandles));
        for (const auto& misuse : record_.freed_while_locked) {
            if (is_only_giving_back_ || plan_.fault.kind == FaultKind::call_from_then_on)
                break;  // the unlocking failed
            if (!examiner_.declared().frees_locked(misuse.made_by))
                find(kHandles, "the memory that " + misuse.made_by + " had given was freed while it was locked");
        }
        for (const auto* list : {&record_.disposed_twice, &record_.used_after_disposal}) {
            for (const auto& misuse : *list)
                find(kHandles, "the " + std::string(name_of(misuse.kind)) + " that " + misuse.made_by +
                                   " had given was used by " + misuse.misused_by + " after its disposal");
        }
    }

    std::string new_suite_held() const {
        for (const std::string& suite : record_.held) {
            const auto& known = clean_.record.held;
            if (std::find(known.begin(), known.end(), suite) == known.end()) return suite;
        }
        return {};
    }

    Examiner& examiner_;
    const Way& way_;
    const CleanVisit& clean_;
    const VisitPlan& plan_;
    const VisitRecord& record_;
    std::string struck_;
    bool is_only_giving_back_ = false;
};

// The visits that together make the most different calls.
std::vector<CleanVisit> chosen_visits(const Examiner& examiner, std::size_t item) {
    std::vector<CleanVisit> chosen;
    std::set<std::string> seen;
    while (chosen.size() < kMostSituations) {
        const CleanVisit* best = nullptr;
        std::size_t most = 0;
        for (const CleanVisit& visit : examiner.clean) {
            if (visit.item != item || visit.plan.acts.size() < 2 || visit.plan.acts[0] != Act::command ||
                visit.plan.acts[1] != Act::undo || visit.record.outcomes.size() > 3 || !visit.is_good())
                continue;
            std::set<std::string> fresh;
            for (const MadeCall& call : visit.command()->calls)
                if (!seen.contains(call.words())) fresh.insert(call.words());
            if (fresh.size() > most) best = &visit, most = fresh.size();
        }
        if (best == nullptr) break;
        for (const MadeCall& call : best->command()->calls) seen.insert(call.words());
        chosen.push_back(*best);
    }
    return chosen;
}

// Whether it never hung: once is enough to know.
bool examine_command(Examiner& examiner, const Way& way, const CleanVisit& clean) {
    bool has_ever_hung = false;
    const auto plans = plans_of(clean.plan, clean.record, PluginFunction::command_hook, way);
    examiner.visit(plans, [&](const VisitPlan& plan, const VisitRecord& record) {
        FaultJudge(examiner, way, clean, plan, record).judge();
        has_ever_hung = has_hung(record);
        return !has_ever_hung;
    });
    return !has_ever_hung;
}

void examine_start(Examiner& examiner, const Way& way) {
    const std::string test = std::string(way.prefix) + kStart.name;
    const auto plans = plans_of(examiner.start_plan, examiner.start, PluginFunction::entry_point, way);
    examiner.visit(plans, [&](const VisitPlan& plan, const VisitRecord& record) {
        const std::string struck = "after " + struck_call(plan.fault, record, examiner.start) + " failed, ";
        const auto find = [&](const std::string& what, TestVerdict verdict = TestVerdict::failed) {
            examiner.note(test, {verdict, struck + what}, plan, record);
        };
        if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
            find(bad->reason, bad->verdict);
            return bad->verdict != TestVerdict::hung;
        }
        const MadeCall* failed = injected_call(record);
        if (failed == nullptr) return true;
        const bool is_dropped = examiner.declared().drops(name_in_declarations(*failed)) || !record.start.told.empty();
        if (record.start.has_thrown)
            find("an exception left its entry point");
        else if (record.start.error == A_Err_NONE && !is_dropped)
            find("its entry point returned 0, so the plug-in stays there half registered");
        else if (record.start.error != A_Err_NONE && !record.held.empty())
            find("its entry point returned without releasing " + record.held.back());
        else
            examiner.note_ok(test);
        return true;
    });
}

void examine_hooks(Examiner& examiner, const Way& way) {
    const std::string test = std::string(way.prefix) + kHooks.name;
    const Registered& registered = examiner.registered();
    struct Hook {
        bool is_there;
        PluginFunction function;
        Act act;
        const char* name;
    };
    const Hook hooks[] = {
        {registered.update_menu_hooks > 0, PluginFunction::update_menu_hook, Act::update_menus, "update-menu hook"},
        {registered.idle_hooks > 0 && !examiner.has_failed("hooks.idle"), PluginFunction::idle_hook, Act::idle,
         "idle hook"},
        {registered.death_hooks > 0 && !examiner.has_failed("hooks.death"), PluginFunction::death_hook, Act::quit,
         "death hook"},
    };
    for (const Hook& hook : hooks) {
        if (!hook.is_there) continue;
        const VisitPlan base{.situation = &examiner.typical.front(), .acts = {hook.act}};
        VisitRecord clean;
        examiner.visit({base}, [&](const VisitPlan&, const VisitRecord& record) {
            clean = record;
            return true;
        });
        if (!clean.has_finished()) continue;
        examiner.visit(plans_of(base, clean, hook.function, way), [&](const VisitPlan& plan,
                                                                      const VisitRecord& record) {
            const std::string struck = "after " + struck_call(plan.fault, record, clean) + " failed, ";
            if (const auto bad = bad_end(plan, record, examiner.request().limits)) {
                examiner.note(test, {bad->verdict, struck + bad->reason}, plan, record);
                return bad->verdict != TestVerdict::hung;
            }
            if (!record.outcomes.empty() && record.outcomes.front().has_thrown)
                examiner.note(test, {TestVerdict::failed, struck + "an exception left its " + hook.name}, plan, record);
            else
                examiner.note_ok(test);
            return true;
        });
    }
}

}  // namespace

const std::vector<TestFacts>& fault_tests() {
    static const std::vector<TestFacts> tests = [] {
        std::vector<TestFacts> all;
        for (const Way& way : ways()) {
            for (const Question& question : kQuestions)
                all.push_back({std::string(way.prefix) + question.name,
                               std::string(way.words) + ", " + question.sentence, way.strictness});
        }
        return all;
    }();
    return tests;
}

bool examine_faults(Examiner& examiner) {
    for (const Way& way : ways()) {
        if (examiner.request().strictness < way.strictness) continue;
        std::vector<TestFacts> tests;
        for (const TestFacts& test : fault_tests())
            if (test.id.starts_with(way.prefix)) tests.push_back(test);
        if (!examiner.is_wanted(tests)) continue;
        examine_start(examiner, way);
        examine_hooks(examiner, way);
        for (const std::size_t item : examiner.items)
            for (const CleanVisit& clean : chosen_visits(examiner, item))
                if (!examine_command(examiner, way, clean)) break;
        if (examiner.items.empty())
            for (const TestFacts& test : tests) examiner.note_not_applicable(test.id, "the plug-in has no command");
    }
    return true;
}

}  // namespace validator
