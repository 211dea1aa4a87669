// Judging what any command may have done to a stack, with changes written by hand.
#include "looks/judge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "animations.h"
#include "looks/expressions.h"

namespace {

using namespace test;
using namespace lottie::looks;

constexpr auto kKept = Origin::Kind::kept;
constexpr auto kCopied = Origin::Kind::copied;

const std::string kRed = solid(1, "red", 40, 40, "#ff0000", {{"ks", at(20, 20)}});
const std::string kBlue = solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(40, 40)}});
const std::string kGreen = solid(3, "green", 40, 40, "#00ff00");
const std::string kGround = solid(20, "ground", 100, 100, "#cccccc");

// `inside` are the nest's layers, `flat` those of the stack once it is un-nested.
NestReport judged_by_hand(const std::vector<std::string>& inside, const std::vector<std::string>& flat,
                          const std::vector<Origin>& origins) {
    Nesting nesting;
    nesting.inside = inside;
    const std::string before = animation(nesting);
    Judge judge(before);
    return judge.compare({"", {0}, origins}, {{flat.begin(), flat.end()}, {}, flat_animation(flat).size()}).at(0);
}

const Finding* find(const NestReport& report, Reason reason) {
    const auto found = std::find_if(report.findings.begin(), report.findings.end(),
                                    [reason](const Finding& finding) { return finding.reason == reason; });
    return found == report.findings.end() ? nullptr : &*found;
}

TEST(Judge, layers_that_come_out_as_they_were_are_exact) {
    const auto report =
        judged_by_hand({kRed, kBlue}, {kRed, kBlue, kGround}, {{kCopied, 0, 0}, {kCopied, 1, 0}, {kKept, 1, 0}});
    EXPECT_EQ(report.verdict, Verdict::exact);
    EXPECT_EQ(report.name, "Nest");
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].reason, Reason::size);
}

// Three nests inside one another, with a layer that each un-nesting moves a little further.
double strayed_after_three_steps(double each) {
    Nesting nesting;
    const Members size = {{"w", "100"}, {"h", "100"}};
    nesting.inside = {nest_layer(1, "Second", "second", size)};
    nesting.assets = {R"({"id":"second","layers":[)" + nest_layer(1, "Third", "third", size) + "]}",
                      R"({"id":"third","layers":[)" + solid(1, "dot", 2, 2, "#ff0000") + "]}"};
    const std::string before = animation(nesting);
    const std::string outer = "inside";
    Judge judge(before);
    const auto step = [&](const std::string& composition, double off, bool is_main) {
        std::vector<std::string> layers = {solid(1, "dot", 2, 2, "#ff0000", {{"ks", at(off, 0)}})};
        StackChange change{composition, {0}, {{kCopied, 0, 0}}};
        if (is_main) {
            layers.push_back(kGround);
            change.after.push_back({kKept, 1, 0});
        }
        EXPECT_NE(judge.compare(change, {{layers.begin(), layers.end()}, {}, before.size()}).at(0).verdict,
                  Verdict::changes);
        judge.accept();
    };
    step("second", each, false);
    step(outer, 2 * each, false);
    step("", 3 * each, true);
    const auto strayed = judge.compare_whole({{"", 0}, {outer, 0}, {"second", 0}});
    if (strayed.empty()) return 0;
    EXPECT_EQ(strayed.at(0).nests.size(), 3U);
    EXPECT_EQ(strayed.at(0).finding.reason, Reason::place);
    EXPECT_EQ(strayed.at(0).finding.layer, "dot");
    return std::stod(strayed.at(0).finding.sentence.substr(strayed.at(0).finding.sentence.find("up to ") + 6));
}

TEST(Judge, three_steps_that_are_each_invisible_can_be_visible_together) {
    EXPECT_NEAR(strayed_after_three_steps(0.1), 0.3, 1e-3);
    EXPECT_EQ(strayed_after_three_steps(0.08), 0);
}

