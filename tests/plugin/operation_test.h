// What the tests of the operations share: a small project, and sweeps that make every call and every suite fail in
// turn.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "EX_Util.h"
#include "fake_host/fake_host.h"

// Composition "main" holds, from the top, "above", "nest" and "below"; "nest" shows the composition "inner", which
// holds "a", "b" and "c". The walk of the project is root, footage, inner, main: 1, 2, 3 in scripts.
class OperationTest : public testing::Test {
  protected:
    OperationTest() {
        footage = host.add_item("footage", AEGP_ItemType_FOOTAGE);
        inner = host.add_comp("inner");
        main = host.add_comp("main");
        a = host.add_layer(inner, "a", footage);
        b = host.add_layer(inner, "b", footage);
        c = host.add_layer(inner, "c", footage);
        above = host.add_layer(main, "above", footage);
        nest = host.add_layer(main, "nest", inner->item);
        below = host.add_layer(main, "below", footage);
        main->selection = {nest};
        host.active_item = main->item;
    }

    void TearDown() override {
        EXPECT_EQ(host.held, 0) << "a suite was not released";
        EXPECT_THAT(host.not_open, testing::IsEmpty()) << "something was given back that was not held";
    }

    // Every call of the operation fails once: the code comes back, and that call is the last.
    void expect_chain(const std::function<void()>& prepare, const std::function<A_Err()>& operation) {
        int calls = 0;
        for (int n = 1;; ++n) {
            prepare();
            host.forget_calls();
            host.fail_at = n;
            const A_Err err = operation();
            calls = static_cast<int>(host.calls.size());
            if (calls < n) {
                EXPECT_EQ(err, A_Err_NONE);
                break;
            }
            EXPECT_EQ(err, fake::Host::kInjected) << "call " << n << ": " << host.calls.back();
            EXPECT_EQ(calls, n) << "a call was made after the failing one: " << host.calls.back();
            EXPECT_EQ(host.held, 0);
        }
        host.fail_at = 0;
        EXPECT_GT(calls, 0) << "nothing was swept";
    }

    // Every suite that the operation acquires is refused once: 516 comes back.
    void expect_missing_suites(const std::function<void()>& prepare, const std::function<A_Err()>& operation) {
        prepare();
        const std::set<std::string> suites = suites_of(operation);
        EXPECT_FALSE(suites.empty());
        for (const std::string& suite : suites) {
            prepare();
            host.refused = {suite};
            EXPECT_EQ(operation(), 516) << suite;
            EXPECT_EQ(host.held, 0) << suite;
        }
        host.refused.clear();
    }

    // The suites that the operation acquires, each once.
    std::set<std::string> suites_of(const std::function<A_Err()>& operation) {
        host.acquired.clear();
        EXPECT_EQ(operation(), A_Err_NONE);
        return {host.acquired.begin(), host.acquired.end()};
    }

    // The operation fails with the host's code where a call contains the text. What is then open stays so.
    void expect_left_open(const std::string& failing, const std::vector<std::string>& entries,
                          const std::function<A_Err()>& operation) {
        host.forget_calls();
        host.fail_on = failing;
        EXPECT_EQ(operation(), fake::Host::kInjected) << failing;
        EXPECT_EQ(host.open, entries) << failing;
        host.fail_on.clear();
    }

    static void expect_same(const std::vector<fake::Keyframe>& copies, const std::vector<fake::Keyframe>& originals) {
        ASSERT_EQ(copies.size(), originals.size());
        for (std::size_t i = 0; i < copies.size(); ++i) {
            const fake::Keyframe& original = originals[i];
            EXPECT_EQ(fake::text_of(copies[i].time), fake::text_of(original.time));
            EXPECT_EQ(copies[i].value, original.value);
            EXPECT_EQ(copies[i].flags, original.flags);
            EXPECT_EQ(copies[i].in, original.in);
            EXPECT_EQ(copies[i].out, original.out);
            EXPECT_EQ(copies[i].in_eases, original.in_eases);
            EXPECT_EQ(copies[i].out_eases, original.out_eases);
            EXPECT_EQ(copies[i].in_tangent, original.in_tangent);
            EXPECT_EQ(copies[i].out_tangent, original.out_tangent);
        }
    }

    void expect_faults_end_it(
        const std::function<A_Err()>& operation, const std::function<void()>& prepare = [] {}) {
        expect_chain(prepare, operation);
        expect_missing_suites(prepare, operation);
    }

    fake::Host host;
    CommandOptions options = {};
    PluginInfo info = {host.basic(), 7, &options};
    fake::Item* footage = nullptr;
    fake::Comp* inner = nullptr;
    fake::Comp* main = nullptr;
    fake::Layer* a = nullptr;
    fake::Layer* b = nullptr;
    fake::Layer* c = nullptr;
    fake::Layer* above = nullptr;
    fake::Layer* nest = nullptr;
    fake::Layer* below = nullptr;
};

// The calls that find the number of the last item by walking over all of them.
inline std::vector<std::string> walk_to(const std::vector<std::string>& items) {
    std::vector<std::string> walk = {"Item5.GetItemID(" + items.back() + ")", "Proj5.GetProjectByIndex(0)",
                                     "Item6.GetFirstProjItem(project)"};
    for (const std::string& item : items) {
        walk.push_back("Item6.GetItemID(" + item + ")");
        if (item != items.back()) walk.push_back("Item6.GetNextProjItem(project, " + item + ")");
    }
    return walk;
}

using testing::ElementsAre;
using testing::IsEmpty;
