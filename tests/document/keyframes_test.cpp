// Keyframes: values, eases, tangents, and the forms that files of different ages have for them.
#include <gmock/gmock.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

using host::model::Interpolation;
using host::model::Keyframe;
using host::model::Value;

Document with_property(const std::string& key, const std::string& keys, const std::string& version = "5.7.4") {
    std::string text = animation(shape_layer(1, "A", {{"ks", transform({{key, keyed(keys)}})}}));
    return Document::read(text.replace(text.find("5.7.4"), 5, version));
}

std::string property(const std::string& text, const std::string& key, const std::string& layer = "A") {
    return member(member(object_named(text, layer), "ks"), key);
}

void copy_keyframes(const host::model::Stream& from, host::model::Stream& to) {
    for (std::size_t i = 0; i < from.keyframe_count(); ++i) {
        Keyframe key = from.keyframe(i);
        const std::size_t index = to.insert_keyframe(key.time);
        to.set_keyframe(index, key);
    }
}

// What a null gets when it is made to move like the layer.
std::string copied(const std::string& key, int number, const std::string& keys) {
    const Document document = with_property(key, keys);
    host::model::Layer& null = document.main_comp().create_null("N", {});
    copy_keyframes(layer_of(document, "A").stream(number), null.stream(number));
    return member(property(document.write(), key, "N"), "k");
}

TEST(Keyframes, handles_become_speed_and_influence) {
    const Document document =
        with_property("r", R"({"t":0,"s":[0],"o":{"x":[0.25],"y":[0.5]},"i":{"x":[0.75],"y":[1]}},{"t":30,"s":[90]})");
    const host::model::Stream& rotation = layer_of(document, "A").stream(host::model::kRotation);
    const Keyframe& first = rotation.keyframe(0);
    const Keyframe& second = rotation.keyframe(1);
    EXPECT_EQ(first.out, Interpolation::bezier);
    EXPECT_EQ(second.in, Interpolation::bezier);
    EXPECT_DOUBLE_EQ(first.ease_out[0].influence, 0.25);
    EXPECT_DOUBLE_EQ(first.ease_out[0].speed, 180);  // 0.5 / 0.25 of 90 degrees a second
    EXPECT_DOUBLE_EQ(second.ease_in[0].influence, 0.25);
    EXPECT_DOUBLE_EQ(second.ease_in[0].speed, 0);
}

TEST(Keyframes, spatial_speed_runs_along_the_path) {
    const Document document = with_property(
        "p",
        R"({"t":0,"s":[0,0,0],"o":{"x":0.5,"y":0.5},"i":{"x":0.5,"y":0},"to":[10,0,0],"ti":[-10,0,0]},{"t":30,"s":[30,0,0]})");
    const host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    EXPECT_EQ(position.keyframe(0).tangent_out, (Value{{10, 0, 0, 0}}));
    EXPECT_EQ(position.keyframe(1).tangent_in, (Value{{-10, 0, 0, 0}}));
    EXPECT_NEAR(position.keyframe(0).ease_out[0].speed, 30, 1e-9);
    EXPECT_NEAR(position.keyframe(1).ease_in[0].speed, 60, 1e-9);
}

TEST(Keyframes, diagonal_handles_are_linear_and_h_holds) {
    const Document document = with_property(
        "o",
        R"({"t":0,"s":[0],"o":{"x":[0.167],"y":[0.167]},"i":{"x":[0.833],"y":[0.833]}},{"t":5,"s":[10],"h":1},{"t":9,"s":[20],"h":1})");
    const host::model::Stream& opacity = layer_of(document, "A").stream(host::model::kOpacity);
    EXPECT_EQ(opacity.keyframe(0).out, Interpolation::linear);
    EXPECT_EQ(opacity.keyframe(1).in, Interpolation::linear);
    EXPECT_EQ(opacity.keyframe(1).out, Interpolation::hold);
    EXPECT_EQ(opacity.keyframe(2).out, Interpolation::hold);
    EXPECT_NEAR(opacity.keyframe(0).ease_out[0].influence, 0.167, 1e-12);
}

TEST(Keyframes, each_dimension_has_its_ease_and_a_missing_one_takes_the_first) {
    const Document document = with_property(
        "s", R"({"t":0,"s":[0,0,100],"o":{"x":[0.1,0.2],"y":[0,0]},"i":{"x":0.9,"y":1}},{"t":30,"s":[50,60,100]})");
    const host::model::Stream& scale = layer_of(document, "A").stream(host::model::kScale);
    EXPECT_NEAR(scale.keyframe(0).ease_out[0].influence, 0.1, 1e-12);
    EXPECT_NEAR(scale.keyframe(0).ease_out[1].influence, 0.2, 1e-12);
    EXPECT_NEAR(scale.keyframe(0).ease_out[2].influence, 0.1, 1e-12);
    EXPECT_NEAR(scale.keyframe(1).ease_in[2].influence, 0.1, 1e-12);
}