// A layer with a fractional in-point, in a nest with a fractional start.
TEST(Judge, a_fractional_time_can_be_visible_behind_a_nest_with_a_fractional_start) {
    Nesting nesting;
    nesting.nest = {{"st", "0.7"}};
    nesting.inside = {nest_layer(1, "Second", "second", {{"w", "100"}, {"h", "100"}})};
    nesting.assets = {R"({"id":"second","layers":[)" + solid(1, "dot", 2, 2, "#ff0000", {{"ip", "4.1"}}) + "]}"};
    const std::string before = animation(nesting);
    const std::string outer = "inside";
    Judge judge(before);
    const std::string late = solid(1, "dot", 2, 2, "#ff0000", {{"ip", "4.4"}});
    EXPECT_EQ(judge.compare({outer, {0}, {{kCopied, 0, 0}}}, {{late}, {}, before.size()}).at(0).verdict,
              Verdict::equal_to_the_eye);
    judge.accept();
    const std::string later = solid(1, "dot", 2, 2, "#ff0000", {{"ip", "5.1"}, {"st", "0.7"}});
    judge.compare({"", {0}, {{kCopied, 0, 0}, {kKept, 1, 0}}}, {{later, kGround}, {}, before.size()});
    judge.accept();
    const auto strayed = judge.compare_whole({{outer, 0}});
    ASSERT_EQ(strayed.size(), 1U);
    EXPECT_EQ(strayed.at(0).finding.reason, Reason::trim);
    EXPECT_EQ(strayed.at(0).finding.frame, 5);
}

TEST(Judge, a_layer_that_was_not_copied_is_lost) {
    const auto report = judged_by_hand({kRed, kBlue}, {kRed, kGround}, {{kCopied, 0, 0}, {kKept, 1, 0}});
    const Finding* finding = find(report, Reason::lost_layer);
    ASSERT_NE(finding, nullptr);
    EXPECT_EQ(finding->weight, Weight::change);
    EXPECT_EQ(finding->sentence, "layer \"blue\" is not copied");
    EXPECT_EQ(finding->layer, "blue");
}

TEST(Judge, a_layer_that_was_not_copied_and_draws_nothing_is_harmless) {
    const auto report =
        judged_by_hand({kRed, null_layer(2, "handle")}, {kRed, kGround}, {{kCopied, 0, 0}, {kKept, 1, 0}});
    const Finding* finding = find(report, Reason::lost_layer);
    ASSERT_NE(finding, nullptr);
    EXPECT_EQ(finding->weight, Weight::harmless);
    EXPECT_EQ(report.verdict, Verdict::exact);
}

// The nest faded, with a layer above it, and the stack with red and blue in its place.
NestReport judged_without_fading(const std::string& above, const std::string& above_after) {
    Nesting nesting;
    nesting.above = {above};
    nesting.nest = {{"ks", transform({{"o", still("50")}})}};
    nesting.inside = {kRed, kBlue};
    const std::string before = animation(nesting);
    Judge judge(before);
    return judge
        .compare({"", {1}, {{kKept, 0, 0}, {kCopied, 0, 1}, {kCopied, 1, 1}, {kKept, 2, 0}}},
                 {{above_after, kRed, kBlue, kGround}, {}, before.size()})
        .at(0);
}

TEST(Judge, a_nest_that_was_faded_changes_whatever_else_is_un_nested) {
    EXPECT_TRUE(judged_without_fading(kGreen, kGreen).stands_alone);
    EXPECT_FALSE(judged_by_hand({kRed}, {kRed, kGround}, {{kCopied, 0, 0}, {kKept, 1, 0}}).stands_alone);
}

TEST(Judge, what_a_run_does_to_other_layers_may_be_another_nests_doing) {
    const std::string child = solid(3, "green", 40, 40, "#00ff00", {{"parent", "10"}});
    const auto report = judged_without_fading(child, kGreen);
    EXPECT_EQ(report.verdict, Verdict::changes);
    EXPECT_FALSE(report.stands_alone);
}

TEST(Judge, a_changed_order_is_reported_with_the_first_layer_that_moved) {
    const auto report =
        judged_by_hand({kRed, kBlue}, {kBlue, kRed, kGround}, {{kCopied, 1, 0}, {kCopied, 0, 0}, {kKept, 1, 0}});
    const Finding* finding = find(report, Reason::order);
    ASSERT_NE(finding, nullptr);
    EXPECT_EQ(finding->weight, Weight::change);
    EXPECT_EQ(finding->sentence, "layer \"red\" has another place in the stack");
}

