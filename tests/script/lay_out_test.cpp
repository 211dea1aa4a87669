// Where the layout puts elements.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scriptui/control_sizes.h"
#include "scriptui/lay_out.h"
#include "world.h"

namespace script_test {
namespace {

using host::scriptui::Frame;
using testing::HasSubstr;

// Ten pixels for each byte, twenty for each line.
class TenByTwenty : public host::scriptui::TextMeasure {
  public:
    double width(std::string_view line) const override { return 10 * static_cast<double>(line.size()); }
    double line_height() const override { return 20; }
};

class MeasuringDriver : public TestDriver {
  public:
    const host::scriptui::TextMeasure& text_measure() const override { return measure_; }

  private:
    TenByTwenty measure_;
};

struct LayOut : testing::Test {
    host::model::Project project;
    Settings settings = Settings::in_memory();
    MeasuringDriver driver;
    Engine engine{project, settings, driver, nullptr};

    std::string run(std::string_view text) {
        const ScriptResult outcome = engine.run(text);
        EXPECT_FALSE(outcome.failed) << outcome.error;
        return outcome.result;
    }

    // Lays a window out that is filled by the statements (`w` is the window without margins, `g` a group in it, 300 by
    // 100, spacing 10; `bounds` gives an element's place as text), and gives the last value.
    std::string laid_out(const std::string& statements, const std::string& value) {
        return run(
            "function bounds(e) { var b = e.bounds; return [b.left, b.top, b.right, b.bottom].join(' '); }"
            "var w = new Window('dialog'); w.margins = 0; var g = w.add('group'); g.preferredSize = [300, 100];"
            "function box(width, height) { var b = g.add('button'); b.preferredSize = [width, height]; return b; }" +
            statements + "; w.layout.layout(true); " + value);
    }
};

TEST_F(LayOut, a_row_packs_from_the_left_with_spacing_and_centres_across) {
    EXPECT_EQ(laid_out("var a = box(50, 20), b = box(60, 40)", "bounds(a) + ', ' + bounds(b)"),
              "0 40 50 60, 60 30 120 70");
}

TEST_F(LayOut, a_column_packs_from_the_top) {
    EXPECT_EQ(laid_out("g.orientation = 'column'; g.alignChildren = 'left'; var a = box(50, 20), b = box(60, 40)",
                       "bounds(a) + ', ' + bounds(b)"),
              "0 0 50 20, 0 30 60 70");
}

TEST_F(LayOut, a_pair_of_alignments_places_along_both_axes) {
    const std::string boxes = "var a = box(50, 20), b = box(60, 40)";
    const std::string both = "bounds(a) + ', ' + bounds(b)";
    EXPECT_EQ(laid_out("g.alignChildren = ['right', 'bottom'];" + boxes, both), "180 80 230 100, 240 60 300 100");
    EXPECT_EQ(laid_out("g.alignChildren = ['center', 'top'];" + boxes, both), "90 0 140 20, 150 0 210 40");
    EXPECT_EQ(laid_out("g.orientation = 'column'; g.alignChildren = ['right', 'bottom'];" + boxes, both),
              "250 30 300 50, 240 60 300 100");
}

TEST_F(LayOut, what_fills_shares_the_spare_room) {
    EXPECT_EQ(
        laid_out("var a = box(50, 20), b = box(60, 40), c = box(30, 10); a.alignment = c.alignment = ['fill', 'fill']",
                 "[bounds(a), bounds(b), bounds(c)].join()"),
        "0 0 120 100,130 30 190 70,200 0 300 100");
    EXPECT_EQ(laid_out("g.alignChildren = 'fill'; var a = box(50, 20)", "bounds(a)"), "0 0 50 100");
    EXPECT_EQ(laid_out("g.alignChildren = ['fill', 'center']; var a = box(400, 20)", "bounds(a)"), "0 40 400 60");
}

TEST_F(LayOut, an_alignment_of_the_child_comes_before_that_of_its_container) {
    EXPECT_EQ(laid_out("g.alignChildren = ['left', 'top']; var a = box(50, 20), b = box(60, 40), c = box(10, 10);"
                       "b.alignment = 'bottom'; c.alignment = ['right', 'center']",
                       "[bounds(a), bounds(b), bounds(c)].join()"),
              "0 0 50 20,60 60 120 100,290 45 300 55");
}

TEST_F(LayOut, margins_stand_around_the_children) {
    EXPECT_EQ(laid_out("g.margins = [1, 2, 3, 4]; g.alignChildren = ['fill', 'fill']; var a = box(1, 1)", "bounds(a)"),
              "1 2 297 96");
    EXPECT_EQ(laid_out("g.preferredSize = [-1, -1]; g.margins = [1, 2, 3, 4]; box(50, 20); box(60, 40)", "bounds(g)"),
              "0 0 124 46");
}

TEST_F(LayOut, a_stack_puts_children_on_top_of_each_other) {
    EXPECT_EQ(laid_out("g.orientation = 'stack'; var a = box(50, 20), b = box(100, 100); b.alignment = ['fill', 'top']",
                       "bounds(a) + ', ' + bounds(b)"),
              "125 40 175 60, 0 0 300 100");
}

TEST_F(LayOut, sizes_come_from_size_then_from_the_preference_then_from_the_text) {
    EXPECT_EQ(
        laid_out(
            "var s = g.add('statictext', undefined, 'four'), t = g.add('statictext', undefined, 'four');"
            "var u = g.add('statictext', undefined, 'four'); t.preferredSize.width = 70; u.preferredSize = [70, 70];"
            "u.size = [33, 11]",
            "[s, t, u].map(function (e) { return e.size.width + 'x' + e.size.height; }).join()"),
        "40x20,70x20,33x11");
}

TEST_F(LayOut, the_smallest_and_the_largest_size_limit_what_is_computed) {
    EXPECT_EQ(laid_out("var a = box(50, 20), b = box(50, 20); a.minimumSize.width = 80; b.maximumSize = [100, 10];"
                       "b.alignment = ['fill', 'fill']",
                       "bounds(a) + ', ' + bounds(b)"),
              "0 40 80 60, 90 0 190 10");
}

TEST_F(LayOut, controls_have_room_for_their_texts) {
    const auto size = [&](const std::string& type, const std::string& more = "") {
        return laid_out("var e = g.add('" + type + "', undefined, 'four')" + more,
                        "e.size.width + 'x' + e.size.height");
    };
    EXPECT_EQ(size("checkbox"), "66x20");  // margin, glyph, gap, text, margin
    EXPECT_EQ(size("radiobutton"), "66x20");
    EXPECT_EQ(size("button"), "80x28");
    EXPECT_EQ(size("button", "; e.text = 'fourteen bytes'"), "172x28");
    EXPECT_EQ(size("edittext"), "100x26");
    EXPECT_EQ(size("edittext", "; e.characters = 30"), "314x26");
    EXPECT_EQ(size("panel"), "80x20");
}

TEST_F(LayOut, texts_have_the_room_of_all_their_lines) {
    EXPECT_EQ(laid_out("var e = g.add('statictext', undefined, 'two\\nlines!')", "e.size.width + 'x' + e.size.height"),
              "60x40");
    EXPECT_EQ(laid_out("var e = g.add('statictext', undefined, 'some words to be broken', {multiline: true});"
                       "e.preferredSize.width = 100",
                       "e.size.width + 'x' + e.size.height"),
              "100x60");
    EXPECT_EQ(laid_out("var e = g.add('statictext', undefined, 'a\\nlist\\nof words to be broken', {multiline: true});"
                       "e.preferredSize.width = 100",
                       "e.size.width + 'x' + e.size.height"),
              "100x100");
}

TEST_F(LayOut, elements_with_a_place_and_size_of_their_own_stay_there) {
    EXPECT_EQ(laid_out("var a = box(50, 20), b = g.add('button', [200, 50, 250, 60], 'x'), c = box(60, 40)",
                       "[bounds(a), bounds(b), bounds(c)].join()"),
              "0 40 50 60,200 50 250 60,60 30 120 70");
    EXPECT_EQ(laid_out("g.preferredSize = [-1, -1]; g.add('button', [20, 30, 250, 60], 'x')", "bounds(g)"),
              "0 0 250 60");
}

TEST_F(LayOut, hidden_elements_keep_their_room) {
    EXPECT_EQ(laid_out("var a = box(50, 20), b = box(60, 40); a.visible = false", "bounds(b)"), "60 30 120 70");
}

TEST_F(LayOut, showing_lays_out_before_the_script_hears_of_it) {
    driver.act = [](Window& window) { EXPECT_EQ(window.control("b").frame(), (Frame{15, 15, 80, 28})); };
    EXPECT_EQ(run("var w = new Window('dialog'), b = w.add('button', undefined, 'x', {name: 'b'}), seen;"
                  "w.onShow = function () { seen = w.size.width + 'x' + w.size.height; }; w.show(); seen"),
              "110x58");
    EXPECT_EQ(driver.dialogs, 1);
}

TEST_F(LayOut, what_is_added_later_waits_for_the_next_layout) {
    EXPECT_EQ(run("var w = new Window('dialog'), g = w.add('group'), log = []; w.onShow = function () {"
                  "var b = g.add('button'); log.push(typeof b.size, w.size.width); g.layout.layout(true);"
                  "log.push(b.size.width, w.size.width); }; w.show(); log.join()"),
              "undefined,30,80,110");
}

TEST_F(LayOut, a_size_that_a_script_sets_counts_at_once_and_moves_nothing_else) {
    EXPECT_EQ(laid_out("var a = box(50, 20), b = box(60, 40)", "a.size = [90, 30]; bounds(a) + ', ' + bounds(b)"),
              "0 40 90 70, 60 30 120 70");
    EXPECT_EQ(laid_out("var a = box(50, 20)", "a.location = [7, 8]; bounds(a)"), "7 8 57 28");
}

TEST_F(LayOut, only_containers_have_a_layout) {
    EXPECT_EQ(run("typeof new Window('dialog').add('button').layout"), "undefined");
    EXPECT_THAT(engine.run("new Window('dialog').layout.layout.call(null)").error, HasSubstr("not a layout"));
    EXPECT_THAT(engine.run("new Window('dialog').layout = 3").error, HasSubstr("\"layout\" is read-only"));
}

TEST_F(LayOut, a_deep_and_wide_window_is_laid_out_quickly) {
    EXPECT_EQ(run("var w = new Window('dialog'), g = w; for (var i = 0; i < 200; i++) { g = g.add('group');"
                  "for (var k = 0; k < 20; k++) g.add('checkbox', undefined, 'x'); } w.layout.layout(true); "
                  "w.size.width > 0"),
              "true");
}

}  // namespace
}  // namespace script_test