TEST(Keyframes, old_files_give_the_end_of_a_segment) {
    const Document document = with_property(
        "o", R"({"t":0,"s":[0],"e":[40],"o":{"x":[0.2],"y":[0]},"i":{"x":[0.8],"y":[1]},"n":["0p8_1_0p2_0"]},{"t":10})",
        "4.8.0");
    const host::model::Stream& opacity = layer_of(document, "A").stream(host::model::kOpacity);
    ASSERT_EQ(opacity.keyframe_count(), 2u);
    EXPECT_EQ(opacity.keyframe(1).value.n[0], 40);
}

// Copies through the model come out with the same handles, whatever the values, speeds and times.
TEST(KeyframeCopies, handles_are_reproduced) {
    const std::string x[] = {"0.167", "0.333", "0.667", "0.833", "0.001", "0.999", "1", "0"};
    const std::string y[] = {"0", "1", "0.333", "-0.5", "1.8", "0.001"};
    for (const std::string& ox : x) {
        for (const std::string& oy : y) {
            for (const std::string& ix : x) {
                const std::string& iy = oy;
                const std::string spatial =
                    R"([{"i":{"x":)" + ix + R"(,"y":)" + iy + R"(},"o":{"x":)" + ox + R"(,"y":)" + oy +
                    R"(},"t":3,"s":[13.5,-7,0],"to":[3.333,-1.5,0],"ti":[0.25,0.1,0]},{"t":20.333,"s":[100.1,33.3,0]}])";
                EXPECT_EQ(copied("p", host::model::kPosition, spatial.substr(1, spatial.size() - 2)), spatial);
                const std::string single = R"([{"i":{"x":[)" + ix + R"(],"y":[)" + iy + R"(]},"o":{"x":[)" + ox +
                                           R"(],"y":[)" + oy + R"(]},"t":3,"s":[13.5]},{"t":20.333,"s":[-81.7]}])";
                EXPECT_EQ(copied("r", host::model::kRotation, single.substr(1, single.size() - 2)), single);
            }
        }
    }
}

TEST(KeyframeCopies, handles_are_reproduced_where_nothing_moves) {
    const std::string spatial =
        R"([{"i":{"x":0.667,"y":1},"o":{"x":0.333,"y":0},"t":0,"s":[5,5,0]},{"t":10,"s":[5,5,0]}])";
    EXPECT_EQ(copied("p", host::model::kPosition, spatial.substr(1, spatial.size() - 2)), spatial);
    const std::string scale =
        R"([{"i":{"x":[0.6,0.7,0.8],"y":[1,0.9,0.8]},"o":{"x":[0.3,0.2,0.1],"y":[0,0.1,0.2]},"t":0,"s":[5,6,100]},{"t":10,"s":[7,6,100]}])";
    EXPECT_EQ(copied("s", host::model::kScale, scale.substr(1, scale.size() - 2)), scale);
}

TEST(KeyframeCopies, holds_and_linear_segments_are_reproduced) {
    const std::string keys =
        R"([{"t":0,"s":[5],"h":1},{"i":{"x":[0.833],"y":[0.833]},"o":{"x":[0.167],"y":[0.167]},"t":10,"s":[6]},{"t":12,"s":[7],"h":1}])";
    EXPECT_EQ(copied("o", host::model::kOpacity, keys.substr(1, keys.size() - 2)), keys);
}

TEST(KeyframeCopies, what_does_not_move_stands_still_beside_an_eased_dimension) {
    const Document document = Document::read(animation(shape_layer(1, "A", {{"ks", transform({})}})));
    host::model::Layer& null = document.main_comp().create_null("N", {});
    host::model::Stream& scale = null.stream(host::model::kScale);
    scale.add_keyframes({{host::model::Time{0}, {{10, 20, 100, 0}}}, {host::model::Time{120000}, {{30, 40, 100, 0}}}});
    Keyframe first = scale.keyframe(0);
    first.out = Interpolation::bezier;
    first.ease_out[0] = {50, 0.25};
    scale.set_keyframe(0, first);
    const std::string text = document.write();
    const Document again = Document::read(text);
    for (const int ticks : {20000, 60000, 100000}) {
        EXPECT_DOUBLE_EQ(layer_of(again, "N").stream(host::model::kScale).value_at(host::model::Time{ticks}).n[2], 100)
            << property(text, "s", "N");
    }
}

