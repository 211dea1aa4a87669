// Showing and closing dialogs: Enter, Esc, the close box, default and cancel elements, results.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using host::scriptui::DialogError;
using testing::HasSubstr;

struct ShowWorld : World {
    ShowWorld() {
        run("var w = new Window('dialog', 'Test'), ok = w.add('button', undefined, 'Ok', {name: 'yes'}),"
            "cancel = w.add('button', undefined, 'Cancel', {name: 'no'}), other = w.add('button', undefined, "
            "'Other');");
    }
    std::string show(std::function<void(Window&)> act) {
        driver.act = std::move(act);
        return run("w.show()");
    }
};

TEST(Dialog, buttons_labelled_ok_and_cancel_close_it_when_they_have_no_handler) {
    ShowWorld world;
    EXPECT_EQ(world.show([](Window& w) { w.click(w.control("yes")); }), "1");
    EXPECT_EQ(world.show([](Window& w) { w.click(w.control("no")); }), "2");
    EXPECT_EQ(world.show([](Window& w) {
        w.click(w.control("Other"));
        EXPECT_TRUE(w.is_open());
        w.press_enter();
        EXPECT_FALSE(w.is_open());
    }),
              "1");
}

TEST(Dialog, names_serve_as_well_as_labels) {
    World world;
    world.driver.act = [](Window& w) { w.press_enter(); };
    EXPECT_EQ(world.run("var w = new Window('dialog'); w.add('button', undefined, 'Los', {name: 'OK'}); w.show()"),
              "1");
}

TEST(Dialog, a_handler_takes_the_place_of_the_standard_closing) {
    ShowWorld world;
    world.run("var clicks = 0; ok.onClick = function () { clicks++; if (clicks === 2) w.close(7); };");
    EXPECT_EQ(world.show([](Window& w) {
        w.click(w.control("yes"));
        EXPECT_TRUE(w.is_open());
        w.press_enter();
        EXPECT_FALSE(w.is_open());
    }),
              "7");
}

TEST(Dialog, close_without_a_result_gives_zero) {
    ShowWorld world;
    world.run("ok.onClick = function () { w.close(); };");
    EXPECT_EQ(world.show([](Window& w) { w.press_enter(); }), "0");
}

TEST(Dialog, escape_clicks_the_cancel_element_or_closes) {
    ShowWorld world;
    EXPECT_EQ(world.show([](Window& w) { w.press_escape(); }), "2");
    world.run("cancel.onClick = function () { w.close(5); };");
    EXPECT_EQ(world.show([](Window& w) { w.press_escape(); }), "5");
    World bare;
    bare.driver.act = [](Window& w) {
        w.press_enter();
        EXPECT_TRUE(w.is_open());
        w.press_escape();
        EXPECT_FALSE(w.is_open());
    };
    EXPECT_EQ(bare.run("new Window('dialog').show()"), "2");
}

TEST(Dialog, the_close_box_asks_no_button) {
    ShowWorld world;
    world.run("cancel.onClick = function () { w.close(5); };");
    EXPECT_EQ(world.show([](Window& w) { w.close_box(); }), "2");
}

TEST(Dialog, hiding_it_closes_it_without_a_result) {
    ShowWorld world;
    world.run("other.onClick = function () { w.hide(); };");
    EXPECT_EQ(world.show([](Window& w) {
        w.click(w.control("Other"));
        EXPECT_FALSE(w.is_open());
    }),
              "0");
}

TEST(Dialog, a_driver_that_leaves_it_open_has_cancelled_it) {
    ShowWorld world;
    EXPECT_EQ(world.show([](Window&) {}), "2");
    EXPECT_EQ(world.driver.dialogs, 1);
}

TEST(Dialog, default_and_cancel_elements_can_be_set) {
    ShowWorld world;
    EXPECT_EQ(world.run("(w.defaultElement === ok) + ',' + (w.cancelElement === cancel)"), "true,true");
    world.run("w.defaultElement = other; w.cancelElement = ok; other.onClick = function () { w.close(9); };");
    EXPECT_EQ(world.show([](Window& w) { w.press_enter(); }), "9");
    EXPECT_EQ(world.show([](Window& w) { w.press_escape(); }), "2");
    EXPECT_EQ(world.run("w.defaultElement = null; w.defaultElement === ok"), "true");
    EXPECT_THAT(world.error("w.defaultElement = 3"), HasSubstr("element or null"));
    EXPECT_THAT(world.error("w.defaultElement = new Window('dialog').add('button')"), HasSubstr("another window"));
}

