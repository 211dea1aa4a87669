// Deleting layers and items, and what comes back by undo.
#include <gtest/gtest.h>

#include "scene.h"
#include "world.h"

namespace host::model {
namespace {

using testing::error_of;
using testing::install_tint;
using testing::key;
using testing::names;
using testing::PlaceWatch;
using testing::Scene;
using testing::value;
using Names = std::vector<std::string>;

struct FamilyScene : Scene {
    explicit FamilyScene(HostRules rules = {})
        : Scene(rules), child(layer("Child")), user(layer("User")), parent(layer("Parent")) {
        project.rules().mattes_by_position = false;
        parent.stream(kRotation).set_static_value(value(30));
        child.load_parent(&parent);
        user.load_matte(&parent, MatteType::alpha);
        map = &user.apply_effect(install_tint(project)->key).parameter(testing::kTintLayer);
        map->replace(value(parent.id()), {key(0, value(parent.id())), key(1, value(child.id()))});
        project.undo().clear();
    }
    Layer& child;
    Layer& user;
    Layer& parent;
    Stream* map;
};

TEST(Deletion, children_keep_their_place) {
    FamilyScene scene;
    const PlaceWatch watch(scene.child);
    scene.parent.remove();
    EXPECT_EQ(scene.child.parent(), nullptr);
    EXPECT_LT(watch.moved(), 1e-3);
    EXPECT_EQ(scene.child.stream(kRotation).value_at({}), value(30));
}

TEST(Deletion, children_keep_their_values_under_the_other_rule) {
    HostRules rules;
    rules.deleting_a_parent_compensates = false;
    FamilyScene scene(rules);
    const StreamData* data = &scene.child.stream(kPosition).data();
    scene.parent.remove();
    EXPECT_EQ(scene.child.parent(), nullptr);
    EXPECT_EQ(&scene.child.stream(kPosition).data(), data);
}

TEST(Deletion, mattes_and_layer_parameters_become_none) {
    FamilyScene scene;
    scene.parent.remove();
    EXPECT_EQ(scene.user.matte(), nullptr);
    EXPECT_EQ(scene.user.matte_type(), MatteType::none);
    EXPECT_EQ(scene.map->data().static_value, value(0));
    EXPECT_EQ(scene.map->keyframe(0).value, value(0));
    EXPECT_EQ(scene.map->keyframe(1).value, value(scene.child.id()));
}

TEST(Deletion, undo_brings_back_the_same_layer_with_all_that_referred_to_it) {
    FamilyScene scene;
    const LayerId id = scene.parent.id();
    const StreamData* position = &scene.child.stream(kPosition).data();
    const StreamData* map = &scene.map->data();
    scene.comp.select({&scene.parent});
    scene.parent.move_to(1);
    scene.project.undo().clear();
    scene.parent.remove();
    EXPECT_FALSE(scene.parent.is_alive());
    EXPECT_EQ(scene.project.layer_by_id(id), nullptr);
    EXPECT_EQ(names(scene.comp), (Names{"User", "Child"}));
    EXPECT_EQ(scene.project.undo().step_names().size(), 1u);
    scene.project.undo().undo();
    EXPECT_TRUE(scene.parent.is_alive());
    EXPECT_EQ(scene.project.layer_by_id(id), &scene.parent);
    EXPECT_EQ(names(scene.comp), (Names{"User", "Parent", "Child"}));
    EXPECT_EQ(scene.comp.selected_layers(), std::vector<Layer*>{&scene.parent});
    EXPECT_EQ(scene.child.parent(), &scene.parent);
    EXPECT_EQ(scene.parent.children(), std::vector<Layer*>{&scene.child});
    EXPECT_EQ(&scene.child.stream(kPosition).data(), position);
    EXPECT_EQ(scene.user.matte(), &scene.parent);
    EXPECT_EQ(scene.user.matte_type(), MatteType::alpha);
    EXPECT_EQ(&scene.map->data(), map);
}

TEST(Deletion, the_parameters_are_found_again_after_undo) {
    FamilyScene scene;
    scene.parent.remove();
    scene.project.undo().undo();
    scene.parent.remove();
    EXPECT_EQ(scene.map->data().static_value, value(0));
}

TEST(Deletion, parameters_in_unread_content_become_none_too) {
    FamilyScene scene;
    const auto kind = install_tint(scene.project);
    const LayerId id = scene.parent.id();
    Layer& late = scene.comp.load_layer(LayerKind::vector, nullptr);
    const auto content = std::make_shared<testing::TestContent>([kind, id](Layer& layer) {
        auto effect = std::make_unique<Effect>(layer, kind, "Tint");
        auto data = std::make_shared<StreamData>();
        data->static_value = value(id);
        effect->load_parameter(testing::kTintLayer,
                               std::make_unique<Stream>(layer, StreamType::layer_id, "Map", std::move(data)));
        layer.load_effect(std::move(effect));
    });
    content->layer_parameters = true;
    late.set_content(content);
    scene.parent.remove();
    EXPECT_EQ(late.effect(0).parameter(testing::kTintLayer).value_at({}), value(0));
    scene.project.undo().undo();
    EXPECT_EQ(late.effect(0).parameter(testing::kTintLayer).value_at({}), value(id));
    EXPECT_FALSE(late.effect(0).parameter(testing::kTintLayer).is_changed());
}

TEST(Deletion, a_child_whose_content_cannot_be_read_stops_it_before_anything_changes) {
    FamilyScene scene;
    Layer& broken = scene.layer("Broken");
    broken.load_parent(&scene.parent);
    broken.set_content(
        std::make_shared<testing::TestContent>([](Layer&) { throw Error(ErrorKind::bad_argument, "Bad content."); }));
    EXPECT_EQ(error_of([&] { scene.parent.remove(); }), ErrorKind::bad_argument);
    EXPECT_TRUE(scene.parent.is_alive());
    EXPECT_EQ(scene.child.parent(), &scene.parent);
    EXPECT_EQ(scene.user.matte(), &scene.parent);
    EXPECT_FALSE(scene.project.undo().can_undo());
}

TEST(Deletion, a_dead_layer_takes_no_changes) {
    FamilyScene scene;
    scene.parent.remove();
    EXPECT_EQ(error_of([&] { scene.parent.remove(); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.parent.rename("X"); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.parent.move_to(0); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.parent.set_flag(kLocked, true); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.parent.stream(kOpacity).set_static_value(value(1)); }), ErrorKind::bad_argument);
}

TEST(DeletingItems, takes_every_layer_that_uses_them) {
    FamilyScene scene;
    Comp& other = scene.new_comp("Other");
    Layer& foreign = scene.layer("Foreign", &other);
    Item& photo = scene.project.add_footage("Photo", {}, 10, 10);
    Layer& survivor = scene.comp.add_layer(photo);
    survivor.set_parent(&scene.parent, Parenting::keep_local_values);
    scene.project.undo().clear();
    const PlaceWatch watch(survivor);
    scene.project.delete_item(scene.picture);
    EXPECT_EQ(names(scene.comp), Names{"Photo"});
    EXPECT_EQ(other.layer_count(), 0);
    EXPECT_EQ(survivor.parent(), nullptr);
    EXPECT_LT(watch.moved(), 1e-3);
    EXPECT_EQ(scene.project.undo().step_names().size(), 1u);
    scene.project.undo().undo();
    EXPECT_EQ(names(scene.comp), (Names{"Photo", "Parent", "User", "Child"}));
    EXPECT_TRUE(foreign.is_alive());
    EXPECT_EQ(survivor.parent(), &scene.parent);
    EXPECT_EQ(scene.child.parent(), &scene.parent);
    EXPECT_EQ(scene.picture.users().size(), 4u);
}

TEST(DeletingItems, a_composition_takes_its_own_layers_and_those_that_show_it) {
    FamilyScene scene;
    Comp& outer = scene.new_comp("Outer");
    Layer& nest = outer.add_layer(scene.comp);
    const LayerId id = scene.child.id();
    scene.project.delete_item(scene.comp);
    EXPECT_FALSE(scene.child.is_alive());
    EXPECT_FALSE(nest.is_alive());
    EXPECT_EQ(scene.project.layer_by_id(id), nullptr);
    EXPECT_TRUE(scene.picture.users().empty());
    EXPECT_EQ(error_of([&] { scene.child.rename("X"); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { scene.comp.create_null("X", {}); }), ErrorKind::bad_argument);
    scene.project.undo().undo();
    EXPECT_EQ(scene.project.layer_by_id(id), &scene.child);
    EXPECT_TRUE(nest.is_alive());
    EXPECT_EQ(scene.child.parent(), &scene.parent);
    EXPECT_EQ(scene.picture.users().size(), 3u);
    EXPECT_TRUE(outer.contains(scene.comp));
}

TEST(DeletingItems, the_source_of_a_null_takes_the_null_and_leaves_the_folder) {
    Scene scene;
    Layer& null = scene.comp.create_null("N", {});
    Item* folder = null.source()->parent_folder();
    scene.project.delete_item(*null.source());
    EXPECT_FALSE(null.is_alive());
    EXPECT_TRUE(folder->is_alive());
    EXPECT_TRUE(folder->folder_contents().empty());
}

}  // namespace
}  // namespace host::model
