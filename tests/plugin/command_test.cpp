// The command from the dialog to the closing alert.
#include <algorithm>
#include <clocale>
#include <new>

#include "command_fixture.h"

TEST_F(Command, of_others_is_left_alone) {
    EXPECT_EQ(run(false, 5), A_Err_NONE);
    EXPECT_EQ(handled, 9);
    EXPECT_EQ(run(true), A_Err_NONE);
    EXPECT_EQ(handled, 9);
    EXPECT_THAT(host.calls, IsEmpty());
    EXPECT_THAT(host.acquired, IsEmpty());
}

TEST_F(Command, counts_as_handled_even_when_no_suite_can_be_acquired) {
    host.refused = {"AEGP Utility Suite 13"};
    EXPECT_EQ(run(), 516);
    EXPECT_EQ(handled, 1);
}

TEST_F(Command, ends_quietly_after_cancel) {
    answer = "";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(handled, 1);
    EXPECT_THAT(host.calls, ElementsAre("Utility6.ExecuteScript(7, DIALOG, false, result, null)",
                                        "Memory1.LockMemHandle(memory1)", "Memory1.UnlockMemHandle(memory1)"));
}

TEST_F(Command, ends_with_the_code_of_a_failed_dialog) {
    host.fail_on = "ExecuteScript";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 1u);
}

TEST_F(Command, locks_the_result_of_its_dialog_even_when_there_is_none) {
    host.loses_script_results = true;
    host.fail_with = {{"LockMemHandle(null)", 11}};
    EXPECT_EQ(run(), 11) << "the code of locking nothing";
    EXPECT_THAT(host.calls,
                ElementsAre("Utility6.ExecuteScript(7, DIALOG, false, result, null)", "Memory1.LockMemHandle(null)"));
}

TEST_F(Command, ends_quietly_when_the_result_is_not_seven_tokens) {
    for (const char* text : {"[]", "[true,false,false,\"\",false]", "[true,false,false,\"\",false,false,1]", "true",
                             "[1,2", "{\"a\":1}", " "}) {
        host.forget_calls();
        answer = text;
        EXPECT_EQ(run(), A_Err_NONE) << text;
        EXPECT_EQ(host.calls.size(), 3u) << text;
    }
}

TEST_F(Command, still_ends_an_undo_group_when_only_the_unlock_failed) {
    // The text is there, so the run goes on, and every step but the last is guarded.
    host.fail_on = "UnlockMemHandle";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
    EXPECT_EQ(host.calls.size(), 4u);
}

TEST_F(Command, gives_the_code_of_a_failed_unlock_also_when_the_result_is_not_seven_tokens) {
    answer = "[]";
    host.fail_on = "UnlockMemHandle";
    EXPECT_EQ(run(), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 3u);
}

TEST_F(Command, shows_an_alert_for_a_prefix_of_51_bytes) {
    answer = "[true,false,false,\"" + std::string(51, 'x') + "\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Utility6.ExecuteScript(7, TOO LONG, false, result, null)");
    EXPECT_EQ(host.count_of("UndoGroup"), 0);
}

TEST_F(Command, measures_the_prefix_in_bytes_as_written) {
    // 25 quotes, each with its backslash, make 50; 25 two-byte characters make 50 too.
    std::string quotes;
    std::string umlauts;
    for (int i = 0; i < 25; ++i) {
        quotes += "\\\"";
        umlauts += "\xc3\xbc";
    }
    for (const std::string& prefix : {quotes, umlauts}) {
        host.forget_calls();
        main->selection.clear();
        answer = "[true,false,false,\"" + prefix + "\",false,false]";
        EXPECT_EQ(run(), A_Err_NONE);
        EXPECT_EQ(host.count_of("TOO LONG"), 0);
        answer = "[true,false,false,\"" + prefix + "x\",false,false]";
        EXPECT_EQ(run(), A_Err_NONE);
        EXPECT_EQ(host.count_of("TOO LONG"), 1);
    }
}

