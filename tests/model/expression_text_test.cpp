// Finding layer names in expression source.
#include "model/expression_text.h"

#include <gtest/gtest.h>

namespace host::model {
namespace {

// "layer" or "comp/layer" for each reference.
std::vector<std::string> found(std::string_view text) {
    std::vector<std::string> all;
    for (const LayerReference& reference : find_layer_references(text)) {
        EXPECT_EQ(reference.comp.empty() && reference.comp_begin == 0, reference.comp_end == 0);
        all.push_back(reference.comp_end != 0 ? reference.comp + "/" + reference.layer : reference.layer);
    }
    return all;
}
using List = std::vector<std::string>;

TEST(ExpressionText, names_are_found_in_both_kinds_of_quotes_and_in_plain_templates) {
    EXPECT_EQ(found("thisComp.layer(\"A\").position"), List{"A"});
    EXPECT_EQ(found("thisComp.layer('A b')"), List{"A b"});
    EXPECT_EQ(found("thisComp.layer(`A`)"), List{"A"});
    EXPECT_EQ(found("comp(\"Main\").layer('A').effect(\"X\")(\"Y\")"), List{"Main/A"});
    EXPECT_EQ(found("layer('A') + layer('B')"), (List{"A", "B"}));
}

TEST(ExpressionText, space_and_comments_between_the_parts_do_not_matter) {
    EXPECT_EQ(found("thisComp /* here */ . layer (\n 'A' // the one\n )"), List{"A"});
    EXPECT_EQ(found("thisComp?.layer('A')"), List{"A"});
}

TEST(ExpressionText, positions_cover_the_literals_with_their_quotes) {
    const std::string text = "x = comp('Main').layer(\"A\")";
    const auto references = find_layer_references(text);
    ASSERT_EQ(references.size(), 1u);
    EXPECT_EQ(text.substr(references[0].begin, references[0].end - references[0].begin), "\"A\"");
    EXPECT_EQ(text.substr(references[0].comp_begin, references[0].comp_end - references[0].comp_begin), "'Main'");
}

TEST(ExpressionText, comments_and_strings_hold_no_references) {
    EXPECT_EQ(found("// thisComp.layer('A')\n1"), List{});
    EXPECT_EQ(found("/* thisComp.layer('A') */ 1"), List{});
    EXPECT_EQ(found("\"thisComp.layer('A')\""), List{});
    EXPECT_EQ(found("/thisComp.layer('A')/.test(name)"), List{});
}

TEST(ExpressionText, a_slash_after_an_operand_divides) {
    EXPECT_EQ(found("2 / thisComp.layer('A').width / 2"), List{"A"});
    EXPECT_EQ(found("(1) / thisComp.layer('A').width /2"), List{"A"});
    EXPECT_EQ(found("1.5 / thisComp.layer('A').width / 2"), List{"A"});
    EXPECT_EQ(found("'10' / thisComp.layer('A').width / 2"), List{"A"});
}

TEST(ExpressionText, quotes_in_regular_expressions_open_no_string) {
    EXPECT_EQ(found("/'/.test(n) + thisComp.layer('A')"), List{"A"});
    EXPECT_EQ(found("return /[/']/.test(n) + thisComp.layer('A')"), List{"A"});
    EXPECT_EQ(found("n.match(/\\/'/g) + thisComp.layer('A')"), List{"A"});
    EXPECT_EQ(found("`${/'/.test(n)}` + thisComp.layer('A')"), List{"A"});
}

TEST(ExpressionText, substitutions_in_templates_are_code) {
    EXPECT_EQ(found("`${thisComp.layer('A').name} and {} ${ {a: thisComp.layer('B')} }`"), (List{"A", "B"}));
}

TEST(ExpressionText, names_made_at_run_time_and_unknown_receivers_are_left_out) {
    EXPECT_EQ(found("thisComp.layer('A' + 1)"), List{});
    EXPECT_EQ(found("thisComp.layer(index + 1)"), List{});
    EXPECT_EQ(found("c = thisComp; c.layer('A')"), List{});
    EXPECT_EQ(found("thisComp.layer(`A${1}`)"), List{});
    EXPECT_EQ(found("comp(n).layer('A')"), List{});
}

TEST(ExpressionText, functions_that_the_text_redefines_mean_something_else) {
    EXPECT_EQ(found("function layer(n) { return 1; } layer('A')"), List{});
    EXPECT_EQ(found("var comp = other; comp('M').layer('A')"), List{});
    EXPECT_EQ(found("thisComp = comp('M'); thisComp.layer('A')"), List{});
    EXPECT_EQ(found("if (thisComp == c) thisComp.layer('A')"), List{"A"});
    EXPECT_EQ(found("x.thisComp = c; thisComp.layer('A')"), List{"A"});
}

TEST(ExpressionText, escapes_in_names_are_decoded) {
    EXPECT_EQ(found(R"(thisComp.layer("a\"b"))"), List{"a\"b"});
    EXPECT_EQ(found(R"(thisComp.layer('\x41\u00e9\u{1F600}'))"), List{"A\xc3\xa9\xf0\x9f\x98\x80"});
    EXPECT_EQ(found(R"(thisComp.layer('\ud83d\ude00'))"), List{"\xf0\x9f\x98\x80"});
    EXPECT_EQ(found(R"(thisComp.layer('a\tb\\'))"), List{"a\tb\\"});
    EXPECT_EQ(found(R"(thisComp.layer('\b\f\n\r\v\q'))"), List{"\b\f\n\r\vq"});
    EXPECT_EQ(found(R"(thisComp.layer('\101\78\400'))"), List{"A\a8 0"}) << "octal";
    EXPECT_EQ(found("thisComp.layer('A\\\nB\\\r\nC\\\rD')"), List{"ABCD"}) << "lines go on";
    EXPECT_EQ(found(R"(thisComp.layer('\x4g\u00g0\u{}\u{110000}'))"), List{"x4gu00g0u{}u{110000}"}) << "not escapes";
}

