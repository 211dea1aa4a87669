// Each remedy where it applies and where it must not, as the pictures show it.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/flatten/flattening.h"
#include "judged.h"
#include "pictures/comparison.h"
#include "scenes.h"

namespace {

using namespace test;
using lottie::looks::Weight;

class EachRemedy : public testing::TestWithParam<Scene> {};

cli::Flattened flattened(const std::string& animation) {
    static const host::runner::PluginModule kPlugin(PLUGIN_MODULE);
    return cli::flatten_animation(animation, kPlugin, {});
}

bool look_equal(const std::string& before, const std::string& after) {
    return Judged{before, after, {}}.looks_equal();
}

TEST_P(EachRemedy, is_applied_where_it_keeps_the_look) {
    const Scene& scene = GetParam();
    const Judged bare = judged(scene.animation);
    const auto* finding = bare.find(scene.reason);
    const bool is_found = finding != nullptr && finding->weight == Weight::change;
    EXPECT_EQ(is_found, scene.outcome != Outcome::untouched) << "without the remedy: " << bare.text();
    if (scene.can_be_drawn && scene.outcome == Outcome::mended) {
        EXPECT_FALSE(bare.looks_equal()) << "nothing is to be seen here";
    }

    const cli::Flattened flat = flattened(scene.animation);
    ASSERT_EQ(flat.nests.size(), 1U);
    const cli::FlattenedNest& nest = flat.nests[0];
    EXPECT_EQ(nest.is_kept(), scene.outcome == Outcome::stays);
    const bool is_mended = std::count(nest.mended.begin(), nest.mended.end(), scene.reason) > 0;
    if (scene.outcome == Outcome::mended) {
        EXPECT_TRUE(is_mended);
    }
    if (scene.outcome == Outcome::untouched) {
        EXPECT_FALSE(is_mended);
    }
    if (scene.outcome == Outcome::stays) {
        EXPECT_EQ(flat.text, scene.animation);
    }
    if (scene.can_be_drawn) {
        EXPECT_TRUE(look_equal(scene.animation, flat.text)) << flat.text;
    }
}

INSTANTIATE_TEST_SUITE_P(Remedies, EachRemedy, testing::ValuesIn(all_scenes()), [](const auto& one) {
    std::string name = one.param.full_name();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

}  // namespace