TEST_F(Command, prefix_of_50_bytes_ends_there_whatever_lies_behind_it) {
    // Behind it lies the address of the host's suites: here one that begins with the letter H.
    alignas(256) unsigned char room[512] = {};
    sP = new (room + 'H') SPBasicSuite(*host.basic());
    answer = "[false,false,false,\"" + std::string(50, 'x') + "\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer6.SetLayerName(a', " + std::string(50, 'x') + "_a')"), 1);
}

TEST_F(Command, without_a_selected_precomp_layer_opens_and_closes_the_group) {
    main->selection = {below};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Utility6.ExecuteScript(7, DIALOG, false, result, null)", "Memory1.LockMemHandle(memory1)",
                            "Memory1.UnlockMemHandle(memory1)", "Utility6.StartUndoGroup(Exflate)",
                            "Item1.GetActiveItem()", "Item1.GetItemType(main)", "Comp4.GetCompFromItem(main)",
                            "Comp4.GetNewCollectionFromCompSelection(7, main)",
                            "Collection2.GetCollectionNumItems(collection1)",
                            "Collection2.GetCollectionItemByIndex(collection1, 0)", "Layer5.GetLayerObjectType(below)",
                            "Layer5.GetLayerSourceItem(below)", "Item1.GetItemType(footage)", "Utility6.EndUndoGroup()",
                            script_call("")));
}

TEST_F(Command, asks_for_the_count_of_a_selection_that_is_not_there) {
    host.active_item = nullptr;
    EXPECT_EQ(run(), A_Err_PARAMETER);
    EXPECT_EQ(host.count_of("Collection2.GetCollectionNumItems(null)"), 1);
    EXPECT_EQ(host.calls.back(), "Utility6.EndUndoGroup()");
}

TEST_F(Command, moves_the_layers_out_and_deletes_the_precomp_layer) {
    inner->layers = {a, b};
    a->parent = b;
    answer = kDiscard;
    EXPECT_EQ(run(), A_Err_NONE);
    const auto start = std::find(host.calls.begin(), host.calls.end(), "Item1.GetItemType(inner)");
    const std::vector<std::string> pass(start + 1, host.calls.end());
    const auto at = [&](const std::string& line) {
        const auto found = std::find(pass.begin(), pass.end(), line);
        EXPECT_NE(found, pass.end()) << line;
        return found - pass.begin();
    };
    // The walk in order, by calls that stand for its steps.
    std::ptrdiff_t before = -1;
    for (const std::string& line : std::vector<std::string>{
             "Comp11.CreateNullInComp({{nest_exflate}}, main, 0/1)",
             "Layer5.SetLayerParent(a, null)",
             "Collection2.NewCollection(7)",
             "Collection2.CollectionPushBack(collection2, 1, b', rest zero)",
             "Collection2.CollectionPushBack(collection2, 1, a', rest zero)",
             "Layer5.ReorderLayer(b', 0)",
             "Layer5.ReorderLayer(a', 0)",
             "Layer5.SetLayerParent(a', b')",
             "Layer5.SetLayerParent(a, b)",
             "Layer6.GetLayerIndex(nest)",
             "Layer5.ReorderLayer(a', 4)",
             "Layer5.ReorderLayer(b', 4)",
             script_call("app.project.item(3).layer(2).parent = null; "),
             "Layer4.DeleteLayer(null)",
             "Item1.DeleteItem(nullItem)",
             "Layer4.DeleteLayer(nest)",
             "Comp6.SetSelection(main, b' a')",
             "Collection2.DisposeCollection(collection2)",
             "Utility6.EndUndoGroup()",
             script_call(""),
         }) {
        EXPECT_GT(at(line), before) << line;
        before = at(line);
    }
    EXPECT_EQ(before + 1, std::ssize(pass));
    EXPECT_EQ(host.count_of("IsLayer3D(nest)"), 1) << "asked for the null alone";
    for (const char* left_out : {"SetLayerOffset", "Stream4", "Effect3", "SetLayerName", "GetItemID(null"}) {
        EXPECT_EQ(host.count_of(left_out), 0) << left_out;
    }
    EXPECT_EQ(host.count_of("DisposeCollection(collection1)"), 0) << "the selection stays with the host";
    EXPECT_EQ(host.count_of("FreeMemHandle"), 0) << "so does the dialog's result";
    EXPECT_THAT(main->layers, ElementsAre(above, testing::_, testing::_, below));
}

