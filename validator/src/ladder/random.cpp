// Rung 10: projects and selections at random, each from a number that makes it again.
#include "examiner.h"
#include "findings.h"

namespace validator {
namespace {

constexpr const char* kLives = "random.lives";
constexpr const char* kReturns = "random.succeeds";
constexpr const char* kUndo = "random.undo";
constexpr const char* kLeaks = "random.leaks";
constexpr const char* kHandles = "random.handles";

void examine_record(Examiner& examiner, const VisitPlan& plan, const VisitRecord& record) {
    if (const auto bad = bad_end(plan, record, examiner.request().limits))
        return examiner.note(kLives, *bad, plan, record);
    const Outcome& outcome = record.outcomes.front();
    if (!outcome.is_enabled) return;
    const auto fail = [&](const char* test, const std::string& reason) {
        examiner.note(test, {TestVerdict::failed, when(plan) + reason}, plan, record);
    };
    if (const auto thrown = exception_in(plan, outcome))
        examiner.note(kLives, *thrown, plan, record);
    else
        examiner.note_ok(kLives);
    if (const auto error = error_in(plan, outcome))
        examiner.note(kReturns, *error, plan, record);
    else
        examiner.note_ok(kReturns);
    if (outcome.groups_left_open > 0)
        fail(kUndo, "an undo group was left open");
    else if (!record.outcomes[1].change.empty())
        fail(kUndo, "undo does not give the project back: " + record.outcomes[1].change);
    else
        examiner.note_ok(kUndo);

    examiner.note_ok(kLeaks);
    for (const auto& handle : undeclared_leaks(record, examiner.declared())) {
        if (!is_of_start(record, handle))
            fail(kLeaks, "the " + std::string(name_of(handle.kind)) + " that " + handle.made_by +
                             " gave was never disposed of");
    }
    examiner.note_ok(kHandles);
    for (const auto* list : {&record.disposed_twice, &record.used_after_disposal}) {
        for (const auto& misuse : *list)
            fail(kHandles, "the " + std::string(name_of(misuse.kind)) + " that " + misuse.made_by +
                               " gave was used by " + misuse.misused_by + " after its disposal");
    }
}

}  // namespace

const std::vector<TestFacts>& random_tests() {
    static const std::vector<TestFacts> tests = {
        {kLives, "with random projects and selections the command neither crashes, hangs nor throws", 10},
        {kReturns, "with random projects and selections the command works or declines", 10},
        {kUndo, "with random projects and selections undo gives the project back", 10},
        {kLeaks, "with random projects and selections nothing is left undisposed", 10},
        {kHandles, "with random projects and selections nothing is used after its disposal", 10},
    };
    return tests;
}

bool examine_random(Examiner& examiner) {
    if (examiner.items.empty()) {
        for (const TestFacts& test : random_tests())
            examiner.note_not_applicable(test.id, "the plug-in has no command");
        return true;
    }
    const CheckRequest& request = examiner.request();
    const std::vector<std::size_t> items = examiner.items_that_come_back(random_tests());
    std::vector<VisitPlan> plans;
    for (std::uint64_t seed = request.first_seed; seed <= request.last_seed; ++seed) {
        const Situation& situation = examiner.keep(random_situation(seed, examiner.answers()));
        for (const std::size_t item : items)
            plans.push_back(
                {.situation = &situation, .acts = examiner.to_the_end({Act::command, Act::undo}), .item = item});
    }
    int hung = 0;
    examiner.visit(plans, [&](const VisitPlan& plan, const VisitRecord& record) {
        examine_record(examiner, plan, record);
        if (has_hung(record)) ++hung;
        return hung < 2;
    });
    return true;
}

}  // namespace validator
