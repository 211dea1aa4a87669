// Expressions that name layers: renames follow, losses break, repairs mend.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::Scene;
using testing::TestContent;

struct ExpressionScene : Scene {
    explicit ExpressionScene(HostRules rules = {})
        : Scene(rules), other(new_comp("Other")), b(layer("B")), a(layer("A")) {
        project.undo().clear();
    }
    Stream& with(const std::string& expression, Layer& on) {
        Stream& stream = on.stream(next_++);
        stream.set_expression(expression);
        return stream;
    }
    Stream& with(const std::string& expression) { return with(expression, b); }
    Comp& other;
    Layer& b;
    Layer& a;

  private:
    int next_ = 0;
};

std::string text(const Stream& stream) {
    return stream.data().expression;
}

TEST(Renames, are_followed_by_expressions_in_their_own_kind_of_quotes) {
    ExpressionScene scene;
    Stream& mixed = scene.with("thisComp.layer(\"A\").opacity + layer('A').index // \"A\"\n + 'A'.length");
    scene.a.rename("It's");
    EXPECT_EQ(text(mixed), "thisComp.layer(\"It's\").opacity + layer('It\\'s').index // \"A\"\n + 'A'.length");
    EXPECT_FALSE(mixed.is_expression_broken());
    scene.project.undo().undo();
    EXPECT_EQ(scene.a.display_name(), "A");
    EXPECT_EQ(text(mixed), "thisComp.layer(\"A\").opacity + layer('A').index // \"A\"\n + 'A'.length");
}

TEST(Renames, are_followed_in_other_compositions_by_the_name_of_this_one) {
    ExpressionScene scene;
    Layer& far = scene.layer("Far", &scene.other);
    Stream& abroad = scene.with("comp('Main').layer('A')", far);
    Stream& at_home = scene.with("thisComp.layer('A')", far);
    scene.a.rename("A2");
    EXPECT_EQ(text(abroad), "comp('Main').layer('A2')");
    EXPECT_EQ(text(at_home), "thisComp.layer('A')");
    scene.comp.set_name("Chief");
    EXPECT_EQ(text(abroad), "comp('Chief').layer('A2')");
    scene.a.rename("A3");
    EXPECT_EQ(text(abroad), "comp('Chief').layer('A3')");
}

TEST(Renames, of_a_layer_hidden_by_one_of_the_same_name_touch_nothing) {
    ExpressionScene scene;
    Stream& stream = scene.with("thisComp.layer('A')");
    Layer& upper = scene.layer("A");
    scene.a.rename("X");
    EXPECT_EQ(text(stream), "thisComp.layer('A')");
    upper.rename("Y");
    EXPECT_EQ(text(stream), "thisComp.layer('Y')");
}

TEST(Renames, of_an_item_are_followed_where_layers_show_its_name) {
    ExpressionScene scene;
    scene.a.rename("");
    Stream& stream = scene.with("thisComp.layer('Picture')");
    scene.picture.set_name("Photo");
    EXPECT_EQ(text(stream), "thisComp.layer('Photo')");
    scene.a.rename("Own");
    EXPECT_EQ(text(stream), "thisComp.layer('Own')");
    scene.project.undo().undo_all();
    EXPECT_EQ(text(stream), "");
}

TEST(Renames, reach_expressions_that_nobody_has_read_yet_and_effects_and_streams_of_the_file) {
    ExpressionScene scene;
    Layer& late = scene.comp.load_layer(LayerKind::vector, nullptr);
    Stream* inside = nullptr;
    const auto content = std::make_shared<TestContent>([&inside](Layer& layer) {
        auto data = std::make_shared<StreamData>();
        data->expression = "thisComp.layer('A')";
        data->expression_enabled = true;
        inside = &layer.load_other_stream("Path", std::move(data));
    });
    content->expressions = true;
    late.set_content(content);
    Effect& tint = scene.b.apply_effect(testing::install_tint(scene.project)->key);
    tint.parameter(testing::kTintNumber).set_expression("thisComp.layer('A').index");
    scene.a.rename("New");
    ASSERT_NE(inside, nullptr);
    EXPECT_EQ(text(*inside), "thisComp.layer('New')");
    EXPECT_EQ(text(tint.parameter(testing::kTintNumber)), "thisComp.layer('New').index");
    EXPECT_EQ(late.expression_streams(), std::vector<Stream*>{inside});
}

