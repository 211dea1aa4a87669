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

std::string document(const std::string& members) {
    return "{" + members + "}";
}

const std::string kRest = R"("ip":0,"op":60,"h":100,)";

TEST(Refusals, text_that_is_not_json_is_refused_with_line_and_column) {
    const Refusal words = refusal("hello");
    EXPECT_THAT(words.sentence, HasSubstr("not JSON"));
    EXPECT_EQ(words.line, 1u);
    EXPECT_EQ(words.column, 1u);
    const Refusal comma = refusal("{\n  \"a\": 1,\n  \"\xC3\xA4\": 2 3}");
    EXPECT_THAT(comma.sentence, HasSubstr("comma"));
    EXPECT_EQ(comma.line, 3u);
    EXPECT_EQ(comma.column, 10u);
    EXPECT_EQ(refusal("\xEF\xBB\xBF{]").column, 2u);
    EXPECT_THAT(refusal("{'a':1}").sentence, HasSubstr("quotes"));
    EXPECT_THAT(refusal("{\"a\" 1}").sentence, HasSubstr("colon"));
    EXPECT_THAT(refusal("{\"a\":[1 2]}").sentence, HasSubstr("bracket"));
    EXPECT_THAT(refusal("{\"a\":\"\\q\"}").sentence, HasSubstr("backslash"));
    EXPECT_THAT(refusal("{\"a\":\"\\ud800x\"}").sentence, HasSubstr("surrogate"));
    EXPECT_THAT(refusal("{\"a\":\"\xFF\"}").sentence, HasSubstr("UTF-8"));
    EXPECT_THAT(refusal("{\"a\":NaN}").sentence, HasSubstr("value"));
    EXPECT_THAT(refusal("{\"a\":1e999}").sentence, HasSubstr("1e308"));
    EXPECT_THAT(refusal("{\"a\":1.}").sentence, HasSubstr("decimal point"));
    EXPECT_THAT(refusal(animation("") + "x").sentence, HasSubstr("behind the end"));
    EXPECT_THAT(refusal(animation("") + std::string(1, '\0') + "x").sentence, HasSubstr("not JSON"));
}

TEST(Refusals, an_empty_input_is_told_apart) {
    EXPECT_THAT(refusal("").sentence, HasSubstr("empty"));
    EXPECT_THAT(refusal(" \n").sentence, HasSubstr("empty"));
    EXPECT_THAT(refusal("\xEF\xBB\xBF").sentence, HasSubstr("empty"));
}

TEST(Refusals, a_text_that_was_cut_off_is_told_so) {
    EXPECT_THAT(refusal(animation(shape_layer(1, "A")).substr(0, 150)).sentence, HasSubstr("cut off"));
    EXPECT_THAT(refusal("{\"v\":\"5.").sentence, HasSubstr("cut off"));
}

TEST(Refusals, json_that_is_no_animation) {
    EXPECT_THAT(refusal("[1,2]").sentence, HasSubstr("no animation"));
    EXPECT_THAT(refusal("12").sentence, HasSubstr("no animation"));
    EXPECT_THAT(refusal("null").sentence, HasSubstr("no animation"));
    EXPECT_THAT(refusal("{}").sentence, HasSubstr("\"layers\""));
    EXPECT_THAT(refusal(document(kRest + R"("w":1,"layers":[])")).sentence, HasSubstr("\"fr\""));
    EXPECT_THAT(refusal(document(kRest + R"("fr":30,"layers":[])")).sentence, HasSubstr("\"w\""));
    EXPECT_THAT(refusal(document(R"("ip":0,"op":1,"w":1,"fr":30,"layers":[])")).sentence, HasSubstr("\"h\""));
    EXPECT_THAT(refusal(document(R"("ip":0,"h":1,"w":1,"fr":30,"layers":[])")).sentence, HasSubstr("\"op\""));
    EXPECT_THAT(refusal(document(kRest + R"("fr":30,"w":1)")).sentence, HasSubstr("\"layers\""));
}

