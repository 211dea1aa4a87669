// The entry point and the menu callback.
#include "Exflate.h"

#include <algorithm>
#include <stdexcept>

#include "operation_test.h"

namespace {

// Read while the program starts, before any test writes them.
const SPBasicSuite* const basic_at_start = sP;
const AEGP_PluginID id_at_start = S_my_id;
const AEGP_Command command_at_start = S_Exflate_cmd;

}  // namespace

TEST(Globals, are_zero_until_the_host_calls) {
    EXPECT_EQ(basic_at_start, nullptr);
    EXPECT_EQ(id_at_start, 0);
    EXPECT_EQ(command_at_start, 0);
}

class Entry : public OperationTest {
  protected:
    Entry() {
        sP = nullptr;
        S_my_id = 0;
        S_Exflate_cmd = 0;
    }

    A_Err enter() { return EntryPointFunc(host.basic(), 114, 0, 7, nullptr); }
};

TEST_F(Entry, adds_the_item_and_registers_both_callbacks) {
    EXPECT_EQ(enter(), A_Err_NONE);
    EXPECT_EQ(sP, host.basic());
    EXPECT_EQ(S_my_id, 7);
    EXPECT_EQ(S_Exflate_cmd, 77);
    EXPECT_EQ(host.command_hook, CommandHook);
    EXPECT_EQ(host.update_menu_hook, UpdateMenuHook);
    EXPECT_THAT(host.calls, ElementsAre("Command1.GetUniqueCommand()",
                                        "Command1.InsertMenuCommand(77, Exflate | Select a pre-comp layer, 5, -1)",
                                        "Register5.RegisterCommandHook(7, 1, 0, null)",
                                        "Register5.RegisterUpdateMenuHook(7, null)"));
}

TEST_F(Entry, reports_a_failed_registration_and_returns_its_code) {
    for (int n = 1; n <= 4; ++n) {
        host.forget_calls();
        host.fail_at = n;
        EXPECT_EQ(enter(), fake::Host::kInjected);
        EXPECT_EQ(static_cast<int>(host.calls.size()), n + 1);
        EXPECT_EQ(host.calls.back(), "Utility3.ReportInfo(7, Exflate: Problems encountered during exflate.)");
    }
}

TEST_F(Entry, makes_no_report_when_a_suite_is_missing) {
    for (const char* suite : {"AEGP Command Suite 1", "AEGP Register Suite 6"}) {
        host.refused = {suite};
        EXPECT_EQ(enter(), 516);
        EXPECT_EQ(host.count_of("ReportInfo"), 0);
    }
}

TEST_F(Entry, missing_suite_for_the_report_replaces_the_code) {
    host.fail_on = "GetUniqueCommand";
    host.refused = {"AEGP Utility Suite 7"};
    EXPECT_EQ(enter(), 516);
}

TEST_F(Entry, keeps_the_first_code_when_the_report_fails_too) {
    host.fail_with = {{"GetUniqueCommand", 11}, {"ReportInfo", 22}};
    EXPECT_EQ(enter(), 11);
    EXPECT_EQ(host.calls.back(), "Utility3.ReportInfo(7, Exflate: Problems encountered during exflate.)");
}

TEST_F(Entry, passes_on_the_id_it_was_given_and_sets_no_global_refcon) {
    AEGP_GlobalRefcon refcon = reinterpret_cast<AEGP_GlobalRefcon>(&host);
    EXPECT_EQ(EntryPointFunc(host.basic(), 0, 99, 31, &refcon), A_Err_NONE);
    EXPECT_EQ(refcon, reinterpret_cast<AEGP_GlobalRefcon>(&host));
    EXPECT_EQ(S_my_id, 31);
    EXPECT_EQ(host.count_of("Register5.RegisterCommandHook(31, 1, 0, null)"), 1);
    EXPECT_EQ(host.count_of("Register5.RegisterUpdateMenuHook(31, null)"), 1);
    EXPECT_EQ(UpdateMenuHook(refcon, reinterpret_cast<AEGP_UpdateMenuRefcon>(&refcon), AEGP_WindType_NONE), A_Err_NONE);
    EXPECT_EQ(host.count_of("GetNewCollectionFromCompSelection(31, main)"), 1);
    EXPECT_EQ(host.count_of("Command1.EnableCommand(77)"), 1);
}

TEST_F(Entry, leaves_the_command_without_an_id_when_the_host_has_none) {
    host.fail_on = "GetUniqueCommand";
    EXPECT_EQ(enter(), fake::Host::kInjected);
    EXPECT_EQ(S_Exflate_cmd, 0);
    EXPECT_EQ(host.command_hook, nullptr);
    EXPECT_EQ(host.update_menu_hook, nullptr);
}

class Menu : public OperationTest {
  protected:
    Menu() {
        sP = host.basic();
        S_my_id = 7;
        S_Exflate_cmd = 77;
    }

    A_Err update() { return UpdateMenuHook(nullptr, nullptr, AEGP_WindType_COMP); }
};

