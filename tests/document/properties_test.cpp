// Static properties and expressions, in both directions.
#include <gmock/gmock.h>

#include <functional>

#include "animation_text.h"
#include "model/error.h"

namespace lottie::document::testing {
namespace {

using host::model::Value;
using ::testing::HasSubstr;

host::model::Value read(const std::string& key, const std::string& property, int number, const Members& members = {}) {
    Members all = members;
    all["ks"] = transform({{key, property}});
    const Document document = Document::read(animation(shape_layer(1, "A", all)));
    return layer_of(document, "A").stream(number).data().static_value;
}

// The property after its static value was set.
std::string written(const std::string& key, const std::string& property, int number, const Value& value) {
    const Document document = Document::read(animation(shape_layer(1, "A", {{"ks", transform({{key, property}})}})));
    layer_of(document, "A").stream(number).set_static_value(value);
    return member(member(object_named(document.write(), "A"), "ks"), key);
}

TEST(StaticProperties, the_transform_is_read_in_its_units) {
    const Document document = Document::read(animation(
        shape_layer(1, "A", {{"ks", transform({{"r", R"({"a":0,"k":-45})"}, {"o", R"({"a":0,"k":[50]})"}})}})));
    host::model::Layer& layer = layer_of(document, "A");
    EXPECT_EQ(layer.stream(host::model::kPosition).data().static_value, (Value{{10, 20, 0, 0}}));
    EXPECT_EQ(layer.stream(host::model::kAnchorPoint).data().static_value, (Value{{1, 2, 0, 0}}));
    EXPECT_EQ(layer.stream(host::model::kScale).data().static_value, (Value{{100, 100, 100, 0}}));
    EXPECT_EQ(layer.stream(host::model::kRotation).data().static_value.n[0], -45);
    EXPECT_EQ(layer.stream(host::model::kOpacity).data().static_value.n[0], 50);
}

TEST(StaticProperties, missing_ones_have_their_defaults) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"ks", "{}"}}) + "," + shape_layer(2, "B", {{"ks", ""}})));
    for (const char* name : {"A", "B"}) {
        EXPECT_EQ(layer_of(document, name).stream(host::model::kScale).data().static_value.n[1], 100);
        EXPECT_EQ(layer_of(document, name).stream(host::model::kOpacity).data().static_value.n[0], 100);
        EXPECT_EQ(layer_of(document, name).stream(host::model::kPosition).data().static_value, Value{});
    }
}

TEST(StaticProperties, the_form_decides_whether_they_are_animated_not_the_flag) {
    EXPECT_EQ(read("p", R"({"k":[3,4]})", host::model::kPosition), (Value{{3, 4, 0, 0}}));
    EXPECT_EQ(read("p", R"({"a":1,"k":[3,4,5]})", host::model::kPosition), (Value{{3, 4, 5, 0}}));
    EXPECT_EQ(read("s", R"({"k":[3,4]})", host::model::kScale), (Value{{3, 4, 100, 0}}));
    EXPECT_EQ(read("o", R"({"sid":"slot"})", host::model::kOpacity), (Value{{100, 0, 0, 0}}));
}

TEST(StaticProperties, values_keep_as_many_numbers_as_they_had) {
    EXPECT_EQ(written("p", R"({"a":0,"k":[1,2],"ix":2})", host::model::kPosition, {{3, 4, 0, 0}}),
              R"({"a":0,"k":[3,4],"ix":2})");
    EXPECT_EQ(written("p", R"({"a":0,"k":[1,2,0],"ix":2})", host::model::kPosition, {{3, 4, 0, 0}}),
              R"({"a":0,"k":[3,4,0],"ix":2})");
    EXPECT_EQ(written("p", R"({"a":0,"k":[1,2]})", host::model::kPosition, {{3, 4, 5, 0}}), R"({"a":0,"k":[3,4,5]})");
    EXPECT_EQ(written("s", R"({"k":[1,2]})", host::model::kScale, {{3, 4, 100, 0}}), R"({"k":[3,4]})");
    EXPECT_EQ(written("o", R"({"a":0,"k":[5]})", host::model::kOpacity, {{6, 0, 0, 0}}), R"({"a":0,"k":[6]})");
    EXPECT_EQ(written("o", R"({"a":0,"k":5})", host::model::kOpacity, {{6, 0, 0, 0}}), R"({"a":0,"k":6})");
}

