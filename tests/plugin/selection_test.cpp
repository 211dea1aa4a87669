// The selected layers, and which of them are pre-comp layers.
#include "operation_test.h"

using Selection = OperationTest;

TEST_F(Selection, comes_from_the_active_composition) {
    AEGP_Collection2H selection = nullptr;
    EXPECT_EQ(get_selected_layers(&info, &selection), A_Err_NONE);
    EXPECT_EQ(fake::text_of(selection), "collection1");
    EXPECT_THAT(host.calls,
                ElementsAre("Item1.GetActiveItem()", "Item1.GetItemType(main)", "Comp4.GetCompFromItem(main)",
                            "Comp4.GetNewCollectionFromCompSelection(7, main)"));
}

TEST_F(Selection, is_left_alone_without_an_active_item) {
    host.active_item = nullptr;
    AEGP_Collection2H selection = nullptr;
    EXPECT_EQ(get_selected_layers(&info, &selection), A_Err_NONE);
    EXPECT_EQ(selection, nullptr);
    EXPECT_THAT(host.calls, ElementsAre("Item1.GetActiveItem()"));
}

TEST_F(Selection, is_left_alone_when_the_active_item_is_footage_or_a_folder) {
    for (fake::Item* item : {footage, host.root}) {
        host.active_item = item;
        AEGP_Collection2H selection = nullptr;
        EXPECT_EQ(get_selected_layers(&info, &selection), A_Err_NONE);
        EXPECT_EQ(selection, nullptr);
    }
    EXPECT_EQ(host.count_of("Comp4"), 0);
}

TEST_F(Selection, ends_at_the_first_failure) {
    AEGP_Collection2H selection = nullptr;
    expect_faults_end_it([&] { return get_selected_layers(&info, &selection); });
}

TEST_F(Selection, is_not_written_at_all_without_an_active_composition) {
    int place = 0;
    for (fake::Item* item : {static_cast<fake::Item*>(nullptr), footage, host.root}) {
        host.active_item = item;
        auto selection = reinterpret_cast<AEGP_Collection2H>(&place);
        EXPECT_EQ(get_selected_layers(&info, &selection), A_Err_NONE);
        EXPECT_EQ(selection, reinterpret_cast<AEGP_Collection2H>(&place));
    }
}

TEST_F(Selection, may_be_empty) {
    main->selection.clear();
    AEGP_Collection2H selection = nullptr;
    EXPECT_EQ(get_selected_layers(&info, &selection), A_Err_NONE);
    ASSERT_NE(selection, nullptr);
    EXPECT_THAT(fake::object<fake::Collection>(selection)->items, IsEmpty());
    EXPECT_THAT(host.open, ElementsAre("collection1")) << "the caller's";
}

// ---- Is it a pre-comp layer?

class Judging : public OperationTest {
  protected:
    // The answer, which is written whatever happens.
    int is_precomp(A_Err expected = A_Err_NONE) {
        AEGP_CollectionItemV2 item = fake::layer_item(nest);
        item.type = type;
        unsigned char answer = 9;
        EXPECT_EQ(is_layer_precomp(&info, &item, &answer), expected);
        return answer;
    }

    AEGP_CollectionItemType type = AEGP_CollectionItemType_LAYER;
};

TEST_F(Judging, a_layer_that_shows_a_composition_is_a_precomp_layer) {
    EXPECT_EQ(is_precomp(), 1);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerObjectType(nest)", "Layer5.GetLayerSourceItem(nest)",
                                        "Item1.GetItemType(inner)"));
}

TEST_F(Judging, a_layer_that_shows_footage_or_a_folder_is_not) {
    for (fake::Item* source : {footage, host.root}) {
        nest->source = source;
        EXPECT_EQ(is_precomp(), 0) << source->label;
    }
}

TEST_F(Judging, lights_cameras_texts_shapes_and_unknown_kinds_are_not_asked_for_a_source) {
    for (const AEGP_ObjectType kind : {AEGP_ObjectType_LIGHT, AEGP_ObjectType_CAMERA, AEGP_ObjectType_TEXT,
                                       AEGP_ObjectType_VECTOR, AEGP_ObjectType_NONE}) {
        host.forget_calls();
        nest->object_type = kind;
        EXPECT_EQ(is_precomp(), 0) << kind;
        EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerObjectType(nest)"));
    }
}

TEST_F(Judging, an_item_that_is_no_layer_makes_no_call) {
    type = AEGP_CollectionItemType_MASK;
    EXPECT_EQ(is_precomp(), 0);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Judging, the_kind_of_a_missing_source_is_asked_all_the_same) {
    nest->source = nullptr;
    EXPECT_EQ(is_precomp(A_Err_PARAMETER), 0);
    EXPECT_EQ(host.calls.back(), "Item1.GetItemType(null)");
}

TEST_F(Judging, the_answer_is_no_after_every_failure) {
    for (int n = 1; n <= 3; ++n) {
        host.forget_calls();
        host.fail_at = n;
        EXPECT_EQ(is_precomp(fake::Host::kInjected), 0);
        EXPECT_EQ(static_cast<int>(host.calls.size()), n);
    }
    host.fail_at = 0;
    host.refused = {"AEGP Layer Suite 11"};
    EXPECT_EQ(is_precomp(516), 0);
}

TEST_F(Judging, ends_at_the_first_failure) {
    AEGP_CollectionItemV2 item = fake::layer_item(nest);
    unsigned char answer = 9;
    expect_faults_end_it([&] { return is_layer_precomp(&info, &item, &answer); });
}
