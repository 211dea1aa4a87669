// Runs that judge: --strict, --only-exact, --max-growth.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::exflate_on;
using test::Finished;
using test::layer_names;
using test::Sandbox;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

// A nest that is half transparent, which un-nesting loses.
std::string faint_nest(int ind, const std::string& name, const std::string& asset) {
    std::string layer = test::nest_layer(ind, name, asset);
    const std::string opacity = R"("o":{"a":0,"k":100})";
    return layer.replace(layer.find(opacity), opacity.size(), R"("o":{"a":0,"k":50})");
}

std::string solid(int ind, const std::string& name) {
    return R"({"ddd":0,"ind":)" + std::to_string(ind) + R"(,"ty":1,"nm":")" + name + R"(","sr":1,)" + test::kTransform +
           R"(,"ao":0,"sw":10,"sh":10,"sc":"#ff0000","ip":0,"op":50,"st":0,"bm":0})";
}

// One nest keeps its look, one does not; inside the first there is one more of each.
std::string good_and_bad() {
    return test::animation(
        {test::asset("good", "Good",
                     {test::nest_layer(1, "GoodInside", "leaf"), faint_nest(2, "BadInside", "leaf"), solid(3, "dot")}),
         test::asset("bad", "Bad", {solid(1, "spot")}), test::asset("leaf", "Leaf", {solid(1, "leaf")})},
        {test::nest_layer(1, "GoodOne", "good"), faint_nest(2, "BadOne", "bad"), solid(3, "ground")});
}

TEST(JudgedRun, strict_writes_nothing_when_a_look_would_change) {
    for (const std::vector<std::string>& output : {std::vector<std::string>{"-o", "out.json"}, {"-i"}}) {
        const Sandbox sandbox(good_and_bad());
        std::vector<std::string> arguments = output;
        arguments.insert(arguments.end(), {"a.json", "--strict"});
        const Finished finished = exflate(sandbox, arguments);
        EXPECT_EQ(finished.exit_code, 1);
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr("nothing was written, for the look of nest #2 \"BadOne\" would change: "
                                            "opacity: its opacity of 50 % is lost"));
        EXPECT_THAT(sandbox.names(), ElementsAre("a.json"));
        EXPECT_EQ(sandbox.read("a.json"), good_and_bad());
    }
}

TEST(JudgedRun, strict_gives_the_bytes_of_a_plain_run_when_every_look_stays) {
    for (const std::vector<std::string>& flags : {std::vector<std::string>{}, {"--prefix", "x"}, {"--recursive"}}) {
        std::vector<std::string> strict = flags;
        strict.emplace_back("--strict");
        const Finished judged = exflate_on(test::three_nests(), strict);
        EXPECT_EQ(judged.exit_code, 0) << judged.err;
        EXPECT_EQ(judged.out, exflate_on(test::three_nests(), flags).out);
    }
}

TEST(JudgedRun, only_exact_keeps_the_nests_that_would_change) {
    const Finished finished = exflate_on(good_and_bad(), {"--only-exact"});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_THAT(layer_names(finished.out), ElementsAre("GoodInside", "BadInside", "dot", "BadOne", "ground"));
    EXPECT_EQ(finished.out, exflate_on(good_and_bad(), {"--layer", "GoodOne"}).out);
}

TEST(JudgedRun, only_exact_goes_as_deep_as_the_look_stays_exact) {
    const Finished finished = exflate_on(good_and_bad(), {"--only-exact", "--recursive"});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_THAT(layer_names(finished.out), ElementsAre("leaf", "BadInside", "dot", "BadOne", "ground"));
}

TEST(JudgedRun, strict_refuses_nothing_with_only_exact) {
    EXPECT_EQ(exflate_on(good_and_bad(), {"--only-exact", "--strict"}).exit_code, 0);
}