TEST(StaticProperties, numbers_that_did_not_change_keep_their_spelling) {
    EXPECT_EQ(written("p", R"({"a":0,"k":[1.50, 2e0,0]})", host::model::kPosition, {{1.5, 3, 0, 0}}),
              R"({"a":0,"k":[1.50,3,0]})");
}

TEST(StaticProperties, numbers_are_written_short_and_without_exponents_in_the_usual_range) {
    EXPECT_EQ(written("p", R"({"a":0,"k":[1,2,0]})", host::model::kPosition, {{0.1, 100000, -2.5, 0}}),
              R"({"a":0,"k":[0.1,100000,-2.5]})");
    EXPECT_EQ(written("p", R"({"a":0,"k":[1,2,0]})", host::model::kPosition, {{1.0 / 3, -0.0, 1e20, 0}}),
              R"({"a":0,"k":[0.3333333333333333,0,1e+20]})");
}

TEST(StaticProperties, a_missing_one_that_is_set_goes_where_exporters_write_it) {
    const Document document =
        Document::read(animation(shape_layer(1, "A", {{"ks", R"({"o":{"a":0,"k":100},"p":{"a":0,"k":[1,2,0]}})"}})));
    layer_of(document, "A").stream(host::model::kRotation).set_static_value({{7, 0, 0, 0}});
    layer_of(document, "A").stream(host::model::kScale).set_static_value({{50, 50, 100, 0}});
    EXPECT_EQ(
        member(object_named(document.write(), "A"), "ks"),
        R"({"o":{"a":0,"k":100},"r":{"a":0,"k":7,"ix":10},"p":{"a":0,"k":[1,2,0]},"s":{"a":0,"k":[50,50,100],"ix":6,"l":2}})");
}

TEST(StaticProperties, a_layer_without_transform_gets_one_with_what_was_set) {
    const Document document = Document::read(animation(shape_layer(1, "A", {{"ks", ""}})));
    layer_of(document, "A").stream(host::model::kOpacity).set_static_value({{50, 0, 0, 0}});
    EXPECT_EQ(document.write(), animation(shape_layer(1, "A", {{"ks", R"({"o":{"a":0,"k":50,"ix":11}})"}})));
}

TEST(StaticProperties, audio_levels_and_zoom_are_streams) {
    const Document document = Document::read(
        animation(shape_layer(1, "sound", {{"ty", "6"}, {"ks", ""}, {"au", R"({"lv":{"a":0,"k":[-3,-4]}})"}}) + "," +
                  shape_layer(2, "camera", {{"ty", "13"}, {"pe", R"({"a":0,"k":850})"}})));
    host::model::Stream& levels = layer_of(document, "sound").stream(host::model::kAudioLevels);
    EXPECT_EQ(levels.data().static_value, (Value{{-3, -4, 0, 0}}));
    levels.set_static_value({{-3, -5, 0, 0}});
    host::model::Stream& zoom = layer_of(document, "camera").stream(11);
    EXPECT_EQ(zoom.data().static_value.n[0], 850);
    zoom.set_static_value({{900, 0, 0, 0}});
    EXPECT_EQ(member(object_named(document.write(), "sound"), "au"), R"({"lv":{"a":0,"k":[-3,-5]}})");
    EXPECT_EQ(member(object_named(document.write(), "camera"), "pe"), R"({"a":0,"k":900})");
}

