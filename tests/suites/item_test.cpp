// Items and projects.
#include "model/item.h"
#include "world.h"

namespace host::suites {

using testing::ElementsAre;

class Items : public World {
  public:
    const AEGP_ItemSuite8* items = suite<AEGP_ItemSuite8>();
    const AEGP_ProjectH project_handle = host.project_handle();
    const AEGP_ItemH root = host.handle(project.root_folder());
    const AEGP_ItemH red = host.handle(footage);
    const AEGP_ItemH main_item = host.handle(static_cast<model::Item&>(main));

    std::vector<AEGP_ItemH> walk() {
        std::vector<AEGP_ItemH> all;
        AEGP_ItemH item = nullptr;
        EXPECT_EQ(items->AEGP_GetFirstProjItem(project_handle, &item), 0);
        while (item) {
            all.push_back(item);
            EXPECT_EQ(items->AEGP_GetNextProjItem(project_handle, item, &item), 0);
        }
        return all;
    }
    AEGP_ItemH active() {
        AEGP_ItemH item = root;
        EXPECT_EQ(items->AEGP_GetActiveItem(&item), 0);
        return item;
    }
    bool is_selected(AEGP_ItemH item) {
        A_Boolean selected = 9;
        EXPECT_EQ(items->AEGP_IsItemSelected(item, &selected), 0);
        return selected != 0;
    }
};

TEST_F(Items, belong_to_the_one_project_there_always_is) {
    const AEGP_ProjSuite6* projects = suite<AEGP_ProjSuite6>();
    AEGP_ProjectH found = nullptr;
    EXPECT_EQ(projects->AEGP_GetProjectByIndex(0, &found), 0);
    EXPECT_EQ(found, project_handle);
    for (const A_long wrong : {-1, 1}) EXPECT_EQ(projects->AEGP_GetProjectByIndex(wrong, &found), kBadArgument);
    AEGP_ItemH item = nullptr;
    EXPECT_EQ(projects->AEGP_GetProjectRootFolder(project_handle, &item), 0);
    EXPECT_EQ(item, root);
    EXPECT_EQ(suite<AEGP_ProjSuite5>()->AEGP_GetProjectByIndex(0, &found), 0);
}

TEST_F(Items, are_walked_from_the_root_folder_on_folders_before_their_contents) {
    model::Item& outer = project.add_folder("Outer");
    model::Item& after = project.add_folder("After");
    model::Item& inner = project.add_folder("Inner", &outer);
    model::Comp& deep = project.add_comp("Deep", &inner);
    EXPECT_THAT(walk(), ElementsAre(root, main_item, red, host.handle(outer), host.handle(inner),
                                    host.handle(static_cast<model::Item&>(deep)), host.handle(after)));
    for (std::size_t i = 1; i < walk().size(); ++i)
        EXPECT_EQ(host.handle(project.item_by_number(static_cast<int>(i))), walk()[i]);
}

TEST_F(Items, are_walked_by_the_older_suites_too) {
    AEGP_ItemH next = nullptr;
    EXPECT_EQ(suite<AEGP_ItemSuite6>()->AEGP_GetNextProjItem(project_handle, root, &next), 0);
    EXPECT_EQ(next, main_item);
    EXPECT_EQ(suite<AEGP_ItemSuite5>()->AEGP_GetNextItem(main_item, &next), 0);
    EXPECT_EQ(next, red);
    EXPECT_EQ(suite<AEGP_ItemSuite1>()->AEGP_GetNextItem(red, &next), 0);
    EXPECT_EQ(next, nullptr);
}

TEST_F(Items, are_active_in_the_timeline_as_the_open_composition) {
    EXPECT_EQ(active(), main_item);
    project.open_comp(nullptr);
    EXPECT_EQ(active(), nullptr);
    project.open_comp(&main);
    project.set_active_panel(model::ActivePanel::none);
    EXPECT_EQ(active(), nullptr);
}

TEST_F(Items, are_active_in_the_project_panel_when_selected_alone) {
    project.set_active_panel(model::ActivePanel::project);
    EXPECT_EQ(active(), nullptr);
    project.select_items({&footage});
    EXPECT_EQ(active(), red);
    project.select_items({&footage, &main});
    EXPECT_EQ(active(), nullptr);
}

TEST_F(Items, are_selected_in_the_project_panel_only) {
    project.select_items({&footage});
    EXPECT_FALSE(is_selected(red));
    project.set_active_panel(model::ActivePanel::project);
    EXPECT_TRUE(is_selected(red));
    EXPECT_FALSE(is_selected(main_item));
}

TEST_F(Items, give_their_type) {
    const auto type = [this](AEGP_ItemH item) {
        AEGP_ItemType found = -1;
        EXPECT_EQ(items->AEGP_GetItemType(item, &found), 0);
        return found;
    };
    EXPECT_EQ(type(root), AEGP_ItemType_FOLDER);
    EXPECT_EQ(type(main_item), AEGP_ItemType_COMP);
    EXPECT_EQ(type(red), AEGP_ItemType_FOOTAGE);  // solids too
}

TEST_F(Items, have_ids_that_are_never_used_again) {
    const auto id = [this](AEGP_ItemH item) {
        A_long found = -1;
        EXPECT_EQ(items->AEGP_GetItemID(item, &found), 0);
        return found;
    };
    EXPECT_EQ(id(main_item), main.id());
    EXPECT_GE(id(root), 1);
    model::Item& first = project.add_folder("First");
    const A_long gone = id(host.handle(first));
    EXPECT_EQ(items->AEGP_DeleteItem(host.handle(first)), 0);
    EXPECT_GT(id(host.handle(project.add_folder("Second"))), gone);
}

TEST_F(Items, know_the_folder_they_are_in) {
    model::Item& folder = project.add_folder("Folder");
    model::Comp& inside = project.add_comp("Inside", &folder);
    AEGP_ItemH found = nullptr;
    EXPECT_EQ(items->AEGP_GetItemParentFolder(host.handle(static_cast<model::Item&>(inside)), &found), 0);
    EXPECT_EQ(found, host.handle(folder));
    EXPECT_EQ(items->AEGP_GetItemParentFolder(main_item, &found), 0);
    EXPECT_EQ(found, root);
    EXPECT_EQ(items->AEGP_GetItemParentFolder(root, &found), 0);
    EXPECT_EQ(found, nullptr);
}

TEST_F(Items, give_their_dimensions_and_pixel_aspect) {
    A_long width = 0;
    A_long height = 0;
    EXPECT_EQ(items->AEGP_GetItemDimensions(main_item, &width, &height), 0);
    EXPECT_EQ(width, 1000);
    EXPECT_EQ(height, 500);
    width = 7;
    EXPECT_EQ(items->AEGP_GetItemDimensions(main_item, &width, nullptr), kBadArgument);
    EXPECT_EQ(width, 7);
    footage.set_pixel_aspect({59, 54});
    A_Ratio aspect{};
    EXPECT_EQ(items->AEGP_GetItemPixelAspectRatio(red, &aspect), 0);
    EXPECT_EQ(aspect.num, 59);
    EXPECT_EQ(aspect.den, 54U);
}

TEST_F(Items, take_their_layers_with_them_when_deleted) {
    model::Comp& other = project.add_comp("Other");
    add_layer("A");
    other.add_layer(footage);
    model::Layer& nested = main.add_layer(other);
    EXPECT_EQ(items->AEGP_DeleteItem(red), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("Other"));
    EXPECT_EQ(other.layer_count(), 0);
    EXPECT_EQ(items->AEGP_DeleteItem(host.handle(static_cast<model::Item&>(other))), 0);
    EXPECT_FALSE(nested.is_alive());
    A_long id = -1;
    EXPECT_EQ(items->AEGP_GetItemID(red, &id), kBadArgument);
    project.undo().undo();
    project.undo().undo();
    EXPECT_THAT(layer_names(main), ElementsAre("Other", "A"));
    EXPECT_EQ(items->AEGP_GetItemID(red, &id), 0);
}

TEST_F(Items, in_a_folder_go_with_it_and_the_root_folder_stays) {
    model::Item& folder = project.add_folder("Folder");
    project.add_comp("Inside", &folder);
    EXPECT_EQ(items->AEGP_DeleteItem(host.handle(folder)), 0);
    EXPECT_THAT(walk(), ElementsAre(root, main_item, red));
    EXPECT_EQ(items->AEGP_DeleteItem(root), kBadArgument);
    EXPECT_THAT(walk(), ElementsAre(root, main_item, red));
}

TEST_F(Items, that_are_compositions_answer_to_no_composition_handle_once_deleted) {
    const AEGP_CompH comp = host.comp_handle(main);
    EXPECT_EQ(items->AEGP_DeleteItem(main_item), 0);
    A_long count = -1;
    EXPECT_EQ(layers()->AEGP_GetCompNumLayers(comp, &count), kBadArgument);
    EXPECT_EQ(active(), nullptr);
}

}  // namespace host::suites
