// Names of layers and items, narrow and wide.
#include <array>
#include <cstring>

#include "model/item.h"
#include "world.h"

namespace host::suites {

class Names : public World {
  public:
    model::Layer& layer = add_layer("Own");
    const AEGP_LayerH handle = host.handle(layer);
    std::array<A_char, AEGP_MAX_LAYER_NAME_SIZE + 1> own{};
    std::array<A_char, AEGP_MAX_LAYER_NAME_SIZE + 1> source{};

    void read_narrow() {
        own.fill('#');
        source.fill('#');
        EXPECT_EQ(layers()->AEGP_GetLayerName(handle, own.data(), source.data()), 0);
        EXPECT_EQ(own.back(), '#');
        EXPECT_EQ(source.back(), '#');
    }
    std::pair<std::u16string, std::u16string> read_wide() {
        AEGP_MemHandle own_text = nullptr;
        AEGP_MemHandle source_text = nullptr;
        EXPECT_EQ(suite<AEGP_LayerSuite6>()->AEGP_GetLayerName(plugin, handle, &own_text, &source_text), 0);
        const std::u16string first = wide_text_in(own_text);
        return {first, wide_text_in(source_text)};
    }
    A_Err rename(std::u16string_view text) {
        std::vector<A_UTF16Char> units(text.begin(), text.end());
        units.push_back(0);
        return suite<AEGP_LayerSuite6>()->AEGP_SetLayerName(handle, units.data());
    }
};

TEST_F(Names, of_a_layer_are_its_own_and_its_source_s) {
    read_narrow();
    EXPECT_STREQ(own.data(), "Own");
    EXPECT_STREQ(source.data(), "Red");
    EXPECT_EQ(read_wide(), std::pair(std::u16string(u"Own"), std::u16string(u"Red")));
}

TEST_F(Names, never_given_are_empty) {
    layer.rename("");
    read_narrow();
    EXPECT_STREQ(own.data(), "");
    EXPECT_STREQ(source.data(), "Red");
    const AEGP_LayerH camera = host.handle(main.load_layer(model::LayerKind::camera, nullptr));
    source.fill('#');
    EXPECT_EQ(layers()->AEGP_GetLayerName(camera, nullptr, source.data()), 0);
    EXPECT_STREQ(source.data(), "");
}

TEST_F(Names, need_not_be_asked_for) {
    EXPECT_EQ(layers()->AEGP_GetLayerName(handle, nullptr, nullptr), 0);
    EXPECT_EQ(suite<AEGP_LayerSuite7>()->AEGP_GetLayerName(plugin, handle, nullptr, nullptr), 0);
    AEGP_MemHandle text = nullptr;
    EXPECT_EQ(suite<AEGP_LayerSuite7>()->AEGP_GetLayerName(plugin, handle, nullptr, &text), 0);
    EXPECT_EQ(wide_text_in(text), u"Red");
    EXPECT_EQ(host.ledger().handed_out.at(HandleKind::memory), 1U);
}

TEST_F(Names, that_are_long_end_at_byte_31) {
    layer.rename(std::string(40, 'x'));
    footage.set_name(std::string(31, 'y'));
    read_narrow();
    EXPECT_EQ(std::strlen(own.data()), 31U);
    EXPECT_EQ(source.data(), std::string(31, 'y'));
}

TEST_F(Names, that_are_long_may_end_within_a_character) {
    layer.rename(std::string(30, 'x') + "\xC3\xA9");
    read_narrow();
    EXPECT_EQ(own.data(), std::string(30, 'x') + "\xC3");
}

TEST_F(Names, that_are_long_end_between_characters_if_the_rules_say_so) {
    project.rules().cut_names_at_character = true;
    layer.rename(std::string(30, 'x') + "\xC3\xA9");
    read_narrow();
    EXPECT_EQ(own.data(), std::string(30, 'x'));
    layer.rename(std::string(28, 'x') + "\xF0\x9F\x98\x80");
    read_narrow();
    EXPECT_EQ(own.data(), std::string(28, 'x'));
}

TEST_F(Names, of_items_are_cut_likewise) {
    footage.set_name(std::string(30, 'x') + "\xC3\xA9");
    std::array<A_char, AEGP_MAX_ITEM_NAME_SIZE> buffer{};
    const auto* items = suite<AEGP_ItemSuite6>();
    EXPECT_EQ(items->AEGP_GetItemName(host.handle(footage), buffer.data()), 0);
    EXPECT_EQ(buffer.data(), std::string(30, 'x') + "\xC3");
    project.rules().cut_names_at_character = true;
    EXPECT_EQ(items->AEGP_GetItemName(host.handle(footage), buffer.data()), 0);
    EXPECT_EQ(buffer.data(), std::string(30, 'x'));
    EXPECT_EQ(items->AEGP_GetItemName(host.handle(footage), nullptr), kBadArgument);
    AEGP_MemHandle text = nullptr;
    EXPECT_EQ(suite<AEGP_ItemSuite8>()->AEGP_GetItemName(plugin, host.handle(footage), &text), 0);
    EXPECT_EQ(wide_text_in(text), std::u16string(30, u'x') + u"\u00E9");
}

TEST_F(Names, of_every_plane_survive_the_way_in_and_out) {
    const std::u16string text = u"a\u00E9\u20AC\U0001F600\U0010FFFFz";
    EXPECT_EQ(rename(text), 0);
    EXPECT_EQ(layer.own_name(), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBFz");
    EXPECT_EQ(read_wide().first, text);
}

TEST_F(Names, cut_in_two_by_a_plug_in_become_valid_text) {
    const std::array<A_UTF16Char, 5> halves{0xD83D, 'x', 0xDE00, 0xD83D, 0};
    EXPECT_EQ(suite<AEGP_LayerSuite6>()->AEGP_SetLayerName(handle, halves.data()), 0);
    EXPECT_EQ(layer.own_name(), "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST_F(Names, of_bytes_that_are_no_text_read_as_replacements) {
    for (const char* bytes : {"\xFF", "\xC3", "\xC0\x80", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"}) {
        layer.rename(bytes);
        EXPECT_EQ(read_wide().first, std::u16string(std::strlen(bytes), u'\uFFFD'));
    }
}

TEST_F(Names, are_given_narrow_or_wide_and_taken_back) {
    EXPECT_EQ(layers()->AEGP_SetLayerName(handle, "N\xC3\xA9w"), 0);
    EXPECT_EQ(layer.own_name(), "N\xC3\xA9w");
    EXPECT_EQ(rename(u""), 0);
    EXPECT_EQ(layer.own_name(), "");
    EXPECT_EQ(layer.display_name(), "Red");
    project.undo().undo();
    project.undo().undo();
    EXPECT_EQ(layer.own_name(), "Own");
    EXPECT_EQ(layers()->AEGP_SetLayerName(handle, nullptr), kBadArgument);
    EXPECT_EQ(suite<AEGP_LayerSuite7>()->AEGP_SetLayerName(handle, nullptr), kBadArgument);
    EXPECT_EQ(layer.own_name(), "Own");
}

}  // namespace host::suites