TEST(StaticProperties, the_model_and_the_file_agree_on_every_streams_type) {
    const std::string vector = R"({"a":0,"k":[1,2,3]})";
    const std::string single = R"({"a":0,"k":4})";
    const Document document = Document::read(animation(shape_layer(
        1, "A",
        {{"ddd", "1"},
         {"ks", R"({"o":)" + single + R"(,"rx":)" + single + R"(,"ry":)" + single + R"(,"rz":)" + single + R"(,"or":)" +
                    vector + R"(,"p":)" + vector + R"(,"a":)" + vector + R"(,"s":)" + vector + "}"}})));
    host::model::Layer& layer = layer_of(document, "A");
    for (const int number : {host::model::kPosition + 0, host::model::kAnchorPoint + 0, host::model::kScale + 0,
                             host::model::kOrientation + 0}) {
        EXPECT_EQ(host::model::value_dimensions(layer.stream(number).type()), 3) << number;
        EXPECT_EQ(layer.stream(number).data().static_value, (Value{{1, 2, 3, 0}})) << number;
    }
    for (const int number : {host::model::kOpacity + 0, host::model::kRotation + 0, host::model::kRotateX + 0,
                             host::model::kRotateY + 0}) {
        EXPECT_EQ(host::model::value_dimensions(layer.stream(number).type()), 1) << number;
        EXPECT_EQ(layer.stream(number).data().static_value.n[0], 4) << number;
    }
}

TEST(StaticProperties, faults_deep_in_a_layer_are_reported_with_their_place) {
    const auto fault = [](const std::string& position) -> std::string {
        const Document document = Document::read(
            animation(shape_layer(1, "B") + "," + shape_layer(2, "A", {{"ks", transform({{"p", position}})}})));
        try {
            layer_of(document, "A").stream(host::model::kPosition);
        } catch (const host::model::Error& error) {
            EXPECT_EQ(document.write().size(), document.write().size());
            return error.what();
        }
        return "";
    };
    EXPECT_THAT(fault(R"({"a":1,"k":[{"s":[1]}]})"), HasSubstr("/layers/1/ks/p/k/0"));
    EXPECT_THAT(fault(R"({"a":1,"k":[{"t":"0","s":[1]}]})"), HasSubstr("/layers/1/ks/p/k/0"));
    EXPECT_THAT(fault(R"({"a":1,"k":[{"t":0,"s":"x"},{"t":1}]})"), HasSubstr("/layers/1/ks/p/k/0/s"));
    EXPECT_THAT(fault(R"({"a":1,"k":[1,"x"]})"), HasSubstr("/layers/1/ks/p/k/0"));
    EXPECT_THAT(fault(R"({"a":1,"k":[{"t":0,"s":[1],"o":1,"i":2},{"t":1}]})"), HasSubstr("/layers/1/ks/p/k/0/o"));
}

