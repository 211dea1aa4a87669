// Every reason, changing a look and harmless: what the audit says, and what the pictures show.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include "cases.h"
#include "judged.h"

namespace {

using namespace test;
using lottie::looks::Verdict;

class EachReason : public testing::TestWithParam<Case> {};

TEST_P(EachReason, is_judged_by_what_it_does_to_the_look) {
    const Case& one = GetParam();
    const Judged result = judged(one.animation, one.answers);
    const auto* finding = result.find(one.reason);
    ASSERT_EQ(finding != nullptr, one.weight.has_value()) << result.text();
    if (finding != nullptr) {
        EXPECT_EQ(finding->weight, *one.weight) << result.text();
        EXPECT_FALSE(finding->sentence.empty());
        if (finding->weight == Weight::change) {
            EXPECT_EQ(finding->layer, one.layer) << result.text();
            EXPECT_EQ(finding->property, one.property) << result.text();
            EXPECT_EQ(finding->frame, one.frame) << result.text();
            EXPECT_FALSE(finding->way_out.empty()) << result.text();
            EXPECT_EQ(finding->way_out.find("composition around"), std::string::npos)
                << "nothing is around the main one";
        }
    }
    if (!one.weight || *one.weight == Weight::harmless) {
        EXPECT_EQ(result.report.verdict, Verdict::exact) << result.text();
    }
    if (one.pictures == Pictures::cannot_tell) return;
    EXPECT_EQ(result.looks_equal(), one.pictures == Pictures::equal) << result.text();
}

INSTANTIATE_TEST_SUITE_P(Reasons, EachReason, testing::ValuesIn(all_cases()), [](const auto& one) {
    std::string text(code(one.param.reason));
    std::replace(text.begin(), text.end(), '-', '_');
    return text + "__" + one.param.name;
});

// The approved words stand in tests/golden/findings.txt; a change of any shows here.
TEST(Reasons, are_told_in_the_approved_words) {
    std::string told;
    for (const Case& one : all_cases()) {
        const Judged result = judged(one.animation, one.answers);
        const auto* finding = result.find(one.reason);
        if (finding != nullptr) told += std::string(one.name) + ": " + in_words(*finding) + "\n";
    }
    std::ofstream(testing::TempDir() + "findings.txt", std::ios::binary) << told;  // to look at a difference
    std::ifstream approved(GOLDEN "/findings.txt", std::ios::binary);
    EXPECT_EQ(told, std::string(std::istreambuf_iterator<char>(approved), {}));
}

// The corners are as far out at each eighth of the turn, but for the last digits of this machine's sines.
TEST(Reasons, the_first_of_several_equally_clipped_frames_is_reported) {
    for (double x = 45; x < 55; x += 0.7) {
        const std::string turning = transform({{"a", still("[20,20,0]")},
                                               {"p", still("[" + std::to_string(x) + ",30,0]")},
                                               {"r", keyed({{0, "45"}, {16, "765"}})}});
        const Judged result = judged(inside({red({{"ks", turning}})}, {{"w", "60"}, {"h", "60"}, {"ks", at(20, 20)}}));
        const auto* finding = result.find(Reason::clip);
        ASSERT_NE(finding, nullptr) << result.text();
        EXPECT_NE(finding->sentence.find(" pixels at frame 0;"), std::string::npos) << finding->sentence;
    }
}

// The command copies every layer and keeps the order; other commands may not.
const std::set<Reason> kNotDoneByThisCommand = {Reason::lost_layer, Reason::order};

// What lies beside the animation in a packed file, which only the command knows; tests/packed has it.
const std::set<Reason> kNotInTheAnimation = {Reason::interaction};

TEST(Reasons, each_has_a_case) {
    std::set<Reason> covered = kNotDoneByThisCommand;
    covered.insert(kNotInTheAnimation.begin(), kNotInTheAnimation.end());
    for (const Case& one : all_cases()) {
        if (one.weight) covered.insert(one.reason);
    }
    for (const Reason reason : lottie::looks::all_reasons()) EXPECT_TRUE(covered.contains(reason)) << code(reason);
}

}  // namespace
