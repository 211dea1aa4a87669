// Layers and compositions that the host made, as an exporter would write them.
#include <gmock/gmock.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

using ::testing::HasSubstr;

TEST(NewLayers, a_null_is_written_as_exporters_do) {
    const Document document = Document::read(animation(shape_layer(6, "A")));
    host::model::Layer& null = document.main_comp().create_null("N \"1\"", {});
    null.stream(host::model::kPosition).set_static_value({{30, 40.5, 0, 0}});
    EXPECT_EQ(
        document.write(),
        animation(
            R"({"ddd":0,"ind":7,"ty":3,"nm":"N \"1\"","sr":1,"ks":{"o":{"a":0,"k":100,"ix":11},"r":{"a":0,"k":0,"ix":10},)"
            R"("p":{"a":0,"k":[30,40.5,0],"ix":2,"l":2},"a":{"a":0,"k":[0,0,0],"ix":1,"l":2},"s":{"a":0,"k":[100,100,100],"ix":6,"l":2}},)"
            R"("ao":0,"ip":0,"op":60,"st":0,"bm":0},)" +
            shape_layer(6, "A")));
}

TEST(NewLayers, a_null_with_everything_has_it_in_the_exporters_order) {
    const Document document = Document::read(animation(shape_layer(1, "A")));
    host::model::Layer& null = document.main_comp().create_null("N", {});
    null.set_flag(host::model::kIs3D, true);
    null.set_flag(host::model::kVideoActive, false);
    null.set_parent(&layer_of(document, "A"), host::model::Parenting::keep_local_values);
    null.load_matte(&layer_of(document, "A"), host::model::MatteType::alpha);
    null.set_offset({-4000});
    null.stream(host::model::kRotateY).set_static_value({{45, 0, 0, 0}});
    const std::string text = object_named(document.write(), "N");
    EXPECT_THAT(text,
                HasSubstr(R"({"ddd":1,"ind":2,"ty":3,"nm":"N","parent":1,"tt":1,"tp":1,"hd":true,"sr":1,"ks":{"o":)"));
    EXPECT_THAT(
        text,
        HasSubstr(
            R"("rx":{"a":0,"k":0,"ix":8},"ry":{"a":0,"k":45,"ix":9},"rz":{"a":0,"k":0,"ix":10},"or":{"a":0,"k":[0,0,0],"ix":7},"p")"));
    EXPECT_THAT(text, HasSubstr(R"("ip":-1,"op":59,"st":-1,"bm":0})"));
}

TEST(NewLayers, in_an_empty_composition_stand_alone) {
    const Document document = Document::read(animation(""));
    document.main_comp().create_null("N", {});
    const Document again = Document::read(document.write());
    EXPECT_EQ(again.main_comp().layer_count(), 1);
    EXPECT_EQ(again.facts(layer_of(again, "N"))->ind, 1);
}

TEST(NewLayers, in_an_indented_file_are_set_on_their_own_line) {
    const Document document = Document::read(
        "{\"fr\":30,\"ip\":0,\"op\":60,\"w\":2,\"h\":1,\"layers\":[\n    {\"ty\":4,\"nm\":\"A\",\"ind\":1}\n  ]}");
    document.main_comp().create_null("N", {});
    const std::string text = document.write();
    EXPECT_THAT(text, HasSubstr("\"layers\":[\n    {\"ddd\":0,"));
    EXPECT_THAT(text, HasSubstr("\"bm\":0},\n    {\"ty\":4,\"nm\":\"A\",\"ind\":1}\n  ]}"));
}

