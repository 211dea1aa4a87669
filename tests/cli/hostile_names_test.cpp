// Names that are scripts: they run in the host's engine and reach nothing outside it.
#include <gmock/gmock.h>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;

namespace {

class HostileName : public testing::TestWithParam<const char*> {};

// The nest's name goes into scripts as "NAME".
TEST_P(HostileName, leaves_nothing_behind_but_the_output) {
    const Sandbox sandbox;
    const std::string name = std::string("\\\");") + GetParam() + "//";
    const std::string text = test::animation({test::asset("comp_0", name, {test::shape_layer(1, name)})},
                                             {test::nest_layer(1, name, "comp_0"), test::shape_layer(2, "b")});
    const Finished finished = exflate(sandbox, {sandbox.write("a.json", text), "-o", "out.json", "--prepend-name"});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_THAT(sandbox.names(), testing::ElementsAre("a.json", "out.json"));
    EXPECT_EQ(sandbox.read("a.json"), text);
}

INSTANTIATE_TEST_SUITE_P(Run, HostileName,
                         testing::Values("system.callSystem('touch x');", "new File('x').open('w');",
                                         "$.getenv('HOME');", "require('fs').writeFileSync('x','');",
                                         "function f(){f()};f();", "var s='x';while(1)s+=s;",
                                         "/^(a+)+$/.test(new Array(40).join('a')+'b');",
                                         "({get x(){return this.x}}).x;"));

// The name of each of the layers ends up in a script of its own.
std::string endless_names(int layers, int nests) {
    std::vector<std::string> inside;
    std::vector<std::string> outside;
    for (int i = 1; i <= layers; ++i) inside.push_back(test::shape_layer(i, "\\\");while(1){}//"));
    for (int i = 1; i <= nests; ++i) outside.push_back(test::nest_layer(i, "nest", "comp_0"));
    return test::animation({test::asset("comp_0", "inner", inside)}, outside);
}

const std::string kSentence =
    "a.json: a script took too long and was ended: either a name in the file is itself a script, or there is a great "
    "deal "
    "to do; --script-time gives more time\n";

TEST(EndlessName, ends_the_run_with_an_error_and_leaves_the_input_alone) {
    const Sandbox sandbox;
    const std::string text = endless_names(20, 20);
    sandbox.write("a.json", text);
    const std::vector<std::vector<std::string>> ways = {
        {"-o", "out.json"}, {"--in-place"}, {"--recursive"}, {"--strict"}, {"--only-exact"}};
    for (std::vector<std::string> arguments : ways) {
        arguments.insert(arguments.end(), {"a.json", "--prepend-name", "--script-time", "0.4"});
        const Finished finished = exflate(sandbox, arguments);
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_THAT(finished.err, testing::HasSubstr(kSentence));
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(sandbox.read("a.json"), text);
        EXPECT_THAT(sandbox.names(), testing::ElementsAre("a.json"));
    }
}

TEST(EndlessName, ends_a_check_with_an_error) {
    const Sandbox sandbox;
    const Finished finished = exflate(
        sandbox, {"check", sandbox.write("a.json", endless_names(20, 20)), "--prepend-name", "--script-time", "0.4"});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.err, testing::HasSubstr(kSentence));
}

// None of the scripts takes long, but there are many.
TEST(EndlessName, is_no_worse_than_many_slow_scripts) {
    const Sandbox sandbox;
    std::vector<std::string> layers;
    for (int i = 1; i <= 500; ++i) {
        layers.push_back(test::shape_layer(i, "\\\");for(var i=0;i<20000;++i);//"));
    }
    const std::string text =
        test::animation({test::asset("comp_0", "inner", layers)}, {test::nest_layer(1, "nest", "comp_0")});
    const Finished finished =
        exflate(sandbox, {sandbox.write("a.json", text), "--prepend-name", "--script-time", "0.3", "-o", "out.json"});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(finished.err, testing::HasSubstr("The scripts ran longer than 300 ms together and were ended."));
    EXPECT_THAT(sandbox.names(), testing::ElementsAre("a.json"));
}

TEST(EndlessName, in_one_file_takes_no_time_from_the_next) {
    const Sandbox sandbox;
    const Finished finished =
        exflate(sandbox, {sandbox.write("a.json", endless_names(1, 1)), sandbox.write("b.json", test::one_nest()),
                          "--out-dir", "out", "--prepend-name", "--script-time", "0.4"});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_THAT(sandbox.names("out"), testing::ElementsAre("b.json"));
}

}  // namespace