TEST(KeyframeCopies, a_single_keyframe_is_written_static) {
    const Document document = Document::read(animation(shape_layer(1, "A")));
    host::model::Stream& rotation = layer_of(document, "A").stream(host::model::kRotation);
    rotation.add_keyframes({{{4000}, {{33, 0, 0, 0}}}});
    EXPECT_EQ(property(document.write(), "r"), R"({"a":0,"k":33,"ix":10})");
}

TEST(ChangedKeyframes, one_changed_value_leaves_the_other_bytes) {
    const Document document = with_property(
        "p",
        R"({"t":0.0,"s":[1.0,2,0],"i":{"x":0.6,"y":1},"o":{"x":0.4,"y":0},"to":[0,0,0],"ti":[0,0,0]} ,{"t":1e1,"s":[3,4,0]})");
    host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    Keyframe key = position.keyframe(0);
    key.value.n[1] = 9;
    position.set_keyframe(0, key);
    EXPECT_EQ(
        property(document.write(), "p"),
        R"({"a":1,"k":[{"t":0.0,"s":[1.0,9,0],"i":{"x":0.6,"y":1},"o":{"x":0.4,"y":0},"to":[0,0,0],"ti":[0,0,0]} ,{"t":1e1,"s":[3,4,0]}],"ix":2})");
}

TEST(ChangedKeyframes, a_changed_ease_drops_the_curves_old_name) {
    const Document document = with_property(
        "r", R"({"t":0,"s":[1],"i":{"x":[0.6],"y":[1]},"o":{"x":[0.4],"y":[0]},"n":["0p6_1_0p4_0"]},{"t":10,"s":[3]})");
    host::model::Stream& rotation = layer_of(document, "A").stream(host::model::kRotation);
    Keyframe key = rotation.keyframe(0);
    key.ease_out[0].influence = 0.25;
    rotation.set_keyframe(0, key);
    EXPECT_EQ(
        property(document.write(), "r"),
        R"({"a":1,"k":[{"t":0,"s":[1],"i":{"x":[0.6],"y":[1]},"o":{"x":[0.25],"y":[0]}},{"t":10,"s":[3]}],"ix":2})");
}

TEST(ChangedKeyframes, in_old_files_the_end_follows_the_next_value) {
    const Document document =
        with_property("o", R"({"t":0,"s":[0],"e":[40]},{"t":5,"s":[40],"e":[60]},{"t":10})", "4.8.0");
    host::model::Stream& opacity = layer_of(document, "A").stream(host::model::kOpacity);
    Keyframe middle = opacity.keyframe(1);
    middle.value.n[0] = 50;
    opacity.set_keyframe(1, middle);
    Keyframe last = opacity.keyframe(2);
    last.value.n[0] = 70;
    opacity.set_keyframe(2, last);
    EXPECT_EQ(property(document.write(), "o"),
              R"({"a":1,"k":[{"t":0,"s":[0],"e":[50]},{"t":5,"s":[50],"e":[70]},{"t":10}],"ix":2})");
}

TEST(ChangedKeyframes, in_old_files_the_last_one_needs_no_value_even_if_it_holds) {
    const Document document = with_property("o", R"({"t":0,"s":[0],"e":[40]},{"t":10,"h":1})", "4.8.0");
    host::model::Stream& opacity = layer_of(document, "A").stream(host::model::kOpacity);
    Keyframe first = opacity.keyframe(0);
    first.value.n[0] = 5;
    opacity.set_keyframe(0, first);
    EXPECT_EQ(property(document.write(), "o"), R"({"a":1,"k":[{"t":0,"s":[5],"e":[40]},{"t":10,"h":1}],"ix":2})");
}

TEST(ChangedKeyframes, a_segment_that_ends_elsewhere_than_the_next_begins_stays) {
    const Document document =
        with_property("o", R"({"t":0,"s":[0],"e":[40]},{"t":5,"s":[10],"e":[60]},{"t":10})", "4.8.0");
    host::model::Stream& opacity = layer_of(document, "A").stream(host::model::kOpacity);
    Keyframe last = opacity.keyframe(2);
    last.value.n[0] = 70;
    opacity.set_keyframe(2, last);
    EXPECT_EQ(property(document.write(), "o"),
              R"({"a":1,"k":[{"t":0,"s":[0],"e":[40]},{"t":5,"s":[10],"e":[70]},{"t":10}],"ix":2})");
}

