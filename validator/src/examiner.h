// What the rungs of the ladder share: the request, visits, findings test by test.
#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "projects/situations.h"
#include "validator/examine.h"

namespace validator {

inline constexpr const char* kHangs = "the command hangs in simpler projects";

// What speaks against a plug-in, or for leaving a test out.
struct TestFinding {
    TestVerdict verdict;
    std::string reason;
};

// A visit without faults whose record later rungs use again.
struct CleanVisit {
    const Situation* situation;
    std::size_t item;
    VisitPlan plan;
    VisitRecord record;

    const Outcome* command() const { return record.outcomes.empty() ? nullptr : &record.outcomes.front(); }
    // It ran, came back and returned 0.
    bool is_good() const;
};

class Examiner {
  public:
    Examiner(const CheckRequest& request, const std::function<void(const TestResult&)>& tell);

    const CheckRequest& request() const { return request_; }
    const Answers& answers() const { return answers_; }
    const Declared& declared() const { return request_.declared; }

    // Whether one of them is asked for.
    bool is_wanted(const std::vector<TestFacts>& tests) const;

    // Makes the visits and hands over the records, noting what was not offered.
    using OnRecord = std::function<bool(const VisitPlan&, const VisitRecord&)>;
    void visit(const std::vector<VisitPlan>& plans, const OnRecord& on_record);
    // The same with other limits.
    void visit(const std::vector<VisitPlan>& plans, const VisitLimits& limits, const OnRecord& on_record);

    // The test could be made, with this result; the worst counts, of equal ones the first.
    void note_ok(const std::string& test);
    void note(const std::string& test, const TestFinding& finding, const VisitPlan& plan, const VisitRecord& record);
    // Whether something speaks against the plug-in so far.
    bool has_failed(const std::string& test) const;
    // Why it could not be made; counts only if nothing else is noted.
    void note_not_applicable(const std::string& test, const std::string& reason);
    // Tells the results of the tests.
    void conclude(const std::vector<TestFacts>& tests);

    // Known after the first rungs.
    VisitPlan start_plan;
    VisitRecord start;               // of that plan: the plug-in was only started
    std::vector<std::size_t> items;  // those that are examined
    std::vector<CleanVisit> clean;   // of commands, and one of the other hooks
    std::set<std::size_t> hanging;   // items that take too long even on small projects
    std::string load_problem;        // why the module cannot be loaded
    const Registered& registered() const { return start.registered; }
    std::vector<Situation> empty;
    std::vector<Situation> typical;           // the first one is for hooks
    std::vector<Situation> typical_of_nests;  // the same with layers that show compositions

    // The items but those that hang; without any, none of the tests can be made.
    std::vector<std::size_t> items_that_come_back(const std::vector<TestFacts>& tests);

    // A situation of one rung alone: plans that are noted point to it.
    const Situation& keep(Situation situation);

    // To the acts of every visit: what the application does when it ends. A death hook that is known to fail is left
    // out.
    std::vector<Act> to_the_end(std::vector<Act> acts) const;

    Examination finish();

  private:
    struct Noted {
        bool is_ok = false;
        std::string not_applicable;
        bool has_finding = false;
        TestFinding worst{TestVerdict::ok, {}};
        std::uint64_t times = 0;  // that findings as bad as the worst were made
        VisitPlan plan;
        std::string printed;
    };

    void look_at(const VisitRecord& record);
    std::string write_journal(const std::string& test, VisitPlan plan);

    const CheckRequest& request_;
    std::function<void(const TestResult&)> tell_;
    Answers answers_;
    std::deque<Situation> kept_;
    std::map<std::string, Noted> noted_;
    std::set<std::string> not_offered_;
    Examination result_;
};

// The rungs, each with its tests. The next one is climbed only if climb() says so.
struct Rung {
    const std::vector<TestFacts>& (*tests)();
    bool (*climb)(Examiner& examiner);
    bool prepares = false;  // later ones need what it finds out
};

const std::vector<TestFacts>& start_tests();
bool examine_start(Examiner& examiner);
const std::vector<TestFacts>& menu_tests();
bool examine_menus(Examiner& examiner);
const std::vector<TestFacts>& command_tests();
bool examine_commands(Examiner& examiner);
const std::vector<TestFacts>& leak_tests();
bool examine_leaks(Examiner& examiner);
const std::vector<TestFacts>& undo_tests();
bool examine_undo(Examiner& examiner);
const std::vector<TestFacts>& fault_tests();
bool examine_faults(Examiner& examiner);
const std::vector<TestFacts>& hostile_tests();
bool examine_hostile(Examiner& examiner);
const std::vector<TestFacts>& random_tests();
bool examine_random(Examiner& examiner);

}  // namespace validator