TEST(Refusals, members_of_the_document_of_the_wrong_kind) {
    const auto with = [](const std::string& key, const std::string& value) {
        std::string text = animation("");
        const std::size_t at = text.find("\"" + key + "\":") + key.size() + 3;
        std::size_t end = text.find_first_of(",]", at);
        if (text[end] == ']') ++end;
        return refusal(text.replace(at, end - at, value));
    };
    EXPECT_EQ(with("fr", "\"30\"").pointer, "/fr");
    EXPECT_EQ(with("fr", "0").pointer, "/fr");
    EXPECT_EQ(with("fr", "-1").pointer, "/fr");
    EXPECT_EQ(with("fr", "1e300").pointer, "/fr");
    EXPECT_EQ(with("w", "0").pointer, "/w");
    EXPECT_EQ(with("w", "true").pointer, "/w");
    EXPECT_EQ(with("h", "1e12").pointer, "/h");
    EXPECT_EQ(with("op", "{}").pointer, "/op");
    EXPECT_EQ(with("ip", "-1e9").pointer, "/ip");
    EXPECT_EQ(with("layers", "{}").pointer, "/layers");
    EXPECT_EQ(with("layers", "3").pointer, "/layers");
    EXPECT_EQ(with("assets", "\"x\"").pointer, "/assets");
    EXPECT_EQ(with("layers", "[1]").pointer, "/layers/0");
    EXPECT_EQ(with("layers", "[{\"ty\":3},[]]").pointer, "/layers/1");
    EXPECT_EQ(with("assets", "[[]]").pointer, "/assets/0");
    EXPECT_EQ(with("assets", "[{},{\"id\":3}]").pointer, "/assets/1/id");
    EXPECT_EQ(with("assets", "[{\"layers\":1}]").pointer, "/assets/0/layers");
}

TEST(Refusals, members_of_layers_of_the_wrong_kind) {
    const auto with = [](const std::string& key, const std::string& value) {
        return refusal(animation(nest_layer(1, "nest", "n"),
                                 nest_asset("n", shape_layer(1, "ok") + "," + shape_layer(2, "A", {{key, value}}))));
    };
    for (const char* key : {"ind", "ty", "parent", "tt", "tp", "sr", "ip", "op", "st"}) {
        const Refusal refused = with(key, "\"1\"");
        EXPECT_EQ(refused.pointer, std::string("/assets/0/layers/1/") + key);
        EXPECT_THAT(refused.sentence, HasSubstr("Layer 2 (\"A\")"));
    }
    EXPECT_EQ(with("ind", "1.5").pointer, "/assets/0/layers/1/ind");
    EXPECT_EQ(with("ind", "1e300").pointer, "/assets/0/layers/1/ind");
    EXPECT_EQ(with("nm", "3").pointer, "/assets/0/layers/1/nm");
    EXPECT_EQ(with("refId", "{}").pointer, "/assets/0/layers/1/refId");
    EXPECT_EQ(with("hd", "\"yes\"").pointer, "/assets/0/layers/1/hd");
    EXPECT_EQ(with("ks", "[]").pointer, "/assets/0/layers/1/ks");
    EXPECT_EQ(with("ef", "{}").pointer, "/assets/0/layers/1/ef");
    EXPECT_EQ(with("ef", "[1]").pointer, "/assets/0/layers/1/ef");
    EXPECT_EQ(with("shapes", "1").pointer, "/assets/0/layers/1/shapes");
    EXPECT_EQ(with("tm", "5").pointer, "/assets/0/layers/1/tm");
    EXPECT_EQ(with("ty", "-1").pointer, "/assets/0/layers/1/ty");
    EXPECT_EQ(with("ty", "").pointer, "/assets/0/layers/1");
    EXPECT_EQ(with("sr", "0").pointer, "/assets/0/layers/1/sr");
    EXPECT_EQ(with("ks", R"({"p":[1,2]})").pointer, "/assets/0/layers/1/ks/p");
    EXPECT_EQ(with("ks", R"({"s":5})").pointer, "/assets/0/layers/1/ks/s");
    EXPECT_EQ(with("ks", R"({"o":{"k":"5"}})").pointer, "/assets/0/layers/1/ks/o/k");
}

