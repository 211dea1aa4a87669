// The null and the solid that stand in for the pre-comp layer.
#include "operation_test.h"

class StandIn : public OperationTest {
  protected:
    void SetUp() override {
        nest->own_name = "Intro";
        nest->in_comp = {10, 1};
        nest->duration_layer = {5, 1};
        inner->item->pixel_aspect_ratio = {2, 1};
        inner->item->width = 1920;
        inner->item->height = 1080;
    }

    AEGP_LayerH stand_in = nullptr;
};

TEST_F(StandIn, null_takes_name_timing_and_pixel_aspect_ratio) {
    EXPECT_EQ(create_matching_null(&info, fake::handle(nest), &stand_in), A_Err_NONE);
    EXPECT_EQ(fake::text_of(stand_in), "null");
    EXPECT_THAT(host.calls,
                ElementsAre("Layer5.GetLayerName(nest, own, null)", "Layer5.GetLayerSourceItem(nest)",
                            "Item5.GetItemPixelAspectRatio(inner)", "Layer5.GetLayerParentComp(nest)",
                            "Layer5.GetLayerDuration(nest, layer)", "Layer5.GetLayerInPoint(nest, comp)",
                            "Comp11.CreateNullInComp({{Intro_exflate}}, main, 5/1)",
                            "Layer5.SetLayerInPointAndDuration(null, layer, 10/1, 5/1)",
                            "Layer5.GetLayerSourceItem(null)", "Footage5.GetFootageInterpretation(nullItem, main)",
                            "Footage5.SetFootageInterpretation(nullItem, main, 2:1, rest as read)",
                            "Layer5.IsLayer3D(nest)", "Layer5.SetLayerFlag(null, 2048, false)"));
}

TEST_F(StandIn, null_is_3d_exactly_when_the_precomp_layer_is) {
    nest->is_3d = true;
    EXPECT_EQ(create_matching_null(&info, fake::handle(nest), &stand_in), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerFlag(null, 2048, true)");
}

TEST_F(StandIn, null_is_still_handed_out_when_a_later_step_fails) {
    host.fail_on = "SetFootageInterpretation";
    EXPECT_EQ(create_matching_null(&info, fake::handle(nest), &stand_in), fake::Host::kInjected);
    EXPECT_EQ(fake::text_of(stand_in), "null");
}

TEST_F(StandIn, null_making_ends_at_the_first_failure) {
    // A layer without a name of its own, so that both name calls are made.
    nest->own_name.clear();
    expect_faults_end_it([&] { return create_matching_null(&info, fake::handle(nest), &stand_in); });
}

TEST_F(StandIn, solid_is_white_and_has_the_precomps_size) {
    EXPECT_EQ(create_matching_solid(&info, fake::handle(nest), &stand_in), A_Err_NONE);
    EXPECT_EQ(fake::text_of(stand_in), "added");
    EXPECT_THAT(
        host.calls,
        ElementsAre("Layer5.GetLayerSourceItem(nest)", "Item5.GetItemDimensions(inner)",
                    "Layer5.GetLayerParentComp(nest)", "Layer5.GetLayerDuration(nest, layer)",
                    "Layer5.GetLayerInPoint(nest, comp)", "Item5.GetItemPixelAspectRatio(inner)",
                    "Footage5.NewSolidFootage(test, 1920, 1080, 1, 1, 1, 1)", "Item5.GetItemParentFolder(inner)",
                    "Footage5.AddFootageToProject(footage, root)", "Footage5.GetFootageInterpretation(solidItem, main)",
                    "Footage5.SetFootageInterpretation(solidItem, main, 2:1, rest as read)",
                    "Layer5.AddLayer(solidItem, main)", "Layer5.SetLayerInPointAndDuration(added, layer, 10/1, 5/1)"));
}

TEST_F(StandIn, solid_making_ends_at_the_first_failure) {
    expect_faults_end_it([&] { return create_matching_solid(&info, fake::handle(nest), &stand_in); });
}
