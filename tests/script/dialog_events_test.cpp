// What the user does to a dialog and what the script is told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using host::scriptui::DialogError;
using testing::HasSubstr;

// A dialog whose handlers write down what they are told.
struct EventWorld : World {
    EventWorld() {
        run(R"js(
var log = [];
function note(element, events) {
    for (var i = 0; i < events.length; i++) (function (event) {
        element[event] = function () { log.push(this.name + "." + event + "(" + arguments.length + ")");
    };
    })(events[i]);
    }
    var w = new Window("dialog", "Test", undefined, {name : "w"});
    var g = w.add("group", undefined, {name : "g"});
    var check = g.add("checkbox", undefined, "Check", {name : "check"});
    var r1 = g.add("radiobutton", undefined, "One", {name : "r1"});
    var r2 = g.add("radiobutton", undefined, "Two", {name : "r2"});
    var words = g.add("statictext", undefined, "Words", {name : "words"});
    var r3 = g.add("radiobutton", undefined, "Three", {name : "r3"});
    var r4 = w.add("radiobutton", undefined, "Four", {name : "r4"});
    var edit = w.add("edittext", undefined, "old", {name : "edit"});
    var go = w.add("button", undefined, "Go", {name : "go"});
    note(check, ["onClick"]);
    note(r1, ["onClick"]);
    note(r2, ["onClick"]);
    note(r3, ["onClick"]);
    note(r4, ["onClick"]);
    note(edit, [ "onChange", "onChanging" ]);
    note(go, ["onClick"]);
    note(w, [ "onShow", "onClose" ]);
)js");
    }

    // Shows the dialog, does that to it, returns what the handlers noted.
    std::string during(std::function<void(Window&)> act) {
        driver.act = std::move(act);
        const int before = driver.dialogs;
        const std::string noted = run("log = []; w.show(); log.join(' ')");
        EXPECT_EQ(driver.dialogs, before + 1);
        return noted;
    }
};

TEST(DialogEvents, showing_and_closing_are_reported) {
    EventWorld world;
    EXPECT_EQ(world.during([](Window&) {}), "w.onShow(0) w.onClose(0)");
}

TEST(DialogEvents, a_checkbox_toggles_before_its_handler_runs) {
    EventWorld world;
    EXPECT_EQ(world.during([](Window& w) { w.click(w.control("check")); }),
              "w.onShow(0) check.onClick(0) w.onClose(0)");
    EXPECT_EQ(world.run("check.value"), "true");
    world.during([](Window& w) { w.click(w.control("Check")); });
    EXPECT_EQ(world.run("check.value"), "false");
}

TEST(DialogEvents, radio_buttons_made_one_after_the_other_in_one_container_are_a_group) {
    EventWorld world;
    world.run("r1.value = r3.value = r4.value = true;");
    EXPECT_EQ(world.during([](Window& w) { w.click(w.control("r2")); }), "w.onShow(0) r2.onClick(0) w.onClose(0)");
    EXPECT_EQ(world.run("[r1.value, r2.value, r3.value, r4.value].join()"), "false,true,true,true");
    EXPECT_EQ(world.during([](Window& w) { w.click(w.control("r2")); }), "w.onShow(0) r2.onClick(0) w.onClose(0)");
    EXPECT_EQ(world.run("r2.value"), "true");
}

TEST(DialogEvents, values_set_by_the_script_call_no_handler_but_keep_a_group_exclusive) {
    EventWorld world;
    EXPECT_EQ(
        world.run("log = []; check.value = true; r1.value = true; r2.value = true; edit.text = 'x'; go.enabled = false;"
                  "log.length + ' ' + [r1.value, r2.value].join()"),
        "0 false,true");
    EXPECT_EQ(world.run("r2.value = false; [r1.value, r2.value].join()"), "false,false");
}