TEST_F(Command, reads_the_index_once_more_right_after_the_parent_composition) {
    answer = kDiscard;
    EXPECT_EQ(run(), A_Err_NONE);
    const auto pushed = std::find_if(host.calls.rbegin(), host.calls.rend(), [](const std::string& line) {
        return line.find("PushBack") != std::string::npos;
    });
    const std::vector<std::string> next(pushed.base(), pushed.base() + 3);
    EXPECT_THAT(next, ElementsAre("Layer5.GetLayerParentComp(nest)", "Layer5.GetLayerIndex(nest)",
                                  "Collection2.GetCollectionNumItems(collection2)"));
}

TEST_F(Command, carries_attributes_over_through_the_null) {
    nest->is_3d = true;
    host.add_effect(nest, "blur", 5, 1);
    EXPECT_EQ(run(), A_Err_NONE);
    const auto first_of = [&](const std::string& part) {
        const auto found = std::find_if(host.calls.begin(), host.calls.end(),
                                        [&](const std::string& line) { return line.find(part) != std::string::npos; });
        EXPECT_NE(found, host.calls.end()) << part;
        return found - host.calls.begin();
    };
    std::ptrdiff_t before = -1;
    for (const char* part :
         {"CollectionPushBack", "SetLayerFlag(c', 2048, true)", "ReorderLayer(c', 0)", "SetLayerOffset(",
          "SetLayerParent(a', null)", "SetStreamValue(7, null/0", "ApplyEffect(7, c', 5)", "Layer6.GetLayerIndex(nest)",
          "DeleteLayer(null)", "DeleteLayer(nest)"}) {
        EXPECT_GT(first_of(part), before) << part;
        before = first_of(part);
    }
    EXPECT_EQ(host.count_of("IsLayer3D(nest)"), 2);
    EXPECT_EQ(host.count_of("ApplyEffect"), 3);
}

TEST_F(Command, leaves_copies_of_a_flat_layer_flat) {
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("2048, true"), 0);
}

TEST_F(Command, keeps_the_null_when_the_transform_has_keyframes) {
    fake::Stream* position = host.layer_stream(nest, 1);
    position->time_varying = true;
    EXPECT_EQ(run(), A_Err_NONE);
    // The null is put below "above", the copies and nothing else: index 5 is the pre-comp layer's.
    EXPECT_EQ(host.count_of("Layer6.ReorderLayer(null, 5)"), 1);
    EXPECT_EQ(host.count_of("Collection2.CollectionPushBack(collection2, 1, null, rest zero)"), 1);
    EXPECT_EQ(host.count_of("Comp6.SetSelection(main, c' b' a' null)"), 1);
    EXPECT_EQ(host.count_of("DeleteLayer(null)"), 0);
    EXPECT_EQ(host.count_of(".parent = null"), 0);
}

TEST_F(Command, drops_the_null_when_attributes_are_discarded_whatever_the_transform_has) {
    host.layer_stream(nest, 1)->time_varying = true;
    answer = kDiscard;
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("DeleteLayer(null)"), 1);
}

TEST_F(Command, keeping_the_precomp_layer_switches_its_video_off) {
    answer = "[false,true,true,\"\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer4.SetLayerFlag(nest, 1, false)"), 1);
    EXPECT_EQ(host.count_of("DeleteLayer(nest)"), 0);
    EXPECT_EQ(host.count_of("DeleteItem(inner)"), 0);
    EXPECT_EQ(host.calls.back(), script_call(""));
}

// ---- Names

