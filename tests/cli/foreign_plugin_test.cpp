// Somebody else's plug-in that crashes, exits or never returns: the command still ends, with a sentence.
#include <gmock/gmock.h>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;

namespace {

// The name of the first layer tells it what to do.
std::string animation_for(const std::string& deed) {
    return test::animation({test::asset("comp_0", "Inside", {test::shape_layer(1, "x")})},
                           {test::shape_layer(1, deed), test::nest_layer(2, "Nest", "comp_0")});
}

void expect_sentence(const std::string& deed, const std::string& sentence, const std::vector<std::string>& arguments) {
    SCOPED_TRACE(deed + ", " + arguments.front());
    const Sandbox sandbox(animation_for(deed));
    const Finished finished =
        exflate(sandbox, {.arguments = arguments, .environment = {{"EXFLATE_PLUGIN", ENDS_EARLY}}});
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_EQ(finished.err, std::string(ENDS_EARLY) + ": the plug-in " + sentence + "\n");
    EXPECT_EQ(sandbox.read("a.json"), animation_for(deed));
}

TEST(ForeignPlugin, that_crashes_or_exits_ends_every_command_with_a_sentence) {
    for (const char* command : {"run", "check", "flatten", "report"}) {
        expect_sentence("crash", "crashed (Aborted)", {command, "a.json"});
        expect_sentence("leave", "ended the program with code 0", {command, "a.json"});
    }
    expect_sentence("crash", "crashed (Aborted)", {"run", "-i", "a.json", "--journal", "run.journal"});
}

TEST(ForeignPlugin, that_un_nests_nothing_is_reported_so) {
    const Sandbox sandbox(animation_for("nothing much"));
    const Finished finished = exflate(
        sandbox, {.arguments = {"run", "a.json", "-o", "out.json"}, .environment = {{"EXFLATE_PLUGIN", ENDS_EARLY}}});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(finished.err,
                testing::StartsWith("a.json: 0 nests of composition \"Main\" un-nested, 0 layers made, "));
}

TEST(ForeignPlugin, that_never_ends_is_ended) {
    expect_sentence("compute", "took too much of the processor's time",
                    {"run", "-i", "a.json", "--script-time", "0.1"});
    expect_sentence("sleep", "took too long", {"check", "a.json", "--script-time", "0.1", "--picture-time", "0.1"});
}

}  // namespace
