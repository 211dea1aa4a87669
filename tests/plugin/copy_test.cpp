// Copying the pre-comp's layers by script, and collecting the copies.
#include "operation_test.h"

class Copy : public OperationTest {
  protected:
    void SetUp() override {
        // What the host does with copyToComp: the copies stand above the selected layer.
        host.on_script = [this](const std::string&) {
            if (copies.empty()) {
                for (const char* label : {"a'", "b'", "c'"}) {
                    fake::Layer* copy = host.add_layer(main, label, footage);
                    main->layers.pop_back();
                    main->layers.insert(main->layers.begin() + 1 + std::ssize(copies), copy);
                    copies.push_back(copy);
                }
            }
            return std::string();
        };
        new_layers = host.add_collection("copies", {});
        collection = fake::handle(new_layers);
    }

    A_Err copy() { return copy_layers_to_parent(&info, fake::handle(nest), prefix, &collection); }

    // The indices of the layers that were asked for, in order.
    std::string collected() const {
        std::string indices;
        for (const std::string& call : host.calls_of("GetCompLayerByIndex(main, "))
            indices += (indices.empty() ? "" : " ") + call.substr(33, call.size() - 34);
        return indices;
    }

    char prefix[51] = "fx";
    std::vector<fake::Layer*> copies;
    fake::Collection* new_layers = nullptr;
    AEGP_Collection2H collection = nullptr;
};

TEST_F(Copy, finds_an_items_number_by_walking_the_project) {
    int index = -5;
    EXPECT_EQ(find_item_index(&info, fake::handle(inner->item), &index), A_Err_NONE);
    EXPECT_EQ(index, 2);
    EXPECT_THAT(host.calls,
                ElementsAre("Item5.GetItemID(inner)", "Proj5.GetProjectByIndex(0)", "Item6.GetFirstProjItem(project)",
                            "Item6.GetItemID(root)", "Item6.GetNextProjItem(project, root)", "Item6.GetItemID(footage)",
                            "Item6.GetNextProjItem(project, footage)", "Item6.GetItemID(inner)"));
}

TEST_F(Copy, leaves_the_number_alone_when_the_item_is_not_in_the_project) {
    fake::Item* gone = host.add_item("gone", AEGP_ItemType_FOOTAGE);
    host.items.pop_back();
    int index = -5;
    EXPECT_EQ(find_item_index(&info, fake::handle(gone), &index), A_Err_NONE);
    EXPECT_EQ(index, -5);
    EXPECT_EQ(host.calls.back(), "Item6.GetNextProjItem(project, main)");
}

TEST_F(Copy, leaves_the_number_alone_after_a_failure) {
    for (const char* call : {"Item5.GetItemID(inner)", "GetProjectByIndex", "GetFirstProjItem", "Item6.GetItemID(root)",
                             "Item6.GetNextProjItem(project, root)", "Item6.GetItemID(inner)"}) {
        host.fail_on = call;
        int index = -5;
        EXPECT_EQ(find_item_index(&info, fake::handle(inner->item), &index), fake::Host::kInjected);
        EXPECT_EQ(index, -5) << call;
    }
}

TEST_F(Copy, numbers_the_first_item_of_the_walk_zero_and_the_last_by_the_steps_to_it) {
    int index = -5;
    EXPECT_EQ(find_item_index(&info, fake::handle(host.root), &index), A_Err_NONE);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(find_item_index(&info, fake::handle(main->item), &index), A_Err_NONE);
    EXPECT_EQ(index, 3);
}

TEST_F(Copy, finds_an_item_by_its_id) {
    fake::Item* same = host.add_item("same", AEGP_ItemType_COMP);
    host.items.pop_back();
    same->id = inner->item->id;
    int index = -5;
    EXPECT_EQ(find_item_index(&info, fake::handle(same), &index), A_Err_NONE);
    EXPECT_EQ(index, 2);
}

TEST_F(Copy, finding_a_number_ends_at_the_first_failure) {
    int index = -5;
    expect_faults_end_it([&] { return find_item_index(&info, fake::handle(main->item), &index); });
}

