// What was not changed is written with the bytes it was read with.
#include <gtest/gtest.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

void load_everything(const Document& document) {
    for (host::model::Comp* comp : document.project().comps()) {
        for (int i = 0; i < comp->layer_count(); ++i) {
            host::model::Layer& layer = comp->layer_at(i);
            for (int number = 0; number < 12; ++number) layer.stream(number);
            layer.effect_count();
            layer.expression_streams();
        }
    }
}

void expect_same_bytes(const std::string& text) {
    const Document document = Document::read(text);
    EXPECT_EQ(document.write(), text);
    load_everything(document);
    EXPECT_EQ(document.write(), text);
    EXPECT_FALSE(document.project().undo().can_undo());
}

TEST(UnchangedBytes, a_compact_animation_is_written_as_read) {
    expect_same_bytes(
        animation(shape_layer(1, "A") + "," + nest_layer(2, "B", "n"), nest_asset("n", shape_layer(1, "C"))));
}

TEST(UnchangedBytes, a_byte_order_mark_and_a_trailing_newline_stay) {
    expect_same_bytes("\xEF\xBB\xBF" + animation(shape_layer(1, "A")) + "\n");
}

TEST(UnchangedBytes, an_empty_animation_is_written_as_read) {
    expect_same_bytes(animation(""));
}

TEST(UnchangedBytes, spaces_and_line_ends_of_any_kind_stay) {
    expect_same_bytes(
        "{ \"v\" : \"5.7.4\",\r\n\t\"fr\": 30 ,\n \"ip\":0,\"op\":60,\"w\":200,\"h\":100,\n\"layers\" : [ {\"ty\" : 4 "
        ", \"nm\" : \"A\",\n"
        "\"ks\" : { \"p\" : { \"a\" : 1 , \"k\" : [ { \"t\" : 0 , \"s\" : [ 1 , 2 ] } , {\"t\":3,\"s\":[4,5]} ] } } "
        ",\"ip\":0,\"op\":9} ] }\n\n");
}

TEST(UnchangedBytes, spellings_of_numbers_stay) {
    expect_same_bytes(animation(shape_layer(1, "A",
                                            {{"ip", "0.0"},
                                             {"op", "6e1"},
                                             {"st", "-0"},
                                             {"sr", "1.00"},
                                             {"ks", transform({{"p", R"({"a":0,"k":[1.50,2E0,-0.0]})"}})}}),
                                "", "29.9700012207031"));
}

TEST(UnchangedBytes, escapes_in_text_stay) {
    expect_same_bytes(animation(shape_layer(1, "A\\u0041\\/\\n\\\"\\ud83d\\ude00\xC3\xA4")));
}

TEST(UnchangedBytes, unknown_members_stay_in_their_place) {
    expect_same_bytes(animation(shape_layer(1, "A", {{"ao", R"(0,"zz":{"k":[{"t":"x"}],"x":[null,true,false]})"}})));
}

TEST(UnchangedBytes, of_members_given_twice_the_last_counts_and_both_stay) {
    const std::string text = animation(shape_layer(1, "A", {{"ao", R"(0,"nm":"B")"}}));
    expect_same_bytes(text);
    EXPECT_EQ(Document::read(text).main_comp().layer_at(0).own_name(), "B");
}

TEST(UnchangedBytes, layers_given_twice_count_once) {
    const std::string text =
        R"({"layers":[{"ty":4,"nm":"gone"}],"fr":30,"ip":0,"op":60,"w":200,"h":100,"layers":[{"ty":4,"nm":"A"}]})";
    expect_same_bytes(text);
    EXPECT_EQ(Document::read(text).main_comp().layer_at(0).own_name(), "A");
}

TEST(UnchangedBytes, members_may_come_in_any_order) {
    expect_same_bytes(R"({"assets":[{"layers":[{"nm":"C","op":60,"ip":0,"ty":4}],"id":"n"}],"layers":[)" +
                      nest_layer(1, "B", "n") + R"(],"v":"4.0.0","ip":0,"op":60,"fr":30,"w":200,"h":100})");
}

TEST(UnchangedBytes, unused_assets_and_empty_objects_stay) {
    expect_same_bytes(animation(shape_layer(1, "A", {{"ef", R"([{"ty":5,"nm":"E","ef":[{},{"ty":6,"v":0}]}])"}}),
                                R"({"id":"unused","layers":[]},{"id":"i","w":1,"h":1,"u":"","p":"x.png","e":0},{})"));
}

TEST(UnchangedBytes, a_change_taken_back_leaves_the_bytes_as_read) {
    const std::string text = animation(shape_layer(1, "A") + " , " + shape_layer(2, "B", {{"parent", "1"}}));
    const Document document = Document::read(text);
    host::model::Project& project = document.project();
    project.undo().begin_group("everything");
    host::model::Comp& comp = document.main_comp();
    layer_of(document, "A").rename("Z");
    layer_of(document, "B").set_offset({4000});
    layer_of(document, "B").stream(host::model::kPosition).set_static_value({{7, 8, 9}});
    layer_of(document, "B").set_flag(host::model::kIs3D, true);
    comp.create_null("N", {});
    comp.copy_layer_here(layer_of(document, "B"));
    layer_of(document, "Z").remove();
    project.undo().end_group();
    EXPECT_NE(document.write(), text);
    project.undo().undo();
    EXPECT_EQ(document.write(), text);
}

TEST(UnchangedBytes, setting_what_is_already_there_changes_no_byte) {
    const std::string text =
        animation(shape_layer(1, "A", {{"ks", transform({{"p", R"({"a":0,"k":[10.0,20,0],"ix":2})"}})}}));
    const Document document = Document::read(text);
    host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    position.set_static_value({{1, 2, 3}});
    position.set_static_value({{10, 20, 0}});
    EXPECT_EQ(document.write(), text);
}

TEST(UnchangedBytes, layers_beside_a_changed_one_keep_theirs) {
    const std::string first = shape_layer(1, "A", {{"ip", "0.0"}});
    const std::string last = nest_layer(3, "C", "n", {{"op", "6e1"}});
    const std::string asset = nest_asset("n", shape_layer(1, "D", {{"st", "0.00"}}));
    const Document document = Document::read(animation(first + ",\n" + shape_layer(2, "B") + ", " + last, asset));
    layer_of(document, "B").rename("X");
    EXPECT_EQ(document.write(), animation(first + ",\n" + shape_layer(2, "X") + ", " + last, asset));
}

}  // namespace
}  // namespace lottie::document::testing
