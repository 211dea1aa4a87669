// Where results go, and that nothing is ever half written.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::layer_names;
using test::Sandbox;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kFlat = {"Title", "circle", "square", "Background"};

ino_t identity(const fs::path& file) {
    struct stat facts {};
    stat(file.c_str(), &facts);
    return facts.st_ino;
}

TEST(RunOutput, one_file_is_all_that_goes_to_standard_output) {
    const Sandbox sandbox;
    const Finished finished = exflate(sandbox, {sandbox.write("a.json", test::one_nest())});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(layer_names(finished.out), kFlat);
    EXPECT_THAT(finished.err, MatchesRegex("a.json: 1 nest of composition \"Main\" un-nested, 2 layers made, 1 nested "
                                           "composition kept, [0-9]+ bytes became [0-9]+ .*%.\n"));
    EXPECT_THAT(finished.err, HasSubstr(std::to_string(test::one_nest().size()) + " bytes became " +
                                        std::to_string(finished.out.size()) + " (+"));
    EXPECT_EQ(sandbox.read("a.json"), test::one_nest());
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
}

TEST(RunOutput, a_pipe_gives_the_same_bytes_as_a_file) {
    const Sandbox sandbox;
    const Finished by_name = exflate(sandbox, {sandbox.write("a.json", test::one_nest())});
    const Finished by_pipe = exflate(sandbox, {"-"}, test::one_nest());
    EXPECT_EQ(by_pipe.exit_code, 0);
    EXPECT_EQ(by_pipe.out, by_name.out);
    EXPECT_THAT(by_pipe.err, testing::StartsWith("standard input: "));
}

TEST(RunOutput, the_same_run_gives_the_same_bytes) {
    const Sandbox sandbox(test::three_nests());
    const std::vector<std::string> arguments = {"a.json", "--recursive", "--prefix", "x", "--fix-random"};
    EXPECT_EQ(exflate(sandbox, arguments).out, exflate(sandbox, arguments).out);
}

TEST(RunOutput, o_names_the_file_and_a_dash_is_standard_output) {
    const Sandbox sandbox(test::one_nest());
    const Finished to_file = exflate(sandbox, {"a.json", "-o", "b.json"});
    EXPECT_EQ(to_file.exit_code, 0);
    EXPECT_EQ(to_file.out, "");
    EXPECT_THAT(to_file.err, HasSubstr("; written to b.json\n"));
    EXPECT_EQ(exflate(sandbox, {"a.json", "-o", "-"}).out, sandbox.read("b.json"));
    EXPECT_EQ(layer_names(sandbox.read("b.json")), kFlat);
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json", "b.json"));
}

TEST(RunOutput, in_place_replaces_each_file_and_keeps_mode_and_link) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("real.json", test::one_nest());
    chmod(sandbox.path("a.json").c_str(), 0640);
    fs::create_symlink("real.json", sandbox.path("link.json"));
    const Finished finished = exflate(sandbox, {"-i", "a.json", "link.json"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(layer_names(sandbox.read("a.json")), kFlat);
    EXPECT_EQ(static_cast<unsigned>(fs::status(sandbox.path("a.json")).permissions()), 0640U);
    EXPECT_EQ(layer_names(sandbox.read("real.json")), kFlat);
    EXPECT_TRUE(fs::is_symlink(sandbox.path("link.json")));
    EXPECT_THAT(sandbox.names(), ElementsAre("a.json", "link.json", "real.json"));
}

TEST(RunOutput, the_output_folder_is_created_and_gets_every_file) {
    const Sandbox sandbox;
    fs::create_directory(sandbox.path("in"));
    sandbox.write("in/a.json", test::one_nest());
    sandbox.write("in/b.json", test::no_nest());
    const Finished finished = exflate(sandbox, {"in/a.json", "in/b.json", "--out-dir", "out/deep"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(layer_names(sandbox.read("out/deep/a.json")), kFlat);
    EXPECT_EQ(sandbox.read("out/deep/b.json"), test::no_nest());
    EXPECT_EQ(sandbox.read("in/a.json"), test::one_nest());
}

TEST(RunOutput, without_a_nest_the_input_is_written_unchanged) {
    const Sandbox sandbox;
    const std::string text = test::no_nest() + "\n";
    const Finished finished = exflate(sandbox, {sandbox.write("a.json", text)});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, text);
    EXPECT_EQ(finished.err, "a.json: composition \"Main\" has no nests: nothing to do\n");
}

TEST(RunOutput, without_a_nest_a_file_in_place_is_left_alone) {
    const Sandbox sandbox(test::no_nest());
    const ino_t before = identity(sandbox.path("a.json"));
    EXPECT_EQ(exflate(sandbox, {"-i", "a.json"}).exit_code, 0);
    EXPECT_EQ(identity(sandbox.path("a.json")), before);
}

TEST(RunOutput, a_full_standard_output_is_an_error) {
    const Sandbox sandbox(test::one_nest());
    fs::create_symlink("/dev/full", sandbox.path("full"));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"a.json"}, {"list", "a.json"}, {"--help"}, {"--version"}}) {
        const Finished finished = exflate(sandbox, {.arguments = arguments, .out_file = "full"});
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_THAT(finished.err, HasSubstr(": standard output cannot be written: No space left on device\n"));
        EXPECT_THAT(finished.err, Not(HasSubstr("un-nested")));
    }
}

