// What the arguments ask for.
#include "cli/options.h"

#include <gmock/gmock.h>

using cli::Information;
using cli::ListOptions;
using cli::parse_arguments;
using cli::RunOptions;
using cli::UsageProblem;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

RunOptions run_options(const std::vector<std::string>& arguments) {
    return std::get<RunOptions>(parse_arguments(arguments));
}

std::string problem(const std::vector<std::string>& arguments) {
    return std::get<UsageProblem>(parse_arguments(arguments)).sentence;
}

std::string help() {
    return std::get<Information>(parse_arguments({"--help"})).text;
}

TEST(Options, run_is_what_is_meant_without_a_subcommand) {
    EXPECT_THAT(run_options({"a.json"}).files, ElementsAre("a.json"));
    EXPECT_THAT(run_options({"run", "a.json"}).files, ElementsAre("a.json"));
    EXPECT_THAT(run_options({"run", "list"}).files, ElementsAre("list"));
    EXPECT_THAT(run_options({"./list"}).files, ElementsAre("./list"));
}

TEST(Options, all_scripts_of_a_file_have_two_minutes_unless_told_otherwise) {
    EXPECT_EQ(run_options({"a.json"}).script_time, 120);
    EXPECT_EQ(run_options({"a.json", "--script-time", "0.5"}).script_time, 0.5);
    EXPECT_EQ(std::get<cli::CheckOptions>(parse_arguments({"check", "a.json", "--script-time=90"})).script_time, 90);
    for (const char* time : {"0", "-1", "soon", "nan", "1e9"}) {
        EXPECT_THAT(problem({"a.json", "--script-time", time}), HasSubstr("--script-time")) << time;
    }
}

TEST(Options, one_animation_of_a_packed_file_is_chosen_by_its_id) {
    EXPECT_EQ(run_options({"a.lottie"}).animation, "");
    EXPECT_EQ(run_options({"a.lottie", "--animation", "x", "--animation=y"}).animation, "y");
    EXPECT_EQ(std::get<cli::CheckOptions>(parse_arguments({"check", "a", "--animation", "x"})).animation, "x");
    EXPECT_EQ(std::get<cli::ReportOptions>(parse_arguments({"report", "a", "--animation", "x"})).animation, "x");
    EXPECT_EQ(problem({"a.lottie", "--animation="}), "--animation: needs the id of an animation");
    EXPECT_THAT(problem({"list", "a.lottie", "--animation", "x"}), HasSubstr("there is no option --animation"));
}

TEST(Options, the_dialogs_defaults_are_the_flags_defaults) {
    const cli::DialogAnswers answers = run_options({"a.json"}).answers;
    EXPECT_TRUE(answers.copy_attributes);
    EXPECT_FALSE(answers.delete_source);
    EXPECT_FALSE(answers.keep_in_comp);
    EXPECT_EQ(answers.prefix, "");
    EXPECT_FALSE(answers.prepend_name);
    EXPECT_FALSE(answers.fix_random);
}

TEST(Options, each_dialog_flag_sets_its_answer) {
    EXPECT_FALSE(run_options({"a", "--discard-attributes"}).answers.copy_attributes);
    EXPECT_TRUE(run_options({"a", "--copy-attributes"}).answers.copy_attributes);
    EXPECT_TRUE(run_options({"a", "--delete-source"}).answers.delete_source);
    EXPECT_TRUE(run_options({"a", "--keep-in-comp"}).answers.keep_in_comp);
    EXPECT_EQ(run_options({"a", "--prefix", "fx"}).answers.prefix, "fx");
    EXPECT_TRUE(run_options({"a", "--prepend-name"}).answers.prepend_name);
    EXPECT_TRUE(run_options({"a", "--fix-random"}).answers.fix_random);
}

TEST(Options, a_person_answers_the_dialog_instead_of_flags) {
    EXPECT_FALSE(run_options({"a.json"}).dialog);
    EXPECT_TRUE(run_options({"--dialog", "a.json"}).dialog);
    for (const std::string flag : {"--copy-attributes", "--discard-attributes", "--delete-source", "--keep-in-comp",
                                   "--prefix=x", "--prepend-name", "--fix-random"}) {
        EXPECT_THAT(problem({"--dialog", flag, "a.json"}), HasSubstr("--dialog")) << flag;
    }
}

TEST(Options, a_picture_of_the_dialog_takes_actions_in_their_order) {
    const auto options =
        std::get<cli::DialogOptions>(parse_arguments({"dialog", "--type", "a=b=c", "--click", "X", "--picture", "p.png",
                                                      "--type=d=", "--scale", "2", "--first-use"}));
    EXPECT_EQ(options.picture, "p.png");
    EXPECT_EQ(options.scale, 2);
    EXPECT_TRUE(options.first_use);
    ASSERT_EQ(options.actions.size(), 3U);
    EXPECT_EQ(options.actions[0].control + "|" + options.actions[0].text, "a|b=c");
    EXPECT_EQ(options.actions[1].control, "X");
    EXPECT_EQ(options.actions[2].control + "|" + options.actions[2].text, "d|");
    EXPECT_THAT(problem({"dialog"}), HasSubstr("--picture"));
    for (const char* scale : {"0", "9", "nan", "2x"}) {
        EXPECT_THAT(problem({"dialog", "--picture", "p.png", "--scale", scale}), HasSubstr("--scale"));
    }
    for (const char* growth : {"-1", "nan", "inf"}) {
        EXPECT_THAT(problem({"a.json", "--max-growth", growth}), HasSubstr("--max-growth"));
    }
    EXPECT_THAT(problem({"dialog", "--picture", "p.png", "--type", "a"}), HasSubstr("CONTROL=TEXT"));
}

