// The solid of the pre-comp's size and timing.
#include "operation_test.h"

class MatchingSolid : public OperationTest {
  protected:
    void SetUp() override {
        folder = host.add_item("folder", AEGP_ItemType_FOLDER);
        inner->item->folder = folder;
        inner->item->pixel_aspect_ratio = {2, 1};
        inner->item->width = 1920;
        inner->item->height = 1080;
        nest->own_name = "Intro";
        nest->in_layer = {1, 30};
        nest->in_comp = {300, 30};
        nest->duration_layer = {125, 25};
        nest->duration_comp = {2, 25};
    }

    A_Err make() { return create_matching_solid(&info, fake::handle(nest), &made); }

    fake::Item* folder = nullptr;
    AEGP_LayerH made = nullptr;
};

TEST_F(MatchingSolid, is_white_and_has_the_precomps_size_folder_ratio_and_timing) {
    EXPECT_EQ(make(), A_Err_NONE);
    EXPECT_EQ(fake::text_of(made), "added");
    EXPECT_THAT(host.calls,
                ElementsAre("Layer5.GetLayerSourceItem(nest)", "Item5.GetItemDimensions(inner)",
                            "Layer5.GetLayerParentComp(nest)", "Layer5.GetLayerDuration(nest, layer)",
                            "Layer5.GetLayerInPoint(nest, comp)", "Item5.GetItemPixelAspectRatio(inner)",
                            "Footage5.NewSolidFootage(test, 1920, 1080, 1, 1, 1, 1)",
                            "Item5.GetItemParentFolder(inner)", "Footage5.AddFootageToProject(footage, folder)",
                            "Footage5.GetFootageInterpretation(solidItem, main)",
                            "Footage5.SetFootageInterpretation(solidItem, main, 2:1, rest as read)",
                            "Layer5.AddLayer(solidItem, main)",
                            "Layer5.SetLayerInPointAndDuration(added, layer, 300/30, 125/25)"));
}

TEST_F(MatchingSolid, starts_and_ends_with_the_precomp_layer) {
    EXPECT_EQ(make(), A_Err_NONE);
    const fake::Layer* layer = fake::object<fake::Layer>(made);
    EXPECT_EQ(layer->comp, main);
    EXPECT_EQ(layer->source->label, "solidItem");
    EXPECT_EQ(fake::text_of(layer->in_layer), "300/30");
    EXPECT_EQ(fake::text_of(layer->duration_layer), "125/25");
}

TEST_F(MatchingSolid, keeps_a_square_ratio_square) {
    inner->item->pixel_aspect_ratio = {1, 1};
    EXPECT_EQ(make(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetFootageInterpretation(solidItem, main, 1:1, rest as read)"), 1);
}

TEST_F(MatchingSolid, stays_flat_and_has_the_fixed_name_whatever_the_precomp_layer_is) {
    nest->is_3d = true;
    EXPECT_EQ(make(), A_Err_NONE);
    EXPECT_FALSE(fake::object<fake::Layer>(made)->is_3d);
    EXPECT_EQ(host.count_of("LayerFlag"), 0);
    EXPECT_EQ(host.count_of("LayerName"), 0);
    EXPECT_EQ(host.count_of("NewSolidFootage(test, "), 1);
}

TEST_F(MatchingSolid, leaves_what_was_made_when_a_later_step_fails) {
    for (const char* step : {"GetFootageInterpretation", "SetFootageInterpretation", "AddLayer"}) {
        const std::size_t items = host.items.size();
        host.fail_on = step;
        EXPECT_EQ(make(), fake::Host::kInjected) << step;
        EXPECT_EQ(host.items.size(), items + 1) << step;
        EXPECT_EQ(made, nullptr) << step;
    }
    host.fail_on = "SetLayerInPointAndDuration";
    EXPECT_EQ(make(), fake::Host::kInjected);
    EXPECT_EQ(fake::text_of(made), "added");
    EXPECT_EQ(main->layers.front(), fake::object<fake::Layer>(made));
}

TEST_F(MatchingSolid, making_ends_at_the_first_failure) {
    expect_faults_end_it([&] { return make(); });
}

TEST_F(MatchingSolid, needs_only_the_hosts_basic_suite) {
    info = {host.basic(), 0, nullptr};
    EXPECT_THAT(suites_of([&] { return make(); }),
                ElementsAre("AEGP Footage Suite 11", "AEGP Item Suite 7", "AEGP Layer Suite 11"));
}
