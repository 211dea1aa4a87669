// Rung 1: the module loads and its entry point does its work.
#include "examiner.h"
#include "findings.h"

namespace validator {
namespace {

constexpr const char* kLoads = "start.loads";
constexpr const char* kEntry = "start.entry-point";
constexpr const char* kOffered = "start.offered";

// A plug-in that registers nothing can never be asked for anything.
bool registers_something(const Registered& registered) {
    return registered.command_hooks + registered.update_menu_hooks + registered.idle_hooks + registered.death_hooks > 0;
}

std::optional<TestFinding> entry_finding(const VisitPlan& plan, const VisitRecord& record) {
    if (auto thrown = exception_in(plan, record.start)) return thrown;
    if (record.start.error != A_Err_NONE) {
        const std::string missing = not_offered_in(record.start);
        return TestFinding{missing.empty() ? TestVerdict::failed : TestVerdict::not_applicable,
                           error_words(record.start) +
                               (missing.empty() ? std::string() : "; it needs " + missing + ", not offered here")};
    }
    if (!record.start.change.empty())
        return TestFinding{TestVerdict::failed, "its entry point changes the project: " + record.start.change};
    return std::nullopt;
}

}  // namespace

const std::vector<TestFacts>& start_tests() {
    static const std::vector<TestFacts> tests = {
        {kLoads, "the module can be loaded and has an entry point", 1},
        {kEntry, "the entry point registers something and returns 0", 1},
        {kOffered, "what the plug-in asks for at its start is offered by this host", 1},
    };
    return tests;
}

bool examine_start(Examiner& examiner) {
    examiner.empty = empty_situations(examiner.answers());
    examiner.typical = typical_situations(examiner.answers());
    examiner.typical_of_nests = typical_situations(examiner.answers(), Sources::compositions);
    const CheckRequest& request = examiner.request();
    if (!request.animation.empty()) {
        examiner.typical.insert(examiner.typical.begin(),
                                file_situation(request.animation, request.selected, examiner.answers()));
    }
    bool has_started = false;
    // The application starts its plug-ins before anything is open.
    examiner.start_plan = {.situation = &situation_named(examiner.empty, "empty-project")};
    examiner.visit({examiner.start_plan}, [&](const VisitPlan& plan, const VisitRecord& record) {
        if (!record.load_problem.empty()) {
            examiner.load_problem = record.load_problem;
            examiner.note(kLoads, {TestVerdict::failed, record.load_problem}, plan, record);
            return true;
        }
        if (const auto bad = bad_end(plan, record, request.limits)) {
            const bool has_loaded = record.where.find("loaded") == std::string::npos;
            examiner.note(has_loaded ? kEntry : kLoads, *bad, plan, record);
            return true;
        }
        examiner.note_ok(kLoads);
        examiner.start = record;
        if (const auto finding = entry_finding(plan, record)) {
            examiner.note(kEntry, *finding, plan, record);
        } else if (!registers_something(record.registered)) {
            examiner.note(kEntry,
                          {TestVerdict::failed, "its entry point registers no hook, so it is never called again"}, plan,
                          record);
        } else {
            examiner.note_ok(kEntry);
        }
        const std::string missing = not_offered_in(record.start);
        if (missing.empty())
            examiner.note_ok(kOffered);
        else
            examiner.note(kOffered,
                          {TestVerdict::warning, "it asks for " + missing + ", which this host does not offer"}, plan,
                          record);
        has_started = record.start.error == A_Err_NONE;
        return true;
    });
    for (std::size_t i = 0; i < examiner.registered().items.size(); ++i) {
        if (request.command.empty() || examiner.registered().items[i].text == request.command)
            examiner.items.push_back(i);
    }
    if (has_started && !request.command.empty() && examiner.items.empty())
        throw std::invalid_argument("the plug-in has no command '" + request.command + "'");
    return has_started;
}

}  // namespace validator
