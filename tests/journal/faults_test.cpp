// Journals of runs in which the host refused something.
#include <gmock/gmock.h>

#include <cstdlib>

#include "recording.h"

namespace {

using host::suites::FaultInjector;
using test::Recording;
using test::words;

// How many of the faults the ordinary run tries; all of them with EXFLATE_ALL_FAULTS set.
constexpr std::uint64_t kTried = 25;

std::uint64_t stride(std::uint64_t count) {
    return std::getenv("EXFLATE_ALL_FAULTS") ? 1 : count / kTried + 1;
}

class Faults : public testing::TestWithParam<const char*> {};

TEST_P(Faults, are_repeated_by_a_replay_wherever_they_come) {
    Recording whole(GetParam());
    whole.run();
    const std::uint64_t calls = whole.faults.calls_seen();
    ASSERT_GT(calls, 30U);
    for (std::uint64_t n = 1; n <= calls; n += stride(calls)) {
        for (const auto lasting : {FaultInjector::Lasting::once, FaultInjector::Lasting::from_then_on}) {
            Recording run(GetParam());
            run.faults.fail_call(n, 4, lasting);
            run.run();
            EXPECT_NE(run.line_of(" = 4 injected ()"), 0U) << n;
            EXPECT_EQ(words(run.replay()), "same") << n;
        }
    }
}

TEST_P(Faults, include_suites_that_cannot_be_acquired) {
    Recording whole(GetParam());
    whole.run();
    const std::uint64_t acquisitions = whole.faults.acquisitions_seen();
    ASSERT_GT(acquisitions, 4U);
    for (std::uint64_t n = 1; n <= acquisitions; n += stride(acquisitions)) {
        Recording run(GetParam());
        run.faults.fail_acquisition(n, 13);
        run.run();
        EXPECT_NE(run.line_of(" = 13 injected ()"), 0U) << n;
        EXPECT_EQ(words(run.replay()), "same") << n;
    }
}

INSTANTIATE_TEST_SUITE_P(InAnyPlugin, Faults, testing::Values(TALKER, EXFLATE_MODULE),
                         [](const auto& each) { return each.index == 0 ? "talker" : "product"; });

}  // namespace
