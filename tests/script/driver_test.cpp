// Dialogs worked by a queue of actions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

constexpr const char* kScript = R"js(
var w = new Window("dialog", "Options"), out = "";
var edit = w.add("edittext", undefined, "start", {name: "edit"});
var check = w.add("checkbox", undefined, "Check", {name: "check"});
var off = w.add("checkbox", undefined, "Off", {name: "off"});
off.enabled = false;
w.add("button", undefined, "Ok").onClick = function () { out = edit.text + "," + check.value; w.close(1); };
w.add("button", undefined, "Cancel");
w.show();
out;
)js";

struct DriverWorld {
    host::model::Project project;
    Settings settings = Settings::in_memory();
    ScriptedDriver driver;
    Engine engine{project, settings, driver, nullptr};

    std::string run(std::vector<Action> actions) {
        for (Action& action : actions) driver.add(std::move(action));
        const ScriptResult outcome = engine.run(kScript);
        EXPECT_FALSE(outcome.failed) << outcome.error;
        return outcome.result;
    }
};

using Kind = Action::Kind;

struct Answer {
    const char* name;
    std::vector<Action> actions;
    std::string result;
    std::vector<std::string> problems = {};
};

const std::vector<Answer> kAnswers = {
    {"controls_by_name_and_by_text",
     {{Kind::type, "edit", "typed \u00E9"}, {Kind::click, "Check"}, {Kind::click, "Ok"}},
     "typed \u00E9,true"},
    {"the_enter_key", {{Kind::key_enter}}, "start,false"},
    {"the_escape_key", {{Kind::key_escape}}, ""},
    {"the_close_box", {{Kind::close_box}}, ""},
    {"nothing_cancels", {}, ""},
    {"nothing_more_cancels", {{Kind::click, "check"}}, ""},
    {"an_unknown_control_cancels",
     {{Kind::click, "nobody"}, {Kind::click, "Ok"}},
     "",
     {"The dialog \"Options\" has no control \"nobody\"."}},
    {"a_disabled_control_cancels",
     {{Kind::click, "off"}, {Kind::click, "Ok"}},
     "",
     {"The checkbox \"off\" is disabled or hidden."}},
    {"text_for_a_checkbox_cancels",
     {{Kind::type, "check", "x"}, {Kind::click, "Ok"}},
     "",
     {"The checkbox \"check\" takes no text."}},
};

class Answers : public testing::TestWithParam<Answer> {};

TEST_P(Answers, work_the_dialog) {
    DriverWorld world;
    EXPECT_EQ(world.run(GetParam().actions), GetParam().result);
    EXPECT_EQ(world.driver.actions_left(), 0U);
    EXPECT_EQ(world.driver.problems(), GetParam().problems);
}

INSTANTIATE_TEST_SUITE_P(Driver, Answers, testing::ValuesIn(kAnswers),
                         [](const auto& test) { return test.param.name; });

TEST(Driver, serves_one_dialog_after_another) {
    DriverWorld world;
    for (const Answer& answer : kAnswers) EXPECT_EQ(world.run(answer.actions), answer.result) << answer.name;
}

TEST(Driver, actions_left_over_serve_the_next_dialog) {
    DriverWorld world;
    EXPECT_EQ(world.run({{Kind::key_escape}, {Kind::key_enter}}), "");
    EXPECT_EQ(world.driver.actions_left(), 1U);
    EXPECT_EQ(world.run({}), "start,false");
}

}  // namespace
}  // namespace script_test