TEST(JudgedRun, only_exact_returns_the_input_when_nothing_is_exact) {
    const std::string bad =
        test::animation({test::asset("bad", "Bad", {solid(1, "spot")})}, {faint_nest(1, "BadOne", "bad")});
    const Finished finished = exflate_on(bad, {"--only-exact"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_EQ(finished.out, bad);
}

TEST(JudgedRun, kept_nests_are_listed_and_all_nests_on_request) {
    const Finished brief = exflate_on(good_and_bad(), {"--only-exact"});
    EXPECT_THAT(brief.err, Not(HasSubstr("GoodOne")));
    EXPECT_THAT(brief.err, HasSubstr("nest #2 \"BadOne\" kept: "));
    const Finished finished = exflate_on(good_and_bad(), {"--only-exact", "-v"});
    EXPECT_THAT(finished.err, HasSubstr("nest #1 \"GoodOne\" un-nested: exact, 3 layers, +"));
    EXPECT_THAT(finished.err, HasSubstr("nest #2 \"BadOne\" kept: changes, 1 layer, +"));
    EXPECT_THAT(finished.err, HasSubstr("; opacity: its opacity of 50 % is lost"));
    EXPECT_THAT(finished.err, HasSubstr("1 nest of composition \"Main\" un-nested, 3 layers made"));
    EXPECT_THAT(finished.err, HasSubstr(std::to_string(good_and_bad().size()) + " bytes became " +
                                        std::to_string(finished.out.size()) + " (+"));
}

// Two nests that share ten layers, and one by itself; un-nesting all adds about a whole shared composition.
std::string shared_and_single() {
    std::vector<std::string> ten;
    for (int i = 1; i <= 10; ++i) ten.push_back(solid(i, "s" + std::to_string(i)));
    return test::animation({test::asset("shared", "Shared", ten), test::asset("single", "Single", ten)},
                           {test::nest_layer(1, "Left", "shared"), test::nest_layer(2, "Right", "shared"),
                            test::nest_layer(3, "Alone", "single")});
}

std::size_t layers_after(const std::vector<std::string>& flags) {
    return layer_names(exflate_on(shared_and_single(), flags).out).size();
}

TEST(JudgedRun, max_growth_keeps_shared_nests_beyond_it) {
    const Finished finished = exflate_on(shared_and_single(), {"--max-growth", "10"});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    const auto names = layer_names(finished.out);
    EXPECT_THAT(names, Contains("Left"));
    EXPECT_THAT(names, Contains("Right"));
    EXPECT_THAT(names, Not(Contains("Alone")));  // however much it adds, it shares with nobody
    EXPECT_THAT(finished.err, HasSubstr("nest #1 \"Left\" kept: exact, 10 layers, +"));
    EXPECT_THAT(finished.err, HasSubstr("the file would grow beyond the limit, and other nests share its composition"));
}

TEST(JudgedRun, max_growth_un_nests_shared_nests_while_the_file_stays_within_it) {
    EXPECT_EQ(layers_after({"--max-growth", "500"}), 30u);
    EXPECT_EQ(layers_after({"--max-growth", "60", "--layer", "Left", "--layer", "Right"}), 12u);  // one of the two fits
}

TEST(JudgedRun, layers_are_named_and_numbered_as_the_listing_shows_them) {
    const std::string told =
        exflate_on(test::three_nests(), {"--recursive", "--only-exact", "-v", "--prefix", "fx"}).err;
    EXPECT_THAT(told, HasSubstr("nest #2 \"Right\" un-nested: "));
    EXPECT_THAT(told, HasSubstr("nest #3 \"Box\" un-nested: "));
    EXPECT_THAT(told, HasSubstr("nest #1 \"Inner\" in composition \"Outer\" un-nested: "));
}

TEST(JudgedRun, a_plain_run_does_not_list_each_nest) {
    EXPECT_THAT(exflate_on(test::one_nest(), {}).err, Not(HasSubstr("nest #")));
}

}  // namespace
