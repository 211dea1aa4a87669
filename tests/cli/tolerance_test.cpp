// Findings that are known from an earlier check, or allowed.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::HasSubstr;

namespace {

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

// A report of the animation as it is, in known.json.
class Tolerance : public testing::Test {
  protected:
    Tolerance() : sandbox_(test::fading_nest()) {
        sandbox_.write("known.json", exflate(sandbox_, {"check", "--format", "json", "a.json"}).out);
    }
    Finished check(std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"check", "--baseline", "known.json"});
        if (!more.back().ends_with("a.json")) more.emplace_back("a.json");
        return exflate(sandbox_, more);
    }

    Sandbox sandbox_;
};

TEST_F(Tolerance, what_is_known_does_not_fail) {
    const Finished known = check();
    EXPECT_EQ(known.exit_code, 0);
    EXPECT_EQ(known.err, "");
    EXPECT_THAT(known.out,
                HasSubstr("        opacity: its opacity of 50 % is lost: the layers keep their own (known)\n"));
    EXPECT_THAT(known.out, HasSubstr("1 changing (1 known or allowed)\n"));
    EXPECT_THAT(check({"-q"}).out, "");
    EXPECT_THAT(check({"--format", "junit"}).out, HasSubstr("tests=\"1\" failures=\"0\" errors=\"0\""));
    const rapidjson::Document report = test::parsed(check({"--format", "json"}).out);
    EXPECT_STREQ(report["files"][0]["nests"][0]["reasons"][0]["tolerated"].GetString(), "known");
    EXPECT_STREQ(report["files"][0]["verdict"].GetString(), "changes");
    EXPECT_EQ(report["totals"]["failing"].GetInt(), 0);
}

TEST_F(Tolerance, what_is_new_fails) {
    sandbox_.write("a.json", replaced(test::fading_nest(), "\"Intro\"", "\"Other\""));
    EXPECT_EQ(check().exit_code, 1);
    sandbox_.write("b.json", test::fading_nest());
    EXPECT_EQ(exflate(sandbox_, {"check", "--baseline", "known.json", "b.json"}).exit_code, 1);
}

TEST_F(Tolerance, a_second_finding_of_the_same_kind_is_new) {
    const std::string nest = [] {
        const std::string text = test::fading_nest();
        const std::size_t begin = text.rfind("{\"ddd\":0,\"ind\":2");
        return text.substr(begin, text.rfind("{\"ddd\":0,\"ind\":3") - begin);
    }();
    sandbox_.write("a.json", replaced(test::fading_nest(), nest, replaced(nest, "\"ind\":2", "\"ind\":9") + nest));
    const Finished finished = check();
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_THAT(finished.out, HasSubstr("(known)\n"));
    EXPECT_THAT(finished.out, HasSubstr("      ! opacity: "));
}

TEST_F(Tolerance, a_nest_is_recognized_in_another_place_and_with_the_file_named_otherwise) {
    sandbox_.write("a.json",
                   replaced(test::fading_nest(), R"("layers":[{"ddd":0,"ind":1,"ty":4,"nm":"Title")",
                            R"("layers":[{"ddd":0,"ind":9,"ty":3,"nm":"New"},{"ddd":0,"ind":1,"ty":4,"nm":"Title")"));
    const Finished moved = check();
    EXPECT_THAT(moved.out, HasSubstr("#3 \"Intro\""));
    EXPECT_EQ(moved.exit_code, 0);
    EXPECT_EQ(check({"./a.json"}).exit_code, 0);
}

TEST_F(Tolerance, a_nest_that_stays_is_recognized_too) {
    const std::string blur =
        R"("ef":[{"ty":29,"nm":"Blur","np":1,"mn":"ADBE Gaussian Blur 2","ix":1,"en":1,"ef":[]}],"ip")";
    sandbox_.write("a.json",
                   test::animation({test::asset("c", "C", {test::solid_layer(1, "x"), test::solid_layer(2, "y")})},
                                   {replaced(test::nest_layer(1, "Soft", "c"), "\"ip\"", blur)}));
    const std::vector<std::string> flatten = {"check", "--flatten", "--format", "json", "a.json"};
    sandbox_.write("known.json", exflate(sandbox_, flatten).out);
    EXPECT_EQ(exflate(sandbox_, flatten).exit_code, 1);
    EXPECT_EQ(check({"--flatten"}).exit_code, 0);
    EXPECT_EQ(exflate(sandbox_, {"check", "--flatten", "--allow", "effects", "a.json"}).exit_code, 0);
    EXPECT_EQ(exflate(sandbox_, {"check", "--flatten", "--allow", "opacity", "a.json"}).exit_code, 1);
}

TEST_F(Tolerance, reasons_can_be_allowed) {
    const Finished allowed = exflate(sandbox_, {"check", "--allow", "clip", "--allow", "opacity", "a.json"});
    EXPECT_EQ(allowed.exit_code, 0);
    EXPECT_THAT(allowed.out, HasSubstr("layers keep their own (allowed)\n"));
    EXPECT_EQ(exflate(sandbox_, {"check", "--allow", "clip", "a.json"}).exit_code, 1);
    const Finished wrong = exflate(sandbox_, {"check", "--allow", "opacty", "a.json"});
    EXPECT_EQ(wrong.exit_code, 2);
    EXPECT_THAT(wrong.err, HasSubstr("--allow: there is no reason 'opacty'; did you mean \"opacity\"?"));
}

TEST_F(Tolerance, a_baseline_that_is_not_a_report_is_bad_input) {
    for (const std::string text : {"", "{", "[]", "{\"files\":7}", "{\"nests\":[]}"}) {
        sandbox_.write("known.json", text);
        const Finished finished = check();
        EXPECT_EQ(finished.exit_code, 3) << text;
        EXPECT_EQ(finished.err, "exflate: 'known.json' is not what exflate check --format json writes\n");
        EXPECT_EQ(finished.out, "");
    }
    std::filesystem::remove(sandbox_.path("known.json"));
    EXPECT_THAT(check().err, HasSubstr("'known.json' cannot be read: No such file"));
    for (const std::string text :
         {R"({"files":[7,{"nests":[{"reasons":[null,{"code":7,"weight":"change"}]}]}]})", R"({"files":[]})"}) {
        sandbox_.write("known.json", text);
        EXPECT_EQ(check().exit_code, 1) << text;
    }
}

// Covers what a worker process sends back.
TEST_F(Tolerance, reports_do_not_depend_on_the_number_of_jobs) {
    sandbox_.write("b.json", test::hostile_names());
    sandbox_.write("c\xFF.json", test::three_nests());
    sandbox_.write("d.json", "{");
    for (const char* format : {"text", "json", "junit"}) {
        const auto all = [&](const char* jobs) {
            return exflate(sandbox_, {"check", jobs, "--format", format, "--baseline", "known.json", "a.json", "b.json",
                                      "c\xFF.json", "d.json", "absent.json"});
        };
        const Finished one = all("-j1");
        const Finished several = all("-j3");
        EXPECT_EQ(one.exit_code, 3);
        EXPECT_EQ(several.exit_code, one.exit_code);
        EXPECT_EQ(several.out, one.out);
        EXPECT_EQ(several.err, one.err);
        EXPECT_THAT(one.out, HasSubstr("absent.json"));
    }
}

}  // namespace