TEST(DialogEvents, typing_reports_each_character_and_then_the_change) {
    EventWorld world;
    EXPECT_EQ(world.during([](Window& w) {
        w.type_text(w.control("edit"), "a\u00E9\U0001F600");
        EXPECT_EQ(w.control("edit").text(), "a\u00E9\U0001F600");
        w.click(w.control("go"));
    }),
              "w.onShow(0) edit.onChanging(0) edit.onChanging(0) edit.onChanging(0) edit.onChange(0) go.onClick(0) "
              "w.onClose(0)");
    EXPECT_EQ(world.run("edit.text"), "a\u00E9\U0001F600");
}

TEST(DialogEvents, typing_nothing_empties_the_field) {
    EventWorld world;
    EXPECT_EQ(world.during([](Window& w) { w.type_text(w.control("edit"), ""); }),
              "w.onShow(0) edit.onChanging(0) w.onClose(0)");
    EXPECT_EQ(world.run("edit.text"), "");
}

TEST(DialogEvents, the_text_is_there_while_it_is_typed) {
    EventWorld world;
    world.run("var seen = []; edit.onChanging = function () { seen.push(this.text); };");
    world.during([](Window& w) { w.type_text(w.control("edit"), "abc"); });
    EXPECT_EQ(world.run("seen.join()"), "a,ab,abc");
}

TEST(DialogEvents, enter_commits_what_was_typed) {
    EventWorld world;
    EXPECT_EQ(world.during([](Window& w) {
        w.type_text(w.control("edit"), "x");
        w.press_enter();
        w.press_enter();
    }),
              "w.onShow(0) edit.onChanging(0) edit.onChange(0) w.onClose(0)");
}

TEST(DialogEvents, enter_breaks_the_line_in_a_field_of_several_lines) {
    World world;
    world.driver.act = [](Window& w) {
        w.type_text(w.control("edit"), "one");
        w.press_enter();
        EXPECT_TRUE(w.is_open());
    };
    EXPECT_EQ(
        world.run(
            "var w = new Window('dialog'); var e = w.add('edittext', undefined, '', {name: 'edit', multiline: true});"
            "w.add('button', undefined, 'Ok'); w.show() + e.text"),
        "2one\n");
}

TEST(DialogEvents, the_handlers_this_is_the_control) {
    EventWorld world;
    world.run("var self; go.onClick = function () { self = this; };");
    world.during([](Window& w) { w.click(w.control("go")); });
    EXPECT_EQ(world.run("self === go"), "true");
}

TEST(DialogEvents, disabled_and_hidden_controls_take_no_input_and_keep_their_value) {
    EventWorld world;
    world.run("check.value = true; check.enabled = false;");
    EXPECT_EQ(world.during([](Window& w) { EXPECT_THROW(w.click(w.control("check")), DialogError); }),
              "w.onShow(0) w.onClose(0)");
    EXPECT_EQ(world.run("check.value"), "true");
    world.run("check.enabled = true; g.enabled = false; edit.visible = false;");
    world.during([](Window& w) {
        EXPECT_FALSE(w.control("check").takes_input());
        EXPECT_TRUE(w.control("check").is_enabled());
        EXPECT_THROW(w.click(w.control("check")), DialogError);
        EXPECT_THROW(w.type_text(w.control("edit"), "x"), DialogError);
    });
    EXPECT_EQ(world.run("edit.text"), "old");
}

TEST(DialogEvents, controls_that_are_not_for_it_cannot_be_clicked_or_typed_into) {
    EventWorld world;
    world.during([](Window& w) {
        EXPECT_THROW(w.click(w.control("words")), DialogError);
        EXPECT_THROW(w.click(w.control("g")), DialogError);
        EXPECT_THROW(w.type_text(w.control("go"), "x"), DialogError);
        EXPECT_NO_THROW(w.click(w.control("edit")));
        EXPECT_THROW(w.control("nobody"), DialogError);
    });
}

TEST(DialogEvents, a_read_only_field_takes_no_text) {
    World world;
    world.driver.act = [](Window& w) { EXPECT_THROW(w.type_text(w.control("e"), "x"), DialogError); };
    EXPECT_EQ(
        world.run(
            "var w = new Window('dialog'); var e = w.add('edittext', undefined, 'old', {name: 'e', readonly: true});"
            "w.show(); e.text"),
        "old");
}

