// Reading and changing layer names.
#include <algorithm>
#include <clocale>
#include <cstring>

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

    A_Err rename_all(fake::Collection* layers) {
        return modify_all_layer_names(&info, fake::handle(layers), L"p", nullptr, L"_");
    }

    static std::string repair(const std::string& old_name, const std::string& new_name) {
        return "Utility6.ExecuteScript(7, app.project.autoFixExpressions(\"" + old_name + "\",\"" + new_name +
               "\");, false, null, null)";
    }
};

// ---- Reading

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

TEST_F(Names, without_a_buffer_are_asked_for_twice) {
    EXPECT_EQ(get_layer_name(&info, fake::handle(a), nullptr), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerName(a, null, null)", "Layer5.GetLayerName(a, null, null)"));
}

TEST_F(Names, code_of_the_sources_name_is_the_result) {
    a->own_name.clear();
    char name[32] = {};
    host.fail_on = "GetLayerName(a, null, source)";
    EXPECT_EQ(get_layer_name(&info, fake::handle(a), name), fake::Host::kInjected);
    EXPECT_STREQ(name, "");
}

TEST_F(Names, have_31_bytes_at_most_whether_own_or_the_sources) {
    for (const std::size_t length : {30u, 31u, 32u, 40u}) {
        const std::wstring read(std::min<std::size_t>(length, 31), L'n');
        a->own_name = std::string(length, 'n');
        EXPECT_EQ(wide_name_of(a), read) << length;
        a->own_name.clear();
        a->source_name = std::string(length, 'n');
        EXPECT_EQ(wide_name_of(a), read) << length;
    }
    char name[33];
    std::memset(name, 'x', sizeof name);
    name[0] = '\0';
    EXPECT_EQ(get_layer_name(&info, fake::handle(a), name), A_Err_NONE);
    EXPECT_EQ(std::strlen(name), 31u);
    EXPECT_EQ(name[32], 'x') << "the byte behind the buffer";
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
    name = L"left over";
    host.refused = {"AEGP Layer Suite 11"};
    EXPECT_EQ(get_layer_name_w(&info, fake::handle(a), &name), 516);
    EXPECT_EQ(name, L"");
}

TEST_F(Names, written_in_part_before_the_failure_count_as_far_as_they_go) {
    host.half_read_name = "ab";
    host.fail_on = "GetLayerName";
    std::wstring name;
    EXPECT_EQ(get_layer_name_w(&info, fake::handle(a), &name), fake::Host::kInjected);
    EXPECT_EQ(name, L"ab");
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerName(a, own, null)")) << "the source is not asked";

    a->own_name.clear();
    host.fail_on = "GetLayerName(a, null, source)";
    EXPECT_EQ(get_layer_name_w(&info, fake::handle(a), &name), fake::Host::kInjected);
    EXPECT_EQ(name, L"ab") << "the source's name too";
}

TEST_F(Names, are_read_in_the_processs_locale) {
    std::setlocale(LC_CTYPE, "C");
    a->own_name = "caf\xc3\xa9";
    EXPECT_EQ(wide_name_of(a), L"caf##");
}

struct ReadCase {
    const char* name;
    std::string bytes;
    std::wstring read;

    friend void PrintTo(const ReadCase& tested, std::ostream* out) { *out << tested.name; }
};

const ReadCase kReadCases[] = {
    {"none_at_all_is_empty", "", L""},
    {"plain_text", "x", L"x"},
    {"a_hash_for_each_byte_more_than_characters", "caf\xc3\xa9!", L"caf\u00e9!#"},
    {"four_bytes", "\xf0\x9f\x98\x80", L"\U0001F600###"},
    {"three_bytes_and_two", "\xe4\xb8\xad\xc3\xa9", L"\u4e2d\u00e9###"},
    {"what_stands_before_bytes_that_are_no_text",
     "ab\xff"
     "cd",
     L"ab###"},
    {"nothing_before_bytes_that_are_no_text",
     "\xff"
     "abc",
     L"####"},
    {"two_bytes_cut_at_byte_31", std::string(30, 'x') + "\xc3\xa9", std::wstring(30, L'x') + L"#"},
    {"four_bytes_cut_at_byte_31", std::string(28, 'x') + "\xf0\x9f\x98\x80", std::wstring(28, L'x') + L"###"},
    {"two_bytes_whole_at_byte_31", std::string(29, 'x') + "\xc3\xa9", std::wstring(29, L'x') + L"\u00e9#"},
};

class WideName : public Names, public testing::WithParamInterface<ReadCase> {};

TEST_P(WideName, has_a_character_for_every_byte) {
    a->own_name = GetParam().bytes;
    a->source_name.clear();
    EXPECT_EQ(wide_name_of(a), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(Cases, WideName, testing::ValuesIn(kReadCases),
                         [](const auto& read) { return read.param.name; });

// ---- One layer's new name

TEST_F(Names, prefix_and_suffix_go_around_the_old_name) {
    EXPECT_EQ(rename(L"pre", L"suf"), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Layer5.GetLayerName(a, own, null)", "Layer6.SetLayerName(a, pre_a_suf)"));
}

TEST_F(Names, of_254_and_255_characters_are_whole_and_one_of_256_is_cut) {
    for (const std::size_t length : {252u, 253u, 254u}) {
        a->own_name = "x";
        EXPECT_EQ(rename(std::wstring(length, L'p').c_str(), nullptr), A_Err_NONE);
        EXPECT_EQ(host.calls.back(),
                  "Layer6.SetLayerName(a, " + std::string(length, 'p') + (length < 254 ? "_x)" : "_)"));
        EXPECT_EQ(a->written_name.size(), std::min<std::size_t>(length + 2, 255));
    }
}

TEST_F(Names, cut_counts_characters_before_they_become_units) {
    std::wstring prefix(200, L'p');
    for (int i = 0; i < 54; ++i) prefix += L'\U0001F600';
    EXPECT_EQ(rename(prefix.c_str(), nullptr), A_Err_NONE);
    // 254 characters and the separator are 309 units, of which as many stay as there are characters.
    ASSERT_EQ(a->written_name.size(), 255u);
    EXPECT_EQ(a->written_name[199], u'p');
    EXPECT_EQ(a->written_name[200], 0xD83D);
    EXPECT_EQ(a->written_name[254], 0xD83D) << "a half of the last one";
}

TEST_F(Names, name_that_cannot_be_read_is_replaced_all_the_same) {
    host.fail_on = "GetLayerName";
    EXPECT_EQ(rename(L"p", nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, p_)");
    host.fail_on.clear();
    host.refused = {"AEGP Layer Suite 11"};
    EXPECT_EQ(rename(L"q", nullptr), A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, q_)");
}

TEST_F(Names, name_read_in_part_is_what_the_new_name_is_built_from) {
    host.half_read_name = "ab";
    host.fail_on = "GetLayerName";
    EXPECT_EQ(rename_all(host.add_collection("layers", {a})), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerName"), ElementsAre("Layer6.SetLayerName(a, p_ab)"));
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair("ab", "ab")));
}

TEST_F(Names, renaming_returns_the_writing_calls_code) {
    host.fail_on = "SetLayerName";
    EXPECT_EQ(rename(L"p", nullptr), fake::Host::kInjected);
    host.fail_on.clear();
    host.refused = {"AEGP Layer Suite 12"};
    EXPECT_EQ(rename(L"p", nullptr), 516);
}

struct NewNameCase {
    const char* name;
    std::string old_name;  // the source's name is "footage"
    const wchar_t* prefix;
    const wchar_t* suffix;
    const wchar_t* separator;
    std::string new_name;

    friend void PrintTo(const NewNameCase& tested, std::ostream* out) { *out << tested.name; }
};

const std::wstring kLongPrefix(253, L'p');
const std::wstring kLongerPrefix(300, L'p');

const NewNameCase kNewNameCases[] = {
    {"long_separator", "a", L"pre", L"suf", L" - ", "pre - a - suf"},
    {"empty_separator", "a", L"pre", L"suf", L"", "preasuf"},
    {"prefix_before_the_sources_name_where_the_layer_has_none", "", L"p", nullptr, L"_", "p_footage"},
    {"beyond_ascii_as_it_was_read", "caf\xc3\xa9", L"\u4e2d", nullptr, L"_", "{4e2d}_caf{e9}#"},
    {"neither_prefix_nor_suffix", "a", nullptr, nullptr, L"_", "a"},
    {"empty_prefix_and_suffix", "a", L"", L"", L"_", "a"},
    {"neither_nor_a_separator", "a", nullptr, L"", nullptr, "a"},
    {"suffix_alone", "a", nullptr, L"suf", L"_", "a_suf"},
    {"only_31_bytes_of_the_old_name", std::string(40, 'n'), L"p", nullptr, L"_", "p_" + std::string(31, 'n')},
    {"cut_to_255_characters_at_its_end", "0123456789", kLongPrefix.c_str() + 3, nullptr, L"_",
     std::string(250, 'p') + "_0123"},
    {"suffix_is_lost_first", "a", kLongPrefix.c_str(), L"suffix", L"_", std::string(253, 'p') + "_a"},
    {"prefix_is_lost_last", "a", kLongerPrefix.c_str(), nullptr, L"_", std::string(255, 'p')},
    {"character_of_two_units_costs_the_end", "a", L"\U0001F600", nullptr, L"_", "{d83d}{de00}_"},
};

class NewName : public Names, public testing::WithParamInterface<NewNameCase> {};

TEST_P(NewName, is_written) {
    const NewNameCase& renaming = GetParam();
    a->own_name = renaming.old_name;
    EXPECT_EQ(modify_layer_name(&info, fake::handle(a), renaming.prefix, renaming.suffix, renaming.separator),
              A_Err_NONE);
    EXPECT_EQ(host.calls.back(), "Layer6.SetLayerName(a, " + renaming.new_name + ")");
}

INSTANTIATE_TEST_SUITE_P(Cases, NewName, testing::ValuesIn(kNewNameCases),
                         [](const auto& renaming) { return renaming.param.name; });

// ---- A collection of layers

TEST_F(Names, all_layers_are_renamed_each_with_its_repair) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    b->own_name.clear();
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
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

TEST_F(Names, all_layers_get_prefix_suffix_and_separator) {
    fake::Collection* layers = host.add_collection("layers", {c, a});
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), L"pre", L"suf", L"-"), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerName"),
                ElementsAre("Layer6.SetLayerName(c, pre-c-suf)", "Layer6.SetLayerName(a, pre-a-suf)"));
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair("c", "pre-c-suf"), repair("a", "pre-a-suf")));
}

