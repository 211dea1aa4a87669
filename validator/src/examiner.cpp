// What the rungs of the ladder share, and the ladder itself.
#include "examiner.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "base/printable.h"

namespace validator {
namespace {

constexpr Rung kLadder[] = {
    {start_tests, examine_start, true}, {menu_tests, examine_menus, true}, {command_tests, examine_commands, true},
    {leak_tests, examine_leaks},        {undo_tests, examine_undo},        {fault_tests, examine_faults},
    {hostile_tests, examine_hostile},   {random_tests, examine_random},
};

Answers answers_of(const CheckRequest& request) {
    Answers answers;
    for (const auto& [control, value] : request.answers) answers.push_back({control, value});
    return answers;
}

}  // namespace

std::string_view words(TestVerdict verdict) {
    constexpr std::string_view kWords[] = {"ok", "warning", "not applicable", "failed", "crashed", "hung"};
    return kWords[static_cast<std::size_t>(verdict)];
}

const std::vector<TestFacts>& all_tests() {
    static const std::vector<TestFacts> all = [] {
        std::vector<TestFacts> tests;
        for (const Rung& rung : kLadder) tests.insert(tests.end(), rung.tests().begin(), rung.tests().end());
        std::stable_sort(tests.begin(), tests.end(),
                         [](const TestFacts& a, const TestFacts& b) { return a.strictness < b.strictness; });
        return tests;
    }();
    return all;
}

bool CleanVisit::is_good() const {
    return record.has_finished() && command() != nullptr && command()->is_enabled && command()->error == A_Err_NONE &&
           !command()->has_thrown;
}

Examiner::Examiner(const CheckRequest& request, const std::function<void(const TestResult&)>& tell)
    : request_(request), tell_(tell), answers_(answers_of(request)) {}

bool Examiner::is_wanted(const std::vector<TestFacts>& tests) const {
    return std::any_of(tests.begin(), tests.end(), [this](const TestFacts& test) {
        if (test.strictness > request_.strictness) return false;
        return request_.only.empty() ||
               std::find(request_.only.begin(), request_.only.end(), test.id) != request_.only.end();
    });
}

void Examiner::visit(const std::vector<VisitPlan>& plans, const OnRecord& on_record) {
    visit(plans, request_.limits, on_record);
}

void Examiner::visit(const std::vector<VisitPlan>& plans, const VisitLimits& limits, const OnRecord& on_record) {
    make_visits(request_.module, plans, limits, request_.jobs, [&](const VisitPlan& plan, const VisitRecord& record) {
        ++result_.visits;
        if (plan.fault.kind != Fault::Kind::none) ++result_.faults;
        look_at(record);
        return on_record(plan, record);
    });
}

void Examiner::look_at(const VisitRecord& record) {
    if (!record.host_problem.empty()) throw std::runtime_error(record.host_problem);
    const auto look = [this](const Outcome& outcome) {
        for (const MadeCall& call : outcome.calls)
            if (!call.is_offered) not_offered_.insert(call.words());
    };
    look(record.start);
    for (const Outcome& outcome : record.outcomes) look(outcome);
}

void Examiner::note_ok(const std::string& test) {
    noted_[test].is_ok = true;
}

void Examiner::note(const std::string& test, const TestFinding& finding, const VisitPlan& plan,
                    const VisitRecord& record) {
    if (finding.verdict == TestVerdict::not_applicable) return note_not_applicable(test, finding.reason);
    Noted& noted = noted_[test];
    if (noted.has_finding && finding.verdict == noted.worst.verdict) ++noted.times;
    if (noted.has_finding && finding.verdict <= noted.worst.verdict) return;
    noted.has_finding = true;
    noted.worst = finding;
    noted.times = 1;
    noted.plan = plan;
    noted.printed = record.printed;
}

bool Examiner::has_failed(const std::string& test) const {
    const auto noted = noted_.find(test);
    return noted != noted_.end() && noted->second.has_finding && is_bad(noted->second.worst.verdict);
}

void Examiner::note_not_applicable(const std::string& test, const std::string& reason) {
    if (noted_[test].not_applicable.empty()) noted_[test].not_applicable = reason;
}

std::vector<std::size_t> Examiner::items_that_come_back(const std::vector<TestFacts>& tests) {
    std::vector<std::size_t> left;
    for (const std::size_t item : items)
        if (!hanging.contains(item)) left.push_back(item);
    if (left.empty() && !items.empty())
        for (const TestFacts& test : tests) note_not_applicable(test.id, kHangs);
    return left;
}

const Situation& Examiner::keep(Situation situation) {
    return kept_.emplace_back(std::move(situation));
}

std::vector<Act> Examiner::to_the_end(std::vector<Act> acts) const {
    if (registered().death_hooks > 0 && !has_failed("hooks.death")) acts.push_back(Act::quit);
    return acts;
}

// The visit once more, with everything that is said.
std::string Examiner::write_journal(const std::string& test, VisitPlan plan) {
    if (request_.journal_folder.empty() || plan.situation == nullptr) return {};
    std::filesystem::create_directories(request_.journal_folder);
    plan.journal = (std::filesystem::path(request_.journal_folder) / (test + ".journal")).string();
    make_visit(request_.module, plan, request_.limits);
    return plan.journal;
}

void Examiner::conclude(const std::vector<TestFacts>& tests) {
    for (const TestFacts& test : tests) {
        if (!is_wanted({test})) continue;
        const Noted& noted = noted_[test.id];
        TestResult result{&test, TestVerdict::not_applicable, noted.not_applicable, {}, {}};
        if (noted.has_finding) {
            result.verdict = noted.worst.verdict;
            result.reason = noted.worst.reason;
            if (noted.times > 1) result.reason += " (" + std::to_string(noted.times) + " times like this)";
            result.printed = noted.printed;
            if (is_bad(result.verdict)) result.journal = write_journal(test.id, noted.plan);
        } else if (noted.is_ok) {
            result.verdict = TestVerdict::ok;
            result.reason.clear();
        } else if (result.reason.empty()) {
            result.reason = "there was nothing to try it on";
        }
        tell_(result);
        result_.results.push_back(std::move(result));
    }
}

Examination Examiner::finish() {
    result_.load_problem = load_problem;
    result_.not_offered.assign(not_offered_.begin(), not_offered_.end());
    return std::move(result_);
}

Examination examine(const CheckRequest& request, const std::function<void(const TestResult&)>& tell) {
    Examiner examiner(request, tell);
    std::string obstacle;
    for (const Rung& rung : kLadder) {
        const bool is_wanted = examiner.is_wanted(rung.tests());
        if (!is_wanted && !rung.prepares) continue;
        if (!obstacle.empty()) {
            for (const TestFacts& test : rung.tests()) examiner.note_not_applicable(test.id, obstacle);
        } else if (!rung.climb(examiner)) {
            obstacle = "the plug-in does not start";
        }
        examiner.conclude(rung.tests());
    }
    return examiner.finish();
}

}  // namespace validator
