// Effects: their parameters as hosts number them, what fresh instances look like, layers that parameters name.
#include <gmock/gmock.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

using ::testing::HasSubstr;

std::string parameter(int type, const std::string& name, const std::string& match_name, const std::string& value) {
    return R"({"ty":)" + std::to_string(type) + R"(,"nm":")" + name + R"(","mn":")" + match_name + R"(","ix":1,"v":)" +
           value + "}";
}

std::string effect(const std::string& name, const std::string& match_name, const std::string& parameters,
                   const std::string& more = R"(,"en":1)") {
    return R"({"ty":5,"nm":")" + name + R"(","np":3,"mn":")" + match_name + R"(","ix":1)" + more + R"(,"ef":[)" +
           parameters + "]}";
}

std::string slider(const std::string& value) {
    return effect("Slider", "ADBE Slider Control",
                  parameter(0, "Amount", "ADBE Slider Control-0001", R"({"a":0,"k":)" + value + R"(,"ix":1})"));
}

std::string layer_control(int ind) {
    return effect(
        "Layer", "ADBE Layer Control",
        parameter(10, "Layer", "ADBE Layer Control-0001", R"({"a":0,"k":)" + std::to_string(ind) + R"(,"ix":1})"));
}

std::string with_effects(int ind, const std::string& name, const std::string& effects) {
    return shape_layer(ind, name, {{"ef", "[" + effects + "]"}});
}

TEST(Effects, parameters_are_numbered_behind_the_input_layer) {
    const std::string all = parameter(0, "slider", "m-0001", R"({"a":0,"k":5})") + "," +
                            parameter(2, "colour", "m-0002", R"({"a":0,"k":[1,0.5,0]})") + "," +
                            parameter(3, "point", "m-0003", R"({"a":0,"k":[7,8]})") + "," +
                            parameter(3, "point3", "m-0004", R"({"a":0,"k":[7,8,9]})") + "," +
                            R"({"ty":6,"nm":"group","mn":"m-0005","ix":5,"v":0},{},)" +
                            parameter(7, "menu", "m-0007", R"({"a":0,"k":2})") + "," +
                            R"({"ty":5,"nm":"nested","mn":"m-0008","ix":1,"ef":[)" +
                            parameter(1, "angle", "m-0009", R"({"a":0,"k":90})") + "]}," +
                            parameter(11, "mask", "m-0010", R"({"a":0,"k":1})");
    const Document document = Document::read(animation(with_effects(1, "A", effect("E", "m", all))));
    const host::model::Effect& read = layer_of(document, "A").effect(0);
    using host::model::StreamType;
    const std::vector<StreamType> types = {StreamType::layer_id,      StreamType::one_d,           StreamType::color,
                                           StreamType::two_d_spatial, StreamType::three_d_spatial, StreamType::no_data,
                                           StreamType::no_data,       StreamType::one_d,           StreamType::no_data,
                                           StreamType::one_d,         StreamType::mask_id};
    ASSERT_EQ(read.parameter_count(), types.size());
    for (std::size_t i = 0; i < types.size(); ++i) EXPECT_EQ(read.parameter(i).type(), types[i]) << i;
    EXPECT_EQ(read.parameter(2).data().static_value, (host::model::Value{{1, 0.5, 0, 1}}));
    EXPECT_EQ(read.parameter(9).data().static_value.n[0], 90);
    EXPECT_EQ(read.parameter(9).name(), "angle");
    EXPECT_FALSE(read.parameter(5).can_vary_over_time());
    EXPECT_EQ(read.kind().match_name, "m");
    EXPECT_EQ(read.name(), "E");
}

TEST(Effects, of_one_structure_are_of_one_kind) {
    const Document document = Document::read(animation(with_effects(1, "A", slider("1") + "," + layer_control(0)) +
                                                       "," + with_effects(2, "B", slider("2"))));
    const int key = layer_of(document, "A").effect(0).kind().key;
    EXPECT_EQ(layer_of(document, "B").effect(0).kind().key, key);
    EXPECT_NE(layer_of(document, "A").effect(1).kind().key, key);
}