TEST_F(Menu, item_is_available_when_a_precomp_layer_is_selected) {
    EXPECT_EQ(update(), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Item1.GetActiveItem()", "Item1.GetItemType(main)", "Comp4.GetCompFromItem(main)",
                            "Comp4.GetNewCollectionFromCompSelection(7, main)",
                            "Collection2.GetCollectionNumItems(collection1)",
                            "Collection2.GetCollectionItemByIndex(collection1, 0)", "Layer5.GetLayerObjectType(nest)",
                            "Layer5.GetLayerSourceItem(nest)", "Item1.GetItemType(inner)",
                            "Command1.SetMenuCommandName(77, Exflate)", "Command1.EnableCommand(77)",
                            "Collection2.DisposeCollection(collection1)"));
}

TEST_F(Menu, one_precomp_layer_among_others_is_enough_and_ends_the_search) {
    for (const std::vector<fake::Layer*>& selection :
         {std::vector{above, nest, below}, std::vector{nest, above, below}, std::vector{above, below, nest}}) {
        host.forget_calls();
        main->selection = selection;
        EXPECT_EQ(update(), A_Err_NONE);
        EXPECT_EQ(host.count_of("Command1.EnableCommand(77)"), 1);
        EXPECT_EQ(host.count_of("DisableCommand"), 0);
        const auto place = std::find(selection.begin(), selection.end(), nest) - selection.begin();
        EXPECT_EQ(host.count_of("GetCollectionItemByIndex"), place + 1);
    }
}

TEST_F(Menu, item_is_unavailable_without_one) {
    below->object_type = AEGP_ObjectType_TEXT;
    for (const std::vector<fake::Layer*>& selection : {std::vector<fake::Layer*>{}, std::vector{above, below}}) {
        host.forget_calls();
        main->selection = selection;
        EXPECT_EQ(update(), A_Err_NONE);
        EXPECT_EQ(host.count_of("Command1.SetMenuCommandName(77, Exflate | Select a pre-comp layer)"), 1);
        EXPECT_EQ(host.count_of("Command1.DisableCommand(77)"), 1);
        EXPECT_EQ(host.count_of("EnableCommand"), 0);
        EXPECT_EQ(host.count_of("DisposeCollection"), 1);
    }
}

TEST_F(Menu, item_is_renamed_before_it_is_disabled) {
    main->selection.clear();
    EXPECT_EQ(update(), A_Err_NONE);
    const std::vector<std::string> end(host.calls.end() - 4, host.calls.end());
    EXPECT_THAT(end, ElementsAre("Collection2.GetCollectionNumItems(collection1)",
                                 "Command1.SetMenuCommandName(77, Exflate | Select a pre-comp layer)",
                                 "Command1.DisableCommand(77)", "Collection2.DisposeCollection(collection1)"));
}

TEST_F(Menu, item_is_left_alone_without_an_active_composition) {
    for (fake::Item* item : {static_cast<fake::Item*>(nullptr), footage, host.root}) {
        host.active_item = item;
        EXPECT_EQ(update(), A_Err_NONE);
    }
    EXPECT_EQ(host.count_of("Command1"), 0);
}

TEST_F(Menu, update_ends_at_the_first_failure) {
    main->selection = {above, nest};
    expect_faults_end_it([&] { return update(); });
    main->selection = {above};
    expect_faults_end_it([&] { return update(); });
}

TEST_F(Menu, lights_cameras_texts_and_shapes_do_not_make_it_available) {
    for (const AEGP_ObjectType type :
         {AEGP_ObjectType_LIGHT, AEGP_ObjectType_CAMERA, AEGP_ObjectType_TEXT, AEGP_ObjectType_VECTOR}) {
        host.forget_calls();
        nest->object_type = type;
        EXPECT_EQ(update(), A_Err_NONE);
        EXPECT_EQ(host.count_of("Command1.DisableCommand(77)"), 1);
        EXPECT_EQ(host.count_of("EnableCommand"), 0);
    }
}

TEST_F(Menu, selected_things_that_are_no_layers_do_not_make_it_available) {
    AEGP_CollectionItemV2 mask = fake::layer_item(nest);
    mask.type = AEGP_CollectionItemType_MASK;
    main->selection.clear();
    main->other_selected = {mask};
    EXPECT_EQ(update(), A_Err_NONE);
    EXPECT_EQ(host.count_of("Command1.DisableCommand(77)"), 1);
}

TEST_F(Menu, update_gives_its_selection_back) {
    for (const std::vector<fake::Layer*>& selection : {std::vector{nest}, std::vector{above}}) {
        host.forget_calls();
        main->selection = selection;
        EXPECT_EQ(update(), A_Err_NONE);
        EXPECT_THAT(host.open, IsEmpty());
    }
    host.fail_on = "EnableCommand";
    main->selection = {nest};
    host.forget_calls();
    EXPECT_EQ(update(), fake::Host::kInjected);
    EXPECT_THAT(host.open, ElementsAre("collection3")) << "a failure ends it before";
}

TEST(Outward, no_exception_of_the_host_leaves_the_plugin) {
    SPBasicSuite throwing = {};
    throwing.AcquireSuite = [](const char*, int32, const void**) -> SPErr { throw std::runtime_error("no host"); };
    EXPECT_EQ(EntryPointFunc(&throwing, 114, 0, 7, nullptr), A_Err_GENERIC);
    EXPECT_EQ(UpdateMenuHook(nullptr, nullptr, AEGP_WindType_NONE), A_Err_GENERIC);

    A_Boolean handled = false;
    EXPECT_EQ(CommandHook(nullptr, nullptr, S_Exflate_cmd, AEGP_HP_BeforeAE, false, &handled), A_Err_GENERIC);
}
