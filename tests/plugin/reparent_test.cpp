// Clearing parents by script.
#include <algorithm>
#include <type_traits>

#include "operation_test.h"

class Reparenting : public OperationTest {
  protected:
    A_Err reset(const std::vector<int>& parents) { return reset_unparented_layers(&info, fake::handle(main), parents); }

    std::vector<std::string> scripts() { return host.calls_of("ExecuteScript"); }

    static std::string run(const std::string& script) {
        return "Utility6.ExecuteScript(7, " + script + ", false, null, null)";
    }
};

static_assert(
    std::is_same_v<decltype(reset_unparented_layers), A_Err(const PluginInfo*, AEGP_CompH, std::vector<int>)>);

TEST_F(Reparenting, goes_through_the_active_item_when_the_composition_is_selected) {
    main->item->selected = true;
    EXPECT_EQ(reset({2, -1, -1}), A_Err_NONE);
    EXPECT_THAT(
        host.calls,
        ElementsAre("Comp11.GetItemFromComp(main)", "Item1.IsItemSelected(main)", "Layer5.GetCompLayerByIndex(main, 1)",
                    "Utility6.ExecuteScript(7, app.project.activeItem.layer(2).parent = null; , false, null, null)",
                    "Comp11.GetItemFromComp(main)", "Item1.IsItemSelected(main)", "Layer5.GetCompLayerByIndex(main, 2)",
                    "Utility6.ExecuteScript(7, app.project.activeItem.layer(3).parent = null; , false, null, null)"));
}

TEST_F(Reparenting, goes_through_the_items_number_otherwise_found_again_for_each_layer) {
    EXPECT_EQ(reset({-1, -1}), A_Err_NONE);
    EXPECT_EQ(host.count_of("Item5.GetItemID(main)"), 2);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.item(3).layer(1).parent = null; "),
                                       run("app.project.item(3).layer(2).parent = null; ")));
}

TEST_F(Reparenting, looks_the_number_up_between_the_selection_and_the_layer) {
    EXPECT_EQ(reset({0, -1}), A_Err_NONE);
    const std::vector<std::string>& calls = host.calls;
    ASSERT_GT(calls.size(), 5u);
    EXPECT_EQ(calls[0], "Comp11.GetItemFromComp(main)");
    EXPECT_EQ(calls[1], "Item1.IsItemSelected(main)");
    EXPECT_EQ(calls[2], "Item5.GetItemID(main)");
    EXPECT_EQ(calls[calls.size() - 2], "Layer5.GetCompLayerByIndex(main, 1)");
    EXPECT_EQ(calls.back(), run("app.project.item(3).layer(2).parent = null; "));
}

TEST_F(Reparenting, asks_for_the_selection_again_for_each_layer) {
    main->item->selected = true;
    host.on_script = [&](const std::string&) {
        main->item->selected = !main->item->selected;
        return "";
    };
    EXPECT_EQ(reset({-1, -1, -1}), A_Err_NONE);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.activeItem.layer(1).parent = null; "),
                                       run("app.project.item(3).layer(2).parent = null; "),
                                       run("app.project.activeItem.layer(3).parent = null; ")));
}

TEST_F(Reparenting, asks_for_the_number_again_for_each_layer) {
    host.on_script = [&](const std::string&) {
        std::erase(host.items, footage);
        return "";
    };
    EXPECT_EQ(reset({-1, -1}), A_Err_NONE);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.item(3).layer(1).parent = null; "),
                                       run("app.project.item(2).layer(2).parent = null; ")));
}

TEST_F(Reparenting, uses_minus_one_when_the_item_is_not_in_the_project) {
    std::erase(host.items, main->item);
    EXPECT_EQ(reset({-1}), A_Err_NONE);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.item(-1).layer(1).parent = null; ")));
}

TEST_F(Reparenting, uses_the_number_before_when_the_item_has_left_the_project) {
    host.on_script = [&](const std::string&) {
        std::erase(host.items, main->item);
        return "";
    };
    EXPECT_EQ(reset({-1, -1}), A_Err_NONE);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.item(3).layer(1).parent = null; "),
                                       run("app.project.item(3).layer(2).parent = null; ")));
}

TEST_F(Reparenting, writes_plain_decimal_numbers) {
    std::vector<int> parents(100, 0);
    while (main->layers.size() < parents.size()) host.add_layer(main, "more", footage);
    for (int i = 0; i < 20; ++i) host.add_item("more", AEGP_ItemType_FOOTAGE);
    std::rotate(host.items.begin() + 1, host.items.begin() + 4, host.items.end());  // "main" goes to the end
    for (const std::size_t i : {8u, 9u, 99u}) parents[i] = -1;
    EXPECT_EQ(reset(parents), A_Err_NONE);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.item(23).layer(9).parent = null; "),
                                       run("app.project.item(23).layer(10).parent = null; "),
                                       run("app.project.item(23).layer(100).parent = null; ")));
    EXPECT_EQ(host.count_of("GetCompLayerByIndex(main, 99)"), 1);
}

TEST_F(Reparenting, runs_no_script_where_no_entry_is_minus_one) {
    EXPECT_EQ(reset({1, 2, 0, -2}), A_Err_NONE);
    EXPECT_EQ(reset({}), A_Err_NONE);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Reparenting, looks_at_nothing_that_a_script_leaves) {
    host.on_script = [](const std::string&) { return "an error"; };
    EXPECT_EQ(reset({-1}), A_Err_NONE);
    EXPECT_THAT(host.open, IsEmpty());
}

// ---- Failures

TEST_F(Reparenting, stops_at_a_missing_layer_before_its_script) {
    main->layers.resize(1);
    EXPECT_EQ(reset({-1, -1, -1}), A_Err_PARAMETER);
    EXPECT_EQ(host.count_of("ExecuteScript"), 1);
    EXPECT_EQ(host.calls.back(), "Layer5.GetCompLayerByIndex(main, 1)");
}

TEST_F(Reparenting, runs_nothing_when_the_number_cannot_be_found) {
    host.fail_on = "Item5.GetItemID";
    EXPECT_EQ(reset({-1, -1}), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 3u);
}

TEST_F(Reparenting, returns_the_code_of_the_script_engine) {
    host.fail_on = "ExecuteScript";
    EXPECT_EQ(reset({-1, -1}), fake::Host::kInjected);
    EXPECT_THAT(scripts(), ElementsAre(run("app.project.item(3).layer(1).parent = null; ")));
}

TEST_F(Reparenting, ends_at_the_first_failure) {
    expect_faults_end_it([&] { return reset({-1, 0, -1}); });
    main->item->selected = true;
    expect_faults_end_it([&] { return reset({-1, 0, -1}); });
}

TEST_F(Reparenting, uses_one_version_of_each_suite_the_plug_ins_id_and_no_options) {
    info.plugin_id = 31;
    info.options = nullptr;
    main->item->selected = true;
    EXPECT_THAT(suites_of([&] { return reset({-1}); }),
                ElementsAre("AEGP Comp Suite 25", "AEGP Item Suite 3", "AEGP Layer Suite 11", "AEGP Utility Suite 13"));
    EXPECT_EQ(host.calls.back(),
              "Utility6.ExecuteScript(31, app.project.activeItem.layer(1).parent = null; , false, null, null)");
}
