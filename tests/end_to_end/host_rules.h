// Small animations and one run over them, for the tests of what a host may choose.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "whole_run.h"

namespace end_to_end {

using host::model::Comp;
using host::model::HostRules;
using host::model::Layer;

// ---- Small animations of 30 frames per second

inline std::string transform(const std::string& position) {
    return R"("ks":{"o":{"a":0,"k":80},"r":{"a":0,"k":0},"p":)" + position +
           R"(,"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}})";
}

inline const std::string kStill = transform(R"({"a":0,"k":[50,40,0]})");
inline const std::string kMoving =
    transform(R"({"a":1,"k":[{"i":{"x":0.6,"y":1},"o":{"x":0.4,"y":0},"t":0,"s":[10,20,0]},{"t":30,"s":[70,20,0]}]})");

inline std::string layer(int ind, const std::string& name, const std::string& more = "",
                         const std::string& ks = kStill) {
    return R"({"ddd":0,"ind":)" + std::to_string(ind) + R"(,"nm":")" + name + R"(",)" + ks +
           R"(,"ty":4,"shapes":[],"ip":0,"op":90,"st":0)" + more + "}";
}

inline std::string nest(int ind, const std::string& name, const std::string& asset, const std::string& times,
                        const std::string& ks = kStill, const std::string& more = "") {
    return R"({"ddd":0,"ind":)" + std::to_string(ind) + R"(,"nm":")" + name + R"(","refId":")" + asset + R"(",)" + ks +
           R"(,"ty":0,"w":100,"h":80,)" + times + more + "}";
}

inline const std::string kFull = R"("ip":0,"op":90,"st":0)";

inline std::string list(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) result += (result.empty() ? "" : ",") + text;
    return "[" + result + "]";
}

inline std::string asset(const std::string& id, const std::vector<std::string>& layers) {
    return R"({"id":")" + id + R"(","nm":")" + id + R"(","layers":)" + list(layers) + "}";
}

inline std::string animation(const std::vector<std::string>& assets, const std::vector<std::string>& layers) {
    return R"({"v":"5.7.4","fr":30,"ip":0,"op":90,"w":100,"h":80,"nm":"Main","assets":)" + list(assets) +
           R"(,"layers":)" + list(layers) + "}";
}

// "Above", the nest "Intro" of "Wheel" and "Cart", and "Below".
inline std::string one_nest(const std::string& times = kFull, const std::string& ks = kStill) {
    return animation({asset("inner", {layer(1, "Wheel"), layer(2, "Cart")})},
                     {layer(1, "Above"), nest(2, "Intro", "inner", times, ks), layer(3, "Below")});
}

// ---- Looking at what came of it

inline std::vector<std::string> names_of(const std::vector<Layer*>& layers) {
    std::vector<std::string> names;
    for (const Layer* each : layers) names.push_back(each->display_name());
    return names;
}

inline std::vector<std::string> stack_of(Comp& comp) {
    std::vector<Layer*> layers;
    for (int i = 0; i < comp.layer_count(); ++i) layers.push_back(&comp.layer_at(i));
    return names_of(layers);
}

inline std::vector<std::string> calls_of(const WholeRun& whole, const std::string& part) {
    std::vector<std::string> found;
    for (const std::string& line : whole.trace()) {
        if (line.find(part) != std::string::npos) found.push_back(line);
    }
    return found;
}

inline double static_number(Layer& owner, int stream, std::size_t dimension = 0) {
    return owner.stream(stream).data().static_value.n[dimension];
}

// One run over the main composition under rules of which one may be turned.
struct OneRun {
    explicit OneRun(
        const std::string& text, const std::function<void(HostRules&)>& turn = [](HostRules&) {})
        : whole(text, turned(turn)), comp(whole.document().main_comp()) {}

    static HostRules turned(const std::function<void(HostRules&)>& turn) {
        HostRules rules;
        turn(rules);
        return rules;
    }

    host::runner::VisitResult on(const std::vector<int>& selected, std::vector<host::scriptui::Action> actions = {}) {
        actions.push_back(click("Ok"));
        return whole.run(comp, selected, actions);
    }

    std::vector<std::string> stack() { return stack_of(comp); }
    std::vector<std::string> selected() const { return names_of(comp.selected_layers()); }
    Layer& named(const std::string& name) {
        Layer* found = comp.layer_named(name);
        if (found == nullptr) throw std::runtime_error("there is no layer " + name);
        return *found;
    }

    WholeRun whole;
    Comp& comp;
};

inline const auto kDiscard = click("Discard pre-comp attributes");

// A failed run closes its group, changes what it changed in one step, and gives its suites back.
inline void expect_failed_in_one_step(OneRun& run, const host::runner::VisitResult& outcome,
                                      const std::string& before) {
    EXPECT_TRUE(outcome.has_failed());
    EXPECT_FALSE(outcome.has_thrown);
    EXPECT_TRUE(outcome.is_handled);
    EXPECT_THAT(outcome.alerts, testing::IsEmpty());
    EXPECT_THAT(outcome.undo_steps, testing::ElementsAre("Exflate"));
    EXPECT_EQ(run.comp.project().undo().open_groups(), 0);
    EXPECT_THAT(run.whole.session().suites().suites_held(), testing::IsEmpty());
    run.comp.project().undo().undo();
    EXPECT_EQ(run.whole.document().write(), before);
}

}  // namespace end_to_end