struct PrefixCase {
    const char* name;
    std::string answer;
    const char* locale;
    std::string new_name;  // of the copy of "a" out of "nest"; empty if it keeps its own

    friend void PrintTo(const PrefixCase& tested, std::ostream* out) { *out << tested.name; }
};

const PrefixCase kPrefixCases[] = {
    {"of_50_bytes", "[false,false,false,\"" + std::string(50, 'x') + "\",false,false]", "C",
     std::string(50, 'x') + "_a'"},
    {"that_is_the_precomp_layers_name", R"([false,false,false,"",true,false])", "C", "nest_a'"},
    {"of_name_and_typed_text", R"([false,false,false,"fx",true,false])", "C", "nest_fx_a'"},
    {"with_escapes_as_they_stand", R"([false,false,false,"a\"b",false,false])", "C", R"(a\"b_a')"},
    {"of_seven_tokens_without_an_array", R"(7 true false false "fx" false false)", "C", "fx_a'"},
    {"of_choices_with_blanks_between_them", R"( [ true , false , false , "fx" , false , false ] )", "C", "fx_a'"},
    {"as_far_as_the_locale_reads_it", "[false,false,false,\"ab\xc3\xa9\",false,false]", "C", "ab_a'"},
    {"as_another_locale_reads_it", "[false,false,false,\"ab\xc3\xa9\",false,false]", "C.UTF-8", "ab{e9}_a'"},
    {"without_an_underscore_where_the_locale_reads_nothing", "[false,false,false,\"\xc3\xa9\",true,false]", "C",
     "nest_a'"},
    {"with_one_where_it_reads_something", "[false,false,false,\"\xc3\xa9\",true,false]", "C.UTF-8", "nest_{e9}_a'"},
    {"that_is_nothing_where_the_locale_reads_nothing", "[false,false,false,\"\xc3\xa9\",false,false]", "C", ""},
};

class Prefix : public Command, public testing::WithParamInterface<PrefixCase> {};

TEST_P(Prefix, stands_in_front_of_the_new_names) {
    answer = GetParam().answer;
    ASSERT_NE(std::setlocale(LC_CTYPE, GetParam().locale), nullptr);
    EXPECT_EQ(run(), A_Err_NONE);
    std::setlocale(LC_CTYPE, "C");
    const std::string call = "Layer6.SetLayerName(a', " + GetParam().new_name + ")";
    EXPECT_THAT(host.calls_of("SetLayerName(a'"),
                GetParam().new_name.empty() ? std::vector<std::string>{} : std::vector<std::string>{call});
}

INSTANTIATE_TEST_SUITE_P(Cases, Prefix, testing::ValuesIn(kPrefixCases),
                         [](const auto& prefix) { return prefix.param.name; });

TEST_F(Command, prefixes_names_with_the_typed_text) {
    answer = "[false,false,false,\"fx\",false,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerName"),
                ElementsAre("Layer6.SetLayerName(c', fx_c')", "Layer6.SetLayerName(b', fx_b')",
                            "Layer6.SetLayerName(a', fx_a')"));
}

TEST_F(Command, judges_a_flag_by_its_first_letter) {
    answer = "[t,xtrue,\"true\",\"\",tomato,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerOffset"), 3) << "copy attributes";
    EXPECT_EQ(host.count_of("Layer4.SetLayerFlag(nest, 1, false)"), 1) << "keep in comp";
    EXPECT_EQ(host.count_of("SetLayerName(a', nest_a')"), 1) << "prepend the name";
}

TEST_F(Command, takes_for_true_only_what_begins_with_a_small_t) {
    answer = "[1,null,True,\"\",xtrue,\"t\"]";
    nest->is_3d = true;
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerOffset"), 0) << "copy attributes";
    EXPECT_EQ(host.count_of("Item8."), 0) << "delete the source";
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest)"), 1) << "keep in comp";
    EXPECT_EQ(host.count_of("SetLayerName"), 0) << "prepend the name";
    EXPECT_EQ(host.count_of("IsStreamLegal"), 59 * 3) << "a text's first letter is the one behind the quote";
}