TEST(Renames, reach_unread_copies_and_unread_layers_that_undo_brought_back) {
    ExpressionScene scene;
    Layer& original = scene.other.load_layer(LayerKind::vector, nullptr);
    const auto content = std::make_shared<TestContent>([](Layer& layer) {
        auto data = std::make_shared<StreamData>();
        data->expression = "thisComp.layer('A')";
        layer.load_stream(kOpacity, std::move(data));
    });
    content->expressions = true;
    original.set_content(content);
    Layer& copy = scene.comp.copy_layer_here(original);
    Layer& revived = scene.comp.copy_layer_here(original);
    revived.remove();
    scene.a.rename("New");
    EXPECT_TRUE(copy.is_content_loaded());
    EXPECT_EQ(text(copy.stream(kOpacity)), "thisComp.layer('New')");
    EXPECT_FALSE(revived.is_content_loaded());
    scene.project.undo().undo();
    scene.project.undo().undo();
    scene.a.rename("Newer");
    EXPECT_TRUE(revived.is_content_loaded());
    EXPECT_EQ(text(revived.stream(kOpacity)), "thisComp.layer('Newer')");
    EXPECT_EQ(text(original.stream(kOpacity)), "thisComp.layer('A')");
}

TEST(Renames, reach_unread_layers_of_a_composition_that_undo_brought_back) {
    ExpressionScene scene;
    Layer& unread = scene.other.load_layer(LayerKind::vector, nullptr);
    const auto content = std::make_shared<TestContent>([](Layer& layer) {
        auto data = std::make_shared<StreamData>();
        data->expression = "comp('Main').layer('A')";
        layer.load_stream(kOpacity, std::move(data));
    });
    content->expressions = true;
    unread.set_content(content);
    scene.project.delete_item(scene.other);
    scene.b.rename("While it was away");
    EXPECT_FALSE(unread.is_content_loaded());
    scene.project.undo().undo_all();
    scene.a.rename("New");
    EXPECT_TRUE(unread.is_content_loaded());
    EXPECT_EQ(text(unread.stream(kOpacity)), "comp('Main').layer('New')");
}

TEST(Renames, leave_expressions_of_deleted_layers_alone) {
    ExpressionScene scene;
    Stream& stream = scene.with("thisComp.layer('A')");
    scene.b.remove();
    scene.a.rename("X");
    EXPECT_EQ(text(stream), "thisComp.layer('A')");
    scene.project.undo().undo_all();
    EXPECT_EQ(scene.a.display_name(), "A");
}

TEST(Renames, a_switched_off_expression_follows_and_stays_off) {
    ExpressionScene scene;
    Stream& stream = scene.with("thisComp.layer('A')");
    stream.set_expression_state(false);
    scene.a.rename("X");
    EXPECT_EQ(text(stream), "thisComp.layer('X')");
    EXPECT_FALSE(stream.expression_state());
}

TEST(BrokenExpressions, name_a_layer_that_is_not_there_and_recover_when_it_comes) {
    ExpressionScene scene;
    Stream& stream = scene.with("thisComp.layer('C')");
    EXPECT_TRUE(stream.is_expression_broken());
    EXPECT_FALSE(stream.expression_state());
    EXPECT_TRUE(stream.has_expression());
    scene.a.rename("C");
    EXPECT_FALSE(stream.is_expression_broken());
    EXPECT_TRUE(stream.expression_state());
    scene.a.remove();
    EXPECT_TRUE(stream.is_expression_broken());
    EXPECT_EQ(text(stream), "thisComp.layer('C')");
}

TEST(BrokenExpressions, name_a_composition_that_was_deleted) {
    ExpressionScene scene;
    scene.layer("L", &scene.other);
    Stream& deleted = scene.with("comp('Other').layer('L')");
    Stream& unknown = scene.with("comp('Never there').layer('L')");
    EXPECT_FALSE(deleted.is_expression_broken());
    scene.project.delete_item(scene.other);
    EXPECT_TRUE(deleted.is_expression_broken());
    EXPECT_FALSE(unknown.is_expression_broken());
    scene.project.undo().undo();
    EXPECT_FALSE(deleted.is_expression_broken());
}

TEST(BrokenExpressions, stay_switched_off_under_the_rule_until_switched_on_or_repaired) {
    HostRules rules;
    rules.broken_expressions_recover = false;
    ExpressionScene scene(rules);
    Stream& one = scene.with("thisComp.layer('C')");
    Stream& two = scene.with("thisComp.layer('D')");
    scene.a.rename("C");
    EXPECT_TRUE(one.is_expression_broken());
    one.set_expression_state(true);
    EXPECT_TRUE(one.expression_state());
    EXPECT_TRUE(two.is_expression_broken());
    scene.project.auto_fix_expressions("D", "C");
    EXPECT_EQ(text(two), "thisComp.layer('C')");
    EXPECT_TRUE(two.expression_state());
    scene.a.remove();
    scene.project.undo().undo();
    EXPECT_FALSE(one.is_expression_broken());
    scene.layer("L", &scene.other);
    Stream& abroad = scene.with("comp('Other').layer('L')");
    scene.project.delete_item(scene.other);
    scene.new_comp("Other");
    scene.layer("L", scene.project.comp_named("Other"));
    EXPECT_TRUE(abroad.is_expression_broken());
}

