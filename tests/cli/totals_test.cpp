// Totals of several files, and which files are left out.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::HasSubstr;
using testing::Not;

namespace {

// A folder of three animations, one of them broken, and another file.
class TotalsOfFiles : public testing::Test {
  protected:
    TotalsOfFiles() {
        std::filesystem::create_directory(sandbox_.path("in"));
        sandbox_.write("in/broken.json", test::one_nest().substr(0, 150));
        sandbox_.write("in/fading.json", test::fading_nest());
        sandbox_.write("in/three.json", test::three_nests());
        sandbox_.write("in/note.txt", "a note");
    }

    std::string last_line(const std::string& text) const {
        const std::size_t end = text.rfind('\n', text.size() - 2);
        return text.substr(end + 1);
    }

    Sandbox sandbox_;
};

TEST_F(TotalsOfFiles, come_last_whatever_the_number_of_jobs) {
    const std::string sizes =
        std::to_string(test::fading_nest().size() + test::three_nests().size()) + " bytes became ";
    for (const char* jobs : {"-j1", "-j4"}) {
        const Finished run = exflate(sandbox_, {"run", "-n", jobs, "in"});
        EXPECT_EQ(run.exit_code, 3);
        EXPECT_THAT(
            last_line(run.err),
            testing::StartsWith("exflate: 3 files, 1 other file left out, 1 failed: 4 nests un-nested, " + sizes));
        const Finished flatten = exflate(sandbox_, {"flatten", "-n", jobs, "in"});
        EXPECT_THAT(last_line(flatten.err),
                    testing::StartsWith("exflate: 3 files, 1 other file left out, 1 failed: 4 of 5 nests un-nested, 0 "
                                        "of them mended, 1 kept, 1 pre-comp left; " +
                                        sizes));
        const Finished check = exflate(sandbox_, {"check", jobs, "in"});
        EXPECT_EQ(last_line(check.out),
                  "3 files, 1 other file left out, 1 failed; 5 nests: 4 exact, 0 equal to the eye, 1 changing\n");
    }
}

TEST_F(TotalsOfFiles, are_the_same_in_json) {
    const Finished finished = exflate(sandbox_, {"check", "--flatten", "--format", "json", "in"});
    const rapidjson::Document report = test::parsed(finished.out);
    const auto& totals = report["totals"];
    const std::vector<std::pair<const char*, int>> expected = {{"files", 3}, {"other_files", 1}, {"failed", 1},
                                                               {"nests", 5}, {"flat", 4},        {"mended", 0},
                                                               {"kept", 1},  {"left", 1},        {"failing", 1}};
    for (const auto& [name, number] : expected) EXPECT_EQ(totals[name].GetInt(), number) << name;
    EXPECT_GT(totals["bytes_after"].GetInt(), 0);
    EXPECT_EQ(report["files"][0]["line"].GetInt(), 1);
    EXPECT_EQ(report["files"][0]["column"].GetInt(), 151);
}

TEST_F(TotalsOfFiles, of_one_file_are_not_printed) {
    EXPECT_THAT(exflate(sandbox_, {"run", "-n", "in/three.json"}).err, Not(HasSubstr("exflate: ")));
    EXPECT_THAT(exflate(sandbox_, {"check", "in/three.json"}).out, Not(HasSubstr("1 file")));
}

TEST_F(TotalsOfFiles, quiet_prints_only_warnings_and_errors) {
    EXPECT_THAT(exflate(sandbox_, {"run", "-q", "in/three.json", "-o", "out.json"}).err, "");
    EXPECT_THAT(sandbox_.read("out.json"), Not(HasSubstr("\"Left\"")));
    EXPECT_THAT(sandbox_.read("out.json"), HasSubstr("\"dot\""));
    EXPECT_EQ(exflate(sandbox_, {"flatten", "-q", "in/three.json", "-o", "out.json"}).err, "");
    const Finished flatten = exflate(sandbox_, {"flatten", "-q", "-n", "in"});
    EXPECT_THAT(flatten.err,
                testing::MatchesRegex("in/broken.json:1:151: [^\n]*\nin/fading.json: 1 pre-comp left: [^\n]*\n"));
    const Finished check = exflate(sandbox_, {"check", "-q", "in"});
    EXPECT_THAT(check.out, testing::MatchesRegex("in/broken.json\n  not checked to the end: [^\n]*\n"
                                                 "in/fading.json\n  composition \"Main\"\n"
                                                 "    #2 \"Intro\": changes [^\n]*\n      ! opacity: [^\n]*\n"));
}

TEST_F(TotalsOfFiles, a_dry_run_writes_nothing) {
    const Finished dry = exflate(sandbox_, {"run", "-n", "-i", "in/three.json"});
    EXPECT_EQ(dry.exit_code, 0);
    EXPECT_EQ(sandbox_.read("in/three.json"), test::three_nests());
    EXPECT_THAT(dry.err, Not(HasSubstr("written to")));
    EXPECT_EQ(exflate(sandbox_, {"run", "-n", "in", "--out-dir", "out"}).exit_code, 3);
    EXPECT_FALSE(std::filesystem::exists(sandbox_.path("out")));
}

}  // namespace