TEST_F(Names, without_prefix_and_suffix_are_written_back_and_repaired_all_the_same) {
    fake::Collection* layers = host.add_collection("layers", {a});
    EXPECT_EQ(modify_all_layer_names(&info, fake::handle(layers), nullptr, L"", nullptr), A_Err_NONE);
    EXPECT_THAT(host.calls_of("SetLayerName"), ElementsAre("Layer6.SetLayerName(a, a)"));
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair("a", "a")));
}

TEST_F(Names, repairs_are_told_the_names_as_they_are_read_again) {
    fake::Collection* layers = host.add_collection("layers", {a});
    a->own_name = "caf\xc3\xa9";
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair("caf\xc3\xa9#", "p_caf\xc3\xa9##")));
    host.forget_calls();
    a->own_name = std::string(40, 'n');
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair(std::string(31, 'n'), "p_" + std::string(29, 'n'))));
    EXPECT_EQ(a->own_name, "p_" + std::string(31, 'n'));
}

TEST_F(Names, empty_collection_repairs_nothing) {
    fake::Collection* layers = host.add_collection("layers", {});
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
    EXPECT_THAT(host.calls, ElementsAre("Collection2.GetCollectionNumItems(layers)"));
}

TEST_F(Names, collection_that_cannot_be_counted_repairs_nothing) {
    EXPECT_EQ(rename_all(nullptr), A_Err_PARAMETER);
    EXPECT_EQ(host.calls.size(), 1u);
    host.refused = {"AEGP Collection Suite 2"};
    EXPECT_EQ(rename_all(host.add_collection("layers", {a})), 516);
    EXPECT_EQ(host.calls.size(), 1u);
}