TEST(BrokenExpressions, cannot_be_switched_on) {
    ExpressionScene scene;
    Stream& stream = scene.with("thisComp.layer('C')");
    stream.set_expression_state(false);
    stream.set_expression_state(true);
    EXPECT_FALSE(stream.expression_state());
    scene.a.rename("C");
    EXPECT_FALSE(stream.expression_state());
    stream.set_expression_state(true);
    EXPECT_TRUE(stream.expression_state());
}

TEST(Expressions, empty_text_removes_and_new_text_switches_on) {
    ExpressionScene scene;
    Stream& stream = scene.b.stream(kOpacity);
    EXPECT_FALSE(stream.expression_state());
    stream.set_expression_state(true);
    EXPECT_FALSE(stream.expression_state());
    stream.set_expression("1");
    stream.set_expression_state(false);
    EXPECT_EQ(text(stream), "1");
    stream.set_expression("2");
    EXPECT_TRUE(stream.expression_state());
    stream.set_expression("");
    EXPECT_FALSE(stream.has_expression());
    EXPECT_FALSE(stream.expression_state());
    scene.project.undo().undo();
    EXPECT_TRUE(stream.expression_state());
    scene.project.undo().undo_all();
    EXPECT_FALSE(stream.is_changed());
}

TEST(AutoFix, replaces_quoted_names_where_that_mends_the_expression) {
    ExpressionScene scene;
    Stream& fixed = scene.with("layer('Old').effect(\"Old\")(1) + thisComp.layer(\"Old\").index // Old");
    scene.project.auto_fix_expressions("Old", "A");
    EXPECT_EQ(text(fixed), "layer('A').effect(\"A\")(1) + thisComp.layer(\"A\").index // Old");
    scene.project.undo().undo();
    EXPECT_EQ(text(fixed), "layer('Old').effect(\"Old\")(1) + thisComp.layer(\"Old\").index // Old");
}

TEST(AutoFix, leaves_working_expressions_and_those_it_cannot_mend) {
    ExpressionScene scene;
    Stream& working = scene.with("thisComp.layer('B').effect('Old')");
    Stream& hopeless = scene.with("thisComp.layer('Old') + thisComp.layer('Gone')");
    Stream& no_use = scene.with("thisComp.layer('Old')");
    scene.project.undo().clear();
    scene.project.auto_fix_expressions("Old", "Also not there");
    scene.project.auto_fix_expressions("", "A");
    scene.project.auto_fix_expressions("Old", "Old");
    scene.project.auto_fix_expressions("B", "A");
    EXPECT_EQ(text(no_use), "thisComp.layer('Old')");
    EXPECT_FALSE(scene.project.undo().can_undo());
    scene.project.auto_fix_expressions("Old", "A");
    EXPECT_EQ(text(working), "thisComp.layer('B').effect('Old')");
    EXPECT_EQ(text(hopeless), "thisComp.layer('Old') + thisComp.layer('Gone')");
    EXPECT_EQ(text(no_use), "thisComp.layer('A')");
}

TEST(AutoFix, mends_names_of_compositions_that_are_gone) {
    ExpressionScene scene;
    scene.layer("A", &scene.other);
    Stream& stream = scene.with("comp('Other').layer('A').opacity");
    scene.project.delete_item(scene.other);
    scene.project.auto_fix_expressions("Other", "Main");
    EXPECT_EQ(text(stream), "comp('Main').layer('A').opacity");
    EXPECT_FALSE(stream.is_expression_broken());
}

TEST(AutoFix, does_not_take_an_unknown_composition_for_a_cure) {
    ExpressionScene scene;
    Stream& stream = scene.with("comp('Other').layer('Gone')");
    scene.project.auto_fix_expressions("Other", "Nowhere");
    EXPECT_EQ(text(stream), "comp('Other').layer('Gone')");
}

TEST(AutoFix, mends_a_copy_that_names_a_layer_by_the_name_it_had_elsewhere) {
    ExpressionScene scene;
    scene.layer("Inner", &scene.other);
    Layer& original = scene.layer("Driver", &scene.other);
    original.stream(kOpacity).set_expression("thisComp.layer('Inner').opacity");
    Layer& copy = scene.comp.copy_layer_here(original);
    EXPECT_FALSE(original.stream(kOpacity).is_expression_broken());
    EXPECT_TRUE(copy.stream(kOpacity).is_expression_broken());
    scene.project.auto_fix_expressions("Inner", "A");
    EXPECT_EQ(text(copy.stream(kOpacity)), "thisComp.layer('A').opacity");
    EXPECT_EQ(text(original.stream(kOpacity)), "thisComp.layer('Inner').opacity");
}

}  // namespace
}  // namespace host::model
