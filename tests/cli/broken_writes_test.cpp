// The process ends, or the system refuses, at each call of a run in turn: no file is ever harmed.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>
#include <iterator>
#include <sstream>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using test::Start;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;

namespace fs = std::filesystem;

namespace {

// See modules/failing_calls.cpp.
struct Fault {
    const char* name;
    const char* how;
    int number;

    std::string text() const { return std::string(how) + ":" + std::to_string(number); }
    bool is_signal() const { return std::string(how) == "before" || std::string(how) == "after"; }
    bool is_harmless() const { return std::string(how) == "short" || (!is_signal() && number == EINTR); }
};

const Fault kFaults[] = {{"killed_before", "before", SIGKILL}, {"killed_after", "after", SIGKILL},
                         {"interrupted", "before", SIGINT},    {"terminated", "after", SIGTERM},
                         {"hung_up", "before", SIGHUP},        {"disk_full", "error", ENOSPC},
                         {"disk_broken", "error", EIO},        {"forbidden", "error", EACCES},
                         {"call_interrupted", "error", EINTR}, {"cut_short", "short", 0}};

// So that a listing of the tests shows names.
void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.name;
}

constexpr const char* kLog = "calls";

// More calls than any run makes.
constexpr int kEndless = 1000;

Start with_fault(const std::vector<std::string>& arguments, const Fault& fault, int call) {
    return {.arguments = arguments,
            .environment = {{"LD_PRELOAD", FAILING_CALLS},
                            {"ASAN_OPTIONS", "verify_asan_link_order=0"},
                            {"FAILING_CALL", std::to_string(call)},
                            {"FAILING_CALL_HOW", fault.text()},
                            {"FAILING_CALL_LOG", kLog}},
            .without_settings_folder = true};
}

// Names of the calls of the last run, in their order; forgets them.
std::vector<std::string> calls_made(const Sandbox& sandbox) {
    std::istringstream lines(sandbox.read(kLog));
    fs::remove(sandbox.path(kLog));
    return {std::istream_iterator<std::string>(lines), {}};
}

// How many calls a run makes before it has opened its input: finding the plug-in, which writes nothing.
int calls_before_reading(const std::vector<std::string>& calls) {
    return static_cast<int>(std::find(calls.begin(), calls.end(), "fstat") - calls.begin());
}

// How many until the result is in place and its folder is on the disk. What follows, if anything, comes from tools that
// watch the run.
int calls_until_done(const std::vector<std::string>& calls) {
    const auto rename = std::find(calls.rbegin(), calls.rend(), "rename");
    return static_cast<int>(calls.rend() - rename) + 3;
}

// Where a run writes to.
struct Destination {
    const char* name;
    std::vector<std::string> arguments;
    std::string file;                             // that gets the result
    std::function<void(const Sandbox&)> prepare;  // beside a.json
};

void PrintTo(const Destination& destination, std::ostream* out) {
    *out << destination.name;
}

const std::vector<Destination>& destinations() {
    static const std::vector<Destination> all = {
        {"in_place", {"-i", "a.json"}, "a.json", [](const Sandbox&) {}},
        {"to_a_new_file", {"a.json", "-o", "b.json"}, "b.json", [](const Sandbox&) {}},
        {"over_another_file",
         {"a.json", "-o", "b.json"},
         "b.json",
         [](const Sandbox& sandbox) {
             sandbox.write("b.json", "old");
             fs::permissions(sandbox.path("b.json"), fs::perms::owner_all);
         }},
        {"through_a_link",
         {"-i", "link.json"},
         "a.json",
         [](const Sandbox& sandbox) { fs::create_symlink("a.json", sandbox.path("link.json")); }},
    };
    return all;
}

struct Content {
    std::map<std::string, std::string> files;  // temporary ones left out
    std::vector<std::string> temporary;
    fs::perms mode;  // of the file that gets the result
    bool has_link;
};

Content content_of(const Sandbox& sandbox, const Destination& destination) {
    Content content;
    for (const std::string& name : sandbox.names()) {
        if (name.starts_with(".exflate-")) {
            content.temporary.push_back(name);
        } else {
            content.files[name] = sandbox.read(name);
        }
    }
    content.mode = fs::status(sandbox.path(destination.file)).permissions();
    content.has_link = fs::is_symlink(sandbox.path("link.json"));
    return content;
}

