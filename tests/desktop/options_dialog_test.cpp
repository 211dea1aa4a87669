// The plug-in's options dialog, operated by mouse and keyboard, and what it remembers.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "stage.h"

namespace dialog_test {
namespace {

bool is_ticked(QDialog& dialog, const QString& name) {
    return dynamic_cast<QAbstractButton&>(control(dialog, name)).isChecked();
}

QString prefix(QDialog& dialog) {
    return dynamic_cast<QLineEdit&>(control(dialog, "prefixInput")).text();
}

TEST(OptionsDialog, first_use_shows_the_defaults) {
    Stage stage;
    EXPECT_EQ(stage.run(options_dialog(), {[](QDialog& dialog) {
                            EXPECT_TRUE(is_ticked(dialog, "optionCopyAttributes"));
                            EXPECT_FALSE(is_ticked(dialog, "optionDiscardAttributes"));
                            for (const char* name : {"optionDeleteSource", "optionKeepInComp", "prependPrecompName",
                                                     "fixRandomExpresions"}) {
                                EXPECT_FALSE(is_ticked(dialog, name)) << name;
                                EXPECT_TRUE(control(dialog, name).isEnabled()) << name;
                            }
                            EXPECT_EQ(prefix(dialog), "");
                            EXPECT_EQ(focused(), "prefixInput");
                            press(Qt::Key_Return);
                        }}),
              "[true,false,false,\"\",false,false]");
}

TEST(OptionsDialog, everything_can_be_reached_with_the_mouse) {
    Stage stage;
    EXPECT_EQ(stage.run(options_dialog(), {[](QDialog& dialog) {
                            click(dialog, "Discard pre-comp attributes");
                            EXPECT_FALSE(is_ticked(dialog, "optionCopyAttributes"));
                            click(dialog, "Keep pre-comp in composition");
                            click(dialog, "Prepend pre-comp name to extracted layers");
                            click(dialog, "Attempt to correct layers with randomized expressions");
                            click(dialog, "prefixInput");
                            type("fx");
                            click(dialog, "Ok");
                        }}),
              "[false,false,true,\"fx\",true,true]");
}

TEST(OptionsDialog, everything_can_be_reached_with_the_keyboard) {
    Stage stage;
    EXPECT_EQ(stage.run(options_dialog(), {[](QDialog& dialog) {
                            type("fx");
                            press(Qt::Key_Tab);
                            press(Qt::Key_Tab);
                            press(Qt::Key_Space);  // discard
                            EXPECT_TRUE(is_ticked(dialog, "optionDiscardAttributes"));
                            EXPECT_FALSE(is_ticked(dialog, "optionCopyAttributes"));
                            press(Qt::Key_Tab);
                            press(Qt::Key_Space);  // delete the source, so that keeping is skipped
                            press(Qt::Key_Tab);
                            press(Qt::Key_Space);  // prepend
                            press(Qt::Key_Tab);
                            press(Qt::Key_Space);  // random
                            press(Qt::Key_Tab);
                            press(Qt::Key_Space);  // Ok
                            EXPECT_FALSE(dialog.isVisible());
                        }}),
              "[false,true,false,\"fx\",true,true]");
}

TEST(OptionsDialog, tab_goes_round_in_the_order_of_the_controls_and_back) {
    Stage stage;
    stage.run(options_dialog(), {[](QDialog&) {
                  const std::vector<std::string> order = {
                      "prefixInput",      "optionCopyAttributes", "optionDiscardAttributes", "optionDeleteSource",
                      "optionKeepInComp", "prependPrecompName",   "fixRandomExpresions",     "buttonOK",
                      "buttonCancel",     "prefixInput"};
                  std::vector<std::string> there = {focused().toStdString()};
                  for (int i = 0; i < 9; ++i) {
                      press(Qt::Key_Tab);
                      there.push_back(focused().toStdString());
                  }
                  EXPECT_EQ(there, order);
                  std::vector<std::string> back = {focused().toStdString()};
                  for (int i = 0; i < 9; ++i) {
                      press(Qt::Key_Backtab, Qt::ShiftModifier);
                      back.push_back(focused().toStdString());
                  }
                  std::ranges::reverse(back);
                  EXPECT_EQ(back, order);
                  press(Qt::Key_Escape);
              }});
}

TEST(OptionsDialog, checking_one_of_the_two_disables_the_other_at_once) {
    Stage stage;
    stage.run(options_dialog(), {[](QDialog& dialog) {
                  QWidget& keep = control(dialog, "optionKeepInComp");
                  QWidget& remove = control(dialog, "optionDeleteSource");
                  click(dialog, "optionDeleteSource");
                  EXPECT_FALSE(keep.isEnabled());
                  click(dialog, "optionKeepInComp");
                  EXPECT_FALSE(is_ticked(dialog, "optionKeepInComp"));
                  click(dialog, "optionDeleteSource");
                  EXPECT_TRUE(keep.isEnabled());
                  click(dialog, "optionKeepInComp");
                  EXPECT_FALSE(remove.isEnabled());
                  press(Qt::Key_Escape);
              }});
}

TEST(OptionsDialog, escape_the_close_button_and_cancel_change_nothing) {
    Stage stage;
    const std::vector<Actions> ways = {[](QDialog&) { press(Qt::Key_Escape); }, [](QDialog& dialog) { dialog.close(); },
                                       [](QDialog& dialog) { click(dialog, "Cancel"); },
                                       [](QDialog& dialog) {
                                           control(dialog, "buttonCancel").setFocus();
                                           press(Qt::Key_Space);
                                       }};
    for (const Actions& way : ways) {
        EXPECT_EQ(stage.run(options_dialog(), {[&](QDialog& dialog) {
                                type("unwanted");
                                click(dialog, "optionDeleteSource");
                                way(dialog);
                                EXPECT_FALSE(dialog.isVisible());
                            }}),
                  "");
        EXPECT_EQ(stage.settings.find("corvane.exflate", "settingPrefixInput"), nullptr);
    }
}

TEST(OptionsDialog, choices_are_remembered) {
    Stage stage;
    stage.run(options_dialog(), {[](QDialog& dialog) {
                  type("é \"q\" \\");
                  click(dialog, "optionDiscardAttributes");
                  click(dialog, "optionDeleteSource");
                  click(dialog, "fixRandomExpresions");
                  press(Qt::Key_Return);
              }});
    EXPECT_EQ(stage.run(options_dialog(), {[](QDialog& dialog) {
                            EXPECT_EQ(prefix(dialog), "é \"q\" \\");
                            EXPECT_TRUE(is_ticked(dialog, "optionDiscardAttributes"));
                            EXPECT_FALSE(is_ticked(dialog, "optionCopyAttributes"));
                            EXPECT_TRUE(is_ticked(dialog, "optionDeleteSource"));
                            EXPECT_FALSE(is_ticked(dialog, "optionKeepInComp"));
                            EXPECT_FALSE(control(dialog, "optionKeepInComp").isEnabled());
                            EXPECT_TRUE(is_ticked(dialog, "fixRandomExpresions"));
                            press(Qt::Key_Enter);
                        }}),
              R"([false,true,false,"é \"q\" \\",false,true])");
}

TEST(OptionsDialog, enter_presses_ok_wherever_the_focus_is) {
    Stage stage;
    for (const char* name : {"prefixInput", "optionDiscardAttributes", "optionKeepInComp", "buttonCancel"}) {
        EXPECT_EQ(stage.run(options_dialog(), {[&](QDialog& dialog) {
                                control(dialog, name).setFocus();
                                press(Qt::Key_Return);
                            }}),
                  "[true,false,false,\"\",false,false]")
            << name;
    }
}

TEST(OptionsDialog, the_prefix_takes_any_character_and_edits_can_be_undone) {
    Stage stage;
    EXPECT_EQ(stage.run(options_dialog(), {[](QDialog& dialog) {
                            type("Łódź 漢字 😀");
                            EXPECT_EQ(prefix(dialog), "Łódź 漢字 😀");
                            press(Qt::Key_Backspace);
                            EXPECT_EQ(prefix(dialog), "Łódź 漢字 ");
                            press(Qt::Key_Z, Qt::ControlModifier);
                            EXPECT_EQ(prefix(dialog), "Łódź 漢字 😀");
                            press(Qt::Key_Return);
                        }}),
              "[true,false,false,\"Łódź 漢字 😀\",false,false]");
}

TEST(OptionsDialog, a_very_long_prefix_is_not_cut_but_not_remembered_either) {
    Stage stage;
    const std::string result = stage.run(
        options_dialog(), {[](QDialog& dialog) {
                               dynamic_cast<QLineEdit&>(control(dialog, "prefixInput")).insert(QString(100'000, 'p'));
                               type("q");
                               press(Qt::Key_Return);
                           },
                           [](QDialog& alert) {
                               EXPECT_EQ(alert.windowTitle(), "Script Alert");
                               press(Qt::Key_Return);
                           }});
    EXPECT_EQ(result.size(), std::string("[true,false,false,\"\",false,false]").size() + 100'001);
}

TEST(OptionsDialog, controls_have_accessible_names) {
    Stage stage;
    stage.run(options_dialog(), {[](QDialog& dialog) {
                  EXPECT_EQ(control(dialog, "prefixInput").accessibleName(), "Exflated Layer Prefix");
                  EXPECT_EQ(control(dialog, "optionKeepInComp").accessibleName(), "Keep pre-comp in composition");
                  EXPECT_EQ(control(dialog, "buttonOK").accessibleName(), "Ok");
                  press(Qt::Key_Escape);
              }});
}

TEST(OptionsDialog, settings_that_cannot_be_saved_are_reported_in_a_window_and_the_choices_count) {
    Stage stage;
    stage.settings = host::script::Settings("/dev/null/settings");
    EXPECT_EQ(stage.run(options_dialog(), {[](QDialog&) { press(Qt::Key_Return); },
                                           [](QDialog& alert) {
                                               EXPECT_EQ(alert.windowTitle(), "Script Alert");
                                               EXPECT_THAT(alert.accessibleDescription().toStdString(),
                                                           testing::HasSubstr("/dev/null"));
                                               press(Qt::Key_Return);
                                           }}),
              "[true,false,false,\"\",false,false]");
}

}  // namespace
}  // namespace dialog_test