TEST(Expressions, a_text_beside_the_value_is_one_and_it_is_on) {
    const Document document = Document::read(animation(shape_layer(
        1, "A",
        {{"ks", transform({{"p", R"({"a":0,"k":[1,2,0],"ix":2,"x":"var $bm_rt;\n$bm_rt = \"\u00fc\";"})"}})}})));
    const host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    EXPECT_EQ(position.data().expression, "var $bm_rt;\n$bm_rt = \"\xC3\xBC\";");
    EXPECT_TRUE(position.data().expression_enabled);
    EXPECT_EQ(position.data().static_value.n[1], 2);
}

TEST(Expressions, changed_text_replaces_the_old_and_keeps_the_rest) {
    const Document document = Document::read(
        animation(shape_layer(1, "A", {{"ks", transform({{"p", R"({"a":0,"k":[1.0,2,0],"x":"old","ix":2})"}})}})));
    layer_of(document, "A").stream(host::model::kPosition).set_expression("seedRandom(3);\n\nvalue + \"\\\"");
    EXPECT_EQ(member(member(object_named(document.write(), "A"), "ks"), "p"),
              R"({"a":0,"k":[1.0,2,0],"x":"seedRandom(3);\n\nvalue + \"\\\"","ix":2})");
}

TEST(Expressions, a_new_one_goes_behind_the_other_members) {
    EXPECT_EQ(
        [] {
            const Document document = Document::read(animation(shape_layer(1, "A")));
            layer_of(document, "A").stream(host::model::kPosition).set_expression("value");
            return member(member(object_named(document.write(), "A"), "ks"), "p");
        }(),
        R"({"a":0,"k":[10,20,0],"ix":2,"x":"value"})");
}

TEST(Expressions, one_that_is_removed_or_switched_off_is_not_written) {
    const std::string with =
        shape_layer(1, "A", {{"ks", transform({{"p", R"({"a":0,"k":[10,20,0],"ix":2,"x":"value"})"}})}});
    const Document removed = Document::read(animation(with));
    layer_of(removed, "A").stream(host::model::kPosition).set_expression("");
    EXPECT_EQ(removed.write(), animation(shape_layer(1, "A")));
    const Document disabled = Document::read(animation(with));
    layer_of(disabled, "A").stream(host::model::kPosition).set_expression_state(false);
    EXPECT_EQ(disabled.write(), animation(shape_layer(1, "A")));
}

TEST(Expressions, a_broken_one_stays) {
    const std::string text = animation(shape_layer(
        1, "A",
        {{"ks",
          transform({{"p", R"({"a":0,"k":[10,20,0],"ix":2,"x":"thisComp.layer('gone').transform.position"})"}})}}));
    const Document document = Document::read(text);
    EXPECT_TRUE(layer_of(document, "A").stream(host::model::kPosition).is_expression_broken());
    layer_of(document, "A").rename("B");
    EXPECT_THAT(document.write(), HasSubstr("thisComp.layer('gone')"));
}

TEST(Expressions, those_in_shapes_masks_and_text_follow_a_renamed_layer) {
    const std::string x = R"("x":"thisComp.layer('A').opacity")";
    const Document document = Document::read(animation(
        shape_layer(1, "A") + "," +
        shape_layer(2, "B",
                    {{"shapes", R"([{"ty":"gr","it":[{"ty":"fl","o":{"a":0,"k":5,)" + x + R"(}}]}])"},
                     {"hasMask", "true"},
                     {"masksProperties", R"([{"mode":"a","o":{"a":0,"k":1,)" + x + R"(},"a~/b":{"k":1,)" + x + "}}]"},
                     {"t", R"({"d":{"k":[{"s":{"t":"hi"},"t":0}],)" + x + "}}"}})));
    layer_of(document, "A").rename("New");
    const std::string text = document.write();
    EXPECT_THAT(text, ::testing::Not(HasSubstr("layer('A')")));
    std::size_t count = 0;
    for (std::size_t at = text.find("thisComp.layer('New')"); at != std::string::npos;
         at = text.find("thisComp.layer('New')", at + 1))
        ++count;
    EXPECT_EQ(count, 4u);
    EXPECT_EQ(layer_of(Document::read(text), "B").expression_streams().size(),
              layer_of(document, "B").expression_streams().size());
}

TEST(SeparatedPositions, static_ones_are_one_value_and_keep_their_bytes) {
    const std::string position = R"({"s":true,"x":{"a":0,"k":3},"y":{"a":0,"k":[4]},"z":{"a":0,"k":5}})";
    const std::string text = animation(shape_layer(1, "A", {{"ks", transform({{"p", position}})}}));
    const Document document = Document::read(text);
    EXPECT_EQ(layer_of(document, "A").stream(host::model::kPosition).data().static_value, (Value{{3, 4, 5, 0}}));
    EXPECT_FALSE(layer_of(document, "A").stream(host::model::kPosition).is_separated());
    EXPECT_EQ(document.write(), text);
    layer_of(document, "A").stream(host::model::kPosition).set_static_value({{6, 7, 8, 0}});
    EXPECT_EQ(member(member(object_named(document.write(), "A"), "ks"), "p"), R"({"a":0,"k":[6,7,8],"ix":2,"l":2})");
}

TEST(SeparatedPositions, dimensions_that_move_alike_are_one_motion) {
    const std::string ease = R"("o":{"x":[0.4],"y":[0]},"i":{"x":[0.6],"y":[1]})";
    const std::string dimension = R"({"a":1,"k":[{"t":0,"s":[0],)" + ease + R"(},{"t":20,"s":[)";
    const Document document = Document::read(animation(shape_layer(
        1, "A",
        {{"ks", transform({{"p", R"({"s":true,"x":)" + dimension + R"(30]}]},"y":)" + dimension + R"(40]}]}})"}})}})));
    const host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    ASSERT_EQ(position.keyframe_count(), 2u);
    EXPECT_EQ(position.keyframe(1).value, (Value{{30, 40, 0, 0}}));
    EXPECT_NEAR(position.keyframe(0).ease_out[0].influence, 0.4, 1e-12);
    EXPECT_NEAR(position.value_at({40'000}).n[0], 15, 1e-6);
    EXPECT_NEAR(position.value_at({40'000}).n[1], 20, 1e-6);
}

TEST(SeparatedPositions, dimensions_that_move_apart_are_sampled_at_every_frame) {
    const Document document = Document::read(animation(
        shape_layer(1, "A", {{"ks", transform({{"p", R"({"s":true,"x":{"a":1,"k":[{"t":0,"s":[0]},{"t":10,"s":[100]}]},
                                        "y":{"a":1,"k":[{"t":2.5,"s":[7],"h":1},{"t":5,"s":[9]}]}})"}})}})));
    const host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    ASSERT_EQ(position.keyframe_count(), 12u);  // frames 0 to 10 and 2.5
    EXPECT_NEAR(position.value_at({2 * 4000}).n[0], 20, 1e-9);
    EXPECT_EQ(position.value_at({2 * 4000}).n[1], 7);
    EXPECT_EQ(position.value_at({5 * 4000}).n[1], 9);
}

// Layer B's first dimension is computed from layer A.
const std::string kOneFollowsAnother = animation(
    shape_layer(1, "A") + "," +
    shape_layer(
        2, "B",
        {{"ks",
          transform({{"p", R"({"s":true,"x":{"a":0,"k":3,"x":"thisComp.layer('A').index"},"y":{"a":0,"k":4}})"}})}}));

TEST(SeparatedPositions, an_expression_on_one_dimension_is_kept_and_followed) {
    const Document document = Document::read(kOneFollowsAnother);
    layer_of(document, "A").rename("N");
    EXPECT_THAT(object_named(document.write(), "B"), HasSubstr("thisComp.layer('N').index"));
}

std::string moved_position(const std::string& position, const std::function<void(host::model::Stream&)>& change) {
    const Document document = Document::read(animation(shape_layer(1, "A", {{"ks", transform({{"p", position}})}})));
    change(layer_of(document, "A").stream(host::model::kPosition));
    return member(member(object_named(document.write(), "A"), "ks"), "p");
}

TEST(SeparatedPositions, one_with_an_expression_stays_separated_when_it_moves) {
    const auto move = [](host::model::Stream& position) { position.set_static_value({{13, 14, 0, 0}}); };
    EXPECT_EQ(moved_position(R"({"s":true,"x":{"a":0,"k":3,"ix":3,"x":"time*2"},"y":{"a":0,"k":4,"ix":4}})", move),
              R"({"s":true,"x":{"a":0,"k":13,"ix":3,"x":"time*2"},"y":{"a":0,"k":14,"ix":4}})");
    const auto lift = [](host::model::Stream& position) { position.set_static_value({{3, 4, 5, 0}}); };
    EXPECT_EQ(moved_position(R"({"s":true,"x":{"a":0,"k":3},"y":{"a":0,"k":4,"x":"time"}})", lift),
              R"({"s":true,"x":{"a":0,"k":3},"y":{"a":0,"k":4,"x":"time"},"z":{"a":0,"k":5,"ix":5}})");
}

TEST(SeparatedPositions, keyframes_of_one_with_an_expression_move_dimension_by_dimension) {
    const auto move = [](host::model::Stream& position) {
        for (std::size_t i = 0; i < position.keyframe_count(); ++i) {
            host::model::Keyframe key = position.keyframe(i);
            key.value.n[0] += 10;
            key.value.n[1] += 20;
            position.set_keyframe(i, key);
        }
    };
    const std::string ease = R"("o":{"x":[0.4],"y":[0.1]},"i":{"x":[0.6],"y":[1]},)";
    const auto keys = [&](const std::string& from, const std::string& to) {
        return R"({"a":1,"k":[{)" + ease + R"("t":0,"s":[)" + from + R"(]},{"t":20,"s":[)" + to + "]}]";
    };
    EXPECT_EQ(moved_position(R"({"s":true,"x":)" + keys("0", "30") + R"(},"y":)" + keys("0", "40") +
                                 R"(,"x":"time+1"},"z":{"a":0,"k":7}})",
                             move),
              R"({"s":true,"x":)" + keys("10", "40") + R"(},"y":)" + keys("20", "60") +
                  R"(,"x":"time+1"},"z":{"a":0,"k":7}})");
}

TEST(SeparatedPositions, an_expression_is_followed_and_moved_in_one_run) {
    const Document document = Document::read(kOneFollowsAnother);
    layer_of(document, "B").stream(host::model::kPosition).set_static_value({{30, 4, 0, 0}});
    layer_of(document, "A").rename("N");
    EXPECT_EQ(member(member(object_named(document.write(), "B"), "ks"), "p"),
              R"({"s":true,"x":{"a":0,"k":30,"x":"thisComp.layer('N').index"},"y":{"a":0,"k":4}})");
}

std::string slotted(const std::string& position, const std::string& slot) {
    std::string text = animation(shape_layer(1, "A", {{"ks", transform({{"p", position}})}}));
    text.insert(1, R"("slots":{"place":{"p":)" + slot + "}},");
    return text;
}

TEST(Slots, the_value_is_the_slots) {
    const std::string text = slotted(R"({"a":0,"k":[1,2,0],"sid":"place"})", R"({"a":0,"k":[30,40,0]})");
    const Document document = Document::read(text);
    EXPECT_EQ(layer_of(document, "A").stream(host::model::kPosition).data().static_value, (Value{{30, 40, 0, 0}}));
    EXPECT_EQ(document.write(), text);
}

TEST(Slots, the_keyframes_are_the_slots) {
    const Document document = Document::read(
        slotted(R"({"sid":"place"})", R"({"a":1,"k":[{"t":0,"s":[0,0]},{"t":10,"s":[5,6]}],"x":"loopOut()+1"})"));
    const host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    ASSERT_EQ(position.keyframe_count(), 2u);
    EXPECT_EQ(position.keyframe(1).value, (Value{{5, 6, 0, 0}}));
    EXPECT_EQ(position.data().expression, "loopOut()+1");
}

TEST(Slots, an_unknown_one_leaves_the_property_its_own_value) {
    const Document document =
        Document::read(slotted(R"({"a":0,"k":[1,2,0],"sid":"other"})", R"({"a":0,"k":[30,40,0]})"));
    EXPECT_EQ(layer_of(document, "A").stream(host::model::kPosition).data().static_value, (Value{{1, 2, 0, 0}}));
}

TEST(Slots, a_property_that_moves_lets_go_of_its_slot) {
    const Document document =
        Document::read(slotted(R"({"a":0,"k":[1,2,0],"ix":2,"sid":"place"})", R"({"a":0,"k":[30,40,0]})"));
    layer_of(document, "A").stream(host::model::kPosition).set_static_value({{1, 2, 0, 0}});
    EXPECT_EQ(member(member(object_named(document.write(), "A"), "ks"), "p"), R"({"a":0,"k":[1,2,0],"ix":2})");
    EXPECT_EQ(layer_of(Document::read(document.write()), "A").stream(host::model::kPosition).data().static_value,
              (Value{{1, 2, 0, 0}}));
}

TEST(Slots, keyframes_that_change_become_the_propertys_own) {
    const Document document = Document::read(
        slotted(R"({"a":0,"k":[1,2,0],"sid":"place"})", R"({"a":1,"k":[{"t":0,"s":[0,0]},{"t":10,"s":[5,6]}]})"));
    host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    host::model::Keyframe key = position.keyframe(1);
    key.value.n[0] = 8;
    position.set_keyframe(1, key);
    const std::string property = member(member(object_named(document.write(), "A"), "ks"), "p");
    EXPECT_THAT(property, HasSubstr(R"("a":1,"k":[{)"));
    EXPECT_THAT(property, HasSubstr(R"("t":10,"s":[8,6,0])"));
    EXPECT_THAT(property, ::testing::Not(HasSubstr("sid")));
}

}  // namespace
}  // namespace lottie::document::testing
