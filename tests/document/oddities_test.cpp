// Animations that are odd in ways that players take: read, with a warning where something is passed over.
#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

#include "animation_text.h"
#include "model/error.h"

namespace lottie::document::testing {
namespace {

using ::testing::HasSubstr;

// A keyframe deep in a shape that lies further away than any time reaches.
const std::string kFarKeyframe =
    R"([{"ty":"gr","it":[{"ty":"tr","o":{"a":1,"k":[{"t":0,"s":[1]},{"t":6e5,"s":[2]}]}}]}])";

const InputError& only_warning(const Document& document) {
    if (document.warnings().size() != 1) throw std::logic_error("there should be one warning");
    return document.warnings().front();
}

TEST(Oddities, an_animation_without_nests_passes_unchanged_whatever_is_odd_in_it) {
    const std::string texts[] = {
        animation(shape_layer(1, "A") + "," + shape_layer(1, "B")),
        animation(shape_layer(1, "A", {{"parent", "1"}})),
        animation(shape_layer(1, "A", {{"parent", "2"}}) + "," + shape_layer(2, "B", {{"parent", "1"}})),
        animation(shape_layer(1, "A", {{"tt", "1"}, {"tp", "9"}})),
        animation(shape_layer(1, "A", {{"sr", "0"}})),
        animation(shape_layer(1, "A", {{"st", "1e300"}})),
        animation(shape_layer(1, "A", {{"ty", "\"4\""}})),
        animation(shape_layer(1, "A", {{"nm", "3"}})),
        animation(shape_layer(1, "A", {{"ks", "[]"}})),
        animation("1"),
        animation("", "[]"),
        animation("", "", "0"),
        animation("", "", "\"30\"")};
    for (const std::string& text : texts) {
        const Document document = Document::read(text);
        EXPECT_THAT(only_warning(document).what(), HasSubstr("it stays as it is")) << text;
        EXPECT_EQ(document.main_comp().layer_count(), 0) << text;
        EXPECT_EQ(document.text(), text);
        EXPECT_EQ(document.write(), text);
    }
}

TEST(Oddities, what_is_odd_in_an_animation_without_nests_has_its_place) {
    const Document document = Document::read(animation(shape_layer(1, "A") + "," + shape_layer(1, "B")));
    EXPECT_EQ(only_warning(document).pointer(), "/layers/1/ind");
    EXPECT_EQ(only_warning(document).line(), 1u);
    EXPECT_GT(only_warning(document).column(), 1u);
}

TEST(Oddities, what_is_odd_is_refused_where_any_layer_shows_a_composition) {
    const std::string odd = shape_layer(1, "A") + "," + shape_layer(1, "B");
    EXPECT_THROW(Document::read(animation(odd + "," + nest_layer(3, "N", "n"), nest_asset("n", ""))), InputError);
    EXPECT_THROW(Document::read(animation(odd, nest_asset("m", nest_layer(3, "N", "n")) + "," + nest_asset("n", ""))),
                 InputError);
    EXPECT_THROW(Document::read(animation(odd + ",{\"t\\u0079\":0.0}")), InputError);
}

TEST(Oddities, a_layer_whose_composition_is_missing_is_an_empty_placeholder) {
    struct Missing {
        std::string layers;
        std::string assets;
        std::string said;
    };
    const std::string two = nest_layer(1, "A", "gone") + "," + nest_layer(2, "B", "gone");
    const std::vector<Missing> cases = {
        {nest_layer(1, "A", "gone"), "", "\"gone\", which does not exist: it stays"},
        {nest_layer(1, "A", "i"), R"({"id":"i","p":"i.png"})", "\"i\", which does not exist"},
        {nest_layer(1, "A", "", {{"refId", ""}}), "", "lacks the \"refId\""},
        {two, "", "another such layer"},
        {two + "," + nest_layer(3, "C", "lost"), "", "2 more such layers"}};
    for (const auto& [layers, assets, said] : cases) {
        const std::string text = animation(layers, assets);
        const Document document = Document::read(text);
        EXPECT_THAT(only_warning(document).what(), HasSubstr(said));
        EXPECT_EQ(only_warning(document).pointer(), "/layers/0");
        host::model::Item* source = layer_of(document, "A").source();
        EXPECT_TRUE(source == nullptr || source->comp() == nullptr);
        EXPECT_EQ(document.write(), text);
    }
}

// Layers that begin or end beyond all time, as tools write for "always".
TEST(Oddities, an_edge_out_of_range_keeps_its_bytes_and_moves_with_its_layer) {
    const std::string text =
        animation(nest_layer(1, "N", "n", {{"op", "1e7"}}),
                  nest_asset("n", shape_layer(1, "A", {{"ip", "-700000.5"}, {"op", "1000000.25"}})));
    const Document document = Document::read(text);
    EXPECT_TRUE(document.warnings().empty());
    EXPECT_EQ(document.write(), text);
    host::model::Layer& layer = layer_of(comp_of(document, "N"), "A");
    const auto written = [&](const char* key) { return member(object_named(document.write(), "A"), key); };
    EXPECT_GT(host::model::seconds(layer.duration()), 4 * 3600);
    layer.set_offset({4000 * 5});
    EXPECT_EQ(written("ip"), "-699995.5");
    EXPECT_EQ(written("op"), "1000005.25");
    layer.set_in_point_and_duration({}, {4000 * 10});
    EXPECT_EQ(written("ip"), "0");
    EXPECT_EQ(written("op"), "10");
}

TEST(Oddities, an_edge_out_of_range_is_refused_where_other_times_come_near_it) {
    const auto read = [](const std::string& op, const std::string& other) {
        const std::string layers = shape_layer(1, "A", {{"op", op}}) + "," + shape_layer(2, "B", {{"op", other}});
        return Document::read(animation(nest_layer(1, "N", "n"), nest_asset("n", layers)));
    };
    EXPECT_NO_THROW(read("600000", "60000"));
    EXPECT_NO_THROW(read("500000", "500000"));
    EXPECT_THROW(read("600000", "500000"), InputError);
}

// A document with one nested layer, "A".
Document with_nested(const Members& members) {
    return Document::read(animation(nest_layer(1, "N", "n"), nest_asset("n", shape_layer(1, "A", members))));
}

host::model::Layer& nested(const Document& document) {
    return layer_of(comp_of(document, "N"), "A");
}

// What is said when somebody looks into a layer whose position is animated so.
InputError fault_in_position(const std::string& keyframes) {
    const Document document = with_nested({{"ks", transform({{"p", keyed(keyframes)}})}});
    EXPECT_EQ(document.write(), document.text()) << "what nobody looks into stays";
    EXPECT_THROW(nested(document).stream(host::model::kPosition), host::model::Error) << keyframes;
    if (document.content_fault() == nullptr) throw std::logic_error("there should be a fault");
    return *document.content_fault();
}

TEST(Oddities, an_ease_that_cannot_be_held_is_bad_input_where_it_is_needed) {
    struct Segment {
        std::string x;
        std::string y;
        std::string end;
    };
    const std::vector<Segment> segments = {{"0.3", "1e300", "5"},    {"1e300", "1", "5"},     {"0", "1e308", "5"},
                                           {"1e-320", "1e300", "5"}, {"0.3", "0", "1.7e308"}, {"0.3", "0", "1e200"}};
    for (const auto& [x, y, end] : segments) {
        const InputError fault = fault_in_position(R"({"t":0,"s":[-1,0,0],"i":{"x":0.7,"y":1},"o":{"x":)" + x +
                                                   ",\"y\":" + y + R"(}},{"t":30,"s":[)" + end + ",0,0]}");
        EXPECT_THAT(fault.what(), HasSubstr("the easing of a keyframe"));
        EXPECT_EQ(fault.pointer(), "/assets/0/layers/0/ks/p/k/0");
    }
}

TEST(Oddities, a_keyframe_out_of_range_is_bad_input_where_it_is_needed) {
    const InputError fault = fault_in_position(R"({"t":0,"s":[0,0,0]},{"t":6e5,"s":[1,1,0]})");
    EXPECT_THAT(fault.what(), HasSubstr("the time of a keyframe lies more than"));
    EXPECT_EQ(fault.pointer(), "/assets/0/layers/0/ks/p/k/1/t");
}

// Where the writing of the document fails; empty if it does not.
std::string refused_at(const Document& document) {
    try {
        document.write();
        return {};
    } catch (const InputError& error) {
        return error.pointer();
    }
}

TEST(Oddities, a_layer_with_an_infinite_number_is_not_written) {
    const Document document = with_nested({});
    EXPECT_EQ(refused_at(document), "");
    nested(document).stream(host::model::kScale).set_static_value({{std::numeric_limits<double>::infinity(), 0, 0, 0}});
    EXPECT_EQ(refused_at(document), "/assets/0/layers/0");
}

TEST(Oddities, a_keyframe_too_far_away_to_be_moved_is_not_lost) {
    const Document document = with_nested({{"shapes", kFarKeyframe}});
    EXPECT_EQ(document.write(), document.text());
    nested(document).set_offset({4000});
    EXPECT_EQ(refused_at(document), "/assets/0/layers/0/shapes/0/it/0/o/k/1/t");
}

}  // namespace
}  // namespace lottie::document::testing
