// Several files at once: the same as one after another, and a crash costs only its own file.
#include <gmock/gmock.h>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

// Twenty files, of which some take long, some have no nests and some are not animations.
std::vector<std::string> many_files(const Sandbox& sandbox) {
    std::vector<std::string> names;
    for (int i = 0; i < 20; ++i) {
        std::string text = test::one_nest();
        if (i % 7 == 3) text = "{\n broken";
        if (i % 7 == 4) text = test::animation({}, {test::shape_layer(1, "alone")});
        if (i == 0) {  // the slowest comes first
            std::vector<std::string> layers;
            for (int n = 1; n <= 2'000; ++n) layers.push_back(test::shape_layer(n, "layer " + std::to_string(n)));
            text = test::animation({test::asset("comp_0", "Large", layers)}, {test::nest_layer(1, "Nest", "comp_0")});
        }
        names.push_back(sandbox.write("file " + std::to_string(i) + ".json", text));
    }
    names.push_back("absent.json");
    return names;
}

std::vector<std::string> arguments(std::vector<std::string> flags, const std::vector<std::string>& files) {
    flags.insert(flags.end(), files.begin(), files.end());
    return flags;
}

TEST(Jobs, give_the_same_output_files_and_exit_code_as_one) {
    const Sandbox one;
    const Sandbox several;
    const Finished expected = exflate(one, arguments({"run", "--out-dir", "out", "--prefix", "p"}, many_files(one)));
    const Finished finished =
        exflate(several, arguments({"run", "--out-dir", "out", "--prefix", "p", "--jobs", "4"}, many_files(several)));
    EXPECT_EQ(expected.exit_code, 3);
    EXPECT_EQ(finished.exit_code, expected.exit_code);
    EXPECT_EQ(finished.err, expected.err);
    EXPECT_EQ(finished.out, "");
    ASSERT_EQ(several.names("out"), one.names("out"));
    for (const std::string& name : one.names("out")) EXPECT_EQ(several.read("out/" + name), one.read("out/" + name));
}

TEST(Jobs, can_outnumber_the_files) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("b.json", test::one_nest());
    EXPECT_EQ(exflate(sandbox, {"run", "-j", "1000", "-i", "a.json", "b.json"}).exit_code, 0);
    EXPECT_EQ(sandbox.read("a.json"), sandbox.read("b.json"));
    EXPECT_NE(sandbox.read("a.json"), test::one_nest());
    EXPECT_EQ(exflate(sandbox, {"run", "-j", "2", "a.json"}).out, sandbox.read("a.json"));
}

TEST(Jobs, a_file_named_twice_is_done_twice_one_after_the_other) {
    const Sandbox one;
    const Sandbox several;
    for (const Sandbox* sandbox : {&one, &several}) sandbox->write("a.json", test::three_nests());
    const std::vector<std::string> files = {"a.json", "./a.json", "a.json"};
    const Finished expected = exflate(one, arguments({"run", "-i"}, files));
    const Finished finished = exflate(several, arguments({"run", "-i", "--jobs", "3"}, files));
    EXPECT_EQ(finished.err, expected.err);
    EXPECT_THAT(expected.err, HasSubstr("has no nests"));
    EXPECT_EQ(several.read("a.json"), one.read("a.json"));
}

TEST(Jobs, a_crash_costs_only_its_own_file) {
    const Sandbox sandbox;
    const auto with_first_layer = [](const std::string& name) {
        return test::animation({test::asset("comp_0", "Inside", {test::shape_layer(1, "x")})},
                               {test::shape_layer(1, name), test::nest_layer(2, "Nest", "comp_0")});
    };
    std::vector<std::string> files;
    for (const char* name : {"good", "crash", "fine", "leave", "well"}) {
        files.push_back(sandbox.write(std::string(name) + ".json", with_first_layer(name)));
    }
    const Finished finished =
        exflate(sandbox, {.arguments = arguments({"run", "--jobs", "2", "--out-dir", "out"}, files),
                          .environment = {{"EXFLATE_PLUGIN", ENDS_EARLY}}});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.err, MatchesRegex("good.json: 0 nests [^\n]*\ngood.json: 1 of 1 look changes[^\n]*\n"
                                           "crash.json: the process that worked on it crashed \\(Aborted\\)\n"
                                           "fine.json: 0 nests [^\n]*\nfine.json: 1 of 1 look changes[^\n]*\n"
                                           "leave.json: the process that worked on it ended the program with code 0\n"
                                           "well.json: 0 nests [^\n]*\nwell.json: 1 of 1 look changes[^\n]*\n"
                                           "exflate: 5 files, 2 failed: [^\n]*\n"));
    EXPECT_THAT(sandbox.names("out"), ElementsAre("fine.json", "good.json", "well.json"));
}

TEST(Jobs, a_terminal_shows_a_line_of_progress_that_goes_away_at_the_end) {
    const auto in_terminal = [](std::map<std::string, std::string> environment) {
        const Sandbox sandbox(test::one_nest());
        sandbox.write("b.json", test::one_nest());
        return exflate(sandbox, {.arguments = {"run", "--jobs", "2", "-i", "a.json", "b.json"},
                                 .environment = std::move(environment),
                                 .errors_to_terminal = true})
            .err;
    };
    const std::string shown = in_terminal({{"TERM", "xterm"}});
    EXPECT_THAT(shown, StartsWith("\r\033[K0 of 2 files done\r\033[K"));
    EXPECT_THAT(shown, HasSubstr("\r\033[K1 of 2 files done"));
    EXPECT_THAT(shown, HasSubstr("\r\033[K\033[32ma.json:\033[0m 1 nest "));
    EXPECT_THAT(shown.substr(shown.rfind("\r\033[K")), StartsWith("\r\033[K\033[32mexflate:\033[0m 2 files: "));
    EXPECT_THAT(in_terminal({{"TERM", "xterm"}, {"NO_COLOR", "1"}}), Not(HasSubstr("files done")));
    EXPECT_THAT(in_terminal({{"TERM", "dumb"}}), Not(HasSubstr("files done")));
}

TEST(Jobs, progress_is_shown_only_in_a_terminal) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("b.json", test::one_nest());
    const Finished finished = exflate(sandbox, {"run", "--jobs", "2", "-i", "a.json", "b.json"});
    EXPECT_THAT(finished.err, MatchesRegex("a.json: [^\n]*\nb.json: [^\n]*\nexflate: [^\n]*\n"));
}

}  // namespace
