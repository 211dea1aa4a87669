// Recording, removing and restoring parent links, by suite and by script.
#include "operation_test.h"

class Parents : public OperationTest {
  protected:
    std::vector<int> parents;
};

TEST_F(Parents, are_recorded_and_removed_in_stack_order) {
    a->parent = c;
    b->parent = a;
    EXPECT_EQ(clear_parents_in_precomp(&info, fake::handle(nest), &parents), A_Err_NONE);
    EXPECT_THAT(parents, ElementsAre(2, 0, -1));
    EXPECT_THAT(
        host.calls,
        ElementsAre("Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)", "Layer5.GetCompNumLayers(inner)",
                    "Layer5.GetCompLayerByIndex(inner, 0)", "Layer5.GetLayerParent(a)", "Layer5.GetLayerIndex(c)",
                    "Layer5.SetLayerParent(a, null)", "Layer5.GetCompLayerByIndex(inner, 1)",
                    "Layer5.GetLayerParent(b)", "Layer5.GetLayerIndex(a)", "Layer5.SetLayerParent(b, null)",
                    "Layer5.GetCompLayerByIndex(inner, 2)", "Layer5.GetLayerParent(c)"));
}

TEST_F(Parents, of_an_empty_precomp_are_an_empty_list) {
    inner->layers.clear();
    EXPECT_EQ(clear_parents_in_precomp(&info, fake::handle(nest), &parents), A_Err_NONE);
    EXPECT_THAT(parents, IsEmpty());
}

TEST_F(Parents, list_has_an_entry_for_every_layer_even_after_a_failure) {
    a->parent = c;
    host.fail_on = "GetLayerParent(b)";
    EXPECT_EQ(clear_parents_in_precomp(&info, fake::handle(nest), &parents), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(2, 2, 2)) << "the values read last are repeated";
    parents.clear();
    host.fail_on = "GetCompLayerByIndex";
    EXPECT_EQ(clear_parents_in_precomp(&info, fake::handle(nest), &parents), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(-1, -1, -1));
}

TEST_F(Parents, index_is_recorded_when_the_link_cannot_be_removed) {
    b->parent = c;
    host.fail_on = "SetLayerParent";
    EXPECT_EQ(clear_parents_in_precomp(&info, fake::handle(nest), &parents), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(-1, 2, 2));
}

TEST_F(Parents, are_restored_parent_first) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {2, -1, 1}), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetCompLayerByIndex(inner, 2)", "Layer5.GetCompLayerByIndex(inner, 0)",
                                        "Layer5.SetLayerParent(a, c)", "Layer5.GetCompLayerByIndex(inner, 1)",
                                        "Layer5.GetCompLayerByIndex(inner, 2)", "Layer5.SetLayerParent(c, b)"));
}

TEST_F(Parents, none_are_restored_from_a_list_without_links) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {-1, -1}), A_Err_NONE);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Parents, beyond_the_composition_end_the_restoring) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {9, 2}), A_Err_PARAMETER);
    EXPECT_EQ(host.calls.size(), 1u);
}

TEST_F(Parents, inside_the_precomp_are_restored_in_its_composition) {
    EXPECT_EQ(reset_precomp_parents(&info, fake::handle(nest), {1}), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)",
                                        "Layer5.GetCompLayerByIndex(inner, 1)", "Layer5.GetCompLayerByIndex(inner, 0)",
                                        "Layer5.SetLayerParent(a, b)"));
    host.forget_calls();
    EXPECT_EQ(reset_precomp_parents(&info, fake::handle(nest), {}), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)"));
}

TEST_F(Parents, that_are_missing_become_the_given_layer) {
    EXPECT_EQ(parent_unparented_to(&info, fake::handle(below), {-1, 0, -1}), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerParentComp(below)", "Layer5.GetCompLayerByIndex(main, 0)",
                                        "Layer5.SetLayerParent(above, below)", "Layer5.GetCompLayerByIndex(main, 2)",
                                        "Layer5.SetLayerParent(below, below)"));
    host.forget_calls();
    EXPECT_EQ(parent_unparented_to(&info, fake::handle(below), {}), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerParentComp(below)"));
}

