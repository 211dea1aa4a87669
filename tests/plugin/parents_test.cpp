// Recording, removing and restoring parent links.
#include <algorithm>
#include <type_traits>

#include "operation_test.h"

class Parents : public OperationTest {
  protected:
    A_Err clear() { return clear_parents_in_precomp(&info, fake::handle(nest), &parents); }

    std::vector<int> parents;
};

// Only the recording writes to a list; the others have one of their own.
static_assert(
    std::is_same_v<decltype(clear_parents_in_precomp), A_Err(const PluginInfo*, AEGP_LayerH, std::vector<int>*)>);
static_assert(std::is_same_v<decltype(reset_parents), A_Err(const PluginInfo*, AEGP_CompH, std::vector<int>)>);
static_assert(std::is_same_v<decltype(reset_precomp_parents), A_Err(const PluginInfo*, AEGP_LayerH, std::vector<int>)>);
static_assert(std::is_same_v<decltype(parent_unparented_to), A_Err(const PluginInfo*, AEGP_LayerH, std::vector<int>)>);

// ---- Recording and removing

TEST_F(Parents, are_recorded_and_removed_in_stack_order) {
    a->parent = c;
    b->parent = a;
    EXPECT_EQ(clear(), A_Err_NONE);
    EXPECT_THAT(parents, ElementsAre(2, 0, -1));
    EXPECT_THAT(
        host.calls,
        ElementsAre("Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)", "Layer5.GetCompNumLayers(inner)",
                    "Layer5.GetCompLayerByIndex(inner, 0)", "Layer5.GetLayerParent(a)", "Layer5.GetLayerIndex(c)",
                    "Layer5.SetLayerParent(a, null)", "Layer5.GetCompLayerByIndex(inner, 1)",
                    "Layer5.GetLayerParent(b)", "Layer5.GetLayerIndex(a)", "Layer5.SetLayerParent(b, null)",
                    "Layer5.GetCompLayerByIndex(inner, 2)", "Layer5.GetLayerParent(c)"));
}

TEST_F(Parents, are_gone_from_the_precomp_once_recorded) {
    a->parent = c;
    b->parent = a;
    EXPECT_EQ(clear(), A_Err_NONE);
    for (const fake::Layer* layer : {a, b, c}) EXPECT_EQ(layer->parent, nullptr) << layer->label;
}

TEST_F(Parents, of_a_precomp_without_links_are_a_list_of_minus_ones) {
    EXPECT_EQ(clear(), A_Err_NONE);
    EXPECT_THAT(parents, ElementsAre(-1, -1, -1));
    EXPECT_EQ(host.count_of("SetLayerParent"), 0);
    EXPECT_EQ(host.count_of("GetLayerIndex"), 0);
}

TEST_F(Parents, of_an_empty_precomp_are_an_empty_list) {
    inner->layers.clear();
    EXPECT_EQ(clear(), A_Err_NONE);
    EXPECT_THAT(parents, IsEmpty());
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)",
                                        "Layer5.GetCompNumLayers(inner)"));
}

TEST_F(Parents, are_appended_behind_what_the_list_holds) {
    b->parent = a;
    parents = {5};
    EXPECT_EQ(clear(), A_Err_NONE);
    EXPECT_THAT(parents, ElementsAre(5, -1, 0, -1));
}

TEST_F(Parents, are_recorded_before_their_link_is_removed) {
    a->parent = c;
    b->parent = a;
    std::vector<std::size_t> sizes;
    host.on_call = [&](const std::string& line) {
        if (line.starts_with("Layer5.SetLayerParent")) sizes.push_back(parents.size());
    };
    EXPECT_EQ(clear(), A_Err_NONE);
    EXPECT_THAT(sizes, ElementsAre(1u, 2u));
}

TEST_F(Parents, list_has_an_entry_for_every_layer_even_after_a_failure) {
    a->parent = c;
    host.fail_on = "GetLayerParent(b)";
    EXPECT_EQ(clear(), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(2, 2, 2)) << "the values read last are repeated";
    parents.clear();
    b->parent = a;
    host.fail_on = "GetLayerIndex(a)";
    a->parent = c;
    EXPECT_EQ(clear(), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(2, 2, 2)) << "the index of the layer before, and again";
    parents.clear();
    host.fail_on = "GetCompLayerByIndex";
    EXPECT_EQ(clear(), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(-1, -1, -1));
}

TEST_F(Parents, index_that_was_never_read_is_recorded_as_none) {
    a->parent = c;
    host.fail_on = "GetLayerIndex";
    EXPECT_EQ(clear(), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(-1, -1, -1));
}

TEST_F(Parents, index_is_recorded_when_the_link_cannot_be_removed) {
    b->parent = c;
    host.fail_on = "SetLayerParent";
    EXPECT_EQ(clear(), fake::Host::kInjected);
    EXPECT_THAT(parents, ElementsAre(-1, 2, 2));
}

// ---- Restoring

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

