// The shipped options dialog, unchanged, in this engine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

struct OptionsDialog : World {
    const std::string script = read_file(OPTIONS_DIALOG_SCRIPT);

    std::string show(std::function<void(Window&)> act) {
        driver.act = std::move(act);
        return run(script);
    }
};

void click(Window& w, std::string_view control) {
    w.click(w.control(control));
}

TEST(OptionsDialog, gives_its_choices_as_json_and_remembers_them) {
    OptionsDialog world;
    ASSERT_FALSE(world.script.empty());
    EXPECT_EQ(world.show([](Window& w) {
        EXPECT_TRUE(w.control("optionCopyAttributes").value());
        w.type_text(w.control("prefixInput"), "fx \"\u00E9\"");
        click(w, "optionDiscardAttributes");
        EXPECT_FALSE(w.control("optionCopyAttributes").value());
        click(w, "optionKeepInComp");
        EXPECT_FALSE(w.control("optionDeleteSource").takes_input());
        click(w, "fixRandomExpresions");
        w.press_enter();
    }),
              "[false,false,true,\"fx \\\"\u00E9\\\"\",false,true]");
    EXPECT_EQ(world.show([](Window& w) {
        EXPECT_TRUE(w.control("optionDiscardAttributes").value());
        EXPECT_EQ(w.control("prefixInput").text(), "fx \"\u00E9\"");
        EXPECT_TRUE(w.control("optionKeepInComp").value());
        EXPECT_FALSE(w.control("optionDeleteSource").is_enabled());
        EXPECT_TRUE(w.control("fixRandomExpresions").value());
        w.press_enter();
    }),
              "[false,false,true,\"fx \\\"\u00E9\\\"\",false,true]");
    EXPECT_TRUE(world.alerts.empty());
}

TEST(OptionsDialog, gives_nothing_when_cancelled_in_any_way) {
    OptionsDialog world;
    EXPECT_EQ(world.show([](Window& w) { w.press_escape(); }), "");
    EXPECT_EQ(world.show([](Window& w) { click(w, "Cancel"); }), "");
    EXPECT_EQ(world.show([](Window& w) { w.close_box(); }), "");
    EXPECT_EQ(world.show([](Window&) {}), "");
    EXPECT_EQ(world.driver.dialogs, 4);
}

TEST(OptionsDialog, runs_often_without_growing) {
    Limits limits;
    limits.memory = std::size_t{8} << 20;
    host::model::Project project;
    Settings settings = Settings::in_memory();
    ScriptedDriver driver;
    Engine engine(project, settings, driver, nullptr, limits);
    const std::string script = read_file(OPTIONS_DIALOG_SCRIPT);
    for (int i = 0; i < 300; ++i) {
        driver.add({Action::Kind::key_enter});
        const Outcome outcome = engine.run(script);
        ASSERT_FALSE(outcome.failed) << outcome.error;
        ASSERT_EQ(outcome.result, "[true,false,false,\"\",false,false]");
    }
}

}  // namespace
}  // namespace script_test