TEST(Effects, with_what_a_copy_call_by_call_would_miss_are_kinds_of_their_own) {
    const auto tint = [](const std::string& name, const std::string& behind, const std::string& curve) {
        return effect(name, "Tint",
                      parameter(0, "Amount", "Tint-1", R"({"a":0,"k":)" + behind + R"(,"x":"value"})") +
                          R"(,{"ty":9,"nm":"Curve","mn":"Tint-2","ix":2,"v":)" + curve + "}");
    };
    const Document document = Document::read(
        animation(with_effects(1, "A", tint("T", "1", "{}")) + "," +
                  with_effects(2, "B",
                               tint("T", "1", "{}") + "," + tint("T", "2", "{}") + "," + tint("U", "1", "{}") + "," +
                                   tint("T", "1", R"({"c":1})") + "," + tint("T 2", "1", "{}"))));
    const int key = layer_of(document, "A").effect(0).kind().key;
    host::model::Layer& b = layer_of(document, "B");
    EXPECT_EQ(b.effect(0).kind().key, key);
    EXPECT_EQ(b.effect(4).kind().key, key);
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_NE(b.effect(i).kind().key, key) << i;
        EXPECT_EQ(b.effect(i).kind().match_name, "Tint") << i;
    }
    EXPECT_EQ(b.effect(1).kind().parameters[1].default_value.n[0], 2);
}

TEST(Effects, without_match_names_are_told_apart_by_type_and_names) {
    const std::string old = R"({"ty":21,"nm":"Fill","ef":[{"ty":0,"nm":"Opacity","v":{"k":1}}]})";
    const std::string other = R"({"ty":21,"nm":"Fill","ef":[{"ty":0,"nm":"Blend","v":{"k":1}}]})";
    const Document document = Document::read(animation(with_effects(1, "A", old + "," + old + "," + other)));
    host::model::Layer& layer = layer_of(document, "A");
    EXPECT_EQ(layer.effect(0).kind().key, layer.effect(1).kind().key);
    EXPECT_NE(layer.effect(0).kind().key, layer.effect(2).kind().key);
    EXPECT_EQ(layer.effect(0).kind().match_name, "Fill");
    EXPECT_EQ(layer.effect(0).flags(), host::model::kEffectActive);
}

TEST(Effects, a_switch_is_read_and_written) {
    const Document document = Document::read(animation(with_effects(
        1, "A",
        effect("off", "m", "", R"(,"en":0)") + "," + effect("on", "m", "") + "," + effect("silent", "m", "", ""))));
    host::model::Layer& layer = layer_of(document, "A");
    EXPECT_EQ(layer.effect(0).flags(), 0u);
    layer.effect(0).set_flags(host::model::kEffectActive, host::model::kEffectActive);
    layer.effect(1).set_flags(host::model::kEffectActive, 0);
    layer.effect(2).set_flags(host::model::kEffectActive, 0);
    EXPECT_EQ(document.write(),
              animation(with_effects(1, "A",
                                     effect("off", "m", "") + "," + effect("on", "m", "", R"(,"en":0)") + "," +
                                         effect("silent", "m", "", R"(,"en":0)"))));
}

TEST(Effects, a_changed_parameter_leaves_the_other_bytes) {
    const Document document = Document::read(animation(with_effects(1, "A", slider("1.0") + ", " + slider("2.0"))));
    layer_of(document, "A").effect(1).parameter(1).set_static_value({{3, 0, 0, 0}});
    EXPECT_EQ(document.write(), animation(with_effects(1, "A", slider("1.0") + ", " + slider("3"))));
}

