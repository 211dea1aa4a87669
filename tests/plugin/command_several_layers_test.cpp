// The command over several selected layers: what one pass leaves to the next, and the count of kept sources.
#include "command_fixture.h"

namespace {

std::string alert_of(const std::string& text, const std::string& title) {
    return script_call("alert(\"" + text + "\", \"" + title + "\");");
}

const std::string kOneOfSeveral =
    alert_of("A source could not be deleted because it is being used in other places", "Source Not Deleted");
const std::string kSeveral = alert_of(
    "Some (or all) sources could not be deleted because they are being used in other places", "Sources Not Deleted");

}  // namespace

class SeveralLayers : public Command {
  protected:
    SeveralLayers() {
        second = host.add_comp("second");
        d = host.add_layer(second, "d", footage);
        nest2 = host.add_layer(main, "nest2", second->item);
        main->selection = {nest, nest2};
        inner->layers = {a};
    }

    // A layer of main that shows the composition, below all others.
    fake::Layer* another(fake::Comp* comp, const std::string& label) { return host.add_layer(main, label, comp->item); }

    void use_elsewhere(fake::Comp* comp) { host.add_layer(host.add_comp("other"), "user", comp->item); }

    fake::Comp* second = nullptr;
    fake::Layer* d = nullptr;
    fake::Layer* nest2 = nullptr;
};

TEST_F(SeveralLayers, are_handled_in_the_order_of_the_selection) {
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("CreateNullInComp"),
                ElementsAre("Comp11.CreateNullInComp({{nest_exflate}}, main, 0/1)",
                            "Comp11.CreateNullInComp({{nest2_exflate}}, main, 0/1)"));
    host.forget_calls();
    main->layers = {above, nest, below, nest2};
    main->selection = {nest2, nest};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("CreateNullInComp"), ElementsAre("Comp11.CreateNullInComp({{nest2_exflate}}, main, 0/1)",
                                                               "Comp11.CreateNullInComp({{nest_exflate}}, main, 0/1)"));
}

TEST_F(SeveralLayers, each_have_a_collection_that_is_disposed_and_only_the_last_is_selected) {
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetSelection"), ElementsAre("Comp6.SetSelection(main, d')"));
    EXPECT_EQ(host.count_of("Collection2.NewCollection(7)"), 2);
    EXPECT_THAT(host.open, ElementsAre("memory1", "collection1"));
}

TEST_F(SeveralLayers, that_are_no_precomp_layers_are_passed_over) {
    main->selection = {above, nest, below, nest2};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("CreateNullInComp"), 2);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest"), 2);
    EXPECT_EQ(host.count_of("DeleteLayer(above)") + host.count_of("DeleteLayer(below)"), 0);
    EXPECT_THAT(host.calls_of("SetSelection"), ElementsAre("Comp6.SetSelection(main, d')"));
}

TEST_F(SeveralLayers, with_another_kind_at_the_end_leave_the_selection_alone) {
    main->selection = {nest, nest2, below};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetSelection"), 0);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest2)"), 1);
    EXPECT_THAT(host.open, ElementsAre("memory1", "collection1"));
}

TEST_F(SeveralLayers, keep_a_null_only_for_those_whose_transform_has_keyframes) {
    host.layer_stream(nest, 1)->time_varying = true;
    host.on_call = [this](const std::string& line) {
        // The fake host's nulls share a label: tell the second one from the first.
        if (line.starts_with("Collection2.GetCollectionItemByIndex(collection1, 1)")) {
            for (fake::Layer* layer : main->layers) {
                if (layer->label == "null") layer->label = "first null";
            }
        }
    };
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("DeleteLayer(null)"), 1);
    EXPECT_EQ(host.count_of("DeleteLayer(first null)"), 0);
    EXPECT_THAT(host.calls_of("Layer6.ReorderLayer"), testing::SizeIs(1));
    EXPECT_THAT(host.calls_of("SetSelection"), ElementsAre("Comp6.SetSelection(main, d')"));
}

TEST_F(SeveralLayers, each_give_their_own_name_to_their_copies) {
    answer = "[false,false,false,\"fx\",true,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerName"),
                ElementsAre("Layer6.SetLayerName(a', nest_fx_a')", "Layer6.SetLayerName(d', nest2_fx_d')"));
}

TEST_F(SeveralLayers, each_have_a_parent_list_of_their_own) {
    fake::Layer* e = host.add_layer(second, "e", footage);
    inner->layers = {a, b};
    a->parent = b;  // 1, none
    e->parent = d;  // none, 0
    answer = kDiscard;
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(
        host.calls_of("SetLayerParent"),
        ElementsAre("Layer5.SetLayerParent(a, null)", "Layer5.SetLayerParent(a', b')", "Layer5.SetLayerParent(a, b)",
                    "Layer5.SetLayerParent(e, null)", "Layer5.SetLayerParent(e', d')", "Layer5.SetLayerParent(e, d)"));
    EXPECT_THAT(host.calls_of(".parent = null"),
                ElementsAre(script_call("app.project.item(3).layer(2).parent = null; "),
                            script_call("app.project.item(3).layer(1).parent = null; ")));
}

