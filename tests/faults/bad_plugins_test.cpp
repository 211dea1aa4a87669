// The sweep over plug-ins that break one promise each: every check must catch its own, and nothing else must be found.
#include <gmock/gmock.h>

#include <set>
#include <stdexcept>

#include "sweep.h"

namespace faults {
namespace {

constexpr Part kStart = "start of the undo group";
constexpr Part kWork = "work";
constexpr Part kTouch = "finishing touch";
constexpr Part kEnd = "end of the undo group";

class SmallReader : public PartReader {
  public:
    Part part_of(const MadeCall& call) override {
        if (call.is("AEGP_StartUndoGroup")) return kStart;
        if (call.is("AEGP_EndUndoGroup")) return kEnd;
        if (is_touched_) return kTouch;
        is_touched_ = call.is("AEGP_DisposeCollection");
        return kWork;
    }
    Part part_of_acquisition(std::string_view) override { return is_touched_ ? kTouch : kWork; }

  private:
    bool is_touched_ = false;
};

Promise small_promise() {
    return {
        .rules = {{kStart, Code::returned, {kEnd}},
                  {kWork, Code::returned, {kEnd}},
                  {kTouch, Code::dropped, {kTouch}},
                  {kEnd, Code::returned, {}}},
        .left_to_host = {},
        .frees_locked_memory_in = {},
        .group_end = kEnd,
        .reader = [](const Scenario&) { return std::make_unique<SmallReader>(); },
    };
}

Scenario two_selected_layers() {
    return {.name = "two_selected_layers", .door = VisitedDoor::command, .build = [](Scene& scene) {
                scene.project.open_comp(&scene.comp);
                auto& first = scene.layer("First");
                auto& second = scene.layer("Second");
                scene.comp.select({&first, &second});
            }};
}

SweepReport sweep_small(const std::string& module) {
    const Subject subject{std::filesystem::path(BAD_PLUGINS) / (module + ".so"), small_promise()};
    return sweep(subject, two_selected_layers(), {.seconds_per_visit = module == "hangs" ? 1U : 60U});
}

struct BadPlugin {
    std::string module;
    std::string check;

    friend std::ostream& operator<<(std::ostream& out, const BadPlugin& plugin) { return out << plugin.module; }
};

const std::vector<BadPlugin> kBadPlugins = {
    {"crashes", "crash"},
    {"hangs", "hang"},
    {"throws", "exception"},
    {"swallows_an_error", "error-swallowed"},
    {"returns_another_code", "code-changed"},
    {"stops_for_a_minor_failure", "run-stopped"},
    {"goes_on_after_an_error", "calls-after"},
    {"leaves_the_group_open", "undo-group"},
    {"holds_a_suite", "suite-held"},
    {"leaves_a_handle", "handle-left"},
    {"frees_locked_memory", "handle-locked"},
    {"disposes_twice", "handle-misused"},
    {"forgets_that_it_handled", "not-handled"},
    {"edits_outside_its_group", "not-undone"},
};

class BadPlugins : public testing::TestWithParam<BadPlugin> {};

TEST_P(BadPlugins, is_caught_by_its_own_check_and_by_no_other) {
    const SweepReport report = sweep_small(GetParam().module);
    EXPECT_THAT(report.findings, testing::Not(testing::IsEmpty()));
    EXPECT_THAT(report.findings, testing::Each(testing::StartsWith(GetParam().check + ": ")));
    EXPECT_GT(report.figures.broken, 0U);
}

INSTANTIATE_TEST_SUITE_P(Checks, BadPlugins, testing::ValuesIn(kBadPlugins),
                         [](const auto& plugin) { return plugin.param.module; });

TEST(SmallPlugin, that_keeps_every_promise_passes) {
    const SweepReport report = sweep_small("keeps_every_promise");
    EXPECT_THAT(report.findings, testing::IsEmpty());
    EXPECT_GT(report.figures.returned, 40U);
    EXPECT_GT(report.figures.dropped, 10U);
}

TEST(Checks, have_a_bad_plugin_each) {
    std::set<std::string_view> caught;
    for (const BadPlugin& plugin : kBadPlugins) caught.insert(plugin.check);
    for (const auto& [check, question] : kChecks) EXPECT_TRUE(caught.contains(check)) << check << ": " << question;
    EXPECT_EQ(caught.size(), std::size(kChecks));
}

TEST(Sweep, refuses_a_plugin_that_does_not_start) {
    EXPECT_THROW(sweep({"no/such/module.so", small_promise()}, two_selected_layers()), std::runtime_error);
}

}  // namespace
}  // namespace faults
