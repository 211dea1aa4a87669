// Numbers of layers, and everything that refers to them, when layers are copied, made and deleted.
#include <gtest/gtest.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

TEST(Numbers, layers_keep_theirs_and_new_ones_get_the_next_from_top_to_bottom) {
    const Document document = Document::read(animation(shape_layer(4, "A") + "," + shape_layer(9, "B")));
    host::model::Comp& comp = document.main_comp();
    comp.create_null("second", {});
    comp.create_null("first", {});
    layer_of(document, "B").move_to(0);
    const std::string text = document.write();
    EXPECT_EQ(member(object_named(text, "A"), "ind"), "4");
    EXPECT_EQ(member(object_named(text, "B"), "ind"), "9");
    EXPECT_EQ(member(object_named(text, "first"), "ind"), "10");
    EXPECT_EQ(member(object_named(text, "second"), "ind"), "11");
}

TEST(Numbers, the_number_of_a_deleted_layer_is_not_given_again) {
    const Document document = Document::read(animation(shape_layer(1, "A") + "," + shape_layer(2, "B")));
    layer_of(document, "B").remove();
    document.main_comp().create_null("N", {});
    EXPECT_EQ(member(object_named(document.write(), "N"), "ind"), "3");
}

TEST(Numbers, copies_get_their_own_in_every_composition) {
    const Document document = Document::read(
        animation(nest_layer(1, "nest", "n"), nest_asset("n", shape_layer(1, "A") + "," + shape_layer(2, "B"))));
    host::model::Comp& nest = comp_of(document, "nest");
    document.main_comp().copy_layer_here(layer_of(nest, "A"));
    document.main_comp().copy_layer_here(layer_of(nest, "B"));
    EXPECT_EQ(document.write(),
              animation(shape_layer(2, "B") + "," + shape_layer(3, "A") + "," + nest_layer(1, "nest", "n"),
                        nest_asset("n", shape_layer(1, "A") + "," + shape_layer(2, "B"))));
}

TEST(Parents, that_no_layer_is_count_as_none_and_stay_none) {
    const std::string orphan = shape_layer(1, "A", {{"parent", "2"}});
    const std::string text =
        animation(orphan + "," + nest_layer(5, "nest", "n"), nest_asset("n", shape_layer(1, "B", {{"parent", "7"}})));
    const Document document = Document::read(text);
    EXPECT_EQ(layer_of(document, "A").parent(), nullptr);
    EXPECT_EQ(document.write(), text);
    document.main_comp().copy_layer_here(layer_of(comp_of(document, "nest"), "B"));
    comp_of(document, "nest").create_null("N", {});
    const std::string after = document.write();
    EXPECT_EQ(object_named(after, "A"), orphan);
    EXPECT_EQ(object_named(after, "B"), shape_layer(1, "B", {{"parent", "7"}}));
    EXPECT_NE(after.find(shape_layer(6, "B")), std::string::npos);
    EXPECT_EQ(member(object_named(after, "N"), "ind"), "8");
}

TEST(Parents, a_copy_is_written_without_the_parent_it_left_behind) {
    const Document document =
        Document::read(animation(nest_layer(1, "nest", "n"),
                                 nest_asset("n", shape_layer(1, "A") + "," + shape_layer(2, "B", {{"parent", "1"}}))));
    document.main_comp().copy_layer_here(layer_of(comp_of(document, "nest"), "B"));
    const std::string text = document.write();
    EXPECT_NE(text.find("\"layers\":[" + shape_layer(2, "B") + "," + nest_layer(1, "nest", "n")), std::string::npos)
        << text;
}

TEST(Parents, a_new_parent_is_written_behind_the_name) {
    const Document document = Document::read(animation(shape_layer(1, "A") + "," + shape_layer(2, "B")));
    layer_of(document, "A").set_parent(&layer_of(document, "B"), host::model::Parenting::keep_local_values);
    EXPECT_EQ(document.write(), animation(shape_layer(1, "A", {{"parent", "2"}}) + "," + shape_layer(2, "B")));
}