// What a clock that runs in circles would have to do to a layer is looked for in all of its members.
TEST(Judge, a_layer_that_lost_a_member_does_not_run_in_circles) {
    const std::string clock = R"({"a":1,"k":[{"i":{"x":[1],"y":[1]},"o":{"x":[0],"y":[0]},"t":0,"s":[0]},)"
                              R"({"t":10,"s":[0.4]}],"x":"var $bm_rt;\n$bm_rt = loopOut('cycle');"})";
    const std::string keys = keyed({{0, "0,0,0"}, {10, "40,0,0"}});
    std::string cycle = cycle_between(0, 0.4);
    for (std::size_t at = cycle.find('\n'); at != std::string::npos; at = cycle.find('\n')) cycle.replace(at, 1, "\\n");
    const std::string circling = R"({"p":)" + keys.substr(0, keys.size() - 1) + R"(,"x":")" + cycle + "\"}";
    Nesting nesting;
    nesting.nest = {{"tm", clock}};
    nesting.inside = {solid(1, "red", 40, 40, "#ff0000", {{"ks", R"({"p":)" + keys + R"(,"r":{"a":0,"k":0}})"}})};
    const std::string before = animation(nesting);
    const auto has_other_time = [&](const std::string& more) {
        const std::vector<std::string> flat = {solid(1, "red", 40, 40, "#ff0000", {{"ks", circling + more + "}"}}),
                                               kGround};
        Judge judge(before);
        const auto reports = judge.compare({"", {0}, {{kCopied, 0, 0}, {kKept, 1, 0}}},
                                           {{flat.begin(), flat.end()}, {}, flat_animation(flat).size()});
        const Finding* finding = find(reports.at(0), Reason::time_remap);
        return finding != nullptr && finding->weight == Weight::change;
    };
    EXPECT_FALSE(has_other_time(R"(,"r":{"a":0,"k":0})"));
    EXPECT_TRUE(has_other_time(""));
    EXPECT_TRUE(has_other_time(R"(,"r":0)"));
}

TEST(Judge, the_order_of_layers_that_draw_nothing_does_not_matter) {
    const auto report = judged_by_hand({kRed, null_layer(2, "handle")}, {null_layer(2, "handle"), kRed, kGround},
                                       {{kCopied, 1, 0}, {kCopied, 0, 0}, {kKept, 1, 0}});
    EXPECT_EQ(find(report, Reason::order), nullptr);
    EXPECT_EQ(report.verdict, Verdict::exact);
}

TEST(Judge, several_layers_are_reported_in_the_plural) {
    const auto report = judged_by_hand({kRed, kBlue, kGreen}, {kRed, kGround}, {{kCopied, 0, 0}, {kKept, 1, 0}});
    EXPECT_EQ(find(report, Reason::lost_layer)->sentence, "layers \"blue\" and 1 more are not copied");
}

TEST(Judge, findings_come_in_the_order_of_the_reasons) {
    const auto report = judged_by_hand({kRed, kBlue, kGreen}, {kBlue, kRed, kGround},
                                       {{kCopied, 1, 0}, {kCopied, 0, 0}, {kKept, 1, 0}});
    EXPECT_TRUE(std::is_sorted(report.findings.begin(), report.findings.end(),
                               [](const Finding& a, const Finding& b) { return a.reason < b.reason; }));
}

TEST(Judge, a_change_that_does_not_fit_the_animations_is_refused) {
    EXPECT_THROW(judged_by_hand({kRed}, {kRed, kGround}, {{kCopied, 0, 0}}), std::invalid_argument);
    EXPECT_THROW(judged_by_hand({kRed}, {kRed, kGround}, {{kCopied, 7, 0}, {kKept, 1, 0}}), std::out_of_range);
    EXPECT_THROW(judged_by_hand({kRed}, {kRed, kGround}, {{kCopied, 0, 0}, {kKept, 7, 0}}), std::out_of_range);
    const std::string before = animation({});
    Judge judge(before);
    EXPECT_THROW(judge.compare({"nowhere", {0}, {}}, RewrittenStack()), std::invalid_argument);
    EXPECT_THROW(judge.compare({"", {9}, {}}, RewrittenStack()), std::invalid_argument);
    const std::vector<Origin> kept = {{kKept, 0, 0}, {kKept, 1, 0}};
    const std::string nest = nest_layer(10, "Nest", "inside");
    EXPECT_THROW(judge.compare({"", {1}, kept}, {{nest, kGround}, {}, 0}), std::invalid_argument) << "no nest";
    EXPECT_THROW(judge.compare({"", {0}, kept}, {{kGround}, {}, 0}), std::invalid_argument) << "a text is missing";
    EXPECT_THROW(judge.accept(), std::invalid_argument) << "nothing was compared";
}

TEST(Judge, a_file_that_takes_too_much_work_is_refused) {
    const std::string before = animation({});
    const std::vector<Origin> origins = {{kCopied, 0, 0}, {kCopied, 1, 0}, {kKept, 1, 0}};
    const RewrittenStack after = {{kRed, kBlue, kGround}, {}, 0};
    EXPECT_NO_THROW(Judge(before).compare({"", {0}, origins}, after));
    EXPECT_THROW(Judge(before, std::make_shared<Work>(100)).compare({"", {0}, origins}, after), TooMuchWork);
}

