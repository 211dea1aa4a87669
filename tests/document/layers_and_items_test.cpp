// What a project has after reading: items, layers, switches, timing.
#include <gmock/gmock.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> item_names(const Document& document) {
    std::vector<std::string> names;
    for (int n = 1; n <= document.project().item_count(); ++n)
        names.push_back(document.project().item_by_number(n).name());
    return names;
}

TEST(Items, the_main_composition_comes_first_then_assets_then_solids_as_they_appear) {
    const Document document = Document::read(
        animation(nest_layer(1, "nest", "n") + "," + shape_layer(2, "null", {{"ty", "3"}}) + "," +
                      shape_layer(3, "solid", {{"ty", "1"}, {"sw", "30"}, {"sh", "20"}, {"sc", "\"#ff8000\""}}),
                  R"({"id":"i","w":64,"h":32,"u":"images/","p":"cat.png","e":0},)" +
                      nest_asset("n", shape_layer(1, "inner", {{"ty", "3"}}))));
    EXPECT_THAT(item_names(document), ElementsAre("main", "cat.png", "nest", "null", "solid", "inner"));
    host::model::Project& project = document.project();
    EXPECT_EQ(project.item_by_number(2).type(), host::model::ItemType::footage);
    EXPECT_EQ(project.item_by_number(2).width(), 64);
    EXPECT_EQ(project.item_by_number(4).width(), 100);
    EXPECT_TRUE(project.item_by_number(4).footage().is_solid);
    EXPECT_EQ(project.item_by_number(5).width(), 30);
    EXPECT_EQ(project.item_by_number(5).height(), 20);
    EXPECT_NEAR(project.item_by_number(5).footage().color[1], 128 / 255.0, 1e-12);
    EXPECT_EQ(project.active_item(), &document.main_comp());
}

TEST(Items, a_nested_composition_is_sized_and_named_by_its_first_user) {
    const std::string text =
        animation(nest_layer(1, "outer", "o"),
                  nest_asset("n", shape_layer(1, "leaf")) + "," +
                      nest_asset("o", nest_layer(1, "first", "n", {{"w", "33"}}) + "," + nest_layer(2, "second", "n")));
    const Document document = Document::read(text);
    host::model::Comp& comp = comp_of(document, "first");
    EXPECT_EQ(comp.width(), 33);
    EXPECT_EQ(comp.height(), 40);
    EXPECT_EQ(comp.users().size(), 2u);
    EXPECT_EQ(document.comp_id(comp), "n");
    EXPECT_EQ(document.comp_id(document.main_comp()), "");
}

TEST(Items, an_unused_composition_has_the_main_size_and_its_own_name_or_id) {
    const Document document =
        Document::read(animation("", R"({"id":"a","layers":[]},{"id":"b","nm":"B","layers":[]})"));
    EXPECT_THAT(item_names(document), ElementsAre("main", "a", "B"));
    EXPECT_EQ(comp_of(document, "a").width(), 200);
}

TEST(Items, an_unnamed_animation_is_called_main) {
    EXPECT_EQ(Document::read(R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[]})").main_comp().name(), "main");
}

TEST(Items, compositions_last_as_long_as_anything_in_them_or_anyone_who_shows_them) {
    const Document document = Document::read(
        animation(nest_layer(1, "long", "l", {{"op", "300"}, {"st", "100"}}) + "," + nest_layer(2, "short", "s"),
                  nest_asset("l", shape_layer(1, "x")) + "," + nest_asset("s", shape_layer(1, "y", {{"op", "90"}}))));
    EXPECT_EQ(document.main_comp().duration(), (host::model::Time{60 * 4000}));
    EXPECT_EQ(comp_of(document, "long").duration(), (host::model::Time{200 * 4000}));
    EXPECT_EQ(comp_of(document, "short").duration(), (host::model::Time{90 * 4000}));
    EXPECT_EQ(comp_of(document, "long").frame_rate(), 30);
}

TEST(Layers, kinds_come_from_their_types) {
    std::string layers;
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 13, 14, 15, 99}) {
        const std::string name = "t" + std::to_string(type);
        layers += (layers.empty() ? "" : ",") +
                  nest_layer(type + 1, name, type == 0 ? "n" : "i", {{"ty", std::to_string(type)}});
    }
    const Document document = Document::read(animation(layers, nest_asset("n", "") + R"(,{"id":"i","p":"i.png"})"));
    const auto kind = [&document](const std::string& name) { return layer_of(document, name).kind(); };
    EXPECT_EQ(kind("t0"), host::model::LayerKind::av);
    EXPECT_NE(layer_of(document, "t0").source()->comp(), nullptr);
    EXPECT_EQ(kind("t2"), host::model::LayerKind::av);
    EXPECT_EQ(layer_of(document, "t2").source()->name(), "i.png");
    EXPECT_EQ(kind("t3"), host::model::LayerKind::av);
    EXPECT_TRUE(layer_of(document, "t3").has_flag(host::model::kIsNull));
    EXPECT_EQ(kind("t4"), host::model::LayerKind::vector);
    EXPECT_EQ(layer_of(document, "t4").source(), nullptr);
    EXPECT_EQ(kind("t5"), host::model::LayerKind::text);
    EXPECT_EQ(kind("t6"), host::model::LayerKind::av);
    EXPECT_EQ(kind("t13"), host::model::LayerKind::camera);
    EXPECT_EQ(kind("t14"), host::model::LayerKind::light);
    EXPECT_EQ(kind("t99"), host::model::LayerKind::av);
    EXPECT_EQ(document.facts(layer_of(document, "t13"))->type, 13);
    EXPECT_EQ(document.facts(layer_of(document, "t13"))->ind, 14);
}

