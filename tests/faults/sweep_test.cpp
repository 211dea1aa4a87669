// The sweep over this plug-in: every failure path, in every scenario; and the page with its figures.
#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <iterator>

#include "table.h"

namespace faults {
namespace {

constexpr const char* kRefresh = "docs/faults.md is out of date; regenerate it with: fault_table docs/faults.md";
constexpr std::size_t kMostFindingsShown = 20;

std::string committed_page() {
    std::ifstream in(FAULT_TABLE, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

Figures committed_figures(const std::string& scenario) {
    for (const auto& [title, figures] : read_rows(committed_page()))
        if (title == scenario) return figures;
    ADD_FAILURE() << scenario << " is missing. " << kRefresh;
    return {};
}

class Sweep : public testing::TestWithParam<Scenario> {};

TEST_P(Sweep, keeps_every_promise_whatever_call_fails) {
    const Scenario& scenario = GetParam();
    const SweepReport report = sweep({PLUGIN_MODULE, exflate_promise()}, scenario, usual_effort());
    std::cout << report.figures.visits() << " visits, stride " << report.stride << " (EXFLATE_SWEEP=full takes all)\n";

    for (std::size_t i = 0; i < std::min(report.findings.size(), kMostFindingsShown); ++i)
        ADD_FAILURE() << report.findings[i];
    EXPECT_EQ(report.findings.size(), 0U);
    EXPECT_GT(report.figures.returned, 0U);

    const Figures committed = committed_figures(scenario.name);
    EXPECT_EQ(report.figures.calls, committed.calls) << kRefresh;
    EXPECT_EQ(report.figures.acquisitions, committed.acquisitions) << kRefresh;
    if (report.stride == 1) {
        EXPECT_EQ(row_line(scenario.name, report.figures), row_line(scenario.name, committed)) << kRefresh;
    }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, Sweep, testing::ValuesIn(scenarios()),
                         [](const auto& scenario) { return scenario.param.name; });

TEST(Sweep, refuses_a_plugin_that_does_not_start) {
    EXPECT_THROW(sweep({"no/such/module.so", exflate_promise()}, scenarios().front()), std::runtime_error);
}

TEST(FaultTable, has_all_scenarios_in_full_and_their_totals) {
    const std::vector<Row> rows = read_rows(committed_page());
    EXPECT_EQ(table_page(rows), committed_page()) << kRefresh;
    ASSERT_EQ(rows.size(), scenarios().size()) << kRefresh;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& [title, figures] = rows[i];
        EXPECT_EQ(title, scenarios()[i].name) << kRefresh;
        for (std::size_t kind = 0; kind < figures.swept.size(); ++kind) {
            const bool counts_suites = validator::counts_suites(kSweptKinds[kind]);
            EXPECT_EQ(figures.swept[kind], counts_suites ? figures.acquisitions : figures.calls) << title;
        }
        EXPECT_EQ(figures.returned + figures.dropped, figures.visits()) << title;
        EXPECT_EQ(figures.broken, 0U) << title;
    }
}

}  // namespace
}  // namespace faults
