// Examines a plug-in: the tests there are, and what each of them finds.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "validator/declared.h"
#include "validator/situation.h"
#include "validator/visit.h"

namespace validator {

constexpr int kMostStrict = 10;

struct TestFacts {
    std::string id;        // "once.undo-group"
    std::string sentence;  // what must be so: "the undo group is closed whichever call fails"
    int strictness;        // the rung from which on it is made
};

enum class TestVerdict { ok, warning, not_applicable, failed, crashed, hung };

constexpr bool is_bad(TestVerdict verdict) {
    return verdict >= TestVerdict::failed;
}

// "not applicable"
std::string_view words(TestVerdict verdict);

struct TestResult {
    const TestFacts* test;
    TestVerdict verdict;
    std::string reason;   // a sentence without its end; empty for a test that is ok
    std::string printed;  // what the plug-in wrote to the standard streams where it was found
    std::string journal;  // the file; empty for none
};

struct CheckRequest {
    std::string module;
    int strictness = kMostStrict;
    std::vector<std::string> only;  // ids; none: all
    std::uint64_t first_seed = 1;   // of random projects
    std::uint64_t last_seed = 25;
    std::vector<std::pair<std::string, std::string>> answers;  // control and value, for dialogs
    std::string animation;              // the text of a Lottie file to work on as well; empty for none
    std::vector<std::string> selected;  // its layers
    std::string command;                // the menu item's text; empty: every one
    Declared declared;
    unsigned jobs = 1;
    VisitLimits limits;
    std::string journal_folder;  // for a journal of each test that fails; empty for none
};

struct Examination {
    std::string load_problem;  // why the module cannot be loaded; empty if it can
    std::vector<TestResult> results;
    std::vector<std::string> not_offered;  // functions and suites that it asked for and this host does not offer
    std::uint64_t visits = 0;
    std::uint64_t faults = 0;  // visits among them in which a call or a suite was made to fail
};

// All tests, in the order of the ladder.
const std::vector<TestFacts>& all_tests();

// Throws std::invalid_argument, with a sentence, for a request that cannot be met (a layer that is not there, no such
// menu item), lottie::document::InputError for a bad animation, and std::runtime_error when this program itself fails.
// `tell` hears of each result as soon as it stands.
Examination examine(const CheckRequest& request, const std::function<void(const TestResult&)>& tell);

}  // namespace validator
