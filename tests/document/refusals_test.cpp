// Inputs that are refused, each with a sentence and a place.
#include <gmock/gmock.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

using ::testing::HasSubstr;

struct Refusal {
    std::string sentence;
    std::string pointer;
    std::size_t line = 0;
    std::size_t column = 0;
};

Refusal refusal(const std::string& text) {
    try {
        Document::read(text);
    } catch (const InputError& error) {
        return {error.what(), error.pointer(), error.line(), error.column()};
    }
    ADD_FAILURE() << "was accepted: " << text.substr(0, 300);
    return {};
}

struct Case {
    std::string input;
    std::string said;
};

void expect_said(std::initializer_list<Case> cases) {
    for (const auto& [input, said] : cases) EXPECT_THAT(refusal(input).sentence, HasSubstr(said)) << input;
}

// A member with a value that is refused, and what points at the fault.
struct MemberCase {
    std::string key;
    std::string value;
    std::string pointer;
};

TEST(Refusals, text_that_is_not_json_is_refused_with_line_and_column) {
    expect_said({{"hello", "not JSON"},
                 {"{'a':1}", "quotes"},
                 {"{\"a\" 1}", "colon"},
                 {"{\"a\":[1 2]}", "bracket"},
                 {"{\"a\":\"\\q\"}", "backslash"},
                 {"{\"a\":\"\\ud800x\"}", "surrogate"},
                 {"{\"a\":\"\xFF\"}", "UTF-8"},
                 {"{\"a\":NaN}", "value"},
                 {"{\"a\":1e999}", "1e308"},
                 {"{\"a\":1.}", "decimal point"},
                 {animation("") + "x", "behind the end"},
                 {animation("") + std::string(1, '\0') + "x", "not JSON"}});
    const Refusal words = refusal("hello");
    EXPECT_EQ(words.line, 1u);
    EXPECT_EQ(words.column, 1u);
    const Refusal comma = refusal("{\n  \"a\": 1,\n  \"\xC3\xA4\": 2 3}");
    EXPECT_THAT(comma.sentence, HasSubstr("comma"));
    EXPECT_EQ(comma.line, 3u);
    EXPECT_EQ(comma.column, 10u);
    EXPECT_EQ(refusal("\xEF\xBB\xBF{]").column, 2u);
}

TEST(Refusals, empty_input_and_input_that_was_cut_off_are_named) {
    expect_said({{"", "empty"},
                 {" \n", "empty"},
                 {"\xEF\xBB\xBF", "empty"},
                 {animation(shape_layer(1, "A")).substr(0, 150), "cut off"},
                 {"{\"v\":\"5.", "cut off"}});
}

TEST(Refusals, json_that_is_no_animation) {
    expect_said({{"[1,2]", "not an animation"},
                 {"12", "not an animation"},
                 {"null", "not an animation"},
                 {"{}", "\"layers\""},
                 {R"({"ip":0,"op":60,"h":100,"w":1,"layers":[]})", "\"fr\""},
                 {R"({"ip":0,"op":60,"h":100,"fr":30,"layers":[]})", "\"w\""},
                 {R"({"ip":0,"op":1,"w":1,"fr":30,"layers":[]})", "\"h\""},
                 {R"({"ip":0,"h":1,"w":1,"fr":30,"layers":[]})", "\"op\""},
                 {R"({"ip":0,"op":60,"h":100,"fr":30,"w":1})", "\"layers\""}});
}

TEST(Refusals, members_of_the_document_of_the_wrong_kind) {
    const auto with = [](const std::string& key, const std::string& value) {
        Members members = {{"fr", "30"}, {"ip", "0"}, {"op", "60"}, {"w", "200"}, {"h", "100"}};
        members["layers"] = "[" + nest_layer(1, "N", "n") + "]";
        members["assets"] = "[" + nest_asset("n", nest_layer(1, "M", "m")) + "," + nest_asset("m", "") + "]";
        members[key] = value;
        std::string text;
        for (const auto& [name, each] : members) text += (text.empty() ? "{\"" : ",\"") + name + "\":" + each;
        return refusal(text + "}");
    };
    const std::vector<MemberCase> cases = {{"fr", "\"30\"", "/fr"},
                                           {"fr", "0", "/fr"},
                                           {"fr", "-1", "/fr"},
                                           {"fr", "1e300", "/fr"},
                                           {"w", "0", "/w"},
                                           {"w", "true", "/w"},
                                           {"h", "1e12", "/h"},
                                           {"op", "{}", "/op"},
                                           {"op", "1e9", "/op"},
                                           {"ip", "-1e9", "/ip"},
                                           {"layers", "{}", "/layers"},
                                           {"layers", "3", "/layers"},
                                           {"layers", "[1]", "/layers/0"},
                                           {"layers", "[{\"ty\":3},[]]", "/layers/1"},
                                           {"assets", "\"x\"", "/assets"},
                                           {"assets", "[[]]", "/assets/0"},
                                           {"assets", "[{},{\"id\":3}]", "/assets/1/id"},
                                           {"assets", "[{\"layers\":1}]", "/assets/0/layers"}};
    for (const auto& [key, value, pointer] : cases) EXPECT_EQ(with(key, value).pointer, pointer) << value;
}

