// What the arguments ask for, and the tables behind them.
#include <gmock/gmock.h>

#include <sstream>

#include "cli/arguments/help.h"
#include "cli/arguments/parser.h"

using cli::Options;
using cli::parse_arguments;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

using Arguments = std::vector<std::string>;

cli::Request request(const Arguments& arguments) {
    return std::get<cli::Request>(parse_arguments(arguments));
}

Options options(const Arguments& arguments) {
    return request(arguments).options;
}

std::string problem(const Arguments& arguments) {
    return std::get<cli::UsageProblem>(parse_arguments(arguments)).sentence;
}

// The command and its operands.
std::string asked(const Arguments& arguments) {
    const cli::Request asked = request(arguments);
    std::string text(asked.command->name);
    for (const std::string& file : asked.options.files) text += ' ' + file;
    return text;
}

TEST(Arguments, run_is_the_command_when_none_is_named) {
    EXPECT_EQ(asked({"a.json"}), "run a.json");
    EXPECT_EQ(asked({"run", "a.json"}), "run a.json");
    EXPECT_EQ(asked({"run", "list"}), "run list");
    EXPECT_EQ(asked({"./list"}), "run ./list");
    EXPECT_EQ(asked({"-i", "list"}), "run list");
    EXPECT_EQ(asked({"zzzzzz"}), "run zzzzzz");
}

TEST(Arguments, help_and_the_version_are_where_people_look_for_them) {
    EXPECT_EQ(asked({"help"}), "help");
    EXPECT_EQ(asked({"--help"}), "help");
    EXPECT_EQ(asked({"-h"}), "help");
    EXPECT_EQ(asked({"help", "check"}), "help check");
    EXPECT_EQ(asked({"version"}), "version");
    EXPECT_EQ(asked({"--version"}).substr(0, 7), "version");
    EXPECT_EQ(asked({"-V"}).substr(0, 7), "version");
    for (const cli::Command& command : cli::all_commands()) {
        const std::string name(command.name);
        EXPECT_EQ(asked({name, "--help"}), "help " + name);
        EXPECT_EQ(asked({name, "-h"}), "help " + name);
        EXPECT_EQ(asked({name, "-V"}).substr(0, 7), "version");
    }
    EXPECT_EQ(asked({"a.json", "-ih", "--nonsense"}), "help run");
}

TEST(Arguments, a_misspelt_command_gets_the_nearest_as_a_suggestion) {
    EXPECT_EQ(problem({"chek"}), "'chek' is neither a command nor a file; did you mean \"check\"?");
    EXPECT_EQ(problem({"hlep", "check"}), "'hlep' is neither a command nor a file; did you mean \"help\"?");
    EXPECT_EQ(problem({"help", "chek"}), "there is no command 'chek'; did you mean \"check\"?");
    EXPECT_EQ(problem({"help", "zzzzzz"}), "there is no command 'zzzzzz'");
    EXPECT_EQ(asked({"run", "chek"}), "run chek");
    EXPECT_EQ(asked({"chek.json"}), "run chek.json");
    EXPECT_EQ(asked({"./chek"}), "run ./chek");
}

TEST(Arguments, a_usage_error_names_the_matching_help_page) {
    EXPECT_EQ(std::get<cli::UsageProblem>(parse_arguments({})).help, "exflate --help");
    EXPECT_EQ(std::get<cli::UsageProblem>(parse_arguments({"chek"})).help, "exflate --help");
    EXPECT_EQ(std::get<cli::UsageProblem>(parse_arguments({"list"})).help, "exflate list --help");
}