bool takes_more_than(std::size_t steps, const Nesting& nesting, const std::vector<std::string>& flat) {
    const std::string before = animation(nesting);
    std::vector<Origin> origins;
    for (std::size_t i = 0; i + 1 < flat.size(); ++i) origins.push_back({kCopied, i, 0});
    origins.push_back({kKept, 1, 0});
    const StackChange change{"", {0}, origins};
    const RewrittenStack after{{flat.begin(), flat.end()}, {}, 0};
    EXPECT_NO_THROW(Judge(before).compare(change, after));
    try {
        Judge(before, std::make_shared<Work>(steps)).compare(change, after);
        return false;
    } catch (const TooMuchWork&) {
        return true;
    }
}

TEST(Judge, outlines_of_many_vertices_that_lie_over_one_another_count_as_work) {
    const auto disc = [](int ind, const std::string& opacity) {
        return shape_layer(ind, "disc",
                           R"({"ty":"sh","ks":)" + circle(1'000, 50, 50, 30) +
                               R"(},{"ty":"fl","c":{"a":0,"k":[1,0,0,1]},"o":{"a":0,"k":100}})",
                           {{"ks", transform({{"o", still(opacity)}})}});
    };
    Nesting nesting;
    nesting.inside = {disc(1, "100"), disc(2, "100")};
    nesting.nest = {{"ks", transform({{"o", still("50")}})}};
    EXPECT_TRUE(takes_more_than(200'000, nesting, {disc(1, "50"), disc(2, "50"), kGround}));
}

TEST(Judge, masks_that_hold_the_cut_of_a_nest_count_as_work) {
    std::string masks;
    for (int i = 0; i < 50; ++i) {
        masks += masks.empty() ? "[" : ",";
        masks +=
            R"({"inv":false,"mode":"a","pt":)" + circle(20, 50, 50, 30) + R"(,"o":{"a":0,"k":100},"x":{"a":0,"k":0}})";
    }
    const Members cut = {{"hasMask", "true"}, {"masksProperties", masks + "]"}};
    Nesting nesting;
    const Members ks = {{"ks", transform({{"r", keyed({{0, "0"}, {19, "90"}})}})}};
    nesting.inside = {solid(1, "red", 40, 40, "#ff0000")};
    nesting.nest = cut;
    nesting.nest.insert(ks.begin(), ks.end());
    EXPECT_TRUE(takes_more_than(400'000, nesting, {solid(1, "red", 40, 40, "#ff0000", nesting.nest), kGround}));
}

// The text of a layer whose name alone is long: nothing in it is shared with other layers.
TEST(Judge, layers_unchanged_since_they_were_accepted_are_not_read_again) {
    constexpr std::size_t kLong = 50'000;
    Nesting nesting;
    nesting.inside = {kRed};
    const std::string before = animation(nesting);
    const std::string red = solid(101, std::string(kLong, 'r'), 40, 40, "#ff0000", {{"ks", at(20, 20)}});
    const auto work = std::make_shared<Work>();
    Judge judge(before, work);
    judge.compare({"", {0}, {{kCopied, 0, 0}, {kKept, 1, 0}}}, {{red, kGround}, {}, before.size()});
    judge.accept();
    *work = Work(kLong / 16);
    EXPECT_NO_THROW(judge.compare({"", {}, {{kKept, 0, 0}, {kKept, 1, 0}}}, {{red, kGround}, {}, before.size()}));
}

TEST(Judge, codes_are_unique_words_with_hyphens) {
    std::vector<std::string_view> codes;
    for (const Reason reason : all_reasons()) codes.push_back(code(reason));
    for (const std::string_view text : codes) {
        EXPECT_EQ(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string_view::npos) << text;
    }
    std::sort(codes.begin(), codes.end());
    EXPECT_EQ(std::adjacent_find(codes.begin(), codes.end()), codes.end());
}

TEST(Judge, the_verdict_is_that_of_the_weightiest_finding) {
    Finding finding{Reason::opacity, Weight::harmless, "", "", "", "", {}};
    EXPECT_EQ(verdict_of({}), Verdict::exact);
    EXPECT_EQ(verdict_of({finding}), Verdict::exact);
    Finding slight = finding;
    slight.weight = Weight::slight;
    EXPECT_EQ(verdict_of({finding, slight}), Verdict::equal_to_the_eye);
    Finding change = finding;
    change.weight = Weight::change;
    EXPECT_EQ(verdict_of({change, slight}), Verdict::changes);
}

}  // namespace
