// Scripts that name every layer of a large composition.
#include <gtest/gtest.h>

#include <ctime>
#include <iostream>

#include "world.h"

namespace script_test {
namespace {

// Clang and GCC tell of their address sanitizer in different ways. With it, making room for a long script takes most of
// the time, and without optimization the tests take many minutes, above all where coverage is counted: then fewer
// layers do and the times say nothing.
#if defined(__has_feature)
#define HAS_ADDRESS_SANITIZER __has_feature(address_sanitizer)
#elif defined(__SANITIZE_ADDRESS__)
#define HAS_ADDRESS_SANITIZER 1
#else
#define HAS_ADDRESS_SANITIZER 0
#endif
constexpr bool kTimesTell = IS_OPTIMIZED && !HAS_ADDRESS_SANITIZER;
constexpr int kLarge = kTimesTell ? 100'000 : 20'000;

double processor_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Renames and copies each of `count` layers in four statements, as programs that write scripts do.
std::string copying_script(int count) {
    std::string text = "var tempName = \"\"; var allNames = [];";
    for (int i = 1; i <= count; ++i) {
        const std::string layer = "app.project.item(2).layer(" + std::to_string(i) + ")";
        text += "tempName = " + layer + ".name; allNames.push(tempName);";
        text += layer + ".name = tempName;";
        text += layer + ".copyToComp(app.project.item(1));";
        text += layer + ".name = tempName;";
    }
    return text;
}

struct LargeWorld : World {
    explicit LargeWorld(int count) : World(), outer(project.add_comp("outer")), inner(project.add_comp("inner")) {
        host::model::Item& picture = project.add_footage("picture", {}, 8, 8);
        for (int i = 0; i < count; ++i) {
            inner.load_layer(host::model::LayerKind::av, &picture).load_name("layer " + std::to_string(i));
        }
    }
    host::model::Comp& outer;
    host::model::Comp& inner;
};

double seconds_for(int count) {
    LargeWorld world(count);
    const std::string script = copying_script(count);
    const double start = processor_seconds();
    world.run(script);
    const double taken = processor_seconds() - start;
    EXPECT_EQ(world.outer.layer_count(), count);
    EXPECT_EQ(world.outer.layer_at(0).display_name(), "layer " + std::to_string(count - 1));
    EXPECT_EQ(world.run("allNames.length"), std::to_string(count));
    return taken;
}

TEST(Scale, a_script_of_four_statements_for_each_layer_takes_time_in_proportion_and_fits_the_limits) {
    const double small = seconds_for(kLarge / 10);
    const double large = seconds_for(kLarge);
    std::cout << kLarge / 10 << " layers: " << small << " s; " << kLarge << " layers: " << large << " s\n";
    if (kTimesTell) {
        EXPECT_LT(large, 30 * small + 1);
    }
}

TEST(Scale, many_small_scripts_cost_no_more_than_a_large_one) {
    constexpr int kCount = 20'000;
    LargeWorld world(kCount);
    const double start = processor_seconds();
    for (int i = 1; i <= kCount; ++i) {
        world.run("app.project.item(2).layer(" + std::to_string(i) + ").parent = null; ");
    }
    const double taken = processor_seconds() - start;
    std::cout << kCount << " scripts: " << taken << " s\n";
    if (kTimesTell) {
        EXPECT_LT(taken, 20);
    }
}

TEST(Scale, a_block_longer_than_a_jump_can_reach_is_an_error_and_no_crash) {
    if (!kTimesTell) GTEST_SKIP() << "takes minutes in this build";
    World world;
    std::string text = "var x = 0; if (x) {";
    for (int i = 0; i < 9'000'000; ++i) text += "x;";
    EXPECT_NE(world.error(text + "}").find("RangeError: bytecode limit"), std::string::npos);
    EXPECT_EQ(world.run("1 + 1"), "2");
}

}  // namespace
}  // namespace script_test
