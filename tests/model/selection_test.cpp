// The layers selected in a composition.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::error_of;
using testing::Scene;
using Layers = std::vector<Layer*>;

struct SelectionScene : Scene {
    explicit SelectionScene(HostRules rules = {}) : Scene(rules), c(layer("C")), b(layer("B")), a(layer("A")) {}
    Layer& c;
    Layer& b;
    Layer& a;  // on top
};

TEST(Selection, keeps_the_order_of_selecting) {
    SelectionScene scene;
    scene.comp.select({&scene.b, &scene.c, &scene.a, &scene.b});
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.b, &scene.c, &scene.a}));
    scene.b.move_to(2);
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.b, &scene.c, &scene.a}));
}

TEST(Selection, goes_from_top_to_bottom_under_the_rule) {
    HostRules rules;
    rules.selection_order = SelectionOrder::top_to_bottom;
    SelectionScene scene(rules);
    scene.comp.select({&scene.b, &scene.c, &scene.a});
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.a, &scene.b, &scene.c}));
    scene.a.move_to(-1);
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.b, &scene.c, &scene.a}));
}

TEST(Selection, is_replaced_as_a_whole_or_not_at_all) {
    SelectionScene scene;
    scene.comp.select({&scene.a, &scene.b});
    Layer& foreign = scene.layer("Foreign", &scene.new_comp("Other"));
    Layer& dead = scene.layer("Dead");
    dead.remove();
    EXPECT_EQ(error_of([&] { scene.comp.select({&scene.c, &foreign}); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.comp.select({&scene.c, &dead}); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.comp.select({nullptr}); }), ErrorKind::bad_argument);
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.a, &scene.b}));
    scene.comp.select({});
    EXPECT_TRUE(scene.comp.selected_layers().empty());
}

TEST(Selection, loses_a_deleted_layer_and_gets_it_back_by_undo) {
    SelectionScene scene;
    scene.comp.select({&scene.a, &scene.b, &scene.c});
    scene.b.remove();
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.a, &scene.c}));
    scene.project.undo().undo();
    EXPECT_EQ(scene.comp.selected_layers(), (Layers{&scene.a, &scene.b, &scene.c}));
}

TEST(Selection, selecting_is_no_step_but_a_step_gives_back_what_it_found) {
    SelectionScene scene;
    scene.comp.select({&scene.a});
    EXPECT_FALSE(scene.project.undo().can_undo());
    scene.project.undo().begin_group("Edit");
    scene.comp.select({&scene.b});
    scene.b.rename("X");
    scene.project.undo().end_group();
    scene.comp.select({&scene.c});
    EXPECT_EQ(scene.project.undo().step_names().size(), 1u);
    scene.project.undo().undo();
    EXPECT_EQ(scene.comp.selected_layers(), Layers{&scene.a});
}

TEST(ActiveItem, depends_on_the_panel_the_user_works_in) {
    Scene scene;
    Project& project = scene.project;
    EXPECT_EQ(project.active_item(), nullptr);
    project.open_comp(&scene.comp);
    EXPECT_EQ(project.active_item(), &scene.comp);
    project.select_items({&scene.picture});
    EXPECT_FALSE(project.is_item_selected(scene.picture));
    project.set_active_panel(ActivePanel::project);
    EXPECT_TRUE(project.is_item_selected(scene.picture));
    EXPECT_EQ(project.active_item(), &scene.picture);
    project.select_items({&scene.picture, &scene.comp});
    EXPECT_EQ(project.active_item(), nullptr);
    project.delete_item(scene.picture);
    EXPECT_EQ(project.active_item(), &scene.comp);
    EXPECT_FALSE(project.is_item_selected(scene.picture));
    project.set_active_panel(ActivePanel::none);
    EXPECT_EQ(project.active_item(), nullptr);
    project.set_active_panel(ActivePanel::timeline);
    project.delete_item(scene.comp);
    EXPECT_EQ(project.active_item(), nullptr);
}

}  // namespace
}  // namespace host::model