TEST_F(Command, takes_each_choice_from_its_own_place) {
    const std::vector<std::string> signs = {
        "SetLayerOffset(a'",      "Item8.GetFirstProjItem",    "Layer4.SetLayerFlag(nest, 1, false)",
        "SetLayerName(a', t_a')", "SetLayerName(a', nest_a')", "Stream4.IsStreamLegal(a', 0)"};
    const std::vector<fake::Layer*> layers = main->layers;
    const std::vector<fake::Item*> items = host.items;
    for (std::size_t chosen = 0; chosen < signs.size(); ++chosen) {
        std::string choices;
        for (std::size_t i = 0; i < signs.size(); ++i) {
            const bool is_chosen = i == chosen;
            choices += i == 0 ? "[" : ",";
            choices += i == 3 ? (is_chosen ? "\"t\"" : "\"\"") : (is_chosen ? "true" : "false");
        }
        answer = choices + "]";
        main->layers = layers;
        host.items = items;
        host.forget_calls();
        EXPECT_EQ(run(), A_Err_NONE);
        for (std::size_t i = 0; i < signs.size(); ++i) {
            EXPECT_EQ(host.count_of(signs[i]) > 0, i == chosen) << signs[i] << " for " << answer;
        }
    }
}

TEST_F(Command, goes_by_the_number_of_tokens_whatever_they_are) {
    answer = "{\"a\":1,\"b\":2,\"c\":3}";  // a 1 b 2 c 3, of which the fourth is the prefix
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer6.SetLayerName(a', 2_a')"), 1);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest)"), 1);
}

TEST_F(Command, of_another_id_is_known_by_it) {
    S_Exflate_cmd = 5;
    EXPECT_EQ(run(false, 77), A_Err_NONE);
    EXPECT_EQ(handled, 9);
    S_my_id = 31;
    answer = kDiscard;
    EXPECT_EQ(run(false, 5), A_Err_NONE);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(host.count_of("(7,"), 0);
    EXPECT_EQ(host.count_of("Collection2.NewCollection(31)"), 1);
    EXPECT_EQ(host.count_of("ExecuteScript(31,"), host.count_of("ExecuteScript"));
}

TEST_F(Command, asked_for_a_command_of_others_that_is_handled_does_nothing) {
    EXPECT_EQ(run(true, 5), A_Err_NONE);
    EXPECT_EQ(handled, 9);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Command, goes_by_the_index_that_the_precomp_layer_has_after_renaming) {
    host.layer_stream(nest, 1)->time_varying = true;
    answer = "[true,false,false,\"fx\",false,false]";
    host.on_call = [this](const std::string& line) {
        if (line.starts_with("Layer6.SetLayerName(a'")) host.add_layer_on_top(main, "newcomer", footage);
    };
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer5.ReorderLayer(a', 6)"), 1);
    EXPECT_EQ(host.count_of("Layer6.ReorderLayer(null, 6)"), 1);
}

TEST_F(Command, copies_of_a_3d_layer_stay_flat_when_attributes_are_discarded) {
    nest->is_3d = true;
    answer = kDiscard;
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(host.calls_of("2048, true"), ElementsAre("Layer5.SetLayerFlag(null, 2048, true)"));
}

TEST_F(Command, empty_precomp_leaves_nothing_behind) {
    inner->layers.clear();
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_THAT(main->layers, ElementsAre(above, below));
    EXPECT_EQ(host.count_of("Comp6.SetSelection(main, )"), 1);
}

TEST_F(Command, joins_no_line_to_a_name_that_is_empty) {
    nest->own_name.clear();
    nest->source_name.clear();
    answer = "[false,false,false,\"fx\",true,false]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer6.SetLayerName(a', fx_a')"), 1);
    answer = "[false,false,false,\"\",true,false]";
    main->layers = {above, nest, below};
    host.forget_calls();
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("SetLayerName"), 0);
}

