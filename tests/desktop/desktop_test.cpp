// The command with its dialog on a desktop: real windows of the real process, a real mouse and keyboard.
#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <future>
#include <map>

#include "../cli/animations.h"
#include "../cli/sandbox.h"
#include "stage.h"
#include "x_display.h"

namespace dialog_test {
namespace {

using test::Finished;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A settings folder that stays from run to run, an animation, a desktop.
class Desktop : public testing::Test {
  protected:
    void SetUp() override {
        sandbox.write("a.json", test::one_nest());
        std::filesystem::create_directory(sandbox.path("config"));
    }

    test::Start start(std::vector<std::string> arguments, std::string config = "") const {
        arguments.insert(arguments.begin(), "run");
        if (config.empty()) config = sandbox.path("config").string();
        return {.arguments = std::move(arguments),
                .environment = {{"DISPLAY", display.name()}, {"XDG_CONFIG_HOME", config}, {"HOME", sandbox.folder()}},
                .without_settings_folder = true};
    }

    // Runs the command while a person operates it. If it still waits afterwards, its display is taken away.
    Finished run(const test::Start& how, const std::function<void()>& person) {
        auto finished = std::async(std::launch::async, [&] { return test::exflate(sandbox, how); });
        person();
        if (finished.wait_for(std::chrono::seconds(30)) == std::future_status::timeout) {
            ADD_FAILURE() << "the command does not end";
            display.take_away();
        }
        return finished.get();
    }

    Finished run(const std::vector<std::string>& arguments, const std::function<void()>& person) {
        return run(start(arguments), person);
    }

    // The same without a window, answered by flags, in a folder of its own.
    static std::string answered_by(std::vector<std::string> flags) {
        const Sandbox other;
        flags.push_back(other.write("a.json", test::one_nest()));
        return test::exflate(other, flags).out;
    }

    std::string settings() const { return sandbox.read("config/exflate/settings"); }

    // Clicks on the control wherever the layout put it.
    void click(const std::string& window, const QString& control_name) const {
        const QRect there = places().at(control_name);
        display.click(window, there.left() + 12, there.center().y());
    }

    static const std::map<QString, QRect>& places() {
        static const std::map<QString, QRect> known = [] {
            std::map<QString, QRect> result;
            Stage stage;
            stage.run(options_dialog(), {[&](QDialog& dialog) {
                          for (const auto* widget : dialog.findChildren<QWidget*>()) {
                              if (!widget->objectName().isEmpty())
                                  result[widget->objectName()] = place(dialog, widget->objectName());
                          }
                          press(Qt::Key_Escape);
                      }});
            return result;
        }();
        return known;
    }

