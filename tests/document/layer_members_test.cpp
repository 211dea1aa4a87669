// Plain members of layers, in both directions.
#include <gtest/gtest.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

// The one layer "A" after `change`.
template <class Change>
std::string changed(const Members& members, Change change) {
    const Document document = Document::read(animation(shape_layer(1, "A", members)));
    change(document.main_comp().layer_at(0));
    const std::string text = document.write();
    const std::string begin = "\"layers\":[";
    const std::size_t at = text.find(begin) + begin.size();
    return text.substr(at, text.find("],\"markers\"") - at);
}

TEST(LayerMembers, a_new_name_is_written_as_json_and_read_back) {
    const std::string name = "\"quotes\" \\ back\n\x01 gr\xC3\xBC\xC3\x9F";
    const Document document = Document::read(animation(shape_layer(1, "A", {{"cl", "\"a\""}})));
    layer_of(document, "A").rename(name);
    const std::string text = document.write();
    EXPECT_NE(text.find("\"nm\":\"\\\"quotes\\\" \\\\ back\\n\\u0001 gr\xC3\xBC\xC3\x9F\""), std::string::npos);
    EXPECT_NE(text.find("\"cl\":\"a\""), std::string::npos);
    EXPECT_EQ(Document::read(text).main_comp().layer_at(0).own_name(), name);
}

TEST(LayerMembers, bytes_that_are_no_utf8_become_replacement_characters) {
    EXPECT_EQ(changed({}, [](host::model::Layer& layer) { layer.rename("a\xC3\x28\xFF"); }),
              shape_layer(1, "a\xEF\xBF\xBD(\xEF\xBF\xBD"));
}

TEST(LayerMembers, an_empty_name_writes_the_name_that_is_shown) {
    const Document document =
        Document::read(animation(nest_layer(1, "A", "n"), R"({"id":"n","nm":"source","layers":[]})"));
    layer_of(document, "A").rename("");
    EXPECT_EQ(document.write(), animation(nest_layer(1, "source", "n"), R"({"id":"n","nm":"source","layers":[]})"));
}

TEST(LayerMembers, a_missing_name_is_written_behind_the_type) {
    EXPECT_EQ(changed({{"nm", ""}, {"parent", ""}}, [](host::model::Layer& layer) { layer.rename("X"); }),
              shape_layer(1, "X"));
}

TEST(LayerMembers, hiding_a_layer_writes_hd_before_its_stretch_and_showing_takes_it_away) {
    const auto hide = [](host::model::Layer& layer) { layer.set_flag(host::model::kVideoActive, false); };
    const auto show = [](host::model::Layer& layer) { layer.set_flag(host::model::kVideoActive, true); };
    EXPECT_EQ(changed({}, hide), shape_layer(1, "A", {{"hd", "true"}}));
    EXPECT_EQ(changed({{"hd", "false"}}, hide), shape_layer(1, "A", {{"hd", "true"}}));
    EXPECT_EQ(changed({{"hd", "true"}}, show), shape_layer(1, "A"));
}

TEST(LayerMembers, switches_are_written_where_exporters_write_them) {
    const auto set = [](host::model::LayerFlag flag, bool on) {
        return [flag, on](host::model::Layer& layer) { layer.set_flag(flag, on); };
    };
    EXPECT_EQ(changed({}, set(host::model::kAutoOrient, true)), shape_layer(1, "A", {{"ao", "1"}}));
    EXPECT_EQ(changed({{"ao", "1"}}, set(host::model::kAutoOrient, false)), shape_layer(1, "A"));
    EXPECT_EQ(changed({}, set(host::model::kCollapse, true)), shape_layer(1, "A", {{"st", "0,\"ct\":1"}}));
    EXPECT_EQ(changed({{"ct", "1"}}, set(host::model::kCollapse, false)), shape_layer(1, "A", {{"ct", "0"}}));
    EXPECT_EQ(changed({}, set(host::model::kMotionBlur, true)), shape_layer(1, "A", {{"st", "0,\"mb\":true"}}));
}

TEST(LayerMembers, trimming_changes_in_and_out_alone) {
    EXPECT_EQ(
        changed({{"st", "-2.0"}}, [](host::model::Layer& layer) { layer.set_in_point_and_duration({8000}, {42'000}); }),
        shape_layer(1, "A", {{"st", "-2.0"}, {"ip", "2"}, {"op", "12.5"}}));
}

TEST(LayerMembers, moving_in_time_changes_start_in_and_out) {
    EXPECT_EQ(changed({{"ip", "3"}}, [](host::model::Layer& layer) { layer.set_offset({40'000}); }),
              shape_layer(1, "A", {{"ip", "13"}, {"op", "70"}, {"st", "10"}}));
}

TEST(LayerMembers, a_missing_start_is_written_before_the_blend_mode) {
    EXPECT_EQ(changed({{"st", ""}}, [](host::model::Layer& layer) { layer.set_offset({4'000}); }),
              shape_layer(1, "A", {{"ip", "1"}, {"op", "61"}, {"st", "1"}}));
}

TEST(LayerMembers, a_changed_layer_keeps_its_other_bytes_and_their_order) {
    const std::string odd = R"({ "op" : 60.0, "ty":4,	"nm" : "A" ,"zz":[1 , 2],"ip":0e0 , "ks":{} })";
    const Document document = Document::read(animation(odd));
    layer_of(document, "A").rename("B");
    layer_of(document, "B").set_flag(host::model::kVideoActive, false);
    EXPECT_EQ(document.write(),
              animation(R"({ "op" : 60.0, "ty":4,	"nm" : "B", "hd":true ,"zz":[1 , 2],"ip":0e0 , "ks":{} })"));
}

TEST(LayerMembers, time_remapping_is_a_switch_with_a_stream) {
    const Document document = Document::read(
        animation(nest_layer(1, "A", "n", {{"tm", R"({"a":1,"k":[{"t":0,"s":[0]},{"t":30,"s":[0.5]}],"ix":2})"}}),
                  nest_asset("n", "")));
    host::model::Layer& layer = layer_of(document, "A");
    EXPECT_EQ(layer.stream(host::model::kTimeRemapStream).keyframe(1).value.n[0], 0.5);
    layer.set_flag(host::model::kTimeRemap, false);
    EXPECT_EQ(document.write(), animation(nest_layer(1, "A", "n"), nest_asset("n", "")));
}

TEST(LayerMembers, turning_time_remapping_on_writes_its_stream) {
    const Document document = Document::read(animation(nest_layer(1, "A", "n"), nest_asset("n", "")));
    host::model::Layer& layer = layer_of(document, "A");
    layer.set_flag(host::model::kTimeRemap, true);
    layer.stream(host::model::kTimeRemapStream).set_static_value({{0.25, 0, 0, 0}});
    EXPECT_EQ(member(object_named(document.write(), "A"), "tm"), R"({"a":0,"k":0.25,"ix":2})");
}

TEST(LayerMembers, a_hidden_time_remap_stream_is_not_written) {
    const Document document = Document::read(animation(shape_layer(1, "A")));
    layer_of(document, "A").stream(host::model::kTimeRemapStream).set_static_value({{5, 0, 0, 0}});
    EXPECT_EQ(document.write(), animation(shape_layer(1, "A")));
}

}  // namespace
}  // namespace lottie::document::testing