TEST(Arguments, without_options_a_command_gets_the_defaults) {
    const Options defaults = options({"a.json"});
    EXPECT_EQ(defaults.script_time, 120);
    EXPECT_EQ(defaults.jobs, 1U);
    EXPECT_EQ(defaults.animation, "");
    EXPECT_FALSE(defaults.dialog);
    EXPECT_TRUE(defaults.answers.copy_attributes);
    EXPECT_FALSE(defaults.answers.delete_source);
    EXPECT_FALSE(defaults.answers.keep_in_comp);
    EXPECT_EQ(defaults.answers.prefix, "");
    EXPECT_FALSE(defaults.answers.prepend_name);
    EXPECT_FALSE(defaults.answers.fix_random);
}

TEST(Arguments, each_option_sets_what_it_is_for) {
    EXPECT_FALSE(options({"a", "--discard-attributes"}).answers.copy_attributes);
    EXPECT_TRUE(options({"a", "--copy-attributes"}).answers.copy_attributes);
    EXPECT_TRUE(options({"a", "--delete-source"}).answers.delete_source);
    EXPECT_TRUE(options({"a", "--keep-in-comp"}).answers.keep_in_comp);
    EXPECT_TRUE(options({"a", "--prepend-name"}).answers.prepend_name);
    EXPECT_TRUE(options({"a", "--fix-random"}).answers.fix_random);
    EXPECT_TRUE(options({"a", "--dialog"}).dialog);
    EXPECT_TRUE(options({"a", "--recursive"}).recursive);
    EXPECT_TRUE(options({"a", "--strict"}).strict);
    EXPECT_TRUE(options({"a", "--only-exact"}).only_exact);
    EXPECT_EQ(options({"a", "--max-growth", "2.5"}).max_growth, 2.5);
    EXPECT_EQ(options({"a", "--script-time", "0.5"}).script_time, 0.5);
    EXPECT_EQ(options({"check", "a", "--script-time=90"}).script_time, 90);
    EXPECT_EQ(options({"check", "a", "--format=junit"}).format, cli::CheckFormat::junit);
    EXPECT_TRUE(options({"check", "a", "--prove"}).prove);
    EXPECT_TRUE(options({"list", "a", "--json"}).json);
    EXPECT_EQ(options({"a", "--journal", "x"}).journal, "x");
    EXPECT_EQ(options({"a", "--out-dir", "x"}).output_folder, "x");
    for (const char* command : {"run", "check", "report"}) {
        EXPECT_EQ(options({command, "a", "--animation", "x", "--animation=y"}).animation, "y");
    }
}

TEST(Arguments, the_dialogs_picture_takes_actions_in_their_order) {
    const Options picture = options({"dialog", "--type", "a=b=c", "--click", "X", "--picture", "p.png",
                                     "--type=d=", "--scale", "2", "--first-use"});
    EXPECT_EQ(picture.picture, "p.png");
    EXPECT_EQ(picture.scale, 2);
    EXPECT_TRUE(picture.first_use);
    ASSERT_EQ(picture.actions.size(), 3U);
    EXPECT_EQ(picture.actions[0].control + "|" + picture.actions[0].text, "a|b=c");
    EXPECT_EQ(picture.actions[1].control, "X");
    EXPECT_EQ(picture.actions[2].control + "|" + picture.actions[2].text, "d|");
}

TEST(Arguments, values_follow_their_options_or_are_part_of_them) {
    EXPECT_EQ(options({"--prefix=", "a"}).answers.prefix, "");
    EXPECT_EQ(options({"--prefix", "", "a"}).answers.prefix, "");
    EXPECT_EQ(options({"--prefix", "-x", "a"}).answers.prefix, "-x");
    EXPECT_EQ(options({"--prefix=a=", "a"}).answers.prefix, "a=");
    EXPECT_EQ(options({"-oout", "a"}).output, "out");
    EXPECT_EQ(options({"-o", "-", "a"}).output, "-");
    EXPECT_EQ(options({"-ij4", "a"}).jobs, 4U);
    EXPECT_TRUE(options({"-ij4", "a"}).in_place);
    EXPECT_EQ(options({"a", "--comp", "x", "--comp", "y"}).composition, "y");
    const Options layers = options({"--layer", "A", "file", "--layer=#3", "--layer", "[b,c]"});
    EXPECT_THAT(layers.layers, ElementsAre("A", "#3", "[b,c]"));
    EXPECT_THAT(layers.files, ElementsAre("file"));
    EXPECT_THAT(options({"-i", "--", "-a", "--prefix="}).files, ElementsAre("-a", "--prefix="));
    EXPECT_THAT(options({"a", "b", "-i"}).files, ElementsAre("a", "b"));
    EXPECT_THAT(options({"a", "b", "--out-dir", "d"}).files, ElementsAre("a", "b"));
}