TEST(Layers, a_picture_without_its_asset_gets_a_placeholder) {
    const Document document = Document::read(animation(nest_layer(1, "A", "gone", {{"ty", "2"}})));
    EXPECT_EQ(layer_of(document, "A").source()->type(), host::model::ItemType::footage);
}

TEST(Layers, a_parent_of_minus_one_is_none_unless_a_layer_has_that_number) {
    const std::string text = animation(shape_layer(1, "A", {{"parent", "-1"}}));
    const Document document = Document::read(text);
    EXPECT_EQ(layer_of(document, "A").parent(), nullptr);
    EXPECT_EQ(document.write(), text);
    const Document numbered =
        Document::read(animation(shape_layer(-1, "A") + "," + shape_layer(1, "B", {{"parent", "-1"}})));
    EXPECT_EQ(layer_of(numbered, "B").parent(), &layer_of(numbered, "A"));
}

TEST(Layers, switches_come_from_their_members) {
    const auto flags = [](const Members& members) {
        const Document document =
            Document::read(animation(shape_layer(1, "above") + "," + shape_layer(2, "A", members)));
        return layer_of(document, "A").flags();
    };
    const std::uint32_t plain = host::model::kVideoActive | host::model::kAudioActive | host::model::kEffectsActive;
    EXPECT_EQ(flags({}), plain);
    EXPECT_EQ(flags({{"hd", "true"}}), plain & ~host::model::kVideoActive);
    EXPECT_EQ(flags({{"hd", "false"}}), plain);
    EXPECT_EQ(flags({{"td", "1"}}), plain & ~host::model::kVideoActive);
    EXPECT_EQ(flags({{"ddd", "1"}}), plain | host::model::kIs3D);
    EXPECT_EQ(flags({{"ao", "1"}}), plain | host::model::kAutoOrient);
    EXPECT_EQ(flags({{"ct", "1"}}), plain | host::model::kCollapse);
    EXPECT_EQ(flags({{"cp", "true"}}), plain | host::model::kCollapse);
    EXPECT_EQ(flags({{"mb", "true"}}), plain | host::model::kMotionBlur);
    EXPECT_EQ(flags({{"tm", R"({"a":0,"k":1})"}}), plain | host::model::kTimeRemap);
}

TEST(Layers, names_are_their_own_and_a_missing_one_is_none) {
    const Document document =
        Document::read(animation(shape_layer(1, "gr\\u00f6\\u00dfer\\n") + "," + shape_layer(2, "B", {{"nm", ""}})));
    EXPECT_EQ(document.main_comp().layer_at(0).own_name(),
              "gr\xC3\xB6\xC3\x9F"
              "er\n");
    EXPECT_EQ(document.main_comp().layer_at(1).own_name(), "");
}

TEST(Layers, timing_is_frames_of_the_composition) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"ip", "12.5"}, {"op", "40"}, {"st", "-3"}, {"sr", "2"}})));
    const host::model::Layer& layer = layer_of(document, "A");
    EXPECT_EQ(layer.offset(), (host::model::Time{-12'000}));
    EXPECT_EQ(layer.in_point(), (host::model::Time{50'000}));
    EXPECT_EQ(layer.duration(), (host::model::Time{110'000}));
    EXPECT_EQ(layer.stretch(), 2);
}

TEST(Layers, missing_times_are_the_whole_animation) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"ip", ""}, {"op", ""}, {"st", ""}, {"sr", ""}})));
    EXPECT_EQ(layer_of(document, "A").in_point(), host::model::Time{});
    EXPECT_EQ(layer_of(document, "A").duration(), (host::model::Time{240'000}));
    EXPECT_EQ(layer_of(document, "A").stretch(), 1);
}

TEST(Layers, parents_are_found_by_their_number) {
    const Document document =
        Document::read(animation(shape_layer(7, "child", {{"parent", "0"}}) + "," + shape_layer(0, "parent") + "," +
                                 shape_layer(3, "grandchild", {{"parent", "7"}})));
    EXPECT_EQ(layer_of(document, "child").parent(), &layer_of(document, "parent"));
    EXPECT_EQ(layer_of(document, "grandchild").parent(), &layer_of(document, "child"));
    EXPECT_EQ(layer_of(document, "parent").parent(), nullptr);
}

TEST(Layers, a_layer_without_a_number_is_accepted) {
    const Document document = Document::read(animation(shape_layer(1, "A", {{"ind", ""}}) + "," + shape_layer(1, "B")));
    EXPECT_EQ(document.facts(layer_of(document, "A"))->ind, std::nullopt);
}

TEST(Layers, pointers_lead_to_the_objects) {
    const Document document = Document::read(animation(
        nest_layer(1, "nest", "n"), "{}," + nest_asset("n", shape_layer(1, "x") + "," + shape_layer(2, "A"))));
    host::model::Comp& comp = comp_of(document, "nest");
    EXPECT_EQ(document.pointer(document.main_comp()), "");
    EXPECT_EQ(document.pointer(comp), "/assets/1");
    EXPECT_EQ(document.pointer(layer_of(comp, "A")), "/assets/1/layers/1");
    EXPECT_EQ(document.pointer(layer_of(document, "nest")), "/layers/0");
    EXPECT_EQ(document.pointer(document.main_comp().create_null("N", {})), std::nullopt);
}

}  // namespace
}  // namespace lottie::document::testing
