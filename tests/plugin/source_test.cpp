// Counting who uses a source, and deleting a layer with its own.
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