struct Mistake {
    Arguments arguments;
    const char* sentence;
};

TEST(Arguments, each_mistake_gets_its_own_sentence) {
    const char* const kNoFile = "name a file, or - for standard input";
    const char* const kNoPlace = "several files need --out-dir DIR or --in-place";
    const std::vector<Mistake> mistakes = {
        {{}, kNoFile},
        {{"list"}, kNoFile},
        {{"replay"}, kNoFile},
        {{"--recursive"}, kNoFile},
        {{"dialog"}, "name a file for the picture with --picture"},
        {{"report", "a", "b"}, "'b' is one file too many"},
        {{"replay", "a", "b"}, "'b' is one file too many"},
        {{"version", "a"}, "'a' is one file too many"},
        {{"a", "-o"}, "--output needs a value"},
        {{"a", "--strict=yes"}, "--strict takes no value"},
        {{"a", "b"}, kNoPlace},
        {{"a", "b", "-o", "c"}, kNoPlace},
        {{"-", "-i"}, "standard input (-) cannot be replaced: leave out --in-place"},
        {{"-", "--out-dir", "d"},
         "standard input (-) has no name to be written under: use -o OUT instead of --out-dir"},
        {{"a", "--journal", "-"}, "the journal cannot go to standard output (-): name a file"},
        {{"a", "--journal="}, "--journal: needs the name of a file"},
        {{"a", "--animation="}, "--animation: needs the id of an animation"},
        {{"check", "a", "--format", "xml"}, "--format: 'xml' is none of text, json, junit"},
        {{"dialog", "--picture", "p.png", "--type", "a"}, "--type: needs CONTROL=TEXT"},
        {{"list", "a", "--animation", "x"}, "there is no option --animation"},
        {{"a", "--recursiv"}, "there is no option --recursiv; did you mean \"--recursive\"?"},
        {{"a", "--perfix=x"}, "there is no option --perfix; did you mean \"--prefix\"?"},
        {{"a", "--zzzzzzzzz"}, "there is no option --zzzzzzzzz"},
        {{"a", "-iz"}, "there is no option -z"},
        {{"a", "--delete-source", "--keep-in-comp"}, "--keep-in-comp cannot be used with --delete-source"},
        {{"a", "--copy-attributes", "--discard-attributes"},
         "--discard-attributes cannot be used with --copy-attributes"},
        {{"a", "-o", "b", "-i"}, "--in-place cannot be used with --output"},
        {{"a", "-o", "b", "--out-dir", "c"}, "--out-dir cannot be used with --output"},
        {{"a", "-i", "--out-dir", "c"}, "--out-dir cannot be used with --in-place"},
        {{"a", "-j2", "--dialog"}, "--jobs cannot be used with --dialog"},
        {{"a", "-j2", "--journal", "x"}, "--jobs cannot be used with --journal"},
    };
    for (const Mistake& mistake : mistakes) EXPECT_EQ(problem(mistake.arguments), mistake.sentence);
}

TEST(Arguments, flags_that_answer_the_dialog_are_refused_with_dialog) {
    for (const std::string flag : {"--copy-attributes", "--discard-attributes", "--delete-source", "--keep-in-comp",
                                   "--prefix=x", "--prepend-name", "--fix-random"}) {
        EXPECT_THAT(problem({"--dialog", flag, "a.json"}), HasSubstr("--dialog cannot be used with")) << flag;
    }
}

