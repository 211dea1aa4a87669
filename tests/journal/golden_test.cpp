// The journals in tests/golden/journals are replayed against the plug-in as it was just built.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "recording.h"

namespace {

using test::Recording;
using test::words;

std::string golden(const std::string& name) {
    std::ifstream stream(std::string(GOLDEN_JOURNALS) + '/' + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(GoldenJournals, of_a_typical_request_replays) {
    EXPECT_EQ(words(Recording(EXFLATE_MODULE).replay(golden("typical_request.journal"))), "same");
}

TEST(GoldenJournals, of_names_of_all_planes_replays) {
    EXPECT_EQ(words(Recording(EXFLATE_MODULE).replay(golden("names_of_all_planes.journal"))), "same");
}

TEST(GoldenJournals, of_a_run_with_a_refused_call_replays) {
    Recording refused(EXFLATE_MODULE);
    refused.faults.fail_call(1, 3, host::suites::FaultInjector::Lasting::once, "AEGP_SetLayerParent");
    EXPECT_EQ(refused.run().error, 3);
    std::ofstream(testing::TempDir() + "refused_parent.journal", std::ios::binary) << refused.text();  // to be kept
    EXPECT_EQ(words(refused.replay(golden("refused_parent.journal"))), "same");
}

TEST(GoldenJournals, of_a_run_without_a_suite_replays) {
    Recording refused(EXFLATE_MODULE);
    refused.faults.fail_acquisition(1, 1, host::suites::FaultInjector::Lasting::once, "AEGP_StreamSuite4");
    EXPECT_EQ(refused.run().error, 516);
    std::ofstream(testing::TempDir() + "missing_suite.journal", std::ios::binary) << refused.text();  // to be kept
    EXPECT_EQ(words(refused.replay(golden("missing_suite.journal"))), "same");
}

TEST(GoldenJournals, cut_by_a_crash_replays_as_far_as_it_goes) {
    const std::string journal = golden("cut.journal");
    const auto lines = std::count(journal.begin(), journal.end(), '\n');
    EXPECT_EQ(words(Recording(EXFLATE_MODULE).replay(journal)),
              "cut " + std::to_string(lines) + ": the journal is cut after line " + std::to_string(lines) +
                  "; up to there the plug-in did the same");
}

}  // namespace
