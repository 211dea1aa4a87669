// Layers that the host makes: of items, and nulls.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::at;
using testing::error_of;
using testing::names;
using testing::Scene;
using testing::value;
using Names = std::vector<std::string>;

TEST(NewLayers, come_on_top_start_at_zero_and_last_as_long_as_the_composition) {
    Scene scene;
    scene.layer("Below");
    Layer& layer = scene.comp.add_layer(scene.picture);
    EXPECT_EQ(layer.index(), 0);
    EXPECT_EQ(layer.offset(), at(0));
    EXPECT_EQ(layer.in_point(), at(0));
    EXPECT_EQ(layer.duration(), at(10));
    EXPECT_EQ(layer.stream(kAnchorPoint).value_at({}), value(100, 50));
    EXPECT_EQ(layer.stream(kPosition).value_at({}), value(320, 240));
    EXPECT_EQ(layer.display_name(), "Picture");
    EXPECT_EQ(layer.own_name(), "");
    scene.project.undo().undo();
    EXPECT_FALSE(layer.is_alive());
    EXPECT_EQ(names(scene.comp), Names{"Below"});
    EXPECT_EQ(error_of([&] { layer.index(); }), ErrorKind::bad_argument);
}

TEST(NewLayers, a_composition_cannot_come_to_contain_itself) {
    Scene scene;
    Comp& middle = scene.new_comp("Middle");
    Comp& inner = scene.new_comp("Inner");
    scene.comp.add_layer(middle);
    middle.add_layer(inner);
    EXPECT_TRUE(scene.comp.contains(inner));
    EXPECT_FALSE(inner.contains(scene.comp));
    EXPECT_EQ(error_of([&] { inner.add_layer(scene.comp); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { inner.add_layer(inner); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { inner.add_layer(scene.project.root_folder()); }), ErrorKind::bad_argument);
    EXPECT_EQ(inner.layer_count(), 0);
    middle.layer_at(0).remove();
    inner.add_layer(scene.comp);
    EXPECT_EQ(inner.layer_count(), 1);
}

TEST(NewNulls, come_on_top_with_a_source_of_their_own_in_the_solids_folder) {
    Scene scene;
    Layer& below = scene.layer("Below");
    scene.comp.select({&below});
    const int items = scene.project.item_count();
    Layer& null = scene.comp.create_null("N", at(3));
    Layer& other = scene.comp.create_null("N", {});
    EXPECT_EQ(names(scene.comp), (Names{"N", "N", "Below"}));
    EXPECT_EQ(null.index(), 1);
    EXPECT_TRUE(null.has_flag(kIsNull));
    EXPECT_EQ(null.kind(), LayerKind::av);
    EXPECT_EQ(null.own_name(), "");
    EXPECT_EQ(null.offset(), at(0));
    EXPECT_EQ(null.in_point(), at(0));
    EXPECT_EQ(null.duration(), at(3));
    EXPECT_EQ(other.duration(), at(10));
    EXPECT_EQ(null.stream(kAnchorPoint).value_at({}), value(0, 0));
    EXPECT_EQ(null.stream(kPosition).value_at({}), value(320, 240));
    EXPECT_EQ(null.stream(kScale).value_at({}), value(100, 100, 100));
    EXPECT_EQ(null.stream(kOpacity).value_at({}), value(100));
    EXPECT_NE(null.source(), other.source());
    EXPECT_EQ(scene.project.item_count(), items + 3);
    ASSERT_NE(null.source(), nullptr);
    EXPECT_EQ(null.source()->width(), 100);
    EXPECT_TRUE(null.source()->footage().is_solid);
    EXPECT_EQ(null.source()->type(), ItemType::footage);
    EXPECT_EQ(null.source()->parent_folder()->name(), "Solids");
    EXPECT_EQ(null.source()->parent_folder()->parent_folder(), &scene.project.root_folder());
    EXPECT_EQ(scene.comp.selected_layers(), std::vector<Layer*>{&below});
    scene.project.undo().undo_all();
    EXPECT_EQ(scene.project.item_count(), items);
    EXPECT_EQ(names(scene.comp), Names{"Below"});
}

TEST(NewNulls, use_the_solids_folder_that_is_there) {
    Scene scene;
    Item& elsewhere = scene.project.add_folder("Solids", &scene.project.add_folder("Inside"));
    Item& solids = scene.project.add_folder("Solids");
    EXPECT_EQ(scene.comp.create_null("A", {}).source()->parent_folder(), &solids);
    scene.project.delete_item(solids);
    Item* made = scene.comp.create_null("B", {}).source()->parent_folder();
    EXPECT_NE(made, &solids);
    EXPECT_NE(made, &elsewhere);
    made->set_name("Renamed");
    EXPECT_NE(scene.comp.create_null("C", {}).source()->parent_folder(), made);
}

TEST(NewNulls, follow_the_rules) {
    HostRules rules;
    rules.null_layer_gets_own_name = true;
    rules.new_null_is_selected = true;
    rules.null_opacity = 0;
    rules.null_size = 50;
    rules.solids_folder_name = "S";
    Scene scene(rules);
    Layer& null = scene.comp.create_null("N", {});
    EXPECT_EQ(null.own_name(), "N");
    EXPECT_EQ(scene.comp.selected_layers(), std::vector<Layer*>{&null});
    EXPECT_EQ(null.stream(kOpacity).value_at({}), value(0));
    EXPECT_EQ(null.source()->height(), 50);
    EXPECT_EQ(null.source()->parent_folder()->name(), "S");
    EXPECT_EQ(scene.project.undo().step_names().size(), 1u);
}

TEST(Moves, put_the_layer_at_the_index_it_shall_have) {
    Scene scene;
    for (const char* name : {"D", "C", "B", "A"}) scene.layer(name);
    Layer& b = scene.comp.layer_at(1);
    b.move_to(3);
    EXPECT_EQ(names(scene.comp), (Names{"A", "C", "D", "B"}));
    b.move_to(0);
    EXPECT_EQ(names(scene.comp), (Names{"B", "A", "C", "D"}));
    b.move_to(-1);
    EXPECT_EQ(b.index(), 3);
    b.move_to(1);
    b.move_to(99);
    EXPECT_EQ(b.index(), 3);
    EXPECT_EQ(error_of([&] { b.move_to(-2); }), ErrorKind::bad_argument);
    scene.project.undo().undo_all();
    EXPECT_EQ(names(scene.comp), (Names{"A", "B", "C", "D"}));
    EXPECT_EQ(error_of([&] { scene.comp.layer_at(4); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.comp.layer_at(-1); }), ErrorKind::bad_argument);
}

TEST(Names, the_topmost_layer_of_a_name_is_the_one_meant) {
    Scene scene;
    Layer& lower = scene.layer("Twin");
    Layer& upper = scene.layer("Twin");
    EXPECT_EQ(scene.comp.layer_named("Twin"), &upper);
    upper.move_to(-1);
    EXPECT_EQ(scene.comp.layer_named("Twin"), &lower);
    lower.rename("Other");
    EXPECT_EQ(scene.comp.layer_named("Twin"), &upper);
    upper.remove();
    EXPECT_EQ(scene.comp.layer_named("Twin"), nullptr);
    lower.rename("");
    EXPECT_EQ(lower.display_name(), "Picture");
    EXPECT_EQ(scene.comp.layer_named("Picture"), &lower);
    scene.picture.set_name("Photo");
    EXPECT_EQ(scene.comp.layer_named("Photo"), &lower);
    EXPECT_EQ(scene.comp.layer_named("Picture"), nullptr);
}

}  // namespace
}  // namespace host::model
