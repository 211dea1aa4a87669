// Whole runs of the command, call by call. The nest holds one layer without a parent.
#include "command_fixture.h"

namespace {

using Lines = std::vector<std::string>;

Lines joined(const std::vector<Lines>& parts) {
    Lines all;
    for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Lines kWalkToInner = walk_to({"root", "footage", "inner"});
const Lines kWalkToMain = walk_to({"root", "footage", "inner", "main"});

// From the dialog to the selected layer that turns out to be a pre-comp layer.
Lines beginning() {
    return {"Utility6.ExecuteScript(7, DIALOG, false, result, null)",
            "Memory1.LockMemHandle(memory1)",
            "Memory1.UnlockMemHandle(memory1)",
            "Utility6.StartUndoGroup(Exflate)",
            "Item1.GetActiveItem()",
            "Item1.GetItemType(main)",
            "Comp4.GetCompFromItem(main)",
            "Comp4.GetNewCollectionFromCompSelection(7, main)",
            "Collection2.GetCollectionNumItems(collection1)",
            "Collection2.GetCollectionItemByIndex(collection1, 0)",
            "Layer5.GetLayerObjectType(nest)",
            "Layer5.GetLayerSourceItem(nest)",
            "Item1.GetItemType(inner)"};
}

Lines null_made(const std::string& is_3d) {
    return {"Layer5.GetLayerName(nest, own, null)",
            "Layer5.GetLayerSourceItem(nest)",
            "Item5.GetItemPixelAspectRatio(inner)",
            "Layer5.GetLayerParentComp(nest)",
            "Layer5.GetLayerDuration(nest, layer)",
            "Layer5.GetLayerInPoint(nest, comp)",
            "Comp11.CreateNullInComp({{nest_exflate}}, main, 0/1)",
            "Layer5.SetLayerInPointAndDuration(null, layer, 0/1, 0/1)",
            "Layer5.GetLayerSourceItem(null)",
            "Footage5.GetFootageInterpretation(nullItem, main)",
            "Footage5.SetFootageInterpretation(nullItem, main, 1:1, rest as read)",
            "Layer5.IsLayer3D(nest)",
            "Layer5.SetLayerFlag(null, 2048, " + is_3d + ")"};
}

const Lines kParentsCleared = {"Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)",
                               "Layer5.GetCompNumLayers(inner)", "Layer5.GetCompLayerByIndex(inner, 0)",
                               "Layer5.GetLayerParent(a)"};

// Up to the copy; what is asked of it before it is collected depends on the choices.
Lines copied() {
    const std::string layer = "app.project.item(2).layer(1)";
    return joined(
        {{"Collection2.NewCollection(7)", "Layer5.GetLayerParentComp(nest)", "Comp4.GetItemFromComp(main)",
          "Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)", "Layer5.GetCompNumLayers(inner)"},
         kWalkToMain,
         kWalkToInner,
         {script_call("var tempName = \"\"; var allNames = [];tempName = " + layer + ".name; allNames.push(tempName);" +
                      layer + ".name = tempName;" + layer + ".copyToComp(app.project.item(3));" + layer +
                      ".name = tempName;"),
          "Comp4.GetNewCollectionFromCompSelection(7, main)", "Collection2.GetCollectionNumItems(collection3)",
          "Collection2.GetCollectionItemByIndex(collection3, 0)", "Layer5.GetLayerIndex(nest)",
          "Collection2.DisposeCollection(collection3)", "Layer5.GetCompLayerByIndex(main, 2)"}});
}

const Lines kCollected = {"Collection2.CollectionPushBack(collection2, 1, a', rest zero)"};

const Lines kWalkOfCopies = {"Collection2.GetCollectionNumItems(collection2)",
                             "Collection2.GetCollectionItemByIndex(collection2, 0)"};

const Lines kToTop = joined(
    {{"Layer5.GetLayerParentComp(nest)", "Layer5.GetLayerIndex(nest)"}, kWalkOfCopies, {"Layer5.ReorderLayer(a', 0)"}});

// With no links to make again in the composition, those of the pre-comp cost two calls.
const Lines kParentsReset = {"Layer5.GetLayerSourceItem(nest)", "Comp4.GetCompFromItem(inner)"};

const Lines kToIndex = joined({{"Layer6.GetLayerIndex(nest)"}, kWalkOfCopies, {"Layer5.ReorderLayer(a', 3)"}});

Lines null_dropped() {
    return joined({{"Comp11.GetItemFromComp(main)", "Item1.IsItemSelected(main)"},
                   kWalkToMain,
                   {"Layer5.GetCompLayerByIndex(main, 0)", script_call("app.project.item(3).layer(1).parent = null; "),
                    "Layer4.GetLayerSourceItem(null)", "Layer4.DeleteLayer(null)", "Item1.DeleteItem(nullItem)"}});
}

Lines ending(const std::string& selected) {
    return {"Comp6.SetSelection(main, " + selected + ")", "Collection2.DisposeCollection(collection2)",
            "Utility6.EndUndoGroup()", script_call("")};
}

// All calls when none of the nest's properties is wanted; `nest_done` is the last that the nest gets.
Lines nothing_carried_over(const std::string& null_is_3d, const std::string& nest_done) {
    return joined({beginning(),
                   null_made(null_is_3d),
                   kParentsCleared,
                   copied(),
                   kCollected,
                   kToTop,
                   kParentsReset,
                   kToIndex,
                   null_dropped(),
                   {nest_done},
                   ending("a'")});
}

}  // namespace

class WholeCommand : public Command {
  protected:
    WholeCommand() { inner->layers = {a}; }
};

TEST_F(WholeCommand, that_discards_everything_makes_these_calls) {
    answer = kDiscard;
    nest->is_3d = true;  // of interest to the null alone
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.calls, nothing_carried_over("true", "Layer4.DeleteLayer(nest)"));
    EXPECT_THAT(host.open, ElementsAre("memory1", "collection1")) << "the dialog's result and the selection";
}