TEST_F(Names, items_that_are_no_layers_are_passed_over) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    layers->items[0].type = AEGP_CollectionItemType_EFFECT;
    layers->items[2].type = AEGP_CollectionItemType_NONE;
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
    EXPECT_THAT(host.calls_of("Layer"),
                ElementsAre("Layer5.GetLayerName(b, own, null)", "Layer5.GetLayerName(b, own, null)",
                            "Layer6.SetLayerName(b, p_b)", "Layer5.GetLayerName(b, own, null)"));
    EXPECT_EQ(host.count_of("ExecuteScript"), 1);
    EXPECT_EQ(host.count_of("GetCollectionItemByIndex"), 3);
}

TEST_F(Names, failed_rename_still_repairs_for_the_last_layer_read) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    host.fail_on = "SetLayerName(b";
    EXPECT_EQ(rename_all(layers), fake::Host::kInjected);
    EXPECT_EQ(host.count_of("GetCollectionItemByIndex(layers, 2)"), 0);
    EXPECT_EQ(host.count_of("SetLayerName"), 2);
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair("a", "p_a"), repair("b", "b"), repair("b", "b")));
}

TEST_F(Names, first_failed_rename_is_the_result) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.refused = {"AEGP Layer Suite 12"};
    EXPECT_EQ(rename_all(layers), 516);
    EXPECT_THAT(host.calls_of("ExecuteScript"), ElementsAre(repair("a", "a"), repair("a", "a")));
}

