// Depth and size: nesting in the text is bounded, nesting of compositions is not.
#include <gtest/gtest.h>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

std::string nested_arrays(int depth) {
    return std::string(static_cast<std::size_t>(depth), '[') + std::string(static_cast<std::size_t>(depth), ']');
}

TEST(Depth, a_thousand_levels_of_json_are_read_and_one_more_is_refused) {
    // The document, its layers, the layer and the member's value around it are four.
    const std::string deepest = animation(shape_layer(1, "A", {{"zz", nested_arrays(997)}}));
    const Document document = Document::read(deepest);
    layer_of(document, "A").set_offset({4000});
    EXPECT_NE(document.write().find(nested_arrays(997)), std::string::npos);
    EXPECT_THROW(Document::read(animation(shape_layer(1, "A", {{"zz", nested_arrays(998)}}))), InputError);
    EXPECT_THROW(Document::read(nested_arrays(1'000'000)), InputError);
    EXPECT_THROW(Document::read(std::string(1'000'000, '[')), InputError);
    EXPECT_THROW(Document::read("{\"a\":" + nested_arrays(5000) + "}"), InputError);
}

TEST(Depth, effects_nested_in_groups_to_the_limit_are_read) {
    std::string effects = "[]";
    for (int i = 0; i < 490; ++i) effects = R"([{"ty":5,"nm":"G","ef":)" + effects + "}]";
    const Document document = Document::read(animation(shape_layer(1, "A", {{"ef", effects}})));
    EXPECT_EQ(layer_of(document, "A").effect(0).parameter_count(), 490u);
}

TEST(Depth, compositions_may_nest_without_end) {
    constexpr int kDepth = 20'000;
    std::string assets;
    for (int i = 0; i < kDepth; ++i) {
        const std::string inner = i + 1 < kDepth ? nest_layer(1, "L" + std::to_string(i), "c" + std::to_string(i + 1))
                                                 : shape_layer(1, "leaf");
        assets += (i == 0 ? "" : ",") + nest_asset("c" + std::to_string(i), inner);
    }
    const std::string text = animation(nest_layer(1, "top", "c0"), assets);
    const Document document = Document::read(text);
    EXPECT_EQ(document.project().comps().size(), kDepth + 1u);
    EXPECT_EQ(document.write(), text);
    std::string round = text;
    const std::string leaf = shape_layer(1, "leaf");
    round.replace(round.find(leaf), leaf.size(), nest_layer(1, "leaf", "c0"));
    EXPECT_THROW(Document::read(round), InputError);
}

TEST(Depth, parents_may_form_chains_without_end) {
    constexpr int kLayers = 20'000;
    for (const bool upwards : {true, false}) {
        std::string layers;
        for (int i = 1; i <= kLayers; ++i) {
            const int parent = upwards ? i - 1 : i + 1;
            const bool has_parent = parent >= 1 && parent <= kLayers;
            layers += (i == 1 ? "" : ",") +
                      shape_layer(i, "L", has_parent ? Members{{"parent", std::to_string(parent)}} : Members{});
        }
        const std::string text = animation(layers);
        EXPECT_EQ(Document::read(text).write(), text);
    }
}

}  // namespace
}  // namespace lottie::document::testing