TEST_F(Copy, runs_one_script_and_collects_upwards_from_the_selected_layer) {
    EXPECT_EQ(copy(), A_Err_NONE);
    std::string script = "var tempName = \"\"; var allNames = [];";
    for (const std::string j : {"1", "2", "3"}) {
        const std::string layer = "app.project.item(2).layer(" + j + ")";
        script += "tempName = " + layer + ".name; allNames.push(tempName);";
        script += layer + ".name = tempName;";
        script += layer + ".copyToComp(app.project.item(3));";
        script += layer + ".name = tempName;";
    }
    std::vector<std::string> expected = {"Layer5.GetLayerParentComp(nest)", "Comp4.GetItemFromComp(main)",
                                         "Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)",
                                         "Layer5.GetCompNumLayers(inner)"};
    for (const std::string& line : walk_to({"root", "footage", "inner", "main"})) expected.push_back(line);
    for (const std::string& line : walk_to({"root", "footage", "inner"})) expected.push_back(line);
    for (const std::string& line : std::vector<std::string>{
             "Utility6.ExecuteScript(7, " + script + ", false, null, null)",
             "Comp4.GetNewCollectionFromCompSelection(7, main)",
             "Collection2.GetCollectionNumItems(collection2)",
             "Collection2.GetCollectionItemByIndex(collection2, 0)",
             "Layer5.GetLayerIndex(nest)",
             "Collection2.DisposeCollection(collection2)",
             "Layer5.GetCompLayerByIndex(main, 3)",
             "Collection2.CollectionPushBack(copies, 1, c', rest zero)",
             "Layer5.GetCompLayerByIndex(main, 2)",
             "Collection2.CollectionPushBack(copies, 1, b', rest zero)",
             "Layer5.GetCompLayerByIndex(main, 1)",
             "Collection2.CollectionPushBack(copies, 1, a', rest zero)",
         }) {
        expected.push_back(line);
    }
    EXPECT_EQ(host.calls, expected);
}

TEST_F(Copy, collects_downwards_from_the_top_when_nothing_is_selected) {
    main->selection.clear();
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(collected(), "0 1 2");
}

TEST_F(Copy, goes_by_the_topmost_of_several_selected_layers) {
    main->selection = {below, nest};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(collected(), "3 2 1");
    EXPECT_THAT(host.calls_of("GetLayerIndex"),
                ElementsAre("Layer5.GetLayerIndex(below)", "Layer5.GetLayerIndex(nest)"));
}

TEST_F(Copy, goes_by_the_topmost_in_whatever_order_they_were_selected) {
    main->selection = {nest, below};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetCompLayerByIndex(main, 3)"), 1);
    copies.clear();
    main->layers = {above, nest, below};
    main->selection = {below, nest, above};
    host.forget_calls();
    EXPECT_EQ(copy(), A_Err_PARAMETER) << "above the top is nothing";
    EXPECT_EQ(collected(), "-1");
}

TEST_F(Copy, takes_a_selected_layer_at_the_top_for_selected) {
    main->layers = {nest, above, below};
    main->selection = {nest, below};
    host.on_script = [](const std::string&) { return std::string(); };
    EXPECT_EQ(copy(), A_Err_PARAMETER);
    EXPECT_EQ(collected(), "-1");
}

TEST_F(Copy, does_not_see_that_the_script_made_no_copies) {
    inner->layers = {a};
    host.on_script = [](const std::string&) { return std::string(); };
    EXPECT_EQ(copy(), A_Err_NONE);
    ASSERT_EQ(new_layers->items.size(), 1u);
    EXPECT_EQ(new_layers->items[0].u.layer.layerH, fake::handle(above)) << "what stands where the copy should";
}

TEST_F(Copy, writes_numbers_of_several_digits) {
    for (int i = 0; i < 7; ++i) {
        host.items.insert(host.items.begin() + 1, host.add_item("filler", AEGP_ItemType_FOOTAGE));
        host.items.pop_back();
    }
    inner->layers.assign(101, a);
    main->selection.clear();
    main->layers.assign(101, above);
    host.on_script = [](const std::string&) { return std::string(); };
    EXPECT_EQ(copy(), A_Err_NONE);
    const std::string script = host.calls_of("ExecuteScript").front();
    const std::string layer = "app.project.item(9).layer(101)";
    EXPECT_NE(
        script.find(";tempName = " + layer + ".name; allNames.push(tempName);" + layer + ".name = tempName;" + layer +
                    ".copyToComp(app.project.item(10));" + layer + ".name = tempName;, false, null, null)"),
        std::string::npos)
        << script.substr(script.size() - 300);
    EXPECT_NE(script.find("app.project.item(9).layer(10).copyToComp(app.project.item(10));"), std::string::npos);
    EXPECT_EQ(new_layers->items.size(), 101u);
}

TEST_F(Copy, collects_from_the_top_when_only_things_that_are_no_layers_are_selected) {
    AEGP_CollectionItemV2 mask = fake::layer_item(below);
    mask.type = AEGP_CollectionItemType_MASK;
    main->selection.clear();
    main->other_selected = {mask};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(collected(), "0 1 2");
    EXPECT_THAT(host.calls_of("DisposeCollection"), testing::SizeIs(1));
}

TEST_F(Copy, passes_over_selected_things_that_are_no_layers) {
    AEGP_CollectionItemV2 mask = fake::layer_item(above);
    mask.type = AEGP_CollectionItemType_MASK;
    main->other_selected = {mask};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("GetLayerIndex"), ElementsAre("Layer5.GetLayerIndex(nest)"));
}