TEST(Arguments, numbers_out_of_their_range_are_refused) {
    const std::vector<std::pair<Arguments, std::vector<const char*>>> wrong = {
        {{"a", "--script-time"}, {"0", "-1", "soon", "nan", "1e9", ""}},
        {{"a", "--max-growth"}, {"-1", "nan", "inf", "many", ""}},
        {{"a", "--jobs"}, {"0", "-1", "1.5", "1025", "many", ""}},
        {{"dialog", "--picture", "p.png", "--scale"}, {"0", "9", "nan", "2x", ""}}};
    for (const auto& [arguments, values] : wrong) {
        for (const char* value : values) {
            Arguments all = arguments;
            all.emplace_back(value);
            EXPECT_THAT(problem(all), HasSubstr(arguments.back() + ": '" + value + "' is not a ")) << value;
        }
    }
}

TEST(Arguments, everything_that_the_tables_name_exists) {
    for (const cli::Option& option : cli::all_options()) {
        EXPECT_EQ(option.brief.find_first_of("[]"), std::string_view::npos) << "zsh takes them for its own";
        EXPECT_FALSE(option.brief.ends_with('.')) << option.brief;
        if (option.commands == cli::kEveryCommand) continue;
        for (const std::string_view name : cli::words(option.commands)) EXPECT_NE(cli::find_command(name), nullptr);
        const cli::Command& first = *cli::find_command(cli::words(option.commands).front());
        EXPECT_GE(cli::excluded_by(option, first).size(), cli::words(option.excludes).size()) << option.name;
    }
}

TEST(Help, the_overview_has_every_command_exit_code_and_variable) {
    for (const std::string& name : cli::command_names()) EXPECT_THAT(cli::overview(), HasSubstr("\n  " + name + " "));
    for (const char* name : {"\n  0  ", "\n  4  ", "EXFLATE_PLUGIN", "EXFLATE_PLAYER", "XDG_CONFIG_HOME", "NO_COLOR"}) {
        EXPECT_THAT(cli::overview(), HasSubstr(name));
    }
}

TEST(Help, both_pages_of_a_command_have_its_options_and_examples_in_80_columns) {
    for (const cli::Command& command : cli::all_commands()) {
        for (const std::string& page : {cli::command_summary(command), cli::command_help(command)}) {
            for (const cli::Option* option : cli::options_of(command)) {
                EXPECT_THAT(page, HasSubstr(" " + std::string(option->name) + (option->value.empty() ? "" : " ") +
                                            std::string(option->value)));
            }
            for (const cli::Example& example : command.examples)
                EXPECT_THAT(page, HasSubstr(std::string(example.line)));
            std::istringstream lines(page);
            for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
        }
    }
    EXPECT_THAT(cli::command_help(*cli::find_command("list")), Not(HasSubstr("--recursive")));
}

TEST(Help, every_example_is_right) {
    for (const cli::Command& command : cli::all_commands()) {
        for (const cli::Example& example : command.examples) {
            Arguments arguments;
            for (std::string_view word : cli::words(example.line.substr(0, example.line.find(" >")))) {
                arguments.emplace_back(word);
            }
            if (arguments.empty()) continue;
            EXPECT_TRUE(std::holds_alternative<cli::Request>(parse_arguments(arguments))) << example.line;
        }
    }
}

TEST(Help, the_full_text_of_an_option_names_what_it_excludes) {
    const cli::Command& run = *cli::find_command("run");
    const auto known = cli::options_of(run);
    const auto in_place = std::find_if(known.begin(), known.end(), [](auto* one) { return one->letter == 'i'; });
    EXPECT_EQ(
        cli::full_text(**in_place, run),
        "Replace each file with its result. Each is replaced in one step: a run that is killed leaves the old file "
        "or the new one. Not with --output or --out-dir.");
}

}  // namespace