TEST(ExpressionText, unfinished_and_senseless_text_is_survived) {
    for (const std::string_view text : {"thisComp.layer('A", "thisComp.layer(", "`${layer('A')", "/* layer", "layer\\",
                                        "}}}layer('", "layer/[", "\"\\", "layer('\\u{zz}')", "layer('\\x4')"}) {
        EXPECT_LE(find_layer_references(text).size(), 1u) << text;
    }
    EXPECT_EQ(found("'open\nthisComp.layer('A')"), List{"A"});
}

TEST(ExpressionText, every_literal_equal_to_the_name_counts_as_quoted) {
    const std::string text = "effect(\"A\")('A') + `A` + \"AB\" // \"A\"";
    const auto ranges = find_quoted(text, "A");
    ASSERT_EQ(ranges.size(), 2u);
    EXPECT_EQ(text.substr(ranges[0].first, ranges[0].second - ranges[0].first), "\"A\"");
    EXPECT_EQ(text.substr(ranges[1].first, ranges[1].second - ranges[1].first), "'A'");
}

TEST(ExpressionText, a_quoted_name_reads_back_as_the_name) {
    const std::string name = "a\"b'c`d\\e\nf\r${g}\xe2\x80\xa8h\xe2\x80\xa9" + std::string(1, '\0') + "\xff";
    for (const char mark : {'"', '\'', '`'}) {
        const auto references = find_layer_references("thisComp.layer(" + quote(name, mark) + ")");
        ASSERT_EQ(references.size(), 1u) << mark;
        EXPECT_EQ(references[0].layer, name) << mark;
    }
    EXPECT_EQ(quote("plain", '\''), "'plain'");
    EXPECT_EQ(quote("\xe2\x80\xa8 \xe2\x80\xa9", '"'), R"("\u2028 \u2029")") << "older engines want them escaped";
}

}  // namespace
}  // namespace host::model