TEST(RunOutput, a_closed_pipe_is_an_error_not_a_crash) {
    const Sandbox sandbox(test::one_nest());
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"a.json"}, {"list", "a.json"}, {"list", "--json", "a.json"}, {"--help"}}) {
        const Finished finished = exflate(sandbox, {.arguments = arguments, .reader_is_gone = true});
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_THAT(finished.err, testing::MatchesRegex("[a-z.]+: standard output cannot be written: Broken pipe\n"));
    }
}

TEST(RunOutput, a_full_disk_leaves_only_the_old_file) {
    const Sandbox sandbox(test::one_nest());
    for (const std::string output : {"a.json", "b.json"}) {
        const Finished finished =
            exflate(sandbox, {.arguments = {"a.json", "-o", output}, .most_bytes_per_file = 1000});
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_THAT(finished.err, HasSubstr("a.json: '" + output + "' cannot be written: File too large\n"));
        EXPECT_EQ(sandbox.read("a.json"), test::one_nest());
        EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
    }
}

TEST(RunOutput, an_unwritable_destination_is_an_error) {
    const Sandbox sandbox(test::one_nest());
    const std::vector<std::vector<std::string>> places = {
        {"-o", "/dev/full", "'/dev/full' cannot be written: No space left on device"},
        {"-o", "absent/b.json",
         "'absent/b.json' cannot be written: no file can be made in its folder: No such file or directory"},
        {"-o", ".", "'.' cannot be written: it is a folder"},
        {"--out-dir", "a.json", "the folder 'a.json' cannot be made: Not a directory"}};
    for (const auto& place : places) {
        const Finished finished = exflate(sandbox, {"a.json", place[0], place[1]});
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_EQ(finished.err, "a.json: " + place[2] + "\n");
    }
}

TEST(RunOutput, a_bad_file_among_good_ones_sets_the_exit_code_and_harms_none) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("bad.json", "{\"v\":");
    sandbox.write("c.json", test::one_nest());
    const Finished finished = exflate(sandbox, {"-i", "a.json", "bad.json", "c.json"});
    EXPECT_EQ(finished.exit_code, 3);
    EXPECT_EQ(layer_names(sandbox.read("a.json")), kFlat);
    EXPECT_EQ(sandbox.read("bad.json"), "{\"v\":");
    EXPECT_EQ(layer_names(sandbox.read("c.json")), kFlat);
}

TEST(RunOutput, a_read_only_file_is_replaced_only_with_force) {
    const Sandbox sandbox(test::one_nest());
    fs::permissions(sandbox.path("a.json"), fs::perms::owner_read);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"run", "-i", "a.json"}, {"flatten", "-i", "a.json"}, {"-o", "a.json", "a.json"}}) {
        const Finished refused = exflate(sandbox, arguments);
        EXPECT_EQ(refused.exit_code, 4);
        EXPECT_THAT(refused.err, testing::EndsWith("a.json: 'a.json' cannot be written: it is read-only; --force "
                                                   "replaces it all the same\n"));
        EXPECT_EQ(sandbox.read("a.json"), test::one_nest());
    }
    EXPECT_EQ(exflate(sandbox, {"run", "-i", "--force", "a.json"}).exit_code, 0);
    EXPECT_EQ(layer_names(sandbox.read("a.json")), kFlat);
    EXPECT_EQ(fs::status(sandbox.path("a.json")).permissions(), fs::perms::owner_read);
}

TEST(RunOutput, a_hard_link_that_is_split_gets_a_warning) {
    const Sandbox sandbox(test::one_nest());
    fs::create_hard_link(sandbox.path("a.json"), sandbox.path("b.json"));
    fs::create_hard_link(sandbox.path("a.json"), sandbox.path("c.json"));
    EXPECT_THAT(exflate(sandbox, {"-i", "a.json"}).err,
                HasSubstr("a.json: is a file of its own now: it had 2 other hard links, which keep the old content\n"));
    EXPECT_EQ(layer_names(sandbox.read("a.json")), kFlat);
    EXPECT_EQ(sandbox.read("b.json"), test::one_nest());
    EXPECT_THAT(exflate(sandbox, {"-i", "a.json"}).err, Not(HasSubstr("hard link")));
}

