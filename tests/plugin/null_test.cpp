// The null that stands in for the pre-comp layer.
#include <clocale>

#include "operation_test.h"

class MatchingNull : public OperationTest {
  protected:
    void SetUp() override {
        ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
        nest->own_name = "Intro";
        nest->in_layer = {1, 30};
        nest->in_comp = {300, 30};
        nest->duration_layer = {125, 25};
        nest->duration_comp = {2, 25};
        inner->item->pixel_aspect_ratio = {2, 1};
    }
    void TearDown() override {
        std::setlocale(LC_CTYPE, "C");
        OperationTest::TearDown();
    }

    A_Err make() { return create_matching_null(&info, fake::handle(nest), &made); }

    std::string name_given() {
        EXPECT_EQ(make(), A_Err_NONE);
        const std::string line = host.calls_of("CreateNullInComp").back();
        const std::size_t start = line.find('(') + 1;
        return line.substr(start, line.rfind(", main, ") - start);
    }

    AEGP_LayerH made = nullptr;
};

TEST_F(MatchingNull, takes_name_timing_and_pixel_aspect_ratio) {
    EXPECT_EQ(make(), A_Err_NONE);
    EXPECT_EQ(fake::text_of(made), "null");
    EXPECT_THAT(host.calls,
                ElementsAre("Layer5.GetLayerName(nest, own, null)", "Layer5.GetLayerSourceItem(nest)",
                            "Item5.GetItemPixelAspectRatio(inner)", "Layer5.GetLayerParentComp(nest)",
                            "Layer5.GetLayerDuration(nest, layer)", "Layer5.GetLayerInPoint(nest, comp)",
                            "Comp11.CreateNullInComp({{Intro_exflate}}, main, 125/25)",
                            "Layer5.SetLayerInPointAndDuration(null, layer, 300/30, 125/25)",
                            "Layer5.GetLayerSourceItem(null)", "Footage5.GetFootageInterpretation(nullItem, main)",
                            "Footage5.SetFootageInterpretation(nullItem, main, 2:1, rest as read)",
                            "Layer5.IsLayer3D(nest)", "Layer5.SetLayerFlag(null, 2048, false)"));
}

TEST_F(MatchingNull, starts_and_lasts_as_the_precomp_layer_even_when_that_starts_late) {
    nest->in_comp = {10, 1};
    nest->duration_layer = {5, 1};
    EXPECT_EQ(make(), A_Err_NONE);
    const fake::Layer* layer = fake::object<fake::Layer>(made);
    EXPECT_EQ(fake::text_of(layer->in_layer), "10/1");
    EXPECT_EQ(fake::text_of(layer->duration_layer), "5/1");
    EXPECT_EQ(layer->comp, main);
    EXPECT_EQ(fake::text_of(layer->in_comp), "0/1") << "the in-point is set in layer time alone";
}

TEST_F(MatchingNull, gets_its_sources_pixel_aspect_ratio_from_the_precomp_and_not_the_other_way) {
    inner->item->pixel_aspect_ratio = {10, 11};
    EXPECT_EQ(make(), A_Err_NONE);
    const A_Ratio ratio = fake::object<fake::Layer>(made)->source->pixel_aspect_ratio;
    EXPECT_EQ(ratio.num, 10);
    EXPECT_EQ(ratio.den, 11u);
    EXPECT_EQ(inner->item->pixel_aspect_ratio.num, 10);
}

TEST_F(MatchingNull, is_3d_exactly_when_the_precomp_layer_is) {
    nest->is_3d = true;
    EXPECT_EQ(make(), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerFlag(null, 2048, true)");
    EXPECT_TRUE(fake::object<fake::Layer>(made)->is_3d);
    nest->is_3d = false;
    EXPECT_EQ(make(), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer5.SetLayerFlag(null, 2048, false)");
    EXPECT_FALSE(fake::object<fake::Layer>(made)->is_3d);
}

// ---- Its name

TEST_F(MatchingNull, is_named_after_the_source_where_the_layer_has_no_name) {
    nest->own_name.clear();
    EXPECT_EQ(name_given(), "{{inner_exflate}}");
    EXPECT_THAT(host.calls_of("GetLayerName"),
                ElementsAre("Layer5.GetLayerName(nest, own, null)", "Layer5.GetLayerName(nest, null, source)"));
    nest->source_name.clear();
    EXPECT_EQ(name_given(), "{{_exflate}}");
}

TEST_F(MatchingNull, keeps_all_31_bytes_of_a_name_and_its_own_text_around_them) {
    nest->own_name = std::string(31, 'n');
    EXPECT_EQ(name_given(), "{{" + std::string(31, 'n') + "_exflate}}");
    nest->own_name = std::string(40, 'n');
    EXPECT_EQ(name_given(), "{{" + std::string(31, 'n') + "_exflate}}");
}

TEST_F(MatchingNull, keeps_characters_beyond_ascii) {
    nest->own_name = "caf\xc3\xa9";
    EXPECT_EQ(name_given(), "{{caf{e9}#_exflate}}");
    nest->own_name = "\xe4\xb8\xad";
    EXPECT_EQ(name_given(), "{{{4e2d}##_exflate}}");
}

TEST_F(MatchingNull, loses_the_names_end_to_characters_of_two_units) {
    nest->own_name = "\xf0\x9f\x98\x80";
    EXPECT_EQ(name_given(), "{{{d83d}{de00}###_exflate}");
}

// ---- Failures

TEST_F(MatchingNull, is_handed_out_and_stays_when_any_later_step_fails) {
    for (const char* step : {"SetLayerInPointAndDuration", "GetLayerSourceItem(null)", "GetFootageInterpretation",
                             "SetFootageInterpretation", "IsLayer3D", "SetLayerFlag"}) {
        made = nullptr;
        host.forget_calls();
        host.fail_on = step;
        EXPECT_EQ(make(), fake::Host::kInjected) << step;
        ASSERT_EQ(fake::text_of(made), "null") << step;
        EXPECT_EQ(main->layers.front(), fake::object<fake::Layer>(made)) << step;
        EXPECT_THAT(host.calls.back(), testing::HasSubstr(step));
    }
}

TEST_F(MatchingNull, is_not_made_when_an_earlier_step_fails) {
    for (const char* step : {"GetLayerName", "GetLayerSourceItem(nest)", "GetItemPixelAspectRatio",
                             "GetLayerParentComp", "GetLayerDuration", "GetLayerInPoint", "CreateNullInComp"}) {
        host.fail_on = step;
        EXPECT_EQ(make(), fake::Host::kInjected) << step;
        EXPECT_EQ(made, nullptr) << step;
        EXPECT_EQ(main->layers.size(), 3u) << step;
    }
}

TEST_F(MatchingNull, making_ends_at_the_first_failure) {
    // A layer without a name of its own, so that both name calls are made.
    nest->own_name.clear();
    expect_faults_end_it([&] { return make(); });
}

TEST_F(MatchingNull, needs_only_the_hosts_basic_suite) {
    info = {host.basic(), 0, nullptr};
    EXPECT_THAT(suites_of([&] { return make(); }),
                ElementsAre("AEGP Comp Suite 25", "AEGP Footage Suite 11", "AEGP Item Suite 7", "AEGP Layer Suite 11"));
}
