// Windows of any script's dialogs: what a person does reaches the script, and the script's changes show at once.
#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "stage.h"

namespace dialog_test {
namespace {

void leave(QDialog&) {
    press(Qt::Key_Escape);
}

TEST(DialogView, what_a_handler_changes_is_seen_at_once) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog', 'Before'), t = w.add('statictext', undefined, 'old words'),"
                        "e = w.add('edittext', undefined, '', {name: 'e'}), b = w.add('button', undefined, 'Go'),"
                        "c = w.add('checkbox', undefined, 'Tick', {name: 'c'});"
                        "b.onClick = function () { w.text = 'After & more'; t.text = 'new words'; e.text = 'typed';"
                        "c.value = true; c.enabled = false; b.visible = false; }; w.show()",
                        {[](QDialog& dialog) {
                            click(dialog, "Go");
                            EXPECT_EQ(dialog.windowTitle(), "After & more");
                            EXPECT_EQ(dynamic_cast<QLabel&>(control(dialog, "new words")).text(), "new words");
                            EXPECT_EQ(dynamic_cast<QLineEdit&>(control(dialog, "e")).text(), "typed");
                            EXPECT_TRUE(dynamic_cast<QAbstractButton&>(control(dialog, "c")).isChecked());
                            EXPECT_FALSE(control(dialog, "c").isEnabled());
                            EXPECT_FALSE(control(dialog, "Go").isVisible());
                            leave(dialog);
                        }}),
              "2");
}

TEST(DialogView, changes_are_seen_behind_an_alert_too) {
    Stage stage;
    stage.run(
        "var w = new Window('dialog', 'Main'), c = w.add('checkbox', undefined, 'Tick', {name: 'c'}),"
        "b = w.add('button', undefined, 'Go');"
        "b.onClick = function () { c.enabled = false; alert('Wait', 'Title'); c.enabled = true; }; w.show()",
        {[](QDialog& dialog) {
             click(dialog, "Go");
             EXPECT_TRUE(control(dialog, "c").isEnabled());
             leave(dialog);
         },
         [](QDialog& alert) {
             EXPECT_EQ(alert.windowTitle(), "Title");
             for (QWidget* window : QApplication::topLevelWidgets()) {
                 if (window->windowTitle() != "Main") continue;
                 EXPECT_FALSE(control(dynamic_cast<QDialog&>(*window), "c").isEnabled());
             }
             press(Qt::Key_Escape);
         }});
}

TEST(DialogView, elements_that_a_handler_adds_appear) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog'), b = w.add('button', undefined, 'More'), n = 0;"
                        "b.onClick = function () { var d = w.add('button', undefined, 'New', {name: 'new'});"
                        "d.onClick = function () { n = 1; w.close(7); }; w.layout.layout(true); }; w.show() + n",
                        {[](QDialog& dialog) {
                            const int before = dialog.height();
                            click(dialog, "More");
                            EXPECT_GT(dialog.height(), before);
                            EXPECT_TRUE(control(dialog, "new").isVisible());
                            click(dialog, "new");
                        }}),
              "8");
}

TEST(DialogView, typing_is_reported_key_by_key_and_then_as_a_whole) {
    Stage stage;
    EXPECT_EQ(stage.run("var log = [], w = new Window('dialog'), e = w.add('edittext', undefined, '', {name: 'e'});"
                        "w.add('button', undefined, 'Elsewhere'); e.onChanging = function () { log.push(e.text); };"
                        "e.onChange = function () { log.push('!' + e.text); }; w.show(); log.join()",
                        {[](QDialog& dialog) {
                            type("ab");
                            press(Qt::Key_Tab);
                            leave(dialog);
                        }}),
              "a,ab,!ab");
}

TEST(DialogView, a_handler_may_correct_what_is_typed) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog'), e = w.add('edittext', undefined, '', {name: 'e'});"
                        "e.onChanging = function () { e.text = e.text.replace(/[^0-9]/g, ''); }; w.show(); e.text",
                        {[](QDialog& dialog) {
                            type("1a2b");
                            EXPECT_EQ(dynamic_cast<QLineEdit&>(control(dialog, "e")).text(), "12");
                            leave(dialog);
                        }}),
              "12");
}

TEST(DialogView, in_a_multiline_field_enter_adds_a_line_and_tab_moves_on) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog'), e = w.add('edittext', undefined, '', {name: 'e', multiline: "
                        "true}); w.add('button', undefined, 'Ok', {name: 'ok'}); w.show() + e.text",
                        {[](QDialog&) {
                            type("one");
                            press(Qt::Key_Return);
                            type("two");
                            press(Qt::Key_Tab);
                            EXPECT_EQ(focused(), "ok");
                            press(Qt::Key_Return);
                        }}),
              "1one\ntwo");
}

TEST(DialogView, a_read_only_field_takes_no_text) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog'), e = w.add('edittext', undefined, 'as it was', {name: 'e', "
                        "readonly: true}); w.show(); e.text",
                        {[](QDialog& dialog) {
                            control(dialog, "e").setFocus();
                            type("x");
                            leave(dialog);
                        }}),
              "as it was");
}

