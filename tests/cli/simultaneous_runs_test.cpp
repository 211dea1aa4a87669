// Two runs at once over one file, and over one set of settings.
#include <gmock/gmock.h>

#include <chrono>
#include <iostream>
#include <random>
#include <thread>

#include "animations.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using test::Start;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr int kRepetitions = 40;
constexpr int kLongestDelay = 8000;  // microseconds; about as long as a run

// Both work in the same folder; each has its own standard streams.
class Runner {
  public:
    Runner(const Sandbox& shared, const std::string& prefix) {
        start_.arguments = {"-i", shared.path("a.json"), "--prefix", prefix};
        start_.environment = {{"XDG_CONFIG_HOME", shared.path("config")}};
        start_.without_settings_folder = true;
    }

    Finished run_after(std::chrono::microseconds delay) const {
        std::this_thread::sleep_for(delay);
        return exflate(own_, start_);
    }

  private:
    Sandbox own_;
    Start start_;
};

std::string result_of(const std::string& prefix) {
    const Sandbox sandbox;
    return exflate(sandbox, {sandbox.write("a.json", test::one_nest()), "--prefix", prefix}).out;
}

TEST(SimultaneousRuns, one_of_two_wins_completely) {
    const auto seed = std::random_device()();
    std::cout << "seed " << seed << "\n";
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> delay(0, kLongestDelay);
    const std::string one = result_of("one");
    const std::string two = result_of("two");
    ASSERT_NE(one, two);
    const Sandbox shared;
    const Runner first(shared, "one");
    const Runner second(shared, "two");
    for (int i = 0; i < kRepetitions; ++i) {
        shared.write("a.json", test::one_nest());
        const std::chrono::microseconds before_first(delay(random));
        const std::chrono::microseconds before_second(delay(random));
        Finished of_first;
        std::thread beside([&] { of_first = first.run_after(before_first); });
        const Finished of_second = second.run_after(before_second);
        beside.join();
        ASSERT_EQ(of_first.exit_code, 0) << of_first.err;
        ASSERT_EQ(of_second.exit_code, 0) << of_second.err;
        ASSERT_THAT(shared.read("a.json"), AnyOf(one, two));
        ASSERT_THAT(shared.names(), ElementsAre("a.json", "config"));
        ASSERT_THAT(shared.names("config/exflate"), ElementsAre("settings"));
        ASSERT_THAT(of_first.err + of_second.err, Not(HasSubstr("settings")));
    }
}

}  // namespace
