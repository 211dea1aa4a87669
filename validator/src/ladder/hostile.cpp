// Rung 9: names, times and sizes that nobody has thought of.
#include <array>
#include <optional>

#include "examiner.h"
#include "findings.h"

namespace validator {
namespace {

constexpr const char* kHostile = "hostile.";
constexpr const char* kGrowth = "hostile.many-layers";
constexpr int kSizes[] = {1'000, 4'000, 16'000, 100'000};
constexpr int kLargest = kSizes[std::size(kSizes) - 1];

void examine_situation(Examiner& examiner, const VisitPlan& plan, const VisitRecord& record) {
    const std::string test = kHostile + plan.situation->name;
    if (const auto bad = bad_end(plan, record, examiner.request().limits))
        return examiner.note(test, *bad, plan, record);
    const Outcome& outcome = record.outcomes.front();
    if (!outcome.is_enabled) return examiner.note_not_applicable(test, "the command is disabled there");
    if (const auto thrown = exception_in(plan, outcome)) return examiner.note(test, *thrown, plan, record);
    if (const auto error = error_in(plan, outcome)) return examiner.note(test, *error, plan, record);
    if (const std::string& change = record.outcomes[1].change; !change.empty())
        return examiner.note(test, {TestVerdict::failed, when(plan) + "undo does not give the project back: " + change},
                             plan, record);
    examiner.note_ok(test);
}

struct Size {
    int layers = 0;
    double seconds = 0;
    std::uint64_t calls = 0;
};

// Twice as much as if the work went with the number of layers, and some for what a process costs anyhow.
std::string growth_problem(const Size& small, const Size& large) {
    const double factor = static_cast<double>(large.layers) / small.layers;
    const auto sizes = [&](const std::string& small_amount, const std::string& large_amount) {
        return "with " + std::to_string(small.layers) + " layers " + small_amount + ", with " +
               std::to_string(large.layers) + " " + large_amount;
    };
    if (static_cast<double>(large.calls) > 2 * factor * static_cast<double>(small.calls) + 10'000)
        return "its calls grow with the square of the layers: " +
               sizes("it makes " + std::to_string(small.calls) + " calls", std::to_string(large.calls));
    const double expected = 2.5 * factor * small.seconds + 0.5;
    if (large.seconds > expected)
        return "its time grows with the square of the layers: " +
               sizes("it takes " + std::to_string(static_cast<int>(small.seconds * 1000)) + " ms",
                     std::to_string(static_cast<int>(large.seconds * 1000)) + " ms");
    return {};
}

void examine_growth(Examiner& examiner, std::size_t item, Sources sources) {
    VisitLimits limits = examiner.request().limits;
    limits.processor_time *= 3;
    limits.time *= 3;
    std::optional<Size> before;
    for (const int layers : kSizes) {
        const Situation& situation = examiner.keep(many_layers(layers, examiner.answers(), sources));
        const VisitPlan plan{.situation = &situation, .acts = {Act::command}, .item = item};
        bool goes_on = false;
        examiner.visit({plan}, limits, [&](const VisitPlan&, const VisitRecord& record) {
            const auto note = [&](TestVerdict verdict, const std::string& reason) {
                examiner.note(kGrowth, {verdict, reason}, plan, record);
            };
            if (const auto bad = bad_end(plan, record, limits)) {
                note(bad->verdict, bad->reason);
                return true;
            }
            const Outcome& outcome = record.outcomes.front();
            if (!outcome.is_enabled) {
                examiner.note_not_applicable(kGrowth, "the command is disabled there");
                return true;
            }
            if (const auto error = error_in(plan, outcome)) {
                examiner.note(kGrowth, *error, plan, record);
                return true;
            }
            const Size now{layers, static_cast<double>(record.end.processor_time.count()) / 1000, outcome.call_count};
            const std::string problem = before ? growth_problem(*before, now) : std::string();
            before = now;
            if (!problem.empty()) {
                note(TestVerdict::failed, problem);
                return true;
            }
            examiner.note_ok(kGrowth);
            goes_on = true;
            return true;
        });
        if (!goes_on) return;
    }
}

}  // namespace

const std::vector<TestFacts>& hostile_tests() {
    static const std::vector<TestFacts> tests = [] {
        std::vector<TestFacts> all;
        for (const Situation& situation : hostile_situations({}))
            all.push_back({kHostile + situation.name, "the command copes when " + situation.sentence, 9});
        all.push_back(
            {kGrowth,
             "the command's work grows with the number of layers, not its square, up to " + std::to_string(kLargest),
             9});
        return all;
    }();
    return tests;
}

bool examine_hostile(Examiner& examiner) {
    if (examiner.items.empty()) {
        for (const TestFacts& test : hostile_tests())
            examiner.note_not_applicable(test.id, "the plug-in has no command");
        return true;
    }
    const std::vector<std::size_t> items = examiner.items_that_come_back(hostile_tests());
    std::vector<VisitPlan> plans;
    for (const Sources sources : {Sources::pictures, Sources::compositions}) {
        for (const Situation& situation : hostile_situations(examiner.answers(), sources)) {
            if (!examiner.is_wanted({{kHostile + situation.name, "", 9}})) continue;
            const Situation& kept = examiner.keep(situation);
            for (const std::size_t item : items)
                plans.push_back({.situation = &kept, .acts = {Act::command, Act::undo}, .item = item});
        }
    }
    int hung = 0;
    examiner.visit(plans, [&](const VisitPlan& plan, const VisitRecord& record) {
        examine_situation(examiner, plan, record);
        if (has_hung(record)) ++hung;
        return hung < 2;
    });
    if (examiner.declared().grows())
        examiner.note_not_applicable(kGrowth, "it is declared that the work grows with the square of the layers");
    else if (examiner.is_wanted({{kGrowth, "", 9}}))
        for (const std::size_t item : items)
            for (const Sources sources : {Sources::pictures, Sources::compositions})
                examine_growth(examiner, item, sources);
    return true;
}

}  // namespace validator