TEST(Dialog, disabled_default_and_cancel_elements_are_not_clicked) {
    ShowWorld world;
    world.run("ok.enabled = cancel.enabled = false;");
    EXPECT_EQ(world.show([](Window& w) {
        w.press_enter();
        w.press_escape();
        EXPECT_TRUE(w.is_open());
    }),
              "2");
}

TEST(Dialog, onClose_may_refuse) {
    ShowWorld world;
    world.run("var asked = 0; w.onClose = function () { asked++; return asked > 2; };");
    EXPECT_EQ(world.show([](Window& w) {
        w.press_escape();
        EXPECT_TRUE(w.is_open());
        w.click(w.control("yes"));
        EXPECT_TRUE(w.is_open());
        w.click(w.control("yes"));
        EXPECT_FALSE(w.is_open());
    }),
              "1");
    world.run("w.onClose = function () { return false; };");
    EXPECT_EQ(world.show([](Window&) {}), "2");
}

TEST(Dialog, closing_inside_onClose_is_no_loop) {
    ShowWorld world;
    world.run("w.onClose = function () { w.close(8); };");
    EXPECT_EQ(world.show([](Window& w) { w.close_box(); }), "2");
}

TEST(Dialog, onShow_may_close_it_before_the_driver_sees_it) {
    ShowWorld world;
    world.run("w.onShow = function () { w.close(4); };");
    EXPECT_EQ(world.show([](Window&) {}), "4");
    EXPECT_EQ(world.driver.dialogs, 0);
}

TEST(Dialog, shown_again_it_has_kept_its_values) {
    World world;
    world.driver.act = [](Window& w) { w.click(w.control("c")); };
    EXPECT_EQ(world.run("var w = new Window('dialog'), c = w.add('checkbox', undefined, 'c'); w.show(); c.value"),
              "true");
    EXPECT_EQ(world.run("w.show(); c.value"), "false");
}

TEST(Dialog, one_dialog_may_show_another) {
    ShowWorld world;
    world.run(
        "other.onClick = function () { var inner = new Window('dialog', 'Inner'); inner.add('button', undefined, 'Ok');"
        "alert('inner gave ' + inner.show()); };");
    EXPECT_EQ(world.show([&](Window& w) {
        if (w.text() == "Inner") {
            w.press_enter();
        } else {
            w.click(w.control("Other"));
            EXPECT_TRUE(w.is_open());
            w.click(w.control("Ok"));
        }
    }),
              "1");
    ASSERT_EQ(world.alerts.size(), 1U);
    EXPECT_EQ(world.alerts[0].message, "inner gave 1");
}

TEST(Dialog, cannot_be_shown_twice_at_once) {
    ShowWorld world;
    world.run("other.onClick = function () { w.show(); };");
    world.show([](Window& w) { w.click(w.control("Other")); });
    ASSERT_EQ(world.alerts.size(), 1U);
    EXPECT_THAT(world.alerts[0].message, HasSubstr("already shown"));
}

TEST(Dialog, a_closed_dialog_cannot_be_worked) {
    ShowWorld world;
    world.show([](Window& w) {
        w.press_escape();
        EXPECT_THROW(w.click(w.control("yes")), DialogError);
        EXPECT_THROW(w.press_enter(), DialogError);
        EXPECT_THROW(w.press_escape(), DialogError);
        EXPECT_THROW(w.close_box(), DialogError);
    });
    EXPECT_EQ(world.run("w.close(3); 'closing a closed one does nothing'"), "closing a closed one does nothing");
}

TEST(Dialog, an_exception_of_the_driver_becomes_an_error_of_the_script) {
    ShowWorld world;
    world.driver.act = [](Window&) { throw std::runtime_error("the driver failed"); };
    EXPECT_EQ(world.error("\nw.show()"), "Unable to execute script at line 2. the driver failed");
    world.driver.act = nullptr;
    EXPECT_EQ(world.run("w.show()"), "2");
}

}  // namespace
}  // namespace script_test