TEST_F(WholeCommand, that_keeps_the_precomp_layer_makes_these_calls) {
    answer = "[false,false,true,\"\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.calls, nothing_carried_over("false", "Layer4.SetLayerFlag(nest, 1, false)"));
}

TEST_F(WholeCommand, that_carries_everything_over_makes_these_calls) {
    answer = "[true,true,false,\"fx\",true,true]";
    nest->is_3d = true;
    host.layer_stream(nest, 1)->time_varying = true;
    EXPECT_EQ(run(), A_Err_NONE);

    Lines seeds_looked_for;
    for (int stream = 0; stream <= 58; ++stream) {
        seeds_looked_for.push_back("Stream4.IsStreamLegal(a', " + std::to_string(stream) + ")");
    }
    const Lines made_3d = joined({{"Layer5.IsLayer3D(nest)"}, kWalkOfCopies, {"Layer5.SetLayerFlag(a', 2048, true)"}});
    const Lines timing = {"Layer5.GetLayerInPoint(nest, layer)", "Layer5.GetLayerInPoint(nest, comp)",
                          "Layer5.GetLayerDuration(nest, comp)", "Layer5.GetLayerOffset(nest)",
                          "Layer5.GetLayerParentComp(nest)",     "Layer5.GetCompLayerByIndex(main, 0)",
                          "Layer5.GetLayerInPoint(a', comp)",    "Layer5.GetLayerDuration(a', comp)",
                          "Layer5.GetLayerOffset(a')",           "Layer5.SetLayerOffset(a', 0/1)",
                          "Layer5.GetLayerInPoint(a', layer)",   "Layer5.GetLayerDuration(a', layer)",
                          "Layer5.GetLayerInPoint(a', comp)"};
    const Lines parented = {"Layer5.GetLayerParentComp(null)", "Layer5.GetCompLayerByIndex(main, 0)",
                            "Layer5.SetLayerParent(a', null)"};
    const Lines effects = joined({kWalkOfCopies, {"Effect3.GetLayerNumEffects(nest)"}});
    const Lines renamed = joined({{"Layer5.GetLayerName(nest, own, null)"},
                                  kWalkOfCopies,
                                  {"Layer5.GetLayerName(a', own, null)", "Layer5.GetLayerName(a', own, null)",
                                   "Layer6.SetLayerName(a', nest_fx_a')", "Layer5.GetLayerName(a', own, null)",
                                   script_call("app.project.autoFixExpressions(\"a'\",\"nest_fx_a'\");")}});
    const Lines null_kept = {"Layer6.ReorderLayer(null, 3)",
                             "Collection2.CollectionPushBack(collection2, 1, null, rest zero)"};
    Lines uses_counted = {"Layer5.GetLayerSourceItem(nest)",
                          "Proj6.GetProjectByIndex(0)",
                          "Item8.GetFirstProjItem(project)",
                          "Item8.GetItemID(inner)",
                          "Item8.GetItemType(root)",
                          "Item8.GetNextProjItem(project, root)",
                          "Item8.GetItemType(footage)",
                          "Item8.GetNextProjItem(project, footage)",
                          "Item8.GetItemType(inner)",
                          "Comp7.GetCompFromItem(inner)",
                          "Layer7.GetCompNumLayers(inner)",
                          "Layer7.GetCompLayerByIndex(inner, 0)",
                          "Layer7.GetLayerSourceItem(a)",
                          "Item8.GetItemID(footage)",
                          "Item8.GetNextProjItem(project, inner)",
                          "Item8.GetItemType(main)",
                          "Comp7.GetCompFromItem(main)",
                          "Layer7.GetCompNumLayers(main)"};
    const std::vector<std::pair<std::string, std::string>> stack = {
        {"above", "footage"}, {"nest", "inner"}, {"a'", "footage"}, {"null", "nullItem"}, {"below", "footage"}};
    for (std::size_t i = 0; i < stack.size(); ++i) {
        uses_counted.push_back("Layer7.GetCompLayerByIndex(main, " + std::to_string(i) + ")");
        uses_counted.push_back("Layer7.GetLayerSourceItem(" + stack[i].first + ")");
        uses_counted.push_back("Item8.GetItemID(" + stack[i].second + ")");
    }
    uses_counted.insert(uses_counted.end(), {"Item8.GetNextProjItem(project, main)", "Item8.GetItemType(nullItem)",
                                             "Item8.GetNextProjItem(project, nullItem)"});
    const Lines source_deleted = {"Item6.GetItemID(inner)", "Item6.DeleteItem(inner)"};

    const Lines before_transform = joined({beginning(), null_made("true"), kParentsCleared, copied(), seeds_looked_for,
                                           kCollected, made_3d, kToTop, kParentsReset, timing, parented});
    const Lines after_transform =
        joined({effects, renamed, kToIndex, null_kept, uses_counted, source_deleted, ending("a' null")});

    // The transform takes many calls, all of them about streams.
    ASSERT_GT(host.calls.size(), before_transform.size() + after_transform.size());
    const auto transform_begin = host.calls.begin() + std::ssize(before_transform);
    const auto transform_end = host.calls.end() - std::ssize(after_transform);
    EXPECT_EQ(Lines(host.calls.begin(), transform_begin), before_transform);
    EXPECT_EQ(Lines(transform_end, host.calls.end()), after_transform);
    for (const std::string& line : Lines(transform_begin, transform_end)) {
        EXPECT_TRUE(line.starts_with("Stream4.") || line.starts_with("Keyframe4.") ||
                    line == "Layer4.GetLayerInPoint(nest, comp)")
            << line;
    }
    EXPECT_EQ(host.count_of("Stream4.GetNewLayerStream(7, nest, 1)"), 1);
    EXPECT_THAT(host.open, ElementsAre("memory1", "collection1"));
    EXPECT_EQ(host.count_of("Exflate Selection"), 0);
}

