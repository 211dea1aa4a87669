// Track mattes: who shapes whom, and how the file says so when layers move, go or are copied.
#include <gtest/gtest.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

const std::string kMatte = shape_layer(1, "matte", {{"td", "1"}});

// In a host where a matte is a link.
Document read_with_links(std::string text) {
    Document document = Document::read(std::move(text));
    document.project().rules().mattes_by_position = false;
    return document;
}

TEST(Mattes, without_a_name_the_layer_directly_above_is_the_matte) {
    const Document document =
        Document::read(animation(shape_layer(3, "top") + "," + kMatte + "," + shape_layer(2, "user", {{"tt", "4"}})));
    EXPECT_EQ(layer_of(document, "user").matte(), &layer_of(document, "matte"));
    EXPECT_EQ(layer_of(document, "user").matte_type(), host::model::MatteType::luma_inverted);
    EXPECT_FALSE(layer_of(document, "matte").has_flag(host::model::kVideoActive));
}

TEST(Mattes, a_named_matte_may_stand_anywhere) {
    const Document document = Document::read(
        animation(shape_layer(2, "user", {{"tt", "1"}, {"tp", "1"}}) + "," + shape_layer(3, "x") + "," + kMatte));
    EXPECT_EQ(layer_of(document, "user").matte(), &layer_of(document, "matte"));
}

TEST(Mattes, the_matte_is_named_once_another_layer_stands_above_its_user) {
    const Document document =
        read_with_links(animation(kMatte + "," + shape_layer(2, "user", {{"tt", "1"}}) + "," + shape_layer(3, "x")));
    layer_of(document, "x").move_to(1);
    const std::string user = object_named(document.write(), "user");
    EXPECT_EQ(member(user, "tt"), "1");
    EXPECT_EQ(member(user, "tp"), "1");
    EXPECT_EQ(object_named(document.write(), "matte"), kMatte);
    layer_of(document, "x").move_to(2);
    EXPECT_EQ(object_named(document.write(), "user"), shape_layer(2, "user", {{"tt", "1"}}));
}

TEST(Mattes, naming_the_matte_gives_it_a_number_if_it_has_none) {
    const Document document =
        read_with_links(animation(shape_layer(1, "matte", {{"td", "1"}, {"ind", ""}}) + "," +
                                  shape_layer(2, "user", {{"tt", "1"}}) + "," + shape_layer(3, "x")));
    layer_of(document, "x").move_to(1);
    const std::string text = document.write();
    EXPECT_EQ(member(object_named(text, "matte"), "ind"), "4");
    EXPECT_EQ(member(object_named(text, "user"), "tp"), "4");
}

TEST(Mattes, a_user_that_lost_its_matte_no_longer_asks_for_one) {
    const Document document = read_with_links(
        animation(shape_layer(3, "top") + "," + kMatte + "," + shape_layer(2, "user", {{"tt", "1"}, {"tp", "1"}})));
    layer_of(document, "matte").remove();
    const std::string user = object_named(document.write(), "user");
    EXPECT_EQ(member(user, "tt"), "");
    EXPECT_EQ(member(user, "tp"), "");
    EXPECT_EQ(Document::read(document.write()).main_comp().layer_at(1).matte(), nullptr);
}

TEST(Mattes, a_matte_whose_user_is_gone_is_a_hidden_layer) {
    const Document document = Document::read(animation(kMatte + "," + shape_layer(2, "user", {{"tt", "1"}})));
    layer_of(document, "user").remove();
    const std::string matte = object_named(document.write(), "matte");
    EXPECT_EQ(member(matte, "td"), "");
    EXPECT_EQ(member(matte, "hd"), "true");
}