TEST_F(SeveralLayers, are_not_made_3d_by_an_earlier_one) {
    nest->is_3d = true;
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerFlag(a', 2048, true)"), 1);
    EXPECT_EQ(host.count_of("SetLayerFlag(d', 2048, true)"), 0);
}

TEST_F(SeveralLayers, go_back_to_their_own_places) {
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer6.GetLayerIndex(nest)"), 1);
    EXPECT_EQ(host.count_of("Layer6.GetLayerIndex(nest2)"), 1);
    EXPECT_EQ(host.count_of("Layer5.ReorderLayer(a', 3)"), 1);
    EXPECT_EQ(host.count_of("Layer5.ReorderLayer(d', 5)"), 1);
}

TEST_F(SeveralLayers, after_a_failed_one_are_left_alone_and_the_alert_is_not_shown) {
    answer = "[false,true,false,\"\",false,false]";
    use_elsewhere(inner);
    host.fail_on = "Item6.DeleteItem(second)";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest)"), 1) << "what is done stays done";
    EXPECT_EQ(host.count_of("DeleteLayer(nest2)"), 0);
    EXPECT_THAT(host.calls_of("alert("), IsEmpty());
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
}

TEST_F(SeveralLayers, after_a_failed_one_are_not_even_asked_for_their_names) {
    answer = "[false,false,false,\"\",true,false]";
    main->selection = {nest, nest2, below};
    host.fail_on = "DeleteLayer(nest)";
    EXPECT_EQ(run(), fake::Host::kInjected);
    const std::vector<std::string> end(host.calls.end() - 2, host.calls.end());
    EXPECT_THAT(end, ElementsAre("Layer4.DeleteLayer(nest)", "Utility6.EndUndoGroup()"));
}

// ---- Kept sources

class KeptSources : public SeveralLayers {
  protected:
    KeptSources() { answer = "[false,true,false,\"\",false,false]"; }

    std::string closing_script() {
        EXPECT_EQ(run(), A_Err_NONE);
        return host.calls.back();
    }
};

TEST_F(KeptSources, of_three_layers_with_one_source_are_all_taken_back_by_its_deletion) {
    main->selection = {nest, another(inner, "twin"), another(inner, "triplet")};
    EXPECT_EQ(closing_script(), script_call(""));
    EXPECT_THAT(host.calls_of("Layer4.DeleteLayer("),
                ElementsAre("Layer4.DeleteLayer(null)", "Layer4.DeleteLayer(nest)", "Layer4.DeleteLayer(null)",
                            "Layer4.DeleteLayer(twin)", "Layer4.DeleteLayer(null)"));
    EXPECT_THAT(host.calls_of("Item6.DeleteItem"), ElementsAre("Item6.DeleteItem(inner)"));
}

TEST_F(KeptSources, that_others_need_are_not_taken_back) {
    use_elsewhere(second);
    main->selection = {nest2, nest, another(inner, "twin")};
    EXPECT_EQ(closing_script(), kOneOfSeveral);
    EXPECT_THAT(host.calls_of("Item6.DeleteItem"), ElementsAre("Item6.DeleteItem(inner)"));
}

TEST_F(KeptSources, are_taken_back_by_the_deletion_of_the_same_source_only) {
    use_elsewhere(inner);
    main->selection = {nest, nest2};
    EXPECT_EQ(closing_script(), kOneOfSeveral);
    EXPECT_THAT(host.calls_of("Item6.DeleteItem"), ElementsAre("Item6.DeleteItem(second)"));
}

TEST_F(KeptSources, count_once_for_each_layer_that_could_not_delete_them) {
    use_elsewhere(inner);
    main->selection = {nest, another(inner, "twin")};
    EXPECT_EQ(closing_script(), kSeveral);
    EXPECT_THAT(host.calls_of("Item6.DeleteItem"), IsEmpty());
}

TEST_F(KeptSources, of_more_than_two_layers_are_reported_together) {
    use_elsewhere(inner);
    use_elsewhere(second);
    main->selection = {nest, nest2, another(inner, "twin")};
    EXPECT_EQ(closing_script(), kSeveral);
}

TEST_F(KeptSources, are_counted_among_all_selected_layers_of_any_kind) {
    use_elsewhere(inner);
    main->selection = {below, nest};
    EXPECT_EQ(closing_script(), kOneOfSeveral);
}

TEST_F(KeptSources, are_forgotten_by_the_next_run) {
    use_elsewhere(inner);
    main->selection = {nest, below};
    EXPECT_EQ(closing_script(), kOneOfSeveral);
    main->selection = {nest2};
    host.forget_calls();
    EXPECT_EQ(closing_script(), script_call(""));
}

TEST_F(KeptSources, make_no_alert_when_the_precomp_layer_is_kept) {
    answer = "[false,true,true,\"\",false,false]";
    use_elsewhere(inner);
    EXPECT_EQ(closing_script(), script_call(""));
    EXPECT_EQ(host.count_of("Item8.") + host.count_of("DeleteItem(inner)"), 0);
    EXPECT_THAT(host.calls_of("Layer4.SetLayerFlag"),
                ElementsAre("Layer4.SetLayerFlag(nest, 1, false)", "Layer4.SetLayerFlag(nest2, 1, false)"));
}
