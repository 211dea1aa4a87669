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

}  // namespace