TEST_F(Names, unreadable_item_repairs_for_the_one_before_to_the_end) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    host.fail_on = "GetCollectionItemByIndex(layers, 1)";
    EXPECT_EQ(rename_all(layers), fake::Host::kInjected);
    EXPECT_THAT(host.calls_of("SetLayerName"), ElementsAre("Layer6.SetLayerName(a, p_a)"));
    EXPECT_THAT(host.calls_of("ExecuteScript"),
                ElementsAre(repair("a", "p_a"), repair("p_a", "p_a"), repair("p_a", "p_a")));
    EXPECT_EQ(host.count_of("GetLayerName(a"), 7);
}

TEST_F(Names, unreadable_item_behind_one_that_is_no_layer_repairs_nothing) {
    fake::Collection* layers = host.add_collection("layers", {a, b, c});
    layers->items[0].type = AEGP_CollectionItemType_EFFECT;
    host.fail_on = "GetCollectionItemByIndex(layers, 1)";
    EXPECT_EQ(rename_all(layers), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 3u);
}

TEST_F(Names, unreadable_first_item_repairs_nothing) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.fail_on = "GetCollectionItemByIndex(layers, 0)";
    EXPECT_EQ(rename_all(layers), fake::Host::kInjected);
    EXPECT_EQ(host.calls.size(), 2u);
}

TEST_F(Names, failed_reads_and_repairs_are_ignored) {
    fake::Collection* layers = host.add_collection("layers", {a, b});
    host.fail_on = "GetLayerName";
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
    EXPECT_EQ(host.count_of("autoFixExpressions(\"\",\"\")"), 2);
    host.fail_on = "ExecuteScript";
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
    host.fail_on.clear();
    host.refused = {"AEGP Utility Suite 13"};
    EXPECT_EQ(rename_all(layers), A_Err_NONE);
}

TEST_F(Names, use_one_version_of_each_suite_and_no_options) {
    info = {host.basic(), 7, nullptr};
    char name[32] = {};
    EXPECT_THAT(suites_of([&] { return get_layer_name(&info, fake::handle(a), name); }),
                ElementsAre("AEGP Layer Suite 11"));
    EXPECT_THAT(suites_of([&] { return rename(nullptr, nullptr); }),
                ElementsAre("AEGP Layer Suite 11", "AEGP Layer Suite 12"));
    EXPECT_THAT(
        suites_of([&] { return rename_all(host.add_collection("layers", {a})); }),
        ElementsAre("AEGP Collection Suite 2", "AEGP Layer Suite 11", "AEGP Layer Suite 12", "AEGP Utility Suite 13"));
}