TEST(Refusals, nulls_count_as_missing) {
    EXPECT_NO_THROW(Document::read(animation(
        shape_layer(1, "A", {{"parent", "null"}, {"ks", "null"}, {"tt", "null"}, {"bm", "null"}, {"ef", "null"}}))));
}

TEST(Refusals, times_beyond_32_bits) {
    for (const char* key : {"ip", "op", "st"}) {
        const Refusal refused = refusal(animation(shape_layer(1, "A", {{key, "600000"}})));
        EXPECT_EQ(refused.pointer, std::string("/layers/0/") + key);
        EXPECT_THAT(refused.sentence, HasSubstr("32 bits"));
        EXPECT_NO_THROW(Document::read(animation(shape_layer(1, "A", {{key, "500000"}}))));
    }
    EXPECT_EQ(refusal(animation(shape_layer(1, "A", {{"st", "-600000"}}))).pointer, "/layers/0/st");
    const std::string far = R"([{"ty":"gr","it":[{"ty":"tr","o":{"a":1,"k":[{"t":0,"s":[1]},{"t":6e5,"s":[2]}]}}]}])";
    EXPECT_THAT(refusal(animation(shape_layer(1, "A", {{"shapes", far}}))).sentence, HasSubstr("keyframe"));
}

TEST(Refusals, a_nest_of_nothing) {
    const Refusal missing = refusal(animation(nest_layer(1, "A", "gone")));
    EXPECT_EQ(missing.pointer, "/layers/0/refId");
    EXPECT_THAT(missing.sentence, HasSubstr("\"gone\""));
    EXPECT_EQ(refusal(animation(nest_layer(1, "A", "i"), R"({"id":"i","p":"i.png"})")).pointer, "/layers/0/refId");
    EXPECT_EQ(refusal(animation(nest_layer(1, "A", "x", {{"refId", ""}}))).pointer, "/layers/0");
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

TEST(Refusals, numbers_of_layers_that_do_not_lead_to_one_layer) {
    const Refusal twice =
        refusal(animation(shape_layer(1, "A") + "," + shape_layer(2, "B") + "," + shape_layer(1, "C")));
    EXPECT_EQ(twice.pointer, "/layers/2/ind");
    EXPECT_THAT(twice.sentence, HasSubstr("Layer 3 (\"C\") has the same \"ind\" 1 as layer 1"));
    const Members matted = {{"tt", "1"}, {"tp", "9"}};
    const Refusal dangling = refusal(animation(shape_layer(1, "A", matted)));
    EXPECT_EQ(dangling.pointer, "/layers/0/tp");
    EXPECT_THAT(dangling.sentence, HasSubstr("no layer of its composition has that \"ind\""));
    const Refusal unnumbered =
        refusal(animation(shape_layer(1, "A", matted) + "," + shape_layer(1, "B", {{"ind", ""}})));
    EXPECT_THAT(unnumbered.sentence, HasSubstr("some layers there have none"));
}

TEST(Refusals, parents_that_lead_back) {
    EXPECT_THAT(refusal(animation(shape_layer(1, "A", {{"parent", "1"}}))).sentence, HasSubstr("itself"));
    const Refusal round =
        refusal(animation(shape_layer(1, "A", {{"parent", "2"}}) + "," + shape_layer(2, "B", {{"parent", "3"}}) + "," +
                          shape_layer(3, "C", {{"parent", "2"}})));
    EXPECT_EQ(round.pointer, "/layers/1/parent");
    EXPECT_THAT(round.sentence, HasSubstr("ancestor"));
}

TEST(Refusals, long_and_odd_names_are_shortened_in_sentences) {
    const Refusal refused = refusal(animation(shape_layer(1, std::string(200, 'x') + "\\n", {{"parent", "1"}})));
    EXPECT_LT(refused.sentence.size(), 250u);
    EXPECT_EQ(refusal(animation(shape_layer(1, "a\\nb", {{"parent", "1"}}))).sentence.find('\n'), std::string::npos);
}

}  // namespace
}  // namespace lottie::document::testing
