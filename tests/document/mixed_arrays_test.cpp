// Arrays of numbers beside arrays of other things, in any nesting, inside a layer's content.
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "document/document.h"
#include "model/stream.h"

namespace {

using host::model::Layer;
using lottie::document::Document;

std::string with_shapes(const std::string& shapes) {
    return R"({"v":"5.7.0","fr":30,"ip":0,"op":60,"w":20,"h":20,"assets":[],"layers":[)"
           R"({"ind":1,"ty":4,"nm":"a","ks":{"o":{"a":0,"k":100}},"shapes":)" +
           shapes + R"(,"ip":0,"op":60,"st":0}]})";
}

std::vector<std::string> expressions(Layer& layer) {
    std::vector<std::string> all;
    for (const host::model::Stream* stream : layer.expression_streams()) {
        if (stream->has_expression()) all.push_back(stream->data().expression);
    }
    return all;
}

class MixedArrays : public testing::TestWithParam<const char*> {};

// `@` stands for a property with an expression.
TEST_P(MixedArrays, hide_no_expression_and_keep_their_bytes) {
    std::string shapes = GetParam();
    std::size_t count = 0;
    for (std::size_t at = shapes.find('@'); at != std::string::npos; at = shapes.find('@')) {
        shapes.replace(at, 1, R"({"a":0,"k":[1,[2]],"x":"e)" + std::to_string(count++) + "\"}");
    }
    const std::string text = with_shapes(shapes);
    const Document document = Document::read(text);
    Layer& layer = document.main_comp().layer_at(0);
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < count; ++i) expected.push_back("e" + std::to_string(i));
    EXPECT_EQ(expressions(layer), expected);

    layer.stream(host::model::kOpacity).set_static_value({{50, 0, 0, 0}});
    std::string changed = text;
    changed.replace(changed.find(R"("k":100)"), 7, R"("k":50)");
    EXPECT_EQ(document.write(), changed);
}

INSTANTIATE_TEST_SUITE_P(Lottie, MixedArrays,
                         testing::Values("[@]", "[1,[2,3],@]", "[[[1,2],[3,[4,@]]],@,[5]]", R"([[1],["]"],["\"["],@])",
                                         "[[],[[]],[[],@]]", "[ -1.5e+3 , [ 2 , null ] , true , @ , false ]",
                                         R"([{"k":[[0,0],[1,1]],"o":@,"c":[{"p":@}]}])",
                                         R"([[[[1,2,3],"\\"],[4,5]],[6,[7]],@,[[8]]])", "[\n[\n1\n]\n,\n@\n]"));

// Looking ahead for the end of an array of numbers must not begin anew at each level.
TEST(MixedArrays, cost_no_more_when_they_are_nested_deep) {
    constexpr int kDepth = 400;
    std::string numbers;
    for (int i = 0; i < 200'000; ++i) numbers += "1,";
    const std::string deep = std::string(kDepth, '[') + numbers + "null" + std::string(kDepth, ']');
    const Document document = Document::read(with_shapes(deep));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(expressions(document.main_comp().layer_at(0)).empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

}  // namespace
