// Dialogs worked by a queue of actions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST(Driver, works_controls_by_name_and_by_text) {
    DriverWorld world;
    EXPECT_EQ(world.run({{Kind::type, "edit", "typed \u00E9"}, {Kind::click, "Check"}, {Kind::click, "Ok"}}),
              "typed \u00E9,true");
    EXPECT_THAT(world.driver.problems(), IsEmpty());
}

TEST(Driver, presses_keys_and_the_close_box) {
    DriverWorld world;
    EXPECT_EQ(world.run({{Kind::key_enter}}), "start,false");
    EXPECT_EQ(world.run({{Kind::key_escape}}), "");
    EXPECT_EQ(world.run({{Kind::close_box}}), "");
    EXPECT_THAT(world.driver.problems(), IsEmpty());
}

TEST(Driver, an_empty_queue_cancels) {
    DriverWorld world;
    EXPECT_EQ(world.run({}), "");
    EXPECT_EQ(world.run({{Kind::click, "check"}}), "");
    EXPECT_THAT(world.driver.problems(), IsEmpty());
}

TEST(Driver, actions_left_over_serve_the_next_dialog) {
    DriverWorld world;
    EXPECT_EQ(world.run({{Kind::key_escape}, {Kind::key_enter}}), "");
    EXPECT_EQ(world.driver.actions_left(), 1U);
    EXPECT_EQ(world.run({}), "start,false");
}

TEST(Driver, what_cannot_be_done_is_told_and_cancels) {
    DriverWorld world;
    EXPECT_EQ(world.run({{Kind::click, "nobody"}, {Kind::click, "Ok"}}), "");
    EXPECT_EQ(world.run({{Kind::click, "off"}, {Kind::click, "Ok"}}), "");
    EXPECT_EQ(world.run({{Kind::type, "check", "x"}, {Kind::click, "Ok"}}), "");
    EXPECT_EQ(world.driver.actions_left(), 0U);
    EXPECT_THAT(world.driver.problems(),
                ElementsAre("The dialog \"Options\" has no control \"nobody\".",
                            "The checkbox \"off\" is disabled or hidden.", "The checkbox \"check\" takes no text."));
}

}  // namespace
}  // namespace script_test
