// Stack order and the 3D switch.
#include "operation_test.h"

class Order : public OperationTest {
  protected:
    fake::Collection* with_a_mask_between() {
        fake::Collection* layers = host.add_collection("layers", {a, b, c});
        layers->items[1].type = AEGP_CollectionItemType_MASK;
        return layers;
    }
};

TEST_F(Order, moving_to_the_top_ends_with_the_last_layer_on_top) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    EXPECT_EQ(move_layers_to_top(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_THAT(inner->layers, ElementsAre(c, b, a));
    EXPECT_THAT(host.calls,
                ElementsAre("Collection2.GetCollectionNumItems(layers)",
                            "Collection2.GetCollectionItemByIndex(layers, 0)", "Layer5.ReorderLayer(a, 0)",
                            "Collection2.GetCollectionItemByIndex(layers, 1)", "Layer5.ReorderLayer(b, 0)",
                            "Collection2.GetCollectionItemByIndex(layers, 2)", "Layer5.ReorderLayer(c, 0)"));
}

TEST_F(Order, moving_to_an_index_goes_from_the_last_layer_to_the_first) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    EXPECT_EQ(move_layers_to_index(&info, fake::handle(layers), 2), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Collection2.GetCollectionNumItems(layers)",
                            "Collection2.GetCollectionItemByIndex(layers, 2)", "Layer5.ReorderLayer(c, 2)",
                            "Collection2.GetCollectionItemByIndex(layers, 1)", "Layer5.ReorderLayer(b, 2)",
                            "Collection2.GetCollectionItemByIndex(layers, 0)", "Layer5.ReorderLayer(a, 2)"));
}

TEST_F(Order, the_3d_switch_goes_on_for_each_layer) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    EXPECT_EQ(set_all_layers_to_3D(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Collection2.GetCollectionNumItems(layers)",
                            "Collection2.GetCollectionItemByIndex(layers, 0)", "Layer5.SetLayerFlag(a, 2048, true)",
                            "Collection2.GetCollectionItemByIndex(layers, 1)", "Layer5.SetLayerFlag(b, 2048, true)"));
}

TEST_F(Order, an_empty_collection_costs_one_call) {
    fake::Collection* layers = host.add_collection("layers", {});
    EXPECT_EQ(move_layers_to_top(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(move_layers_to_index(&info, fake::handle(layers), 1), A_Err_NONE);
    EXPECT_EQ(set_all_layers_to_3D(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(host.calls, std::vector<std::string>(3, "Collection2.GetCollectionNumItems(layers)"));
}

TEST_F(Order, items_that_are_no_layers_are_passed_over) {
    fake::Collection* layers = with_a_mask_between();
    EXPECT_EQ(move_layers_to_top(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_EQ(move_layers_to_index(&info, fake::handle(layers), 1), A_Err_NONE);
    EXPECT_EQ(set_all_layers_to_3D(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_THAT(host.calls_of("Layer5"),
                ElementsAre("Layer5.ReorderLayer(a, 0)", "Layer5.ReorderLayer(c, 0)", "Layer5.ReorderLayer(c, 1)",
                            "Layer5.ReorderLayer(a, 1)", "Layer5.SetLayerFlag(a, 2048, true)",
                            "Layer5.SetLayerFlag(c, 2048, true)"));
}

TEST_F(Order, ordering_to_the_top_reads_the_same_index_each_time) {
    EXPECT_EQ(order_layers_to_top(&info, fake::handle(inner), 2, 2), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetCompLayerByIndex(inner, 2)", "Layer5.ReorderLayer(c, 0)",
                                        "Layer5.GetCompLayerByIndex(inner, 2)", "Layer5.ReorderLayer(b, 0)"));
}

TEST_F(Order, every_walk_ends_at_the_first_failure) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    expect_faults_end_it([&] { return move_layers_to_top(&info, fake::handle(layers)); });
    expect_faults_end_it([&] { return move_layers_to_index(&info, fake::handle(layers), 1); });
    expect_faults_end_it([&] { return set_all_layers_to_3D(&info, fake::handle(layers)); });
    expect_faults_end_it([&] { return order_layers_to_top(&info, fake::handle(inner), 1, 3); });
}

TEST_F(Order, one_layer_is_moved_too) {
    fake::Collection* layers = host.add_collection("layers", {c});
    EXPECT_EQ(move_layers_to_top(&info, fake::handle(layers)), A_Err_NONE);
    EXPECT_THAT(inner->layers, ElementsAre(c, a, b));
    EXPECT_EQ(move_layers_to_index(&info, fake::handle(layers), 1), A_Err_NONE);
    EXPECT_THAT(inner->layers, ElementsAre(a, c, b));
}

TEST_F(Order, layers_moved_before_a_failure_stay_moved) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    host.fail_on = "ReorderLayer(c, 0)";
    EXPECT_EQ(move_layers_to_top(&info, fake::handle(layers)), fake::Host::kInjected);
    EXPECT_THAT(inner->layers, ElementsAre(b, a, c));
    host.fail_on = "SetLayerFlag(b";
    EXPECT_EQ(set_all_layers_to_3D(&info, fake::handle(layers)), fake::Host::kInjected);
    EXPECT_TRUE(a->is_3d);
    EXPECT_FALSE(c->is_3d);
}

TEST_F(Order, ordering_nothing_to_the_top_makes_no_call) {
    EXPECT_EQ(order_layers_to_top(&info, fake::handle(inner), 2, 0), A_Err_NONE);
    EXPECT_THAT(host.calls, IsEmpty());
    EXPECT_EQ(order_layers_to_top(&info, fake::handle(inner), 0, 1), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetCompLayerByIndex(inner, 0)", "Layer5.ReorderLayer(a, 0)"));
}