TEST_F(Command, seeds_expressions_when_asked) {
    answer = "[false,false,false,\"\",false,true]";
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("IsStreamLegal"), 3 * 59);
}

// ---- Sources

class SourcesOfCommand : public Command {
  protected:
    SourcesOfCommand() { answer = "[false,true,false,\"\",false,false]"; }
};

TEST_F(SourcesOfCommand, source_used_once_is_deleted_and_the_layer_with_it) {
    EXPECT_EQ(run(), A_Err_NONE);
    const auto deleted = std::find(host.calls.begin(), host.calls.end(), "Item1.DeleteItem(nullItem)");
    const auto counted = std::find(host.calls.rbegin(), host.calls.rend(), "Item8.GetNextProjItem(project, main)");
    EXPECT_THAT(std::vector<std::string>(deleted + 1, deleted + 5),
                ElementsAre("Layer5.GetLayerSourceItem(nest)", "Proj6.GetProjectByIndex(0)",
                            "Item8.GetFirstProjItem(project)", "Item8.GetItemID(inner)"));
    EXPECT_THAT(std::vector<std::string>(counted.base(), host.calls.end()),
                ElementsAre("Item6.GetItemID(inner)", "Item6.DeleteItem(inner)", testing::HasSubstr("SetSelection"),
                            testing::HasSubstr("DisposeCollection"), "Utility6.EndUndoGroup()", script_call("")));
    EXPECT_EQ(host.count_of("DeleteLayer(nest)"), 0);
    EXPECT_EQ(host.calls.back(), script_call(""));
}

TEST_F(SourcesOfCommand, source_used_elsewhere_stays_and_the_user_is_told) {
    host.add_layer(host.add_comp("other"), "again", inner->item);
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("DeleteItem(inner)"), 0);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest)"), 1);
    EXPECT_EQ(
        host.calls.back(),
        script_call("alert(\"The source could not be deleted because it is being used in other places\", \"Source "
                    "Not Deleted\");"));
}

TEST_F(SourcesOfCommand, source_that_no_layer_is_seen_to_use_stays) {
    // The composition is in no folder, so the walk passes its layers by.
    std::erase(host.items, main->item);
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("DeleteItem(inner)"), 0);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest)"), 1);
    EXPECT_EQ(host.count_of("alert(\"The source could not"), 1);
}

TEST_F(SourcesOfCommand, one_of_several_selected_is_a_source) {
    host.add_layer(host.add_comp("other"), "again", inner->item);
    main->selection = {above, nest, below};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(
        host.calls.back(),
        script_call("alert(\"A source could not be deleted because it is being used in other places\", \"Source Not "
                    "Deleted\");"));
    EXPECT_EQ(host.count_of("SetSelection"), 0) << "the last selected layer is no pre-comp layer";
}

TEST_F(SourcesOfCommand, several_kept_sources_are_reported_together) {
    fake::Comp* second = host.add_comp("second");
    fake::Layer* second_nest = host.add_layer(main, "nest2", second->item);
    fake::Comp* other = host.add_comp("other");
    host.add_layer(other, "again", inner->item);
    host.add_layer(other, "and again", second->item);
    main->selection = {nest, second_nest};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.calls.back(),
              script_call("alert(\"Some (or all) sources could not be deleted because they are being used in other "
                          "places\", \"Sources Not Deleted\");"));
    EXPECT_EQ(host.count_of("Layer5.GetLayerParentComp(nest2)"), 2) << "the null's and the copying's, not the driver's";
}

TEST_F(SourcesOfCommand, later_deletion_takes_earlier_failures_back) {
    fake::Layer* twin = host.add_layer(main, "twin", inner->item);
    main->selection = {nest, twin};
    EXPECT_EQ(run(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Layer4.DeleteLayer(nest)"), 1);
    EXPECT_EQ(host.count_of("Item6.DeleteItem(inner)"), 1);
    EXPECT_EQ(host.calls.back(), script_call(""));
    EXPECT_EQ(host.count_of("SetSelection"), 1) << "only the last one's copies are selected";
}