TEST(DialogEvents, names_come_before_texts_when_a_control_is_looked_up) {
    World world;
    world.driver.act = [](Window& w) {
        EXPECT_EQ(w.control("a").text(), "second");
        EXPECT_EQ(w.control("first").name(), "b");
    };
    world.run(
        "var w = new Window('dialog'); w.add('button', undefined, 'a', {name: 'x'}); w.add('button', undefined, "
        "'first', {name: 'b'});"
        "w.add('button', undefined, 'second', {name: 'a'}); w.show();");
    EXPECT_EQ(world.driver.dialogs, 1);
}

TEST(DialogEvents, notify_acts_as_the_user_would) {
    EventWorld world;
    EXPECT_EQ(
        world.run(
            "log = []; go.notify(); edit.notify(); check.notify('onClick'); edit.notify('onChanging'); log.join(' ')"),
        "go.onClick(0) edit.onChange(0) check.onClick(0) edit.onChanging(0)");
    EXPECT_EQ(world.run("check.value"), "false");
    EXPECT_THAT(world.error("go.notify('onFire')"), HasSubstr("unknown event \"onFire\""));
}

TEST(DialogEvents, active_gives_the_focus) {
    EventWorld world;
    world.run("edit.active = true;");
    world.during([](Window& w) { EXPECT_EQ(w.focus(), &w.control("edit")); });
    EXPECT_EQ(world.run("edit.active + ',' + go.active"), "true,false");
    EXPECT_EQ(world.run("edit.active = false; edit.active"), "false");
    world.during([](Window& w) { w.click(w.control("go")); });
    EXPECT_EQ(world.run("go.active"), "true");
}

TEST(DialogEvents, an_error_in_a_handler_is_shown_and_the_dialog_stays) {
    EventWorld world;
    world.run("go.onClick = function () {\nnowhere(); };");
    world.during([](Window& w) {
        w.click(w.control("go"));
        EXPECT_TRUE(w.is_open());
        w.click(w.control("check"));
    });
    ASSERT_EQ(world.alerts.size(), 1U);
    EXPECT_EQ(world.alerts[0].title, "Script Error");
    EXPECT_THAT(world.alerts[0].message, HasSubstr("Unable to execute script at line 2. ReferenceError"));
    EXPECT_EQ(world.run("check.value"), "true");
}

TEST(DialogEvents, handlers_may_alert_and_work_on_the_project) {
    EventWorld world;
    world.project.add_comp("comp");
    world.run("go.onClick = function () { alert('from a handler'); app.project.item(1).name = 'renamed'; };");
    world.during([](Window& w) { w.click(w.control("go")); });
    ASSERT_EQ(world.alerts.size(), 1U);
    EXPECT_EQ(world.alerts[0].message, "from a handler");
    EXPECT_EQ(world.project.item_by_number(1).name(), "renamed");
}

TEST(DialogEvents, edits_by_a_toolkit_are_reported_as_one_change) {
    EventWorld world;
    EXPECT_EQ(world.during([](Window& w) {
        w.edit(w.control("edit"), "pasted words");
        w.move_focus(&w.control("check"));
        w.move_focus(nullptr);
        EXPECT_THROW(w.edit(w.control("go"), "x"), DialogError);
    }),
              "w.onShow(0) edit.onChanging(0) edit.onChange(0) w.onClose(0)");
    EXPECT_EQ(world.run("edit.text"), "pasted words");
}

TEST(DialogEvents, a_handler_that_disables_a_control_takes_the_click_away_from_it) {
    EventWorld world;
    world.run("edit.onChange = function () { go.enabled = false; };");
    world.during([](Window& w) {
        w.type_text(w.control("edit"), "x");
        EXPECT_THROW(w.click(w.control("go")), DialogError);
    });
}

}  // namespace
}  // namespace script_test