TEST(ChangedKeyframes, a_new_one_between_others_is_written_in_its_place) {
    const Document document = with_property("o", R"({"t":0,"s":[0]}, {"t":10,"s":[10]}, {"t":20.0,"s":[20]})");
    host::model::Stream& opacity = layer_of(document, "A").stream(host::model::kOpacity);
    opacity.add_keyframes({{{60'000}, {{99, 0, 0, 0}}}});
    const Document again = Document::read(document.write());
    const host::model::Stream& read = layer_of(again, "A").stream(host::model::kOpacity);
    ASSERT_EQ(read.keyframe_count(), 4u);
    EXPECT_EQ(read.keyframe(2).time, (host::model::Time{60'000}));
    EXPECT_EQ(read.keyframe(2).value.n[0], 99);
    EXPECT_THAT(document.write(), ::testing::HasSubstr(R"([{"t":0,"s":[0]}, {)"));
    EXPECT_THAT(document.write(), ::testing::HasSubstr(R"(}, {"t":20.0,"s":[20]}])"));
}

TEST(ChangedKeyframes, static_becomes_animated_and_animated_becomes_static) {
    const Document to_keys = Document::read(animation(shape_layer(1, "A")));
    layer_of(to_keys, "A")
        .stream(host::model::kRotation)
        .add_keyframes({{{0}, {{1, 0, 0, 0}}}, {{40'000}, {{2, 0, 0, 0}}}});
    EXPECT_EQ(
        property(to_keys.write(), "r"),
        R"({"a":1,"k":[{"i":{"x":[0.833333333],"y":[0.833333333]},"o":{"x":[0.166666667],"y":[0.166666667]},"t":0,"s":[1]},{"t":10,"s":[2]}],"ix":10})");
    const Document to_static = with_property("r", R"({"t":0,"s":[1]},{"t":10,"s":[3]})");
    layer_of(to_static, "A").stream(host::model::kRotation).replace({{5, 0, 0, 0}}, {});
    EXPECT_EQ(property(to_static.write(), "r"), R"({"a":0,"k":5,"ix":2})");
}

TEST(NewKeyframes, of_old_files_carry_their_end_if_the_others_do) {
    const auto null_opacity = [](const std::string& version, const std::string& old_keys) {
        const Document document = with_property("r", old_keys, version);
        host::model::Layer& null = document.main_comp().create_null("N", {});
        null.stream(host::model::kOpacity).add_keyframes({{{0}, {{1, 0, 0, 0}}}, {{40'000}, {{2, 0, 0, 0}}}});
        return member(property(document.write(), "o", "N"), "k");
    };
    const std::string ease = R"("i":{"x":[0.833333333],"y":[0.833333333]},"o":{"x":[0.166666667],"y":[0.166666667]},)";
    const std::string with_ends = R"({"t":0,"s":[1],"e":[3]},{"t":10})";
    const std::string without_ends = R"({"t":0,"s":[1]},{"t":10,"s":[3]})";
    EXPECT_EQ(null_opacity("4.8.0", with_ends), "[{" + ease + R"("t":0,"s":[1],"e":[2]},{"t":10,"s":[2]}])");
    EXPECT_EQ(null_opacity("4.8.0", without_ends), "[{" + ease + R"("t":0,"s":[1]},{"t":10,"s":[2]}])");
    EXPECT_EQ(null_opacity("5.1.0", with_ends), "[{" + ease + R"("t":0,"s":[1]},{"t":10,"s":[2]}])");
}

TEST(NewKeyframes, of_a_layer_that_starts_later_are_written_in_composition_time) {
    const Document document = Document::read(animation(shape_layer(1, "A", {{"st", "10"}})));
    layer_of(document, "A")
        .stream(host::model::kOpacity)
        .add_keyframes({{{0}, {{1, 0, 0, 0}}}, {{40'000}, {{2, 0, 0, 0}}}});
    const std::string keys = member(property(document.write(), "o"), "k");
    EXPECT_THAT(keys, ::testing::HasSubstr("\"t\":10,"));
    EXPECT_THAT(keys, ::testing::HasSubstr("\"t\":20,"));
}

TEST(ChangedKeyframes, of_a_moved_layer_are_written_at_their_new_times) {
    const Document document = with_property("o", R"({"t":0,"s":[0]},{"t":10,"s":[10]})");
    host::model::Layer& layer = layer_of(document, "A");
    layer.set_offset({20'000});
    host::model::Stream& opacity = layer.stream(host::model::kOpacity);
    Keyframe key = opacity.keyframe(1);
    key.value.n[0] = 11;
    opacity.set_keyframe(1, key);
    EXPECT_EQ(property(document.write(), "o"), R"({"a":1,"k":[{"t":5,"s":[0]},{"t":15,"s":[11]}],"ix":2})");
}

}  // namespace
}  // namespace lottie::document::testing