TEST_F(Copy, runs_the_header_alone_for_an_empty_precomp) {
    inner->layers.clear();
    copies = {a};
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("ExecuteScript"),
                ElementsAre("Utility6.ExecuteScript(7, var tempName = \"\"; var allNames = [];, false, null, null)"));
    EXPECT_EQ(host.count_of("GetNewCollectionFromCompSelection"), 1);
    EXPECT_EQ(host.count_of("GetCompLayerByIndex"), 0);
    EXPECT_TRUE(new_layers->items.empty());
}

TEST_F(Copy, appends_to_what_the_collection_holds) {
    new_layers->items.push_back(fake::layer_item(above));
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(new_layers->items.size(), 4u);
}

TEST_F(Copy, seeds_from_the_layer_count_down_to_zero_when_asked) {
    options.fix_random_expressions = 1;
    host.on_script = [&, copy_in = host.on_script](const std::string& text) {
        const std::string result = copy_in(text);
        for (fake::Layer* layer : copies) {
            layer->legal_streams = {1};
            fake::Stream* stream = host.layer_stream(layer, 1);
            stream->time_varying = true;
            stream->has_expression = true;
            stream->expression = "value";
        }
        return result;
    };
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.layer_stream(copies[2], 1)->expression.substr(0, 14), "seedRandom(2);");
    EXPECT_EQ(host.layer_stream(copies[1], 1)->expression.substr(0, 14), "seedRandom(1);");
    EXPECT_EQ(host.layer_stream(copies[0], 1)->expression.substr(0, 14), "seedRandom(0);");
}

TEST_F(Copy, seeds_fall_with_rising_index_when_nothing_is_selected) {
    options.fix_random_expressions = 1;
    main->selection.clear();
    host.on_script = [&](const std::string&) {
        main->layers.insert(main->layers.begin(), {a, b, c});
        for (fake::Layer* layer : {a, b, c}) {
            layer->legal_streams = {4};
            fake::Stream* stream = host.layer_stream(layer, 4);
            stream->time_varying = true;
            stream->has_expression = true;
        }
        return std::string();
    };
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.layer_stream(a, 4)->expression.substr(0, 14), "seedRandom(2);");
    EXPECT_EQ(host.layer_stream(b, 4)->expression.substr(0, 14), "seedRandom(1);");
    EXPECT_EQ(host.layer_stream(c, 4)->expression.substr(0, 14), "seedRandom(0);");
    EXPECT_THAT(host.calls_of("IsStreamLegal("), testing::SizeIs(3 * 59));
    EXPECT_THAT(host.open, ElementsAre("stream a/4", "lock of memory1", "stream b/4", "lock of memory2", "stream c/4",
                                       "lock of memory3"));
}

TEST_F(Copy, seeds_a_layer_before_it_is_collected) {
    options.fix_random_expressions = 1;
    inner->layers = {a};
    EXPECT_EQ(copy(), A_Err_NONE);
    const std::vector<std::string> end(host.calls.end() - 3, host.calls.end());
    EXPECT_THAT(end, ElementsAre("Stream4.IsStreamLegal(c', 57)", "Stream4.IsStreamLegal(c', 58)",
                                 "Collection2.CollectionPushBack(copies, 1, c', rest zero)"));
}

TEST_F(Copy, disposes_of_the_selection_it_read) {
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(host.open, IsEmpty());
}

TEST_F(Copy, touches_no_expression_when_not_asked) {
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Stream4"), 0);
}

TEST_F(Copy, does_not_use_the_prefix) {
    EXPECT_EQ(copy_layers_to_parent(&info, fake::handle(nest), nullptr, &collection), A_Err_NONE);
}

TEST_F(Copy, names_item_zero_when_an_item_is_not_in_the_project) {
    std::erase(host.items, inner->item);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("app.project.item(0).layer(1)"), 1);
}

TEST_F(Copy, copies_into_item_zero_when_the_composition_is_not_in_the_project) {
    std::erase(host.items, main->item);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_EQ(host.count_of("app.project.item(2).layer(3).copyToComp(app.project.item(0));"), 1);
}

TEST_F(Copy, ends_at_the_first_failure) {
    options.fix_random_expressions = 1;
    expect_faults_end_it([&] { return copy(); });
}

TEST_F(Copy, statements_for_the_thousandth_layer_are_whole) {
    while (inner->layers.size() < 1000) host.add_layer(inner, "more", footage);
    while (main->layers.size() < 1010) host.add_layer_on_top(main, "copy", footage);
    EXPECT_EQ(copy(), A_Err_NONE);
    const std::string layer = "app.project.item(2).layer(1000)";
    EXPECT_THAT(host.calls_of("ExecuteScript"),
                ElementsAre(testing::HasSubstr("tempName = " + layer + ".name; allNames.push(tempName);" +  //
                                               layer + ".name = tempName;" +                                //
                                               layer + ".copyToComp(app.project.item(3));" +                //
                                               layer + ".name = tempName;, false")));
}