TEST_F(Parents, composition_of_a_precomp_layer_is_its_source) {
    AEGP_CompH comp = nullptr;
    EXPECT_EQ(get_comp_from_precomp(&info, fake::handle(nest), &comp), A_Err_NONE);
    EXPECT_EQ(comp, fake::handle(inner));
    EXPECT_THAT(host.calls, ElementsAre("Layer4.GetLayerSourceItem(nest)", "Comp11.GetCompFromItem(inner)"));
}

TEST_F(Parents, every_operation_ends_at_the_first_failure) {
    const auto prepare = [&] {
        parents.clear();
        a->parent = c;
        b->parent = nullptr;
    };
    expect_faults_end_it([&] { return clear_parents_in_precomp(&info, fake::handle(nest), &parents); }, prepare);
    expect_faults_end_it([&] { return reset_parents(&info, fake::handle(inner), {1, 2, -1}); });
    expect_faults_end_it([&] { return reset_precomp_parents(&info, fake::handle(nest), {1, 2, -1}); });
    expect_faults_end_it([&] { return parent_unparented_to(&info, fake::handle(below), {-1, 0, -1}); });
    AEGP_CompH comp = nullptr;
    expect_faults_end_it([&] { return get_comp_from_precomp(&info, fake::handle(nest), &comp); });
}

// ---- By script

TEST_F(Parents, are_cleared_through_the_active_item_when_the_composition_is_selected) {
    main->item->selected = true;
    EXPECT_EQ(reset_unparented_layers(&info, fake::handle(main), {2, -1, -1}), A_Err_NONE);
    EXPECT_THAT(
        host.calls,
        ElementsAre("Comp11.GetItemFromComp(main)", "Item1.IsItemSelected(main)", "Layer5.GetCompLayerByIndex(main, 1)",
                    "Utility6.ExecuteScript(7, app.project.activeItem.layer(2).parent = null; , false, null, null)",
                    "Comp11.GetItemFromComp(main)", "Item1.IsItemSelected(main)", "Layer5.GetCompLayerByIndex(main, 2)",
                    "Utility6.ExecuteScript(7, app.project.activeItem.layer(3).parent = null; , false, null, null)"));
}

TEST_F(Parents, are_cleared_through_the_items_number_otherwise_found_anew_for_each_layer) {
    EXPECT_EQ(reset_unparented_layers(&info, fake::handle(main), {-1, -1}), A_Err_NONE);
    EXPECT_EQ(host.count_of("Item5.GetItemID(main)"), 2);
    EXPECT_THAT(
        host.calls_of("ExecuteScript"),
        ElementsAre("Utility6.ExecuteScript(7, app.project.item(3).layer(1).parent = null; , false, null, null)",
                    "Utility6.ExecuteScript(7, app.project.item(3).layer(2).parent = null; , false, null, null)"));
}

TEST_F(Parents, are_cleared_under_minus_one_when_the_item_is_not_in_the_project) {
    std::erase(host.items, main->item);
    EXPECT_EQ(reset_unparented_layers(&info, fake::handle(main), {-1}), A_Err_NONE);
    EXPECT_EQ(host.calls.back(),
              "Utility6.ExecuteScript(7, app.project.item(-1).layer(1).parent = null; , false, null, null)");
}

TEST_F(Parents, that_were_never_missing_run_no_script) {
    EXPECT_EQ(reset_unparented_layers(&info, fake::handle(main), {1, 2, 0}), A_Err_NONE);
    EXPECT_EQ(reset_unparented_layers(&info, fake::handle(main), {}), A_Err_NONE);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Parents, a_missing_layer_ends_the_clearing) {
    main->layers.resize(1);
    EXPECT_EQ(reset_unparented_layers(&info, fake::handle(main), {-1, -1}), A_Err_PARAMETER);
    EXPECT_EQ(host.count_of("ExecuteScript"), 1);
}

TEST_F(Parents, clearing_by_script_ends_at_the_first_failure) {
    expect_faults_end_it([&] { return reset_unparented_layers(&info, fake::handle(main), {-1, 0, -1}); });
}
