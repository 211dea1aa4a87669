// The whole of one ordinary run, call by call. The approved trace stands in tests/golden/typical_request.trace; a change of
// any call, argument, result or order shows here.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

#include "whole_run.h"

namespace {

using end_to_end::click;
using end_to_end::type;

// Two layers in a pre-comp, the upper one a child of the lower; the pre-comp layer starts at frame 15, moves, and carries
// an effect. Another layer stands above it and one below.
constexpr const char* kAnimation =
    R"({"v":"5.9.6","fr":30,"ip":0,"op":90,"w":400,"h":300,"nm":"Main","ddd":0,"assets":[{"id":"comp_intro","nm":"Intro Comp",)"
    R"("layers":[{"ddd":0,"ind":1,"ty":4,"nm":"Wheel","parent":2,"sr":1,"ks":{"o":{"a":0,"k":100,"ix":11},"r":{"a":0,"k":0,)"
    R"("ix":10,"x":"var $bm_rt;\n$bm_rt = thisComp.layer('Cart').transform.rotation;"},"p":{"a":0,"k":[10,20,0],"ix":2,"l":2},)"
    R"("a":{"a":0,"k":[0,0,0],"ix":1,"l":2},"s":{"a":0,"k":[100,100,100],"ix":6,"l":2}},"ao":0,"shapes":[],"ip":0,"op":90,)"
    R"("st":0,"bm":0},{"ddd":0,"ind":2,"ty":4,"nm":"Cart","sr":1,"ks":{"o":{"a":0,"k":100,"ix":11},"r":{"a":0,"k":0,"ix":10},)"
    R"("p":{"a":0,"k":[50,50,0],"ix":2,"l":2},"a":{"a":0,"k":[0,0,0],"ix":1,"l":2},"s":{"a":0,"k":[100,100,100],"ix":6,)"
    R"("l":2}},"ao":0,"shapes":[],"ip":0,"op":60,"st":0,"bm":0}]}],"layers":[{"ddd":0,"ind":1,"ty":1,"nm":"Above","sr":1,)"
    R"("ks":{"o":{"a":0,"k":50,"ix":11},"r":{"a":0,"k":0,"ix":10},"p":{"a":0,"k":[200,150,0],"ix":2,"l":2},"a":{"a":0,)"
    R"("k":[200,150,0],"ix":1,"l":2},"s":{"a":0,"k":[100,100,100],"ix":6,"l":2}},"ao":0,"sw":400,"sh":300,"sc":"#ff0000",)"
    R"("ip":0,"op":90,"st":0,"bm":0},{"ddd":0,"ind":2,"ty":0,"nm":"Intro","refId":"comp_intro","sr":1,"ks":{"o":{"a":0,)"
    R"("k":100,"ix":11},"r":{"a":0,"k":30,"ix":10},"p":{"a":1,"k":[{"i":{"x":0.667,"y":1},"o":{"x":0.333,"y":0},"t":15,)"
    R"("s":[100,100,0],"to":[10,0,0],"ti":[-10,0,0]},{"t":45,"s":[160,100,0]}],"ix":2,"l":2},"a":{"a":0,"k":[50,50,0],)"
    R"("ix":1,"l":2},"s":{"a":0,"k":[100,100,100],"ix":6,"l":2}},"ao":0,"ef":[{"ty":5,"nm":"Slider Control","np":3,)"
    R"("mn":"ADBE Slider Control","ix":1,"en":1,"ef":[{"ty":0,"nm":"Slider","mn":"ADBE Slider Control-0001","ix":1,"v":{"a":0,)"
    R"("k":7,"ix":1}}]}],"w":100,"h":100,"ip":15,"op":75,"st":15,"bm":0},{"ddd":0,"ind":3,"ty":1,"nm":"Below","sr":1,"ks":{},)"
    R"("ao":0,"sw":400,"sh":300,"sc":"#0000ff","ip":0,"op":90,"st":0,"bm":0}]})";

TEST(TypicalRequest, makes_exactly_the_approved_calls) {
    end_to_end::WholeRun whole(kAnimation);
    const auto outcome = whole.run(whole.document().main_comp(), {1},
                                   {type("prefixInput", "fx"), click("Prepend pre-comp name to extracted layers"),
                                    click("Attempt to correct layers with randomized expressions"),
                                    click("Delete source after exflating"), click("Ok")});
    ASSERT_FALSE(outcome.has_failed());
    EXPECT_TRUE(outcome.alerts.empty());
    EXPECT_TRUE(whole.session().suites().suites_held().empty());

    std::string trace;
    for (const std::string& line : whole.trace()) trace += line + "\n";
    std::ofstream(testing::TempDir() + "typical_request.trace", std::ios::binary) << trace;  // to look at a difference
    EXPECT_EQ(trace, end_to_end::read_file(GOLDEN "/typical_request.trace"));
}

TEST(TypicalRequest, keeps_what_it_keeps_on_purpose_and_gives_everything_else_back) {
    end_to_end::WholeRun whole(kAnimation);
    ASSERT_FALSE(whole.run(whole.document().main_comp(), {1},
                           {click("Attempt to correct layers with randomized expressions"), click("Ok")})
                     .has_failed());
    std::map<std::string, int> kept;
    for (const auto& thing : whole.session().suites().ledger().never_disposed) ++kept[thing.made_by];
    EXPECT_EQ(kept, (std::map<std::string, int>{
                        {"CompSuite4.AEGP_GetNewCollectionFromCompSelection", 1},  // the run's selection
                        {"UtilitySuite6.AEGP_ExecuteScript", 1},                   // the dialog's result
                        {"StreamSuite4.AEGP_GetNewLayerStream", 12},  // a seed is looked for in six streams of two layers
                    }));
    EXPECT_EQ(whole.session().suites().ledger().freed_while_locked.size(), 1u);  // the expression that got its seed
    EXPECT_TRUE(whole.session().suites().ledger().used_after_disposal.empty());
    EXPECT_TRUE(whole.session().suites().suites_held().empty());
}

TEST(TypicalRequest, leaves_the_layers_in_place_of_the_nest_under_a_null_that_moves) {
    end_to_end::WholeRun whole(kAnimation);
    host::model::Comp& comp = whole.document().main_comp();
    ASSERT_FALSE(whole.run(comp, {1}, {click("Ok")}).has_failed());

    std::vector<std::string> names;
    for (int i = 0; i < comp.layer_count(); ++i) names.push_back(comp.layer_at(i).display_name());
    EXPECT_EQ(names, (std::vector<std::string>{"Above", "Wheel", "Cart", "{{Intro_exflate}}", "Below"}));
    EXPECT_EQ(comp.layer_at(1).parent(), &comp.layer_at(2));
    EXPECT_EQ(comp.layer_at(2).parent(), &comp.layer_at(3));
    EXPECT_EQ(comp.layer_at(3).stream(host::model::kPosition).keyframe_count(), 2u);
    EXPECT_EQ(comp.layer_at(1).effect_count(), 1u);
    EXPECT_EQ(comp.layer_at(1).offset().ticks, 15 * 4000);
}

}  // namespace
