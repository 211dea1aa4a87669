// The example of a program around the host, run on the example of a plug-in.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

namespace {

test::Finished embed(const std::vector<std::string>& arguments) {
    const test::Sandbox sandbox(test::one_nest());
    return sandbox.run(SMALLEST_EMBEDDING, {.arguments = arguments});
}

TEST(SmallestEmbedding, hides_every_layer_of_an_animation) {
    const test::Finished finished = embed({SMALLEST_PLUGIN, "a.json"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.err, "");
    const rapidjson::Document document = test::parsed(finished.out);
    ASSERT_EQ(document["layers"].Size(), 3U);
    for (const auto& layer : document["layers"].GetArray()) EXPECT_TRUE(layer["hd"].GetBool());
}

TEST(SmallestEmbedding, says_what_is_wrong) {
    EXPECT_EQ(embed({}).exit_code, 1);
    EXPECT_THAT(embed({"absent.so", "a.json"}).err, testing::HasSubstr("there is no plug-in at 'absent.so'"));
}

}  // namespace