TEST(NewLayers, of_items_know_their_source) {
    const Document document = Document::read(
        animation(nest_layer(1, "nest", "n"), nest_asset("n", "") + R"(,{"id":"i","w":5,"h":6,"p":"i.png"})"));
    host::model::Project& project = document.project();
    host::model::FootageFacts facts;
    facts.is_solid = true;
    facts.color = {1, 0.5, 0, 1};
    document.main_comp().add_layer(project.add_footage("solid", facts, 30, 20)).rename("S");
    document.main_comp().add_layer(comp_of(document, "nest")).rename("C");
    document.main_comp().add_layer(project.item_by_number(3)).rename("I");
    const std::string text = document.write();
    EXPECT_THAT(object_named(text, "S"), HasSubstr(R"("ty":1,)"));
    EXPECT_THAT(object_named(text, "S"), HasSubstr(R"("sw":30,"sh":20,"sc":"#ff8000","ip")"));
    EXPECT_THAT(object_named(text, "C"), HasSubstr(R"("ty":0,"nm":"C","refId":"n","sr")"));
    EXPECT_THAT(object_named(text, "C"), HasSubstr(R"("w":80,"h":40,"ip")"));
    EXPECT_THAT(object_named(text, "I"), HasSubstr(R"("ty":2,"nm":"I","refId":"i","sr")"));
    const Document again = Document::read(text);
    EXPECT_EQ(layer_of(again, "S").source()->footage().color[0], 1);
    EXPECT_EQ(layer_of(again, "C").source()->comp(), &comp_of(again, "C"));
}

TEST(NewCompositions, become_assets_with_an_id_of_their_own) {
    const Document document =
        Document::read(animation(nest_layer(1, "nest", "comp_0"), nest_asset("comp_0", shape_layer(1, "X"))));
    host::model::Comp& made = document.project().add_comp("made");
    made.load_size(50, 60);
    made.load_timing(30, {40'000});
    made.copy_layer_here(layer_of(comp_of(document, "nest"), "X"));
    document.main_comp().add_layer(made);
    const std::string text = document.write();
    EXPECT_THAT(text, HasSubstr(R"("assets":[)" + nest_asset("comp_0", shape_layer(1, "X")) +
                                R"(,{"id":"comp_1","nm":"made","layers":[)" + shape_layer(1, "X") + "]}]"));
    const Document again = Document::read(text);
    EXPECT_EQ(comp_of(again, "made").width(), 50);
    EXPECT_EQ(comp_of(again, "made").layer_count(), 1);
}

TEST(NewCompositions, in_a_document_without_assets_bring_the_array) {
    const Document document = Document::read(R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"layers":[]})");
    document.project().add_comp("made");
    EXPECT_EQ(document.write(),
              R"({"fr":30,"ip":0,"op":60,"w":2,"h":1,"assets":[{"id":"comp_0","nm":"made","layers":[]}],"layers":[]})");
}

TEST(Copies, of_one_layer_twice_differ_only_in_their_numbers) {
    const std::string layer =
        nest_layer(1, "A", "n", {{"ip", "0.0"}, {"ks", transform({{"p", R"({"a":0,"k":[1.50,2,0]})"}})}});
    const Document document = Document::read(animation(layer, nest_asset("n", "")));
    document.main_comp().copy_layer_here(layer_of(document, "A"));
    document.main_comp().copy_layer_here(layer_of(document, "A"));
    const auto numbered = [&layer](int ind) {
        std::string copy = layer;
        return copy.replace(copy.find("\"ind\":1"), 7, "\"ind\":" + std::to_string(ind));
    };
    EXPECT_EQ(document.write(), animation(numbered(2) + "," + numbered(3) + "," + layer, nest_asset("n", "")));
}

TEST(Copies, of_a_changed_layer_carry_the_change) {
    const Document document = Document::read(
        animation(shape_layer(1, "A", {{"ks", transform({{"p", R"({"a":0,"k":[1,2,0],"x":"time"})"}})}})));
    layer_of(document, "A").stream(host::model::kPosition).set_static_value({{5, 2, 0, 0}});
    host::model::Layer& copy = document.main_comp().copy_layer_here(layer_of(document, "A"));
    copy.stream(host::model::kPosition).set_expression("value");
    const std::string text = document.write();
    EXPECT_THAT(text, HasSubstr(R"({"a":0,"k":[5,2,0],"x":"time"})"));
    EXPECT_THAT(text, HasSubstr(R"({"a":0,"k":[5,2,0],"x":"value"})"));
}

TEST(Copies, moved_in_time_move_their_keyframes_and_leave_the_original) {
    const std::string keys = R"({"a":1,"k":[{"t":0,"s":[1,2,0]},{"t":7.5,"s":[3,4,0]}],"ix":2})";
    const std::string asset = nest_asset("n", shape_layer(1, "A", {{"ks", transform({{"p", keys}})}}));
    const Document document = Document::read(animation(nest_layer(1, "nest", "n", {{"st", "10"}}), asset));
    host::model::Layer& copy = document.main_comp().copy_layer_here(layer_of(comp_of(document, "nest"), "A"));
    copy.set_offset(copy.offset() + layer_of(document, "nest").offset());
    const std::string moved = R"({"a":1,"k":[{"t":10,"s":[1,2,0]},{"t":17.5,"s":[3,4,0]}],"ix":2})";
    EXPECT_EQ(
        document.write(),
        animation(shape_layer(2, "A", {{"ks", transform({{"p", moved}})}, {"st", "10"}, {"ip", "10"}, {"op", "70"}}) +
                      "," + nest_layer(1, "nest", "n", {{"st", "10"}}),
                  asset));
}

}  // namespace
}  // namespace lottie::document::testing