TEST(Effects, expressions_of_parameters_are_theirs) {
    const std::string text = animation(
        with_effects(1, "A", effect("E", "m", parameter(0, "P", "m-1", R"({"a":0,"k":1,"ix":1,"x":"time"})"))));
    const Document document = Document::read(text);
    host::model::Stream& stream = layer_of(document, "A").effect(0).parameter(1);
    EXPECT_EQ(stream.data().expression, "time");
    EXPECT_TRUE(layer_of(document, "A").other_streams().empty());
    stream.set_expression("time * 2");
    EXPECT_THAT(document.write(), HasSubstr(R"({"a":0,"k":1,"ix":1,"x":"time * 2"})"));
}

TEST(FreshEffects, are_copies_of_the_first_one_with_their_own_values) {
    const std::string pattern = effect(
        "Tint", "T", parameter(2, "Black", "T-1", R"({"a":0,"k":[0,0,0,1],"ix":1})") + R"(,{},{"ty":6,"nm":"g","v":0})",
        R"(,"en":1,"odd":[1.0])");
    const Document document = Document::read(animation(with_effects(1, "A", pattern) + "," + shape_layer(2, "B")));
    host::model::Layer& b = layer_of(document, "B");
    host::model::Effect& fresh = b.apply_effect(layer_of(document, "A").effect(0).kind().key);
    fresh.parameter(1).set_static_value({{0.5, 0, 0, 1}});
    EXPECT_EQ(
        member(object_named(document.write(), "B"), "ef"),
        "[" +
            effect("Tint", "T",
                   parameter(2, "Black", "T-1", R"({"a":0,"k":[0.5,0,0,1],"ix":1})") + R"(,{},{"ty":6,"nm":"g","v":0})",
                   R"(,"en":1,"odd":[1.0])") +
            "]");
}