bool is_one_sentence(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

class BrokenWrites : public testing::TestWithParam<std::tuple<Destination, Fault>> {
  protected:
    static const Destination& destination() { return std::get<0>(GetParam()); }
    static const Fault& fault() { return std::get<1>(GetParam()); }

    static void lay_out(const Sandbox& sandbox) {
        for (const std::string& name : sandbox.names()) fs::remove(sandbox.path(name));
        sandbox.write("a.json", test::one_nest());
        fs::permissions(sandbox.path("a.json"),
                        fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
        destination().prepare(sandbox);
    }

    static void break_call(const Sandbox& sandbox, int call, const Content& before, const Content& complete) {
        lay_out(sandbox);
        const Finished finished = exflate(sandbox, with_fault(destination().arguments, fault(), call));
        const std::vector<std::string> calls = calls_made(sandbox);
        ASSERT_GE(static_cast<int>(calls.size()), call) << finished.err;
        const Content after = content_of(sandbox, destination());
        const std::string what =
            "call " + std::to_string(call) + ", " + calls.at(static_cast<std::size_t>(call) - 1) + ": " + finished.err;
        EXPECT_THAT(after.files, AnyOf(before.files, complete.files)) << what;
        EXPECT_EQ(after.has_link, before.has_link) << what;
        EXPECT_EQ(after.mode, after.files == complete.files ? complete.mode : before.mode) << what;
        if (fault().is_signal()) {
            EXPECT_THAT(finished.exit_code, AnyOf(0, 128 + fault().number)) << what;
        } else if (fault().is_harmless()) {
            EXPECT_EQ(finished.exit_code, 0) << what;
        } else {
            EXPECT_THAT(finished.exit_code, AnyOf(0, 3, 4)) << what;
        }
        if (finished.exit_code == 0) {
            EXPECT_EQ(after.files, complete.files) << what;
        } else if (!fault().is_signal()) {
            EXPECT_EQ(after.files, before.files) << what;
            EXPECT_TRUE(is_one_sentence(finished.err)) << what;
        }
        if (fault().number == SIGKILL) {
            EXPECT_LE(after.temporary.size(), 1u) << what;
            EXPECT_THAT(after.temporary, Each(MatchesRegex("\\.exflate-[A-Za-z0-9]{6}"))) << what;
            expect_undisturbed(sandbox, after, complete, what);
        } else {
            EXPECT_THAT(after.temporary, SizeIs(0)) << what;
        }
    }

    // The next run does what it would have done, whatever the killed one has left.
    static void expect_undisturbed(const Sandbox& sandbox, const Content& left, const Content& complete,
                                   const std::string& what) {
        const Finished next = exflate(sandbox, {.arguments = destination().arguments, .without_settings_folder = true});
        EXPECT_EQ(next.exit_code, 0) << what;
        const Content now = content_of(sandbox, destination());
        EXPECT_EQ(now.files, complete.files) << what;
        EXPECT_EQ(now.temporary, left.temporary) << what;
    }
};

TEST_P(BrokenWrites, leave_the_old_file_or_the_new_one) {
    const Sandbox sandbox;
    lay_out(sandbox);
    const Content before = content_of(sandbox, destination());
    ASSERT_EQ(exflate(sandbox, with_fault(destination().arguments, fault(), 0)).exit_code, 0);
    const std::vector<std::string> calls = calls_made(sandbox);
    const Content complete = content_of(sandbox, destination());
    ASSERT_NE(before.files, complete.files);
    const int last = calls_until_done(calls);
    for (int call = calls_before_reading(calls) + 1; call <= last; ++call) break_call(sandbox, call, before, complete);
}

// Every fault for the run in place; for the other destinations SIGINT and SIGHUP are left out, as SIGTERM is like them.
std::vector<std::tuple<Destination, Fault>> all_cases() {
    std::vector<std::tuple<Destination, Fault>> cases;
    for (const Destination& destination : destinations()) {
        for (const Fault& fault : kFaults) {
            const bool is_alike = fault.number == SIGINT || fault.number == SIGHUP;
            if (&destination == &destinations().front() || !is_alike) cases.emplace_back(destination, fault);
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Everywhere, BrokenWrites, testing::ValuesIn(all_cases()), [](const auto& test) {
    return std::string(std::get<0>(test.param).name) + "_" + std::get<1>(test.param).name;
});

// Were there others, they would have to be added to the library that breaks calls.
TEST(FailingCalls, cover_every_call_of_a_write) {
    const Sandbox sandbox(test::one_nest());
    ASSERT_EQ(exflate(sandbox, with_fault({"-i", "a.json"}, kFaults[0], 0)).exit_code, 0);
    std::vector<std::string> calls = calls_made(sandbox);
    calls.resize(static_cast<std::size_t>(calls_until_done(calls)));
    calls.erase(calls.begin(), calls.begin() + calls_before_reading(calls));
    EXPECT_THAT(calls, ElementsAre("fstat", "read", "read", "close",                            // the input
                                   "stat", "stat", "lstat",                                     // what is there
                                   "mkostemp", "writev", "fchown", "fchmod", "fsync", "close",  // the new file
                                   "rename", "open", "fsync", "close"));                        // its place
}

// ---- the settings file ----

const std::vector<std::string> kArguments = {"a.json", "-o", "b.json", "--prefix", "new"};

class BrokenSettings : public testing::TestWithParam<Fault> {
  protected:
    // The first save makes the file, the second replaces it; those behind do the same again.
    static constexpr int kSavesTried = 2;

    static Finished run_in(const Sandbox& sandbox, Start start) {
        start.environment["XDG_CONFIG_HOME"] = sandbox.path("config");
        return exflate(sandbox, start);
    }
};

TEST_P(BrokenSettings, are_the_old_ones_or_the_new_ones_and_fail_no_run) {
    const Sandbox sandbox(test::one_nest());
    ASSERT_EQ(run_in(sandbox, {.arguments = kArguments, .without_settings_folder = true}).exit_code, 0);
    const std::string result = sandbox.read("b.json");
    sandbox.write("no_nest.json", test::no_nest());
    fs::remove_all(sandbox.path("config"));
    ASSERT_EQ(run_in(sandbox, with_fault(kArguments, GetParam(), 0)).exit_code, 0);
    constexpr int kReading = 4;
    for (int call = calls_before_reading(calls_made(sandbox)) + kReading + 1; call < kEndless; ++call) {
        fs::remove_all(sandbox.path("config"));
        fs::remove(sandbox.path("b.json"));
        const Finished finished = run_in(sandbox, with_fault(kArguments, GetParam(), call));
        const std::vector<std::string> calls = calls_made(sandbox);
        if (std::count(calls.begin(), calls.begin() + std::min<long>(call, static_cast<long>(calls.size())), "rename") >
            kSavesTried)
            break;
        ASSERT_GE(static_cast<int>(calls.size()), call);
        const std::string what =
            "call " + std::to_string(call) + ", " + calls.at(static_cast<std::size_t>(call) - 1) + ": " + finished.err;
        if (!GetParam().is_signal()) {
            EXPECT_EQ(finished.exit_code, 0) << what;
        }
        if (GetParam().is_harmless()) {
            EXPECT_THAT(finished.err, Not(HasSubstr("settings"))) << what;
        }
        if (finished.exit_code == 0) {
            EXPECT_EQ(sandbox.read("b.json"), result) << what;
        }
        std::vector<std::string> left;
        if (fs::exists(sandbox.path("config/exflate"))) left = sandbox.names("config/exflate");
        std::erase(left, "settings");
        if (GetParam().number == SIGKILL) {
            EXPECT_LE(left.size(), 1u) << what;
            EXPECT_THAT(left, Each(MatchesRegex("settings\\.[A-Za-z0-9]{6}"))) << what;
        } else {
            EXPECT_THAT(left, SizeIs(0)) << what;
        }
        const Finished next = run_in(sandbox, {.arguments = {"no_nest.json"}, .without_settings_folder = true});
        EXPECT_EQ(next.exit_code, 0) << what;
        EXPECT_THAT(next.err, Not(HasSubstr("settings"))) << what;
    }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, BrokenSettings, testing::ValuesIn(kFaults),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