TEST(Refusals, members_of_layers_of_the_wrong_kind) {
    const auto with = [](const std::string& key, const std::string& value) {
        return refusal(animation(nest_layer(1, "nest", "n"),
                                 nest_asset("n", shape_layer(1, "ok") + "," + shape_layer(2, "A", {{key, value}}))));
    };
    const std::string layer = "/assets/0/layers/1";
    for (const char* key : {"ind", "ty", "parent", "tt", "tp", "sr", "ip", "op", "st"}) {
        const Refusal refused = with(key, "\"1\"");
        EXPECT_EQ(refused.pointer, layer + "/" + key);
        EXPECT_THAT(refused.sentence, HasSubstr("Layer 2 (\"A\")"));
    }
    const std::vector<MemberCase> cases = {{"ind", "1.5", "/ind"},
                                           {"ind", "1e300", "/ind"},
                                           {"nm", "3", "/nm"},
                                           {"refId", "{}", "/refId"},
                                           {"hd", "\"yes\"", "/hd"},
                                           {"ks", "[]", "/ks"},
                                           {"ef", "{}", "/ef"},
                                           {"ef", "[1]", "/ef"},
                                           {"shapes", "1", "/shapes"},
                                           {"tm", "5", "/tm"},
                                           {"ty", "-1", "/ty"},
                                           {"ty", "", ""},
                                           {"sr", "0", "/sr"},
                                           {"sr", "1e-300", "/sr"},
                                           {"st", "600000", "/st"},
                                           {"st", "-600000", "/st"},
                                           {"ks", R"({"p":[1,2]})", "/ks/p"},
                                           {"ks", R"({"s":5})", "/ks/s"},
                                           {"ks", R"({"o":{"k":"5"}})", "/ks/o/k"}};
    for (const auto& [key, value, pointer] : cases) EXPECT_EQ(with(key, value).pointer, layer + pointer) << value;
}

TEST(Refusals, a_time_that_cannot_be_held_is_named_with_its_place) {
    const std::string text = animation(nest_layer(1, "N", "n", {{"st", "600000"}}), nest_asset("n", ""));
    const Refusal refused = refusal(text);
    EXPECT_THAT(refused.sentence, HasSubstr("32 bits"));
    EXPECT_EQ(refused.pointer, "/layers/0/st");
    EXPECT_EQ(refused.line, 1u);
    EXPECT_EQ(refused.column, text.find("600000") + 1);
}

TEST(Refusals, nulls_count_as_missing) {
    const Document document = Document::read(animation(
        shape_layer(1, "A", {{"parent", "null"}, {"ks", "null"}, {"tt", "null"}, {"bm", "null"}, {"ef", "null"}})));
    EXPECT_TRUE(document.warnings().empty());
}

TEST(Refusals, compositions_that_contain_themselves) {
    const Refusal self = refusal(animation("", nest_asset("n", nest_layer(1, "A", "n"))));
    EXPECT_EQ(self.pointer, "/assets/0/layers/0/refId");
    EXPECT_THAT(self.sentence, HasSubstr("\"n\" uses itself"));
    const Refusal round = refusal(
        animation(nest_layer(1, "top", "a"), nest_asset("a", nest_layer(1, "A", "b")) + "," +
                                                 nest_asset("b", shape_layer(1, "S") + "," + nest_layer(2, "B", "a"))));
    EXPECT_EQ(round.pointer, "/assets/1/layers/1/refId");
    EXPECT_THAT(round.sentence, HasSubstr("\"a\", \"b\" use one another"));
}

TEST(Refusals, links_that_do_not_lead_to_one_other_layer) {
    struct Links {
        std::string layers;
        std::string pointer;
        std::string said;
    };
    const Members matted = {{"tt", "1"}, {"tp", "8"}};
    const std::vector<Links> cases = {
        {shape_layer(1, "A") + "," + shape_layer(2, "B") + "," + shape_layer(1, "C"), "/layers/3/ind",
         "Layer 4 (\"C\") has the same \"ind\" 1 as layer 2"},
        {shape_layer(1, "A", matted), "/layers/1/tp", "no layer of its composition has that \"ind\""},
        {shape_layer(1, "A", matted) + "," + shape_layer(1, "B", {{"ind", ""}}), "/layers/1/tp",
         "some layers there have none"},
        {shape_layer(1, "A", {{"parent", "1"}}), "/layers/1/parent", "itself"},
        {shape_layer(1, "A", {{"parent", "2"}}) + "," + shape_layer(2, "B", {{"parent", "3"}}) + "," +
             shape_layer(3, "C", {{"parent", "2"}}),
         "/layers/2/parent", "ancestor"}};
    for (const auto& [layers, pointer, said] : cases) {
        const Refusal refused = refusal(animation(nest_layer(9, "nest", "n") + "," + layers, nest_asset("n", "")));
        EXPECT_EQ(refused.pointer, pointer);
        EXPECT_THAT(refused.sentence, HasSubstr(said));
    }
}

TEST(Refusals, long_and_odd_names_are_shortened_in_sentences) {
    const auto sentence = [](const std::string& name) {
        return refusal(animation(nest_layer(1, name, "n", {{"parent", "1"}}), nest_asset("n", ""))).sentence;
    };
    EXPECT_LT(sentence(std::string(200, 'x') + "\\n").size(), 250u);
    EXPECT_EQ(sentence("a\\nb").find('\n'), std::string::npos);
}

}  // namespace
}  // namespace lottie::document::testing