TEST(RunOutput, running_out_of_memory_is_reported_in_one_sentence) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "needs its address space for itself";
#endif
    const Sandbox sandbox;
    std::vector<std::string> layers;
    for (int i = 1; i <= 6'000; ++i) layers.push_back(test::solid_layer(i, std::string(3000, 'x')));
    sandbox.write("a.json",
                  test::animation({test::asset("comp_0", "Inside", layers)}, {test::nest_layer(1, "Nest", "comp_0")}));
    const std::string before = sandbox.read("a.json");
    // From what the program itself needs to what the work needs.
    for (const long megabytes : {60, 100, 120, 140, 160, 180}) {
        for (const char* command : {"run", "check", "list", "flatten"}) {
            SCOPED_TRACE(std::to_string(megabytes) + " MB, " + command);
            std::vector<std::string> arguments = {command, "a.json"};
            const bool writes = command == std::string("run") || command == std::string("flatten");
            if (writes) arguments.insert(arguments.end(), {"-o", "out.json"});
            const Finished finished = exflate(sandbox, {.arguments = arguments, .most_memory = megabytes << 20});
            EXPECT_LE(finished.exit_code, 4) << finished.err;
            EXPECT_THAT(finished.err, Not(HasSubstr("bad_alloc")));
            if (finished.exit_code > 1) {
                EXPECT_THAT(finished.err, HasSubstr("memory"));
            }
        }
    }
    EXPECT_TRUE(sandbox.read("a.json") == before);
}

TEST(RunOutput, of_several_codes_the_highest_counts) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("bad.json", "nonsense");
    const Finished both = exflate(sandbox, {"--layer", "absent", "--out-dir", "out", "a.json", "bad.json"});
    EXPECT_EQ(both.exit_code, 3);
    EXPECT_THAT(both.err, AllOf(HasSubstr("a.json: composition \"Main\" has no layer named \"absent\""),
                                HasSubstr("bad.json:1:")));
}

TEST(RunOutput, messages_outside_a_terminal_have_no_colours) {
    const Sandbox sandbox;
    const Finished finished = exflate(sandbox, {.arguments = {"absent.json"}, .environment = {{"TERM", "xterm"}}});
    EXPECT_THAT(finished.err, Not(HasSubstr("\033")));
}

TEST(RunOutput, help_and_version_go_to_standard_output) {
    const Sandbox sandbox;
    const std::vector<std::pair<std::vector<std::string>, const char*>> asked = {
        {{"--help"}, "Usage: exflate COMMAND"},
        {{"help"}, "Usage: exflate COMMAND"},
        {{"help", "check"}, "Usage: exflate check [OPTION]... FILE|FOLDER...\n\nEach nest"},
        {{"check", "--help"}, "Usage: exflate check [OPTION]... FILE|FOLDER...\n\nEach nest"},
        {{"check", "-h"}, "Usage: exflate check [OPTION]... FILE|FOLDER...\n\nOutput:"},
        {{"--version"}, "exflate 0."},
        {{"version"}, "exflate 0."},
        {{"list", "-V"}, "exflate 0."}};
    for (const auto& [arguments, text] : asked) {
        const Finished finished = exflate(sandbox, arguments);
        EXPECT_EQ(finished.exit_code, 0);
        EXPECT_THAT(finished.out, HasSubstr(text));
        EXPECT_EQ(finished.err, "");
    }
}

TEST(RunOutput, wrong_usage_is_one_sentence_and_code_2) {
    const Sandbox sandbox;
    const std::vector<std::pair<std::vector<std::string>, const char*>> wrong = {
        {{"a.json", "--delete-source", "--keep-in-comp"}, "exflate run --help"},
        {{"chek"}, "exflate --help"},
        {{"check", "a.json", "--format", "xml"}, "exflate check --help"}};
    for (const auto& [arguments, help] : wrong) {
        const Finished finished = exflate(sandbox, arguments);
        EXPECT_EQ(finished.exit_code, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(std::count(finished.err.begin(), finished.err.end(), '\n'), 1);
        EXPECT_THAT(finished.err, testing::StartsWith("exflate: "));
        EXPECT_THAT(finished.err, testing::EndsWith(std::string(" (see ") + help + ")\n"));
    }
}

}  // namespace