TEST(Options, a_prefix_may_be_empty_or_begin_with_a_dash) {
    EXPECT_EQ(run_options({"--prefix=", "a"}).answers.prefix, "");
    EXPECT_EQ(run_options({"--prefix", "", "a"}).answers.prefix, "");
    EXPECT_EQ(run_options({"--prefix", "-x", "a"}).answers.prefix, "-x");
    EXPECT_EQ(run_options({"--prefix=a=", "a"}).answers.prefix, "a=");
}

TEST(Options, layers_add_up_and_take_one_value_each) {
    const RunOptions options = run_options({"--layer", "A", "file", "--layer=#3", "--layer", "[b,c]"});
    EXPECT_THAT(options.layers, ElementsAre("A", "#3", "[b,c]"));
    EXPECT_THAT(options.files, ElementsAre("file"));
}

TEST(Options, the_last_of_repeated_values_counts) {
    EXPECT_EQ(run_options({"a", "--comp", "x", "--comp", "y"}).composition, "y");
}

TEST(Options, what_stands_behind_two_dashes_is_a_file) {
    EXPECT_THAT(run_options({"-i", "--", "-a", "--prefix="}).files, ElementsAre("-a", "--prefix="));
}

TEST(Options, list_takes_one_file) {
    const auto options = std::get<ListOptions>(parse_arguments({"list", "a.json", "--json"}));
    EXPECT_EQ(options.file, "a.json");
    EXPECT_TRUE(options.json);
    EXPECT_EQ(problem({"list", "a", "b"}), "'b' is one file too many");
    EXPECT_EQ(problem({"list"}), "name a file, or - for standard input");
}

TEST(Options, replay_takes_one_file) {
    EXPECT_EQ(std::get<cli::ReplayOptions>(parse_arguments({"replay", "run.journal"})).file, "run.journal");
    EXPECT_THAT(problem({"replay", "a", "b"}), HasSubstr("one file too many"));
    EXPECT_THAT(problem({"replay"}), HasSubstr("name a file"));
}

TEST(Options, a_journal_needs_a_file_of_its_own_and_not_standard_output) {
    EXPECT_EQ(run_options({"a.json", "--journal", "x"}).journal, "x");
    EXPECT_THAT(problem({"a.json", "--journal", "-"}), HasSubstr("cannot go to standard output"));
    EXPECT_THAT(problem({"a.json", "--journal="}), HasSubstr("needs the name of a file"));
}

TEST(Options, excluding_flags_are_refused_together) {
    EXPECT_THAT(problem({"a", "--delete-source", "--keep-in-comp"}), HasSubstr("excludes --delete-source"));
    EXPECT_THAT(problem({"a", "--copy-attributes", "--discard-attributes"}), HasSubstr("excludes"));
    EXPECT_THAT(problem({"a", "-o", "b", "-i"}), HasSubstr("excludes --in-place"));
    EXPECT_THAT(problem({"a", "-o", "b", "--out-dir", "c"}), HasSubstr("excludes --out-dir"));
    EXPECT_THAT(problem({"a", "-i", "--out-dir", "c"}), HasSubstr("excludes --in-place"));
}

TEST(Options, several_files_need_somewhere_to_go) {
    EXPECT_EQ(problem({"a", "b"}), "several files need --out-dir DIR or --in-place");
    EXPECT_EQ(problem({"a", "b", "-o", "c"}), "several files need --out-dir DIR or --in-place");
    EXPECT_THAT(run_options({"a", "b", "-i"}).files, ElementsAre("a", "b"));
    EXPECT_THAT(run_options({"a", "b", "--out-dir", "d"}).files, ElementsAre("a", "b"));
}

TEST(Options, two_files_cannot_become_one) {
    EXPECT_EQ(problem({"x/a", "y/a", "--out-dir", "d"}),
              "'x/a' and 'y/a' would both become 'd/a': run them one by one");
}

TEST(Options, standard_input_can_neither_be_replaced_nor_named) {
    EXPECT_THAT(problem({"-", "-i"}), HasSubstr("cannot be replaced"));
    EXPECT_THAT(problem({"-", "--out-dir", "d"}), HasSubstr("has no name"));
}

TEST(Options, a_mistyped_option_is_answered_with_the_nearest) {
    EXPECT_EQ(problem({"a", "--recursiv"}), "there is no option --recursiv; did you mean \"--recursive\"?");
    EXPECT_EQ(problem({"a", "--perfix=x"}), "there is no option --perfix; did you mean \"--prefix\"?");
    EXPECT_EQ(problem({"a", "--zzzzzzzzz"}), "there is no option --zzzzzzzzz");
}

TEST(Options, a_missing_value_or_file_is_told) {
    EXPECT_EQ(problem({"a", "-o"}), "--output needs a value");
    EXPECT_EQ(problem({}), "name a file, or - for standard input");
    EXPECT_EQ(problem({"--recursive"}), "name a file, or - for standard input");
}

TEST(Options, help_tells_every_option_and_all_subcommands_have_it) {
    for (const char* option :
         {"--output",    "--out-dir",         "--in-place",           "--comp",          "--layer",
          "--recursive", "--copy-attributes", "--discard-attributes", "--delete-source", "--keep-in-comp",
          "--prefix",    "--prepend-name",    "--fix-random",         "--json",          "--journal",
          "--help",      "--version",         "EXFLATE_PLUGIN",       "XDG_CONFIG_HOME", "NO_COLOR"}) {
        EXPECT_THAT(help(), HasSubstr(option));
    }
    EXPECT_EQ(std::get<Information>(parse_arguments({"run", "-h"})).text, help());
    EXPECT_EQ(std::get<Information>(parse_arguments({"list", "--help"})).text, help());
    EXPECT_EQ(std::get<Information>(parse_arguments({"replay", "--help"})).text, help());
}

}  // namespace
