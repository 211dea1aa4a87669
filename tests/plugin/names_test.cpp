// Reading and changing layer names, and repairing expressions.
#include <clocale>
#include <stdexcept>

#include "operation_test.h"

class Names : public OperationTest {
  protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }
    void TearDown() override {
        std::setlocale(LC_CTYPE, "C");
        OperationTest::TearDown();
    }

    std::wstring wide_name_of(fake::Layer* layer) {
        std::wstring name = L"left over";
        EXPECT_EQ(get_layer_name_w(&info, fake::handle(layer), &name), A_Err_NONE);
        return name;
    }

    A_Err rename(const wchar_t* prefix, const wchar_t* suffix) {
        return modify_layer_name(&info, fake::handle(a), prefix, suffix, L"_");
    }
};

TEST_F(Names, own_name_is_enough) {
    char name[32] = {};
    EXPECT_EQ(get_layer_name(&info, fake::handle(a), name), A_Err_NONE);
    EXPECT_STREQ(name, "a");
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerName(a, own, null)"));
}

TEST_F(Names, without_one_the_sources_name_counts) {
    a->own_name.clear();
    char name[32] = {};
    EXPECT_EQ(get_layer_name(&info, fake::handle(a), name), A_Err_NONE);
    EXPECT_STREQ(name, "footage");
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerName(a, own, null)", "Layer5.GetLayerName(a, null, source)"));
}

TEST_F(Names, text_already_in_the_buffer_counts_as_a_name_after_a_failure) {
    char name[32] = "x";
    host.fail_on = "GetLayerName";
    EXPECT_EQ(get_layer_name(&info, fake::handle(a), name), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 1u);
}

TEST_F(Names, reading_ends_at_the_first_failure) {
    a->own_name.clear();
    std::wstring name;
    expect_faults_end_it([&] { return get_layer_name_w(&info, fake::handle(a), &name); });
}

TEST_F(Names, unreadable_name_is_empty) {
    host.fail_on = "GetLayerName";
    std::wstring name = L"left over";
    EXPECT_EQ(get_layer_name_w(&info, fake::handle(a), &name), fake::Host::kInjected);
    EXPECT_EQ(name, L"");
}

TEST_F(Names, wide_name_has_a_character_for_every_byte) {
    a->own_name = "caf\xc3\xa9!";
    EXPECT_EQ(wide_name_of(a), L"café!#");
    a->own_name = "\xf0\x9f\x98\x80";
    EXPECT_EQ(wide_name_of(a), L"\U0001F600###");
}

TEST_F(Names, bytes_that_are_no_text_leave_what_stands_before_them) {
    a->own_name =
        "ab\xff"
        "cd";
    EXPECT_EQ(wide_name_of(a), L"ab###");
}

TEST_F(Names, are_read_in_the_processs_locale) {
    std::setlocale(LC_CTYPE, "C");
    a->own_name = "caf\xc3\xa9";
    EXPECT_EQ(wide_name_of(a), L"caf##");
}

TEST_F(Names, character_cut_at_byte_31_becomes_a_hash) {
    a->own_name = std::string(30, 'x') + "\xc3\xa9";
    EXPECT_EQ(wide_name_of(a), std::wstring(30, L'x') + L"#");
}