TEST_F(WholeCommand, over_an_empty_selection_makes_these_calls) {
    main->selection.clear();
    EXPECT_EQ(run(), A_Err_NONE);
    Lines expected = beginning();
    expected.resize(expected.size() - 4);
    EXPECT_EQ(host.calls, joined({expected, {"Utility6.EndUndoGroup()", script_call("")}}));
}

TEST_F(WholeCommand, leaves_the_result_of_the_dialog_with_the_host_however_it_ends) {
    for (const char* text : {"", "[]"}) {
        host.forget_calls();
        answer = text;
        EXPECT_EQ(run(), A_Err_NONE);
        EXPECT_EQ(host.open.size(), 1u) << text;
        EXPECT_TRUE(host.open.front().starts_with("memory")) << text;
    }
    host.forget_calls();
    answer = "[true,false,false,\"" + std::string(51, 'x') + "\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.calls.size(), 4u);
    EXPECT_EQ(host.open.size(), 2u) << "the alert's result stays too";
}

TEST_F(WholeCommand, leaves_the_streams_with_the_host_that_it_looked_at_for_a_seed) {
    answer = "[false,false,false,\"\",false,true]";
    host.on_call = [this](const std::string& line) {
        if (!line.starts_with("Stream4.IsStreamLegal(a', 0)")) return;
        fake::Layer* copy = main->layers[2];
        copy->legal_streams = {1, 2, 4};
        for (const AEGP_LayerStream number : copy->legal_streams) host.layer_stream(copy, number)->time_varying = true;
        host.layer_stream(copy, 1)->has_expression = true;
        host.layer_stream(copy, 2)->can_vary = false;
    };
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetExpression"), 1);
    EXPECT_THAT(host.open,
                ElementsAre("memory1", "collection1", "stream a'/1", "lock of memory2", "stream a'/2", "stream a'/4"))
        << "the expression's text is freed while it is locked";
}

TEST_F(WholeCommand, that_fails_leaves_what_it_held) {
    host.fail_on = "Layer5.ReorderLayer(a', 3)";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_THAT(host.open, ElementsAre("memory1", "collection1", "collection2"));
}
