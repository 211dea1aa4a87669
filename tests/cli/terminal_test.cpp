// What the command shows in a terminal.
#include <gmock/gmock.h>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

// A run that fails, one that succeeds.
Finished in_terminal(const std::vector<std::string>& arguments, std::map<std::string, std::string> environment) {
    const Sandbox sandbox(test::one_nest());
    return exflate(sandbox,
                   {.arguments = arguments, .environment = std::move(environment), .errors_to_terminal = true});
}

TEST(Terminal, subjects_of_sentences_are_coloured) {
    EXPECT_EQ(in_terminal({"absent.json"}, {{"TERM", "xterm"}}).err,
              "\033[31mabsent.json:\033[0m cannot be read: No such file or directory\n");
    EXPECT_THAT(in_terminal({"-i", "a.json"}, {{"TERM", "xterm"}}).err,
                StartsWith("\033[32ma.json:\033[0m 1 nest of "));
    EXPECT_THAT(in_terminal({"--nonsense"}, {{"TERM", "xterm"}}).err, StartsWith("\033[31mexflate:\033[0m "));
}

TEST(Terminal, results_have_no_colours) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"a.json"}, {"list", "a.json"}, {"--help"}}) {
        const Finished finished = in_terminal(arguments, {{"TERM", "xterm"}});
        EXPECT_EQ(finished.exit_code, 0);
        EXPECT_THAT(finished.out, Not(HasSubstr("\033")));
    }
}

Finished to_terminal(const std::vector<std::string>& arguments, std::map<std::string, std::string> environment) {
    const Sandbox sandbox(test::fading_nest());
    return exflate(sandbox,
                   {.arguments = arguments, .environment = std::move(environment), .output_to_terminal = true});
}

TEST(Terminal, verdicts_are_coloured_only_in_a_terminal) {
    const std::string shown = to_terminal({"check", "a.json"}, {{"TERM", "xterm"}}).out;
    EXPECT_THAT(shown, HasSubstr("#2 \"Intro\": \033[33mchanges\033[0m (2 layers, "));
    EXPECT_THAT(shown, HasSubstr("      \033[33m!\033[0m opacity: "));
    EXPECT_THAT(to_terminal({"check", "a.json"}, {{"TERM", "xterm"}, {"NO_COLOR", "1"}}).out, Not(HasSubstr("\033")));
    EXPECT_THAT(to_terminal({"check", "--format", "json", "a.json"}, {{"TERM", "xterm"}}).out, Not(HasSubstr("\033")));
}

TEST(Terminal, a_file_is_written_to_it_only_on_request) {
    for (const char* command : {"run", "flatten"}) {
        const Finished refused = to_terminal({command, "a.json"}, {});
        EXPECT_EQ(refused.exit_code, 2);
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err,
                  "exflate: the result would fill the terminal: name a file with -o, or say -o - to see it\n");
        EXPECT_THAT(to_terminal({command, "a.json", "-o", "-"}, {}).out, StartsWith("{"));
        EXPECT_EQ(to_terminal({command, "a.json", "-i"}, {}).out, "");
        EXPECT_NE(to_terminal({command, "a.json", "--dry-run"}, {}).exit_code, 2);
    }
    EXPECT_EQ(to_terminal({"report", "a.json"}, {}).exit_code, 2);
}

TEST(Terminal, colours_can_be_turned_off) {
    using Environment = std::map<std::string, std::string>;
    for (const Environment& environment :
         {Environment{{"TERM", "xterm"}, {"NO_COLOR", "1"}}, {{"TERM", "dumb"}}, {{"NO_COLOR", "0"}}, {}}) {
        EXPECT_EQ(in_terminal({"absent.json"}, environment).err,
                  "absent.json: cannot be read: No such file or directory\n");
    }
}

TEST(Terminal, an_empty_NO_COLOR_is_ignored) {
    EXPECT_THAT(in_terminal({"absent.json"}, {{"TERM", "xterm"}, {"NO_COLOR", ""}}).err, StartsWith("\033[31m"));
}

TEST(Terminal, names_in_a_file_cannot_control_it) {
    const Sandbox sandbox(test::animation({}, {test::shape_layer(1, "\\u001b[2J\\u0007")}));
    const Finished finished = exflate(sandbox, {.arguments = {"a.json", "--layer", "x\033[2J"},
                                                .environment = {{"TERM", "xterm"}, {"NO_COLOR", "1"}},
                                                .errors_to_terminal = true});
    EXPECT_EQ(finished.exit_code, 2);
    EXPECT_THAT(finished.err, Not(HasSubstr("\033")));
}

TEST(Terminal, a_line_counts_the_nests_drawn_and_goes_away_at_the_end) {
    const Sandbox sandbox(test::three_nests());
    sandbox.write("player.js", "");
    sandbox.write("LICENSE.md", "");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"check", "--prove", "a.json"}, {"report", "a.json", "-o", "page.html"}}) {
        const std::string shown = exflate(sandbox, {.arguments = arguments,
                                                    .environment = {{"TERM", "xterm"}, {"EXFLATE_PLAYER", "player.js"}},
                                                    .errors_to_terminal = true})
                                      .err;
        EXPECT_THAT(shown, StartsWith("\r\033[Kpictures: 0 of "));
        EXPECT_THAT(shown, HasSubstr("\r\033[Kpictures: 2 of "));
        EXPECT_THAT(shown, HasSubstr("nests\r\033[K"));
        EXPECT_THAT(shown.substr(shown.rfind("\r\033[K")), Not(HasSubstr("pictures")));
    }
}

}  // namespace