TEST(Parents, another_parent_takes_the_old_ones_place) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"parent", "2"}}) + "," + shape_layer(2, "B")));
    host::model::Layer& null = document.main_comp().create_null("N", {});
    layer_of(document, "A").set_parent(&null, host::model::Parenting::keep_local_values);
    EXPECT_NE(document.write().find(shape_layer(1, "A", {{"parent", "3"}})), std::string::npos);
    layer_of(document, "A").set_parent(nullptr, host::model::Parenting::keep_local_values);
    EXPECT_NE(document.write().find(shape_layer(1, "A")), std::string::npos);
}

TEST(Parents, a_layer_without_a_number_gets_one_when_it_becomes_a_parent) {
    const Document document = Document::read(animation(shape_layer(1, "A") + "," + shape_layer(0, "B", {{"ind", ""}}) +
                                                       "," + shape_layer(0, "C", {{"ind", ""}})));
    document.main_comp().create_null("N", {});
    layer_of(document, "A").set_parent(&layer_of(document, "C"), host::model::Parenting::keep_local_values);
    const std::string text = document.write();
    EXPECT_EQ(member(object_named(text, "N"), "ind"), "2");
    EXPECT_EQ(member(object_named(text, "B"), "ind"), "");
    EXPECT_EQ(member(object_named(text, "C"), "ind"), "3");
    EXPECT_EQ(member(object_named(text, "A"), "parent"), "3");
}

TEST(Stack, moved_and_deleted_layers_leave_tidy_commas) {
    const std::string text = R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[
  {"ty":4,"nm":"A"},
  {"ty":4,"nm":"B"},
  {"ty":4,"nm":"C"}
]})";
    const Document document = Document::read(text);
    layer_of(document, "B").remove();
    EXPECT_EQ(document.write(), R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[
  {"ty":4,"nm":"A"},
  {"ty":4,"nm":"C"}
]})");
    layer_of(document, "C").move_to(0);
    EXPECT_EQ(document.write(), R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[
  {"ty":4,"nm":"C"},
  {"ty":4,"nm":"A"}
]})");
    layer_of(document, "A").remove();
    layer_of(document, "C").remove();
    EXPECT_EQ(document.write(), R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[]})");
}

TEST(Assets, a_deleted_composition_goes_with_its_comma_and_its_users) {
    const std::string assets[] = {nest_asset("a", ""), nest_asset("b", shape_layer(1, "B")), nest_asset("c", "")};
    for (std::size_t gone = 0; gone < 3; ++gone) {
        const std::string id(1, static_cast<char>('a' + gone));
        const std::string all = assets[0] + ", " + assets[1] + ",\n" + assets[2];
        const Document document =
            Document::read(animation(shape_layer(1, "keep") + "," + nest_layer(2, "user", id), all));
        document.project().delete_item(comp_of(document, "user"));
        const std::string left = gone == 0   ? assets[1] + ",\n" + assets[2]
                                 : gone == 1 ? assets[0] + ", " + assets[2]
                                             : assets[0] + ", " + assets[1];
        EXPECT_EQ(document.write(), animation(shape_layer(1, "keep"), left));
    }
}

TEST(Assets, the_last_one_leaves_an_empty_array) {
    const Document document = Document::read(animation(nest_layer(2, "user", "a"), nest_asset("a", "")));
    document.project().delete_item(comp_of(document, "user"));
    EXPECT_EQ(document.write(), animation("", ""));
}

TEST(Assets, a_composition_deleted_only_as_a_layer_stays) {
    const Document document = Document::read(animation(nest_layer(2, "user", "a"), nest_asset("a", "")));
    layer_of(document, "user").remove();
    EXPECT_EQ(document.write(), animation("", nest_asset("a", "")));
}

TEST(Assets, a_renamed_composition_is_written_with_its_name) {
    const Document document = Document::read(animation(nest_layer(2, "user", "a"), nest_asset("a", "")));
    comp_of(document, "user").set_name("new");
    document.main_comp().set_name("whole");
    const std::string text = document.write();
    EXPECT_NE(text.find("{\"id\":\"a\",\"nm\":\"new\",\"layers\":[]}"), std::string::npos);
    EXPECT_NE(text.find("\"nm\":\"whole\",\"ddd\""), std::string::npos);
}

}  // namespace
}  // namespace lottie::document::testing
