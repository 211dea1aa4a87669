// Counting who uses a source, and deleting a layer together with its source.
#include "operation_test.h"

class Source : public OperationTest {
  protected:
    int uses_of(fake::Item* item) {
        int count = -5;
        EXPECT_EQ(item_use_count(&info, fake::handle(item), &count), A_Err_NONE);
        return count;
    }
};

TEST_F(Source, used_by_one_layer_counts_one) {
    EXPECT_EQ(uses_of(inner->item), 1);
}

TEST_F(Source, counts_every_layer_of_every_composition_once) {
    fake::Comp* other = host.add_comp("other");
    host.add_layer(other, "once more", inner->item);
    host.add_layer(main, "twice", inner->item);
    EXPECT_EQ(uses_of(inner->item), 3);
    EXPECT_EQ(uses_of(footage), 5);
}

TEST_F(Source, that_nobody_uses_counts_none) {
    EXPECT_EQ(uses_of(main->item), 0);
}

TEST_F(Source, layers_without_a_source_never_match_and_are_not_asked) {
    inner->layers.clear();
    main->layers.clear();
    host.add_layer(main, "camera", nullptr)->object_type = AEGP_ObjectType_CAMERA;
    EXPECT_EQ(uses_of(footage), 0);
    EXPECT_THAT(host.calls, ElementsAre("Proj6.GetProjectByIndex(0)", "Item8.GetFirstProjItem(project)",
                                        "Item8.GetItemID(footage)",  //
                                        "Item8.GetItemType(root)", "Item8.GetNextProjItem(project, root)",
                                        "Item8.GetItemType(footage)", "Item8.GetNextProjItem(project, footage)",
                                        "Item8.GetItemType(inner)", "Comp7.GetCompFromItem(inner)",
                                        "Layer7.GetCompNumLayers(inner)", "Item8.GetNextProjItem(project, inner)",
                                        "Item8.GetItemType(main)", "Comp7.GetCompFromItem(main)",
                                        "Layer7.GetCompNumLayers(main)", "Layer7.GetCompLayerByIndex(main, 0)",
                                        "Layer7.GetLayerSourceItem(camera)", "Item8.GetNextProjItem(project, main)"));
}

TEST_F(Source, count_is_written_after_a_failure_with_what_was_counted_so_far) {
    host.fail_on = "GetLayerSourceItem(c)";
    int count = -5;
    EXPECT_EQ(item_use_count(&info, fake::handle(footage), &count), fake::Host::kInjected);
    EXPECT_EQ(count, 2);
    host.fail_on = "GetProjectByIndex";
    EXPECT_EQ(item_use_count(&info, fake::handle(footage), &count), fake::Host::kInjected);
    EXPECT_EQ(count, 0);
}

TEST_F(Source, counting_ends_at_the_first_failure) {
    int count = 0;
    expect_faults_end_it([&] { return item_use_count(&info, fake::handle(footage), &count); });
}