TEST(DialogView, the_script_decides_which_control_has_the_focus_first) {
    Stage stage;
    stage.run(
        "var w = new Window('dialog'); w.add('edittext', undefined, 'a', {name: 'first'});"
        "w.add('edittext', undefined, 'b', {name: 'second'}).active = true; w.show()",
        {[](QDialog& dialog) {
            EXPECT_EQ(focused(), "second");
            EXPECT_EQ(dynamic_cast<QLineEdit&>(control(dialog, "second")).selectedText(), "b");
            leave(dialog);
        }});
}

TEST(DialogView, a_window_that_refuses_to_close_stays) {
    Stage stage;
    EXPECT_EQ(stage.run("var asked = 0, w = new Window('dialog'); w.add('button', undefined, 'x');"
                        "w.onClose = function () { return ++asked > 2; }; w.show() + ' ' + asked",
                        {[](QDialog& dialog) {
                            dialog.close();
                            EXPECT_TRUE(dialog.isVisible());
                            press(Qt::Key_Escape);
                            EXPECT_TRUE(dialog.isVisible());
                            dialog.close();
                            EXPECT_FALSE(dialog.isVisible());
                        }}),
              "2 3");
}

TEST(DialogView, one_dialog_may_open_another) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog', 'Outer'), b = w.add('button', undefined, 'Go'), inner = '';"
                        "b.onClick = function () { var i = new Window('dialog', 'Inner');"
                        "i.add('button', undefined, 'Ok'); inner = i.show(); w.close(5); }; w.show() + ' ' + inner",
                        {[](QDialog& dialog) { click(dialog, "Go"); },
                         [](QDialog& dialog) {
                             EXPECT_EQ(dialog.windowTitle(), "Inner");
                             press(Qt::Key_Return);
                         }}),
              "5 1");
}

TEST(DialogView, an_error_in_a_handler_is_shown_and_the_dialog_stays) {
    Stage stage;
    stage.run(
        "var w = new Window('dialog'), b = w.add('button', undefined, 'Go');\n"
        "b.onClick = function () { nowhere(); }; w.show()",
        {[](QDialog& dialog) {
             click(dialog, "Go");
             EXPECT_TRUE(dialog.isVisible());
             leave(dialog);
         },
         [](QDialog& alert) {
             EXPECT_EQ(alert.windowTitle(), "Script Error");
             EXPECT_THAT(alert.accessibleDescription().toStdString(), testing::HasSubstr("nowhere"));
             press(Qt::Key_Space);
         }});
}

TEST(DialogView, radio_buttons_of_a_group_exclude_each_other_and_those_of_other_groups_do_not) {
    Stage stage;
    EXPECT_EQ(stage.run("var w = new Window('dialog'), g = w.add('group'), h = w.add('group'), r = [];"
                        "for (var i = 0; i < 4; i++) r.push((i < 2 ? g : h).add('radiobutton', undefined, 'R' + i));"
                        "w.show(); [r[0].value, r[1].value, r[2].value, r[3].value].join()",
                        {[](QDialog& dialog) {
                            for (const char* name : {"R0", "R1", "R2", "R2"}) click(dialog, name);
                            leave(dialog);
                        }}),
              "false,true,true,false");
}

TEST(DialogView, names_with_ampersands_are_shown_as_they_are) {
    Stage stage;
    stage.run("var w = new Window('dialog'); w.add('button', undefined, 'Salt & Pepper', {name: 'b'}); w.show()",
              {[](QDialog& dialog) {
                  EXPECT_EQ(dynamic_cast<QPushButton&>(control(dialog, "b")).text(), "Salt && Pepper");
                  leave(dialog);
              }});
}

TEST(DialogView, alerts_show_their_text_in_full) {
    Stage stage;
    const std::string words = "A long sentence. " + std::string(60, 'x') +
                              " Another one, which goes on and on, until "
                              "it does not fit into a line of a box any more.";
    stage.run("alert('" + words + "\\nsecond line', 'The title', true)", {[&](QDialog& alert) {
                  EXPECT_EQ(alert.windowTitle(), "The title");
                  auto& message = dynamic_cast<QLabel&>(control(alert, "message"));
                  EXPECT_EQ(message.text().toStdString(), words + "\nsecond line");
                  EXPECT_GE(message.height(), message.heightForWidth(message.width()));
                  EXPECT_TRUE(alert.rect().contains(message.geometry()));
                  click(alert, "OK");
              }});
    ASSERT_EQ(stage.alerts.size(), 1U);
    EXPECT_TRUE(stage.alerts[0].is_error);
}

TEST(DialogView, a_script_out_of_time_closes_its_window) {
    host::model::Project project;
    auto settings = host::script::Settings::in_memory();
    const auto dialogs = desktop::make_desktop_driver();
    host::script::Engine engine(project, settings, *dialogs, nullptr, {.time = std::chrono::milliseconds(50)});
    QMetaObject::invokeMethod(
        qApp, [] { press(Qt::Key_Return); }, Qt::QueuedConnection);
    const auto outcome = engine.run(
        "var w = new Window('dialog'), b = w.add('button', undefined, 'Ok');"
        "b.onClick = function () { while (true) {} }; w.show()");
    EXPECT_TRUE(outcome.failed);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
}  // namespace dialog_test
