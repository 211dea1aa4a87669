// Keyframe times travel with their layer; their spelling stays as short as it can.
#include <gtest/gtest.h>

#include <algorithm>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

std::string position_keys(const std::string& text, const std::string& layer = "A") {
    return member(member(member(object_named(text, layer), "ks"), "p"), "k");
}

std::string two_keys(const std::string& first, const std::string& second) {
    return R"({"t":)" + first + R"(,"s":[1,2,0]},{"t":)" + second + R"(,"s":[3,4,0]})";
}

Document moved(const std::string& first, const std::string& second, std::int64_t ticks,
               const std::string& frame_rate = "30") {
    Document document = Document::read(
        animation(shape_layer(1, "A", {{"ks", transform({{"p", keyed(two_keys(first, second))}})}}), "", frame_rate));
    layer_of(document, "A").set_offset({ticks});
    return document;
}

TEST(KeyframeTimes, are_relative_to_the_layers_start) {
    const Document document = Document::read(
        animation(shape_layer(1, "A", {{"st", "10"}, {"ks", transform({{"p", keyed(two_keys("5", "15.5"))}})}})));
    const host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    EXPECT_EQ(position.keyframe(0).time, (host::model::Time{-20'000}));
    EXPECT_EQ(position.keyframe(1).time, (host::model::Time{22'000}));
}

TEST(KeyframeTimes, move_with_the_layer_and_nothing_else_in_it_changes) {
    EXPECT_EQ(position_keys(moved("0", "15.5", 40'000).write()), "[" + two_keys("10", "25.5") + "]");
    EXPECT_EQ(position_keys(moved("-5", "15.333", 4'000).write()), "[" + two_keys("-4", "16.333") + "]");
}

TEST(KeyframeTimes, stay_whole_frames_at_rates_without_whole_ticks) {
    for (const char* rate : {"29.9700012207031", "23.9759979248047", "59.9700012207031"}) {
        for (int shift = 1; shift < 400; shift += 7) {
            const std::string frames = std::to_string(shift);
            const Document document = Document::read(
                animation(shape_layer(1, "A", {{"ks", transform({{"p", keyed(two_keys("101", "203.25"))}})}}) + "," +
                              shape_layer(2, "B", {{"st", frames}}),
                          "", rate));
            layer_of(document, "A").set_offset(layer_of(document, "B").offset());
            EXPECT_EQ(position_keys(document.write()),
                      "[" + two_keys(std::to_string(101 + shift), std::to_string(203 + shift) + ".25") + "]");
            EXPECT_EQ(member(object_named(document.write(), "A"), "op"), std::to_string(60 + shift));
        }
    }
}

TEST(KeyframeTimes, move_wherever_they_stand_in_the_layer) {
    const auto all = [](const std::string& t) {
        const std::string keys = R"({"a":1,"k":[{"t":)" + t + R"(,"s":[1]},{"t":30,"s":[2]}]})";
        const std::string keys30 =
            R"({"a":1,"k":[{"t":)" + t + R"(,"s":[1]},{"t":)" + std::to_string(30 + std::stoi(t)) + R"(,"s":[2]}]})";
        const std::string& k = t == "0" ? keys : keys30;
        return Members{
            {"ks", transform({{"o", k}})},
            {"masksProperties", R"([{"mode":"a","pt":)" + k + R"(,"o":)" + k + "}]"},
            {"ef", R"([{"ty":5,"nm":"E","ef":[{"ty":0,"nm":"P","v":)" + k + "}]}]"},
            {"shapes", R"([{"ty":"gf","g":{"p":3,"k":)" + k + R"(}},{"ty":"gr","it":[{"ty":"tr","r":)" + k + "}]}]"},
            {"sy", R"([{"ty":1,"c":)" + k + "}]"},
            {"t",
             R"({"d":)" +
                 std::string(t == "0" ? R"({"k":[{"s":{"t":"text"},"t":0}]})" : R"({"k":[{"s":{"t":"text"},"t":7}]})") +
                 R"(,"a":[{"s":{"t":0},"a":{"o":)" + k + "}}]}"}};
    };
    Members after = all("7");
    after["st"] = "7";
    after["ip"] = "7";
    after["op"] = "67";
    const Document document = Document::read(animation(shape_layer(1, "A", all("0"))));
    layer_of(document, "A").set_offset({28'000});
    EXPECT_EQ(document.write(), animation(shape_layer(1, "A", after)));
}

TEST(KeyframeTimes, move_though_their_keys_are_spelled_with_escapes) {
    const auto with_key_at = [](const char* frame) {
        return Members{
            {"shapes", std::string(R"([{"ty":"fl","o":{"a":1,"k":[{"\u0074":)") + frame + R"(,"s":[1]}]}}])"}};
    };
    Members after = with_key_at("7");
    after["st"] = "7";
    after["ip"] = "7";
    after["op"] = "67";
    const Document document = Document::read(animation(shape_layer(1, "A", with_key_at("0"))));
    layer_of(document, "A").set_offset({28'000});
    EXPECT_EQ(document.write(), animation(shape_layer(1, "A", after)));
}

TEST(KeyframeTimes, inside_the_source_of_a_moved_nest_stay) {
    const std::string asset =
        nest_asset("n", shape_layer(1, "X", {{"ks", transform({{"p", keyed(two_keys("0", "9"))}})}}));
    const Document document = Document::read(animation(nest_layer(1, "A", "n"), asset));
    layer_of(document, "A").set_offset({4000});
    EXPECT_NE(document.write().find(asset), std::string::npos);
}

TEST(KeyframeTimes, two_at_one_time_are_a_tick_apart_and_keep_their_bytes) {
    const std::string keys = R"({"t":0,"s":[0,0,0]},{"t":10,"s":[1,1,0]},{"t":10,"s":[5,5,0]},{"t":20,"s":[6,6,0]})";
    const std::string text = animation(shape_layer(1, "A", {{"ks", transform({{"p", keyed(keys)}})}}));
    const Document document = Document::read(text);
    host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    ASSERT_EQ(position.keyframe_count(), 4u);
    EXPECT_EQ(position.keyframe(1).time, (host::model::Time{40'000}));
    EXPECT_EQ(position.keyframe(2).time, (host::model::Time{40'001}));
    EXPECT_EQ(document.write(), text);
    host::model::Keyframe last = position.keyframe(3);
    last.value.n[0] = 7;
    position.set_keyframe(3, last);
    EXPECT_EQ(position_keys(document.write()),
              "["
              R"({"t":0,"s":[0,0,0]},{"t":10,"s":[1,1,0]},{"t":10,"s":[5,5,0]},{"t":20,"s":[7,6,0]})"
              "]");
}

TEST(KeyframeTimes, out_of_order_are_sorted_for_the_host_and_stay_in_the_file) {
    const std::string text = animation(shape_layer(1, "A", {{"ks", transform({{"p", keyed(two_keys("20", "10"))}})}}));
    const Document document = Document::read(text);
    host::model::Stream& position = layer_of(document, "A").stream(host::model::kPosition);
    EXPECT_EQ(position.keyframe(0).value.n[0], 3);
    EXPECT_EQ(document.write(), text);
    host::model::Keyframe first = position.keyframe(0);
    first.value.n[0] = 9;
    position.set_keyframe(0, first);
    const Document again = Document::read(document.write());
    EXPECT_EQ(layer_of(again, "A").stream(host::model::kPosition).keyframe(0).value.n[0], 9);
    EXPECT_EQ(layer_of(again, "A").stream(host::model::kPosition).keyframe(0).time, (host::model::Time{40'000}));
}

TEST(KeyframeTimes, every_tick_reads_back_as_itself) {
    for (const char* rate : {"30", "25", "24", "60", "12.5", "1", "1000"}) {
        const Document document = Document::read(animation(shape_layer(1, "A", {{"op", "1"}}), "", rate));
        for (std::int64_t ticks = -7'000'001; ticks < 7'000'000; ticks += 123'457) {
            layer_of(document, "A").set_offset({ticks});
            EXPECT_EQ(layer_of(Document::read(document.write()), "A").offset(), (host::model::Time{ticks})) << rate;
        }
    }
}

// A layer like a copy out of a nest: moved by the nest's start, and cut at `end` ticks as the nest is.
std::string end_of_copy(const std::string& nest_end, const std::string& inner_end, const std::string& start,
                        const std::string& frame_rate = "30") {
    const Document document = Document::read(animation(
        shape_layer(1, "A", {{"op", inner_end}}) + "," + shape_layer(2, "nest", {{"st", start}, {"op", nest_end}}), "",
        frame_rate));
    host::model::Layer& copy = layer_of(document, "A");
    const host::model::Layer& nest = layer_of(document, "nest");
    copy.set_offset(nest.offset());
    const host::model::Time end = std::min(copy.in_point() + copy.duration(), nest.in_point() + nest.duration());
    copy.set_in_point_and_duration(copy.in_point(), end - copy.in_point());
    return member(object_named(document.write(), "A"), "op");
}

TEST(LayerTimes, that_take_over_a_noisy_edge_take_its_noise) {
    for (const char* rate : {"30", "29.9700012207031"}) {
        EXPECT_EQ(end_of_copy("61.0000024845809", "900.000036657751", "0", rate), "61.0000024845809");
        EXPECT_EQ(end_of_copy("61.0000024845809", "900.000036657751", "7.00000028511585", rate), "61.0000024845809");
        EXPECT_EQ(end_of_copy("900.000036657751", "61.0000024845809", "0", rate), "61.0000024845809");
        EXPECT_EQ(end_of_copy("900.000036657751", "54.0000021994651", "7.00000028511585", rate).substr(0, 12),
                  "61.000002484");
    }
}

TEST(LayerTimes, end_where_the_first_of_two_edges_does) {
    EXPECT_EQ(end_of_copy("61.0000024845809", "61", "0"), "61");
    EXPECT_EQ(end_of_copy("61", "60.0000024845809", "1"), "61");
    EXPECT_EQ(end_of_copy("61.0000024845809", "60", "1"), "61");
}

TEST(LayerTimes, without_noise_stay_short) {
    EXPECT_EQ(end_of_copy("61.333", "61.5", "0.25"), "61.333");
    EXPECT_EQ(end_of_copy("90", "61.5", "0.25"), "61.75");
}

}  // namespace
}  // namespace lottie::document::testing
