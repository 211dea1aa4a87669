// Folders among the files that a command works on.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

namespace fs = std::filesystem;

using test::exflate;
using test::Finished;
using test::layer_names;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::vector<std::string> kFlat = {"Title", "circle", "square", "Background"};

// Animations at several depths, and other files.
class Folders : public testing::Test {
  protected:
    Folders() {
        for (const char* folder : {"in/b/deep", "in/.git", "in/empty"}) fs::create_directories(sandbox_.path(folder));
        for (const char* file : {"in/z.json", "in/b/no name", "in/b/deep/a.json", "in/.git/hidden.json", "in/.a.json"})
            sandbox_.write(file, test::one_nest());
        sandbox_.write("in/package.json", R"({"name":"x","version":"1.0.0"})");
        sandbox_.write("in/b/readme.md", "{ not JSON }");
        fs::create_directory_symlink(sandbox_.path("in"), sandbox_.path("in/b/loop"));
        fs::create_symlink(sandbox_.path("in/z.json"), sandbox_.path("in/link.json"));
    }

    std::vector<std::string> files_of(const Finished& finished) const {
        return test::members_of(test::parsed(finished.out)["files"], "file");
    }

    Sandbox sandbox_;
};

TEST_F(Folders, stand_for_the_animations_in_them_in_order_whatever_their_names) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"check", "--format", "json", "in"}, {"list", "--json", "in"}}) {
        const Finished finished = exflate(sandbox_, arguments);
        EXPECT_EQ(finished.exit_code, 0) << finished.err;
        EXPECT_THAT(files_of(finished), ElementsAre("in/b/deep/a.json", "in/b/no name", "in/z.json"));
    }
}

TEST_F(Folders, can_be_mixed_with_files) {
    sandbox_.write("own.json", test::no_nest());
    EXPECT_THAT(files_of(exflate(sandbox_, {"list", "--json", "own.json", "in/b", "in/z.json"})),
                ElementsAre("own.json", "in/b/deep/a.json", "in/b/no name", "in/z.json"));
}

TEST_F(Folders, are_mirrored_in_the_output_folder) {
    for (const char* jobs : {"-j1", "-j3"}) {
        fs::remove_all(sandbox_.path("out"));
        const Finished finished = exflate(sandbox_, {"run", jobs, "in", "--out-dir", "out"});
        EXPECT_EQ(finished.exit_code, 0) << finished.err;
        for (const char* file : {"out/z.json", "out/b/no name", "out/b/deep/a.json"})
            EXPECT_EQ(layer_names(sandbox_.read(file)), kFlat);
        EXPECT_THAT(sandbox_.names("out"), ElementsAre("b", "z.json"));
        EXPECT_THAT(sandbox_.names("out/b"), ElementsAre("deep", "no name"));
        EXPECT_EQ(sandbox_.read("in/z.json"), test::one_nest());
    }
}

TEST_F(Folders, can_be_replaced_file_by_file_and_links_are_left_alone) {
    EXPECT_EQ(exflate(sandbox_, {"flatten", "-i", "in"}).exit_code, 0);
    EXPECT_EQ(layer_names(sandbox_.read("in/b/deep/a.json")), kFlat);
    EXPECT_EQ(layer_names(sandbox_.read("in/z.json")), kFlat);
    EXPECT_TRUE(fs::is_symlink(sandbox_.path("in/link.json")));
    for (const char* hidden : {"in/.git/hidden.json", "in/.a.json"}) EXPECT_EQ(sandbox_.read(hidden), test::one_nest());
}

TEST_F(Folders, leave_out_the_output_folder_inside_of_them) {
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(exflate(sandbox_, {"run", "in", "--out-dir", "in/out"}).exit_code, 0);
    EXPECT_FALSE(fs::exists(sandbox_.path("in/out/out")));
    EXPECT_TRUE(fs::exists(sandbox_.path("in/out/b/deep/a.json")));
}

TEST_F(Folders, hold_packed_animations_too_and_broken_ones_are_reported) {
    sandbox_.write("in/cut.json", test::one_nest().substr(0, 200));
    sandbox_.write("in/x.lottie", "PK\3\4 and no more");
    sandbox_.write("in/y.zip", "PK\3\4 and no more");
    sandbox_.write("in/a sticker", test::one_nest());
    sandbox_.write("in/text", "a text");
    for (const char* file : {"in/a sticker", "in/text"})
        sandbox_.run("/usr/bin/env", {.arguments = {"gzip", "-S", "~", file}});
    const Finished finished = exflate(sandbox_, {"list", "--json", "in"});
    EXPECT_EQ(finished.exit_code, 3);
    EXPECT_THAT(files_of(finished), ElementsAre("in/a sticker~", "in/b/deep/a.json", "in/b/no name", "in/cut.json",
                                                "in/x.lottie", "in/z.json"));
    const rapidjson::Document listing = test::parsed(finished.out);
    EXPECT_THAT(listing["files"][3]["error"].GetString(), HasSubstr("cut off"));
    EXPECT_EQ(listing["files"][3]["line"].GetInt(), 1);
    EXPECT_EQ(listing["files"][3]["column"].GetInt(), 201);
    EXPECT_FALSE(listing["files"][4].HasMember("line"));
    EXPECT_THAT(finished.err, StartsWith("in/cut.json:1:201: "));
}

TEST_F(Folders, without_an_animation_or_a_place_for_results_are_refused_before_any_work) {
    const std::vector<std::tuple<std::vector<std::string>, int, std::string>> refusals = {
        {{"check", "in/empty"}, 3, "exflate: the folder 'in/empty' holds no Lottie file\n"},
        {{"run", "in"}, 2, "exflate: a folder needs --out-dir DIR or --in-place\n"},
        {{"flatten", "in", "-o", "x.json"}, 2, "exflate: a folder needs --out-dir DIR or --in-place\n"},
        {{"run", "in", "--out-dir", "in/../in"},
         2,
         "exflate: the results would replace the files in 'in': give another folder with --out-dir, or say "
         "--in-place\n"},
        {{"run", "in/z.json", "in", "--out-dir", "out"},
         2,
         "exflate: 'in/z.json' and 'in/z.json' would both become 'out/z.json': run them one by one\n"},
        {{"report", "in", "-o", "x.html"}, 3, "in: is a folder; name a file in it\n"}};
    sandbox_.write("player.js", "");
    sandbox_.write("LICENSE.md", "");
    for (const auto& [arguments, code, sentence] : refusals) {
        const Finished finished =
            exflate(sandbox_, {.arguments = arguments, .environment = {{"EXFLATE_PLAYER", "player.js"}}});
        EXPECT_EQ(finished.exit_code, code);
        EXPECT_EQ(finished.err, sentence);
        EXPECT_EQ(finished.out, "");
    }
    EXPECT_FALSE(fs::exists(sandbox_.path("out")));
    EXPECT_EQ(exflate(sandbox_, {"flatten", "--dry-run", "in"}).exit_code, 0);
}

TEST(List, several_files_follow_one_another) {
    const Sandbox sandbox(test::one_nest());
    sandbox.write("b.json", test::no_nest());
    const Finished both = exflate(sandbox, {"list", "a.json", "absent.json", "b.json"});
    EXPECT_EQ(both.exit_code, 3);
    EXPECT_EQ(both.out, exflate(sandbox, {"list", "a.json"}).out + exflate(sandbox, {"list", "b.json"}).out);
    EXPECT_EQ(both.err, "absent.json: cannot be read: No such file or directory\n");
}

}  // namespace