TEST_F(Names, prefix_and_suffix_go_around_the_old_name) {
    EXPECT_EQ(rename(L"pre", L"suf"), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerName(a, own, null)", "Layer6.SetLayerName(a, pre_a_suf)"));
}

TEST_F(Names, missing_prefix_and_suffix_go_with_their_separators) {
    EXPECT_EQ(rename(nullptr, nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, a)");
    EXPECT_EQ(rename(L"", L""), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, a)");
    EXPECT_EQ(modify_layer_name(&info, fake::handle(a), nullptr, L"", nullptr), A_Err_NONE);
    EXPECT_EQ(rename(nullptr, L"suf"), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, a_suf)");
}

TEST_F(Names, new_name_is_built_from_the_first_31_bytes) {
    a->own_name = std::string(40, 'n');
    EXPECT_EQ(rename(L"p", nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, p_" + std::string(31, 'n') + ")");
}

TEST_F(Names, new_name_is_cut_to_255_characters_at_its_end) {
    const std::wstring prefix(250, L'p');
    a->own_name = "0123456789";
    EXPECT_EQ(rename(prefix.c_str(), nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, " + std::string(250, 'p') + "_0123)");
}

TEST_F(Names, characters_of_two_units_cost_the_names_end) {
    EXPECT_EQ(rename(L"\U0001F600", nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, {d83d}{de00}_)");
}

TEST_F(Names, name_that_cannot_be_read_is_replaced_all_the_same) {
    host.fail_on = "GetLayerName";
    EXPECT_EQ(rename(L"p", nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, p_)");
}

TEST_F(Names, renaming_returns_the_writing_calls_code) {
    host.fail_on = "SetLayerName";
    EXPECT_EQ(rename(L"p", nullptr), fake::Host::kInjected);
    host.fail_on.clear();
    host.refused = {"AEGP Layer Suite 12"};
    EXPECT_EQ(rename(L"p", nullptr), 516);
}

// ---- A collection of layers

TEST_F(Names, all_layers_are_renamed_each_with_its_repair) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    b->own_name.clear();
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), A_Err_NONE);
    EXPECT_THAT(
        host.calls,
        ElementsAre("Collection2.GetCollectionNumItems(layers)", "Collection2.GetCollectionItemByIndex(layers, 0)",
                    "Layer5.GetLayerName(a, own, null)", "Layer5.GetLayerName(a, own, null)",
                    "Layer6.SetLayerName(a, p_a)", "Layer5.GetLayerName(a, own, null)",
                    "Utility6.ExecuteScript(7, app.project.autoFixExpressions(\"a\",\"p_a\");, false, null, null)",
                    "Collection2.GetCollectionItemByIndex(layers, 1)", "Layer5.GetLayerName(b, own, null)",
                    "Layer5.GetLayerName(b, null, source)", "Layer5.GetLayerName(b, own, null)",
                    "Layer5.GetLayerName(b, null, source)", "Layer6.SetLayerName(b, p_footage)",
                    "Layer5.GetLayerName(b, own, null)",
                    "Utility6.ExecuteScript(7, app.project.autoFixExpressions(\"footage\",\"p_footage\");, "
                    "false, null, null)"));
}

TEST_F(Names, empty_collection_repairs_nothing) {
    fake::Collection* layers = host.add_collection("layers", {});
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), A_Err_NONE);
    EXPECT_EQ(host.calls.size(), 1u);
}

TEST_F(Names, items_that_are_no_layers_are_passed_over) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    layers->items[0].type = AEGP_CollectionItemType_EFFECT;
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerName"), ElementsAre("Layer6.SetLayerName(b, p_b)"));
}

TEST_F(Names, failed_rename_still_repairs_for_the_last_layer_read) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    host.fail_on = "SetLayerName(b";
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), fake::Host::kInjected);
    EXPECT_EQ(host.count_of("GetCollectionItemByIndex(layers, 2)"), 0);
    EXPECT_THAT(host.calls_of("autoFix"),
                ElementsAre(testing::HasSubstr("(\"a\",\"p_a\")"), testing::HasSubstr("(\"b\",\"b\")"),
                            testing::HasSubstr("(\"b\",\"b\")")));
}

TEST_F(Names, unreadable_first_item_repairs_nothing) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.fail_on = "GetCollectionItemByIndex(layers, 0)";
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 2u);
}

TEST_F(Names, failed_reads_and_repairs_are_ignored) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.fail_on = "GetLayerName";
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), A_Err_NONE);
    EXPECT_EQ(host.count_of("autoFixExpressions(\"\",\"\")"), 2);
    host.fail_on = "ExecuteScript";
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), A_Err_NONE);
    host.fail_on.clear();
    host.refused = {"AEGP Utility Suite 13"};
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_"), A_Err_NONE);
}

// ---- Expressions

TEST_F(Names, repair_is_one_script_call) {
    EXPECT_EQ(fix_all_expressions(&info, L"old", L"new"), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Utility6.ExecuteScript(7, app.project.autoFixExpressions(\"old\",\"new\");, false, null, "
                            "null)"));
}

TEST_F(Names, repair_runs_for_equal_and_for_empty_names) {
    EXPECT_EQ(fix_all_expressions(&info, L"x", L"x"), A_Err_NONE);
    EXPECT_EQ(fix_all_expressions(&info, L"", L""), A_Err_NONE);
    EXPECT_EQ(host.count_of("autoFixExpressions(\"x\",\"x\");"), 1);
    EXPECT_EQ(host.count_of("autoFixExpressions(\"\",\"\");"), 1);
}

TEST_F(Names, repair_writes_utf8_and_escapes_nothing) {
    EXPECT_EQ(fix_all_expressions(&info, L"caf\u00e9 \U0001F600", L"a\"b\\"), A_Err_NONE);
    EXPECT_EQ(host.count_of("autoFixExpressions(\"caf\xc3\xa9 \xf0\x9f\x98\x80\",\"a\"b\\\");"), 1);
}

TEST_F(Names, repair_raises_for_what_is_no_code_point) {
    const wchar_t bad[] = {0x110000, 0};
    EXPECT_THROW((void)fix_all_expressions(&info, bad, L"x"), std::range_error);
    EXPECT_THROW((void)fix_all_expressions(&info, L"x", bad), std::range_error);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Names, repair_returns_the_hosts_code) {
    expect_faults_end_it([&] { return fix_all_expressions(&info, L"old", L"new"); });
}