TEST(Mattes, a_copied_matte_without_its_user_is_a_hidden_layer_and_the_copied_user_has_no_matte) {
    const Document document = read_with_links(
        animation(nest_layer(1, "nest", "n"), nest_asset("n", kMatte + "," + shape_layer(2, "user", {{"tt", "1"}}))));
    host::model::Comp& nest = comp_of(document, "nest");
    host::model::Comp& main = document.main_comp();
    main.copy_layer_here(layer_of(nest, "user"));
    main.copy_layer_here(layer_of(nest, "matte"));
    const std::string text = document.write();
    const std::string layers = text.substr(text.find("],\"layers\":["));
    EXPECT_EQ(member(object_named(layers, "matte"), "td"), "");
    EXPECT_EQ(member(object_named(layers, "matte"), "hd"), "true");
    EXPECT_EQ(member(object_named(layers, "user"), "tt"), "");
    EXPECT_NE(text.find(nest_asset("n", kMatte + "," + shape_layer(2, "user", {{"tt", "1"}}))), std::string::npos);
}

TEST(Mattes, by_position_are_those_of_copies_too_and_need_no_name) {
    const std::string user = shape_layer(2, "user", {{"tt", "1"}, {"tp", "1"}});
    const Document document =
        Document::read(animation(nest_layer(1, "nest", "n"), nest_asset("n", kMatte + "," + user)));
    host::model::Comp& nest = comp_of(document, "nest");
    document.main_comp().copy_layer_here(layer_of(nest, "user"));
    document.main_comp().copy_layer_here(layer_of(nest, "matte"));
    const std::string text = document.write();
    const Document reread = Document::read(text);
    EXPECT_EQ(layer_of(reread, "user").matte(), &layer_of(reread, "matte"));
    const std::string layers = text.substr(text.find("],\"layers\":["));
    EXPECT_EQ(member(object_named(layers, "matte"), "td"), "1");
    EXPECT_EQ(member(object_named(layers, "user"), "tt"), "1");
}

TEST(Mattes, a_matte_that_nobody_used_stays_as_it_was_and_so_do_its_copies) {
    const Document document = Document::read(animation(kMatte + "," + shape_layer(2, "other")));
    document.main_comp().copy_layer_here(layer_of(document, "matte"));
    layer_of(document, "other").remove();
    const std::string text = document.write();
    EXPECT_EQ(text.find("\"hd\""), std::string::npos);
    EXPECT_EQ(text, animation(shape_layer(3, "matte", {{"td", "1"}}) + "," + kMatte));
}

TEST(Mattes, a_topmost_layer_that_asks_for_a_matte_does_not_get_one_from_above_later) {
    const std::string lonely = shape_layer(1, "lonely", {{"tt", "1"}});
    const Document document = Document::read(animation(lonely));
    EXPECT_EQ(layer_of(document, "lonely").matte(), nullptr);
    EXPECT_EQ(document.write(), animation(lonely));
    document.main_comp().create_null("N", {});
    const std::string text = document.write();
    EXPECT_EQ(member(object_named(text, "lonely"), "tt"), "");
    EXPECT_EQ(layer_of(Document::read(text), "lonely").matte(), nullptr);
}

TEST(Mattes, a_user_below_an_unmarked_matte_keeps_both_their_bytes) {
    const std::string text = animation(shape_layer(1, "matte") + "," + shape_layer(2, "user", {{"tt", "1"}}));
    const Document document = Document::read(text);
    EXPECT_EQ(layer_of(document, "user").matte(), &layer_of(document, "matte"));
    EXPECT_EQ(document.write(), text);
}

TEST(Mattes, a_new_matte_is_written_on_both_sides) {
    const Document document =
        Document::read(animation(shape_layer(1, "A") + "," + shape_layer(2, "B") + "," + shape_layer(3, "C")));
    layer_of(document, "C").load_matte(&layer_of(document, "A"), host::model::MatteType::luma);
    const std::string text = document.write();
    EXPECT_EQ(member(object_named(text, "C"), "tt"), "3");
    EXPECT_EQ(member(object_named(text, "C"), "tp"), "1");
    EXPECT_EQ(member(object_named(text, "A"), "td"), "1");
    EXPECT_EQ(object_named(text, "C").find("\"nm\":\"C\",\"tt\":3,\"tp\":1,\"sr\""),
              object_named(text, "C").find("\"nm\""));
}

}  // namespace
}  // namespace lottie::document::testing