TEST_F(Parents, none_are_restored_from_an_empty_list) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {}), A_Err_NONE);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Parents, beyond_the_composition_end_the_restoring) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {3, 2}), A_Err_PARAMETER);
    EXPECT_EQ(host.calls.size(), 1u);
    for (const fake::Layer* layer : {a, b, c}) EXPECT_EQ(layer->parent, nullptr) << layer->label;
}

TEST_F(Parents, only_minus_one_means_none_when_restoring) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {-2}), A_Err_PARAMETER);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetCompLayerByIndex(inner, -2)"));
    host.forget_calls();
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {-1, 0}), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerParent(b, a)"), 1) << "the topmost layer is a parent like any other";
}

TEST_F(Parents, of_more_layers_than_there_are_end_the_restoring_at_the_missing_child) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {-1, -1, -1, 0, 0}), A_Err_PARAMETER);
    EXPECT_THAT(host.calls,
                ElementsAre("Layer5.GetCompLayerByIndex(inner, 0)", "Layer5.GetCompLayerByIndex(inner, 3)"));
}

TEST_F(Parents, are_left_in_the_precomp_as_they_were_found) {
    a->parent = b;
    b->parent = c;
    EXPECT_EQ(clear(), A_Err_NONE);
    EXPECT_THAT(parents, ElementsAre(1, 2, -1));
    EXPECT_EQ(reset_precomp_parents(&info, fake::handle(nest), parents), A_Err_NONE);
    EXPECT_EQ(a->parent, b);
    EXPECT_EQ(b->parent, c);
    EXPECT_EQ(c->parent, nullptr);
}

TEST_F(Parents, are_not_restored_where_the_precomps_composition_cannot_be_found) {
    for (const char* step : {"GetLayerSourceItem", "GetCompFromItem"}) {
        host.forget_calls();
        host.acquired.clear();
        host.fail_on = step;
        EXPECT_EQ(reset_precomp_parents(&info, fake::handle(nest), {1}), fake::Host::kInjected);
        EXPECT_THAT(host.calls.back(), testing::HasSubstr(step));
        EXPECT_EQ(std::count(host.acquired.begin(), host.acquired.end(), "AEGP Layer Suite 11"), 1);
    }
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

// ---- Parents for those without

TEST_F(Parents, of_chains_are_attached_to_the_given_layer_at_their_top_alone) {
    EXPECT_EQ(reset_parents(&info, fake::handle(inner), {1, 2, -1}), A_Err_NONE);
    fake::Layer* stand_in = host.add_layer(inner, "stand-in", footage);
    EXPECT_EQ(parent_unparented_to(&info, fake::handle(stand_in), {1, 2, -1}), A_Err_NONE);
    EXPECT_EQ(a->parent, b);
    EXPECT_EQ(b->parent, c);
    EXPECT_EQ(c->parent, stand_in);
    EXPECT_EQ(stand_in->parent, nullptr) << "below the list's layers";
}

TEST_F(Parents, other_than_minus_one_are_left_alone) {
    EXPECT_EQ(parent_unparented_to(&info, fake::handle(below), {0, -2, 2}), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerParentComp(below)"));
}

TEST_F(Parents, for_a_missing_layer_end_the_walk) {
    EXPECT_EQ(parent_unparented_to(&info, fake::handle(below), {0, 0, 0, -1, -1}), A_Err_PARAMETER);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerParentComp(below)", "Layer5.GetCompLayerByIndex(main, 3)"));
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

TEST_F(Parents, composition_that_cannot_be_found_leaves_the_output_alone) {
    AEGP_CompH comp = fake::handle(main);
    host.fail_on = "GetLayerSourceItem";
    EXPECT_EQ(get_comp_from_precomp(&info, fake::handle(nest), &comp), fake::Host::kInjected);
    EXPECT_EQ(comp, fake::handle(main));
    EXPECT_EQ(host.calls.size(), 1u);
}

// ---- Failures

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

TEST_F(Parents, need_only_the_hosts_basic_suite_in_one_version_of_each) {
    info = {host.basic(), 0, nullptr};
    b->parent = a;
    EXPECT_THAT(suites_of([&] { return clear(); }), ElementsAre("AEGP Comp Suite 9", "AEGP Layer Suite 11"));
    EXPECT_THAT(suites_of([&] { return reset_parents(&info, fake::handle(inner), {1}); }),
                ElementsAre("AEGP Layer Suite 11"));
    EXPECT_THAT(suites_of([&] { return reset_precomp_parents(&info, fake::handle(nest), {1}); }),
                ElementsAre("AEGP Comp Suite 9", "AEGP Layer Suite 11"));
    EXPECT_THAT(suites_of([&] { return parent_unparented_to(&info, fake::handle(below), {-1}); }),
                ElementsAre("AEGP Layer Suite 11"));
    AEGP_CompH comp = nullptr;
    EXPECT_THAT(suites_of([&] { return get_comp_from_precomp(&info, fake::handle(nest), &comp); }),
                ElementsAre("AEGP Comp Suite 25", "AEGP Layer Suite 10"));
}
