// Whatever the names of files, layers and arguments, no byte of them controls a terminal.
#include <gmock/gmock.h>

#include "animations.h"
#include "base/printable.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;

namespace {

// Clears a screen, names a window, goes back, turns the direction; and bytes that are not text.
const std::string kHostile =
    "\x1b[2J\x1b]0;x\x07\r\x7f\xc2\x9b"
    "31m\xe2\x80\xae\xe2\x81\xa6\xff\nx";

// The same for the inside of JSON.
const std::string kInFile = R"(\u001b[2J\r\u007f\u009b31m\u202e\u2066\nx)";

std::string hostile_animation() {
    return test::animation(
        {test::asset(kInFile, kInFile, {test::nest_layer(1, kInFile, "comp_1"), test::shape_layer(2, kInFile)}),
         test::asset("comp_1", kInFile, {test::solid_layer(1, kInFile, R"(,"parent":7,"refId":")" + kInFile + '"')})},
        {test::nest_layer(1, kInFile, kInFile), test::nest_layer(2, "lost", kInFile + "!")});
}

class RawBytes : public testing::TestWithParam<std::vector<std::string>> {};

std::string without(std::string text, const std::string& what) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at))
        text.erase(at, what.size());
    return text;
}

// Without the control sequences that the console means to send.
std::string without_colors(std::string text) {
    for (const char* own : {"\033[31m", "\033[32m", "\033[33m", "\033[0m", "\r\033[K"}) text = without(text, own);
    return text;
}

TEST_P(RawBytes, never_reach_a_terminal) {
    for (const bool is_terminal : {false, true}) {
        const Sandbox sandbox;
        sandbox.write(kHostile, hostile_animation());
        sandbox.write("broken" + kHostile, "{\"v\":");
        sandbox.write("a.json", test::one_nest());
        std::map<std::string, std::string> environment = {{"TERM", "xterm"}, {"EXFLATE_PLAYER", kHostile}};
        std::vector<std::string> arguments = GetParam();
        if (arguments.front() == "PLUGIN") {
            environment["EXFLATE_PLUGIN"] = sandbox.path("broken" + kHostile);
            arguments.erase(arguments.begin());
        }
        const Finished finished =
            exflate(sandbox, {.arguments = arguments, .environment = environment, .errors_to_terminal = is_terminal});
        const std::string errors = is_terminal ? without_colors(finished.err) : finished.err;
        EXPECT_EQ(errors, host::base::printable_lines(errors));
        EXPECT_EQ(finished.out, host::base::printable_lines(finished.out));
        EXPECT_FALSE((finished.out + errors).empty());
    }
}

const std::string kBroken = "broken" + kHostile;

INSTANTIATE_TEST_SUITE_P(
    All, RawBytes,
    testing::Values(
        std::vector<std::string>{"run", "-i", kHostile},
        std::vector<std::string>{"run", kHostile, "-o", "o" + kHostile},
        std::vector<std::string>{"run", "-i", "a.json", kHostile, kBroken, "absent" + kHostile},
        std::vector<std::string>{"run", "-i", "-j", "2", "a.json", kHostile, kBroken},
        std::vector<std::string>{"run", "--out-dir", "d" + kHostile, kHostile},
        std::vector<std::string>{"run", "--out-dir", kHostile, "a.json"},
        std::vector<std::string>{"run", "-i", kHostile, "--journal", kHostile},
        std::vector<std::string>{"run", "-i", kHostile, "--journal", "no/" + kHostile},
        std::vector<std::string>{"run", "-i", kHostile, "--only-exact"},
        std::vector<std::string>{"run", "-i", kHostile, "--layer", kHostile},
        std::vector<std::string>{"run", "-i", kHostile, "--comp", kHostile},
        std::vector<std::string>{"run", "-i", kHostile, "--animation", kHostile},
        std::vector<std::string>{"run", "-i", kHostile, "--max-growth", kHostile},
        std::vector<std::string>{"PLUGIN", "run", "-i", kHostile}, std::vector<std::string>{"flatten", "-i", kHostile},
        std::vector<std::string>{"flatten", "--prove", "-i", kHostile},
        std::vector<std::string>{"check", kHostile, kBroken}, std::vector<std::string>{"check", "--prove", kHostile},
        std::vector<std::string>{"check", "--format", "json", kHostile, kBroken},
        std::vector<std::string>{"check", "--format", "junit", kHostile, kBroken},
        std::vector<std::string>{"list", kHostile}, std::vector<std::string>{"list", kBroken},
        std::vector<std::string>{"list", "--json", kHostile},
        std::vector<std::string>{"report", kHostile, "-o", "r" + kHostile}, std::vector<std::string>{"report", kBroken},
        std::vector<std::string>{"report", kHostile, "-o", kHostile}, std::vector<std::string>{"replay", kHostile},
        std::vector<std::string>{"dialog", "--picture", "no/" + kHostile},
        std::vector<std::string>{"dialog", "--picture", "p.png", "--click", kHostile},
        std::vector<std::string>{"help", kHostile}, std::vector<std::string>{"run" + kHostile},
        std::vector<std::string>{"check", "--" + kHostile}, std::vector<std::string>{"-" + kHostile}));

}  // namespace