    Sandbox sandbox;
    XDisplay display;
};

TEST_F(Desktop, a_person_with_a_mouse_gets_the_result_of_the_flags) {
    const Finished finished = run({"--dialog", "a.json", "-o", "out.json"}, [&] {
        const std::string window = display.wait_for_window("Exflate");
        ASSERT_NE(window, "");
        click(window, "optionDiscardAttributes");
        click(window, "optionDeleteSource");
        click(window, "optionKeepInComp");  // disabled by now
        click(window, "prependPrecompName");
        click(window, "prefixInput");
        display.type("fx");
        click(window, "buttonOK");
    });
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_EQ(sandbox.read("out.json"),
              answered_by({"--discard-attributes", "--delete-source", "--prepend-name", "--prefix", "fx"}));
    EXPECT_THAT(settings(), HasSubstr("\"settingCopyPrecompAttr\" = \"false\""));
    EXPECT_THAT(settings(), HasSubstr("\"settingDeleteSource\" = \"true\""));
    EXPECT_THAT(settings(), HasSubstr("\"settingKeepInComp\" = \"false\""));
    EXPECT_THAT(settings(), HasSubstr("\"settingPrefixInput\" = \"fx\""));
}

TEST_F(Desktop, a_person_with_only_a_keyboard_gets_the_result_of_the_flags) {
    const Finished finished = run({"--dialog", "a.json"}, [&] {
        ASSERT_NE(display.wait_for_window("Exflate"), "");
        display.type("é€");
        for (const char* key : {"Tab", "Tab", "space", "Tab", "Tab", "space", "Tab", "Tab", "space", "Tab", "Tab",
                                "shift+Tab", "space"}) {
            display.press(key);
        }
    });
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_EQ(finished.out, answered_by({"--discard-attributes", "--keep-in-comp", "--fix-random", "--prefix", "é€"}));
}

TEST_F(Desktop, the_second_start_shows_the_saved_choices) {
    run({"--dialog", "a.json"}, [&] {
        const std::string window = display.wait_for_window("Exflate");
        ASSERT_NE(window, "");
        display.type("kept");
        click(window, "optionKeepInComp");
        display.press("Return");
    });
    const Finished again = run({"--dialog", "a.json"}, [&] {
        ASSERT_NE(display.wait_for_window("Exflate"), "");
        display.press("Return");
    });
    EXPECT_EQ(again.out, answered_by({"--keep-in-comp", "--prefix", "kept"}));
}

TEST_F(Desktop, escape_the_close_button_and_cancel_change_neither_file_nor_settings) {
    const std::vector<std::function<void(const std::string&)>> ways = {
        [&](const std::string&) { display.press("Escape"); },
        [&](const std::string& window) { display.ask_to_close(window); },
        [&](const std::string& window) { click(window, "buttonCancel"); }};
    for (const auto& way : ways) {
        const Finished finished = run({"--dialog", "-i", "a.json"}, [&] {
            const std::string window = display.wait_for_window("Exflate");
            ASSERT_NE(window, "");
            display.type("unwanted");
            click(window, "optionDeleteSource");
            way(window);
        });
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_EQ(finished.err, "a.json: cancelled in the dialog\n");
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(sandbox.read("a.json"), test::one_nest());
        EXPECT_THAT(sandbox.names("config"), IsEmpty());
    }
}

TEST_F(Desktop, a_prefix_too_long_is_refused_in_a_window_and_offered_again) {
    const std::string prefix(51, 'p');
    const Finished finished = run({"--dialog", "a.json"}, [&] {
        ASSERT_NE(display.wait_for_window("Exflate"), "");
        display.type(prefix);
        display.press("Return");
        ASSERT_NE(display.wait_for_window("Prefix Too Long"), "");
        EXPECT_FALSE(display.has_window("Exflate"));
        display.press("Return");
    });
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err,
              "a.json: the plug-in's command changed nothing: Prefix Too Long: The prefix you set it too long. Please "
              "limit prefixes to 50 characters.\n");
    const Finished again = run({"--dialog", "a.json"}, [&] {
        ASSERT_NE(display.wait_for_window("Exflate"), "");
        display.press("End");
        display.press("BackSpace");
        display.press("Return");
    });
    EXPECT_EQ(again.out, answered_by({"--prefix", prefix.substr(1)}));
}

TEST_F(Desktop, settings_that_cannot_be_saved_are_reported_in_a_window_and_the_run_goes_on) {
    const Finished finished = run(start({"--dialog", "a.json"}, "/dev/null"), [&] {
        ASSERT_NE(display.wait_for_window("Exflate"), "");
        display.press("Return");
        ASSERT_NE(display.wait_for_window("Script Alert"), "");
        display.press("Escape");
    });
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_EQ(finished.out, answered_by({}));
}

TEST_F(Desktop, damaged_settings_are_reported_and_the_dialog_opens_with_its_defaults) {
    std::filesystem::create_directory(sandbox.path("config/exflate"));
    sandbox.write("config/exflate/settings", "\x01 no settings at all");
    const Finished finished = run({"--dialog", "a.json"}, [&] {
        ASSERT_NE(display.wait_for_window("Exflate"), "");
        display.press("Return");
    });
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_THAT(finished.err, HasSubstr("settings"));
    EXPECT_EQ(finished.out, answered_by({}));
    EXPECT_THAT(sandbox.names("config/exflate"), testing::Contains("settings.damaged"));
}

TEST_F(Desktop, each_file_has_a_dialog_of_its_own) {
    sandbox.write("b.json", test::one_nest());
    const Finished finished = run({"--dialog", "-i", "a.json", "b.json"}, [&] {
        const std::string first = display.wait_for_window("Exflate");
        ASSERT_NE(first, "");
        display.press("Escape");
        ASSERT_NE(display.wait_for_window("Exflate", first), "");
        display.press("Return");
    });
    EXPECT_EQ(finished.exit_code, 4);
    EXPECT_EQ(sandbox.read("a.json"), test::one_nest());
    EXPECT_EQ(sandbox.read("b.json"), answered_by({}));
}

TEST(NoDesktop, is_reported_in_one_sentence) {
    const Sandbox sandbox(test::one_nest());
    using Environment = std::map<std::string, std::string>;
    for (const Environment& environment :
         {Environment{}, Environment{{"DISPLAY", ":4711"}}, Environment{{"WAYLAND_DISPLAY", "nowhere"}},
          Environment{{"QT_QPA_PLATFORM", "offscreen"}}, Environment{{"QT_QPA_PLATFORM", "nonsense"}}}) {
        const Finished finished =
            test::exflate(sandbox, {.arguments = {"run", "--dialog", "a.json"}, .environment = environment});
        EXPECT_EQ(finished.exit_code, 4);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(finished.err, "exflate: no window can be shown: there is no desktop that can be reached\n");
        EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
    }
}

TEST(NoDesktop, the_command_does_not_load_the_toolkit_to_start) {
    const Sandbox sandbox;
    const Finished libraries = sandbox.run("/usr/bin/ldd", {.arguments = {EXFLATE_COMMAND}});
    EXPECT_THAT(libraries.out, HasSubstr("libc."));
    EXPECT_THAT(libraries.out, Not(HasSubstr("Qt")));
}

}  // namespace
}  // namespace dialog_test
