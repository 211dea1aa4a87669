// Scripts that name every layer of a large composition.
#include <gtest/gtest.h>

#include <chrono>

#include "world.h"

namespace script_test {
namespace {

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
    const auto start = std::chrono::steady_clock::now();
    world.run(script);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(world.outer.layer_count(), count);
    EXPECT_EQ(world.outer.layer_at(0).display_name(), "layer " + std::to_string(count - 1));
    EXPECT_EQ(world.run("allNames.length"), std::to_string(count));
    return taken.count();
}

TEST(Scale, a_script_of_four_hundred_thousand_statements_takes_time_in_proportion_and_fits_the_limits) {
    const double small = seconds_for(10'000);
    const double large = seconds_for(100'000);
    RecordProperty("seconds_for_10000", std::to_string(small));
    RecordProperty("seconds_for_100000", std::to_string(large));
    std::cout << "10,000 layers: " << small << " s; 100,000 layers: " << large << " s\n";
    EXPECT_LT(large, 40 * small + 1);
}

TEST(Scale, many_small_scripts_cost_no_more_than_a_large_one) {
    constexpr int kCount = 20'000;
    LargeWorld world(kCount);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 1; i <= kCount; ++i) {
        world.run("app.project.item(2).layer(" + std::to_string(i) + ").parent = null; ");
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::cout << kCount << " scripts: " << taken.count() << " s\n";
    EXPECT_LT(taken.count(), 20);
}

}  // namespace
}  // namespace script_test