TEST(FreshEffects, know_their_place_name_switch_keyframes_and_expression) {
    const Document document =
        Document::read(animation(with_effects(1, "A", slider("1")) + "," +
                                 shape_layer(2, "B", {{"st", "10"}, {"ef", "[" + slider("7") + "]"}})));
    host::model::Layer& b = layer_of(document, "B");
    host::model::Effect& fresh = b.apply_effect(b.effect(0).kind().key);
    fresh.set_flags(host::model::kEffectActive, 0);
    fresh.parameter(1).add_keyframes({{{0}, {{1, 0, 0, 0}}}, {{40'000}, {{2, 0, 0, 0}}}});
    fresh.parameter(1).set_expression("value");
    const std::string all = member(object_named(document.write(), "B"), "ef");
    EXPECT_EQ(all.find("[" + slider("7") + ","), 0u);
    EXPECT_THAT(all, HasSubstr(R"("nm":"Slider 2","np":3,"mn":"ADBE Slider Control","ix":2,"en":0)"));
    EXPECT_THAT(all, HasSubstr(R"("v":{"a":1,"k":[)"));
    EXPECT_THAT(all, HasSubstr(R"("t":10,"s":[1])"));
    EXPECT_THAT(all, HasSubstr(R"("t":20,"s":[2]}],"ix":1,"x":"value"})"));
    const Document again = Document::read(document.write());
    EXPECT_EQ(layer_of(again, "B").effect(1).kind().key, layer_of(again, "B").effect(0).kind().key);
}

TEST(FreshEffects, on_a_new_null_are_written_behind_its_transform) {
    const Document document = Document::read(animation(with_effects(1, "A", slider("5"))));
    host::model::Layer& null = document.main_comp().create_null("N", {});
    null.apply_effect(layer_of(document, "A").effect(0).kind().key).parameter(1).set_static_value({{5, 0, 0, 0}});
    const std::string text = object_named(document.write(), "N");
    EXPECT_EQ(member(text, "ef"), "[" + slider("5") + "]");
    EXPECT_LT(text.find("\"ao\""), text.find("\"ef\""));
    EXPECT_LT(text.find("\"ef\""), text.find("\"ip\""));
}

TEST(LayerParameters, name_layers_by_number_in_the_file_and_by_id_in_the_model) {
    const Document document =
        Document::read(animation(shape_layer(8, "T") + "," + with_effects(3, "A", layer_control(8))));
    const host::model::Stream& stream = layer_of(document, "A").effect(0).parameter(1);
    EXPECT_EQ(stream.type(), host::model::StreamType::layer_id);
    EXPECT_EQ(stream.data().static_value.n[0], layer_of(document, "T").id());
}

TEST(LayerParameters, that_name_masks_are_left_alone) {
    const std::string fill =
        effect("Fill", "ADBE Fill", parameter(10, "Fill Mask", "ADBE Fill-0001", R"({"a":0,"k":1,"ix":1})"));
    const std::string asset = nest_asset("n", shape_layer(1, "T") + "," + with_effects(2, "A", fill));
    const Document document = Document::read(animation(nest_layer(1, "nest", "n"), asset));
    EXPECT_EQ(layer_of(comp_of(document, "nest"), "A").effect(0).parameter(1).type(), host::model::StreamType::mask_id);
    document.main_comp().copy_layer_here(layer_of(comp_of(document, "nest"), "A"));
    EXPECT_THAT(document.write(), HasSubstr("\"layers\":[" + with_effects(2, "A", fill)));
}

TEST(LayerParameters, of_a_copy_lose_the_layer_it_left_behind) {
    const std::string asset = nest_asset("n", shape_layer(1, "T") + "," + with_effects(2, "A", layer_control(1)));
    const Document document = Document::read(animation(nest_layer(1, "nest", "n"), asset));
    document.main_comp().copy_layer_here(layer_of(comp_of(document, "nest"), "A"));
    EXPECT_EQ(document.write(),
              animation(with_effects(2, "A", layer_control(0)) + "," + nest_layer(1, "nest", "n"), asset));
}

TEST(LayerParameters, of_a_copy_follow_its_copied_layer_if_the_rules_say_so) {
    host::model::HostRules rules;
    rules.copies_keep_links_to_present_partners = true;
    const std::string asset = nest_asset("n", shape_layer(1, "T") + "," + with_effects(2, "A", layer_control(1)));
    const Document document = Document::read(animation(nest_layer(1, "nest", "n"), asset), rules);
    host::model::Comp& nest = comp_of(document, "nest");
    document.main_comp().copy_layer_here(layer_of(nest, "T"));
    document.main_comp().copy_layer_here(layer_of(nest, "A"));
    EXPECT_EQ(document.write(), animation(with_effects(2, "A", layer_control(3)) + "," + shape_layer(3, "T") + "," +
                                              nest_layer(1, "nest", "n"),
                                          asset));
}

TEST(LayerParameters, of_a_deleted_layer_name_none) {
    const Document document =
        Document::read(animation(shape_layer(8, "T") + "," + with_effects(3, "A", layer_control(8)) + "," +
                                 with_effects(4, "B", layer_control(3))));
    layer_of(document, "T").remove();
    EXPECT_EQ(document.write(),
              animation(with_effects(3, "A", layer_control(0)) + "," + with_effects(4, "B", layer_control(3))));
}

TEST(LayerParameters, of_fresh_effects_are_written_as_numbers) {
    const Document document =
        Document::read(animation(shape_layer(8, "T") + "," + with_effects(3, "A", layer_control(8))));
    host::model::Layer& null = document.main_comp().create_null("N", {});
    host::model::Effect& fresh = null.apply_effect(layer_of(document, "A").effect(0).kind().key);
    EXPECT_EQ(fresh.parameter(1).data().static_value.n[0], 0);
    fresh.parameter(1).set_static_value({{static_cast<double>(null.id()), 0, 0, 0}});
    EXPECT_EQ(member(object_named(document.write(), "N"), "ef"), "[" + layer_control(9) + "]");
}

}  // namespace
}  // namespace lottie::document::testing
