// Project items: the walk, numbers, folders, names.
#include <gtest/gtest.h>

#include "scene.h"

namespace host::model {
namespace {

using testing::error_of;
using testing::Scene;
using Names = std::vector<std::string>;

Names walk(const Project& project) {
    Names all;
    for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item)) {
        EXPECT_EQ(project.number_of(*item), static_cast<int>(all.size()));
        if (!all.empty()) {
            EXPECT_EQ(&project.item_by_number(static_cast<int>(all.size())), item);
        }
        all.push_back(item->name());
    }
    EXPECT_EQ(project.item_count(), static_cast<int>(all.size()) - 1);
    return all;
}

TEST(Items, are_walked_folder_first_in_order_of_creation) {
    Project project;
    Item& one = project.add_folder("One");
    project.add_footage("Loose", {}, 1, 1);
    Item& deep = project.add_folder("Deep", &one);
    project.add_comp("C1", &one);
    project.add_comp("C2", &deep);
    project.add_comp("C3", &one);
    project.add_footage("Last", {}, 1, 1);
    EXPECT_EQ(walk(project), (Names{"Root", "One", "Deep", "C2", "C1", "C3", "Loose", "Last"}));
    std::vector<std::string> comps;
    for (const Comp* comp : project.comps()) comps.push_back(comp->name());
    EXPECT_EQ(comps, (Names{"C2", "C1", "C3"}));
    EXPECT_EQ(one.folder_contents().size(), 3u);
    project.undo().undo();
    project.undo().undo();
    EXPECT_EQ(walk(project), (Names{"Root", "One", "Deep", "C2", "C1", "Loose"}));
}

TEST(Items, a_deleted_folder_takes_its_contents_along_and_undo_brings_back_the_same) {
    Project project;
    Item& folder = project.add_folder("Folder");
    Item& inner = project.add_folder("Inner", &folder);
    Comp& comp = project.add_comp("Comp", &inner);
    project.add_folder("After");
    const Names before = walk(project);
    const ItemId id = comp.id();
    project.delete_item(folder);
    EXPECT_EQ(walk(project), (Names{"Root", "After"}));
    EXPECT_FALSE(comp.is_alive());
    EXPECT_EQ(project.item_by_id(id), nullptr);
    EXPECT_EQ(project.comp_named("Comp"), nullptr);
    EXPECT_EQ(error_of([&] { project.next_item(comp); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { project.number_of(comp); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { project.delete_item(folder); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { project.add_comp("X", &folder); }), ErrorKind::bad_argument);
    project.undo().undo();
    EXPECT_EQ(walk(project), before);
    EXPECT_EQ(project.item_by_id(id), &comp);
    EXPECT_EQ(project.comp_named("Comp"), &comp);
}

TEST(Items, ids_are_never_used_again) {
    Project project;
    Item& first = project.add_folder("A");
    const ItemId id = first.id();
    EXPECT_GT(id, project.root_folder().id());
    EXPECT_GE(project.root_folder().id(), 1);
    project.undo().undo();
    EXPECT_GT(project.add_folder("B").id(), id);
}

TEST(Items, the_root_folder_has_no_number_and_cannot_be_deleted) {
    Project project;
    EXPECT_EQ(project.root_folder().parent_folder(), nullptr);
    EXPECT_EQ(error_of([&] { project.delete_item(project.root_folder()); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { project.item_by_number(0); }), ErrorKind::bad_argument);
    EXPECT_EQ(error_of([&] { project.item_by_number(1); }), ErrorKind::bad_argument);
}

TEST(Items, only_folders_hold_items) {
    Scene scene;
    EXPECT_EQ(error_of([&] { scene.project.add_folder("X", &scene.comp); }), ErrorKind::bad_argument);
}

TEST(Items, of_compositions_with_one_name_the_oldest_is_meant) {
    Project project;
    Comp& older = project.add_comp("Twin");
    Comp& newer = project.add_comp("Twin");
    EXPECT_EQ(project.comp_named("Twin"), &older);
    older.set_name("Other");
    EXPECT_EQ(project.comp_named("Twin"), &newer);
    project.undo().undo();
    EXPECT_EQ(project.comp_named("Twin"), &older);
}

TEST(Items, know_the_layers_that_show_them) {
    Scene scene;
    Layer& one = scene.layer("One");
    Layer& two = scene.layer("Two");
    EXPECT_EQ(scene.picture.users(), (std::vector<Layer*>{&one, &two}));
    one.remove();
    EXPECT_EQ(scene.picture.users(), std::vector<Layer*>{&two});
}

TEST(Items, a_new_pixel_aspect_is_undoable) {
    Scene scene;
    scene.picture.set_pixel_aspect({10, 11});
    EXPECT_EQ(scene.picture.pixel_aspect(), (PixelAspect{10, 11}));
    scene.project.undo().undo();
    EXPECT_EQ(scene.picture.pixel_aspect(), (PixelAspect{1, 1}));
}

}  // namespace
}  // namespace host::model