TEST_F(Source, goes_after_its_layer) {
    EXPECT_EQ(delete_layer_and_source(&info, fake::handle(nest)), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Layer4.GetLayerSourceItem(nest)", "Layer4.DeleteLayer(nest)", "Item1.DeleteItem(inner)"));
}

TEST_F(Source, is_not_checked_for_null_before_it_is_deleted) {
    fake::Layer* camera = host.add_layer(main, "camera", nullptr);
    host.fail_on = "DeleteItem";
    EXPECT_EQ(delete_layer_and_source(&info, fake::handle(camera)), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Item1.DeleteItem(null)");
}

TEST_F(Source, deleting_ends_at_the_first_failure) {
    expect_faults_end_it([&] { return delete_layer_and_source(&info, fake::handle(nest)); });
}

TEST_F(Source, is_known_by_its_id) {
    fake::Item* same = host.add_item("same", AEGP_ItemType_COMP);
    host.items.pop_back();
    same->id = inner->item->id;
    EXPECT_EQ(uses_of(same), 1);
    nest->source = same;
    EXPECT_EQ(uses_of(inner->item), 1);
}

TEST_F(Source, used_twice_in_one_composition_and_once_in_another_counts_three) {
    fake::Comp* other = host.add_comp("other");
    host.add_layer(other, "once", inner->item);
    host.add_layer(inner, "camera", nullptr);
    main->layers = {nest, above, below, host.add_layer(main, "last", inner->item)};
    EXPECT_EQ(uses_of(inner->item), 3);
    EXPECT_EQ(host.count_of("Item8.GetItemID(null)"), 0);
}

TEST_F(Source, counts_once_for_a_layer_whose_composition_is_nested_itself) {
    fake::Comp* outer = host.add_comp("outer");
    host.add_layer(outer, "m1", main->item);
    host.add_layer(outer, "m2", main->item);
    EXPECT_EQ(uses_of(inner->item), 1);
    EXPECT_EQ(uses_of(main->item), 2);
}

TEST_F(Source, is_looked_for_in_every_layer_in_this_order) {
    inner->layers = {a};
    main->layers = {above, nest};
    EXPECT_EQ(uses_of(inner->item), 1);
    EXPECT_THAT(
        host.calls,
        ElementsAre(
            "Proj6.GetProjectByIndex(0)", "Item8.GetFirstProjItem(project)", "Item8.GetItemID(inner)",
            "Item8.GetItemType(root)", "Item8.GetNextProjItem(project, root)", "Item8.GetItemType(footage)",
            "Item8.GetNextProjItem(project, footage)", "Item8.GetItemType(inner)", "Comp7.GetCompFromItem(inner)",
            "Layer7.GetCompNumLayers(inner)", "Layer7.GetCompLayerByIndex(inner, 0)", "Layer7.GetLayerSourceItem(a)",
            "Item8.GetItemID(footage)", "Item8.GetNextProjItem(project, inner)", "Item8.GetItemType(main)",
            "Comp7.GetCompFromItem(main)", "Layer7.GetCompNumLayers(main)", "Layer7.GetCompLayerByIndex(main, 0)",
            "Layer7.GetLayerSourceItem(above)", "Item8.GetItemID(footage)", "Layer7.GetCompLayerByIndex(main, 1)",
            "Layer7.GetLayerSourceItem(nest)", "Item8.GetItemID(inner)", "Item8.GetNextProjItem(project, main)"));
}

TEST_F(Source, stays_when_its_layer_cannot_be_deleted) {
    host.fail_on = "DeleteLayer";
    EXPECT_EQ(delete_layer_and_source(&info, fake::handle(nest)), fake::Host::kInjected);
    EXPECT_FALSE(inner->item->deleted);
    EXPECT_EQ(host.count_of("DeleteItem"), 0);
    host.fail_on = "GetLayerSourceItem";
    host.forget_calls();
    EXPECT_EQ(delete_layer_and_source(&info, fake::handle(nest)), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 1u);
    EXPECT_THAT(main->layers, ElementsAre(above, nest, below));
}

TEST_F(Source, used_by_others_is_deleted_all_the_same) {
    host.add_layer(main, "twin", inner->item);
    EXPECT_EQ(delete_layer_and_source(&info, fake::handle(nest)), A_Err_NONE);
    EXPECT_TRUE(inner->item->deleted);
}

TEST_F(Source, count_is_not_written_when_a_suite_is_missing) {
    host.refused = {"AEGP Proj Suite 9"};
    int count = -5;
    EXPECT_EQ(item_use_count(&info, fake::handle(inner->item), &count), 516);
    EXPECT_EQ(count, -5);
}

TEST_F(Source, layer_without_a_source_uses_no_item_whatever_its_number) {
    host.add_layer(main, "light", nullptr);
    fake::Item* unused = host.add_item("unused", AEGP_ItemType_FOOTAGE);
    for (const A_long id : {0, 1, -2}) {
        unused->id = id;
        int count = 9;
        EXPECT_EQ(item_use_count(&info, fake::handle(unused), &count), A_Err_NONE);
        EXPECT_EQ(count, 0) << id;
    }
}
