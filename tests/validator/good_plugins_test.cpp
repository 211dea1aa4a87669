// Good plug-ins, in which nothing may be found: the command's own and the examples. EXFLATE_SEEDS says how many random
// projects each is tried on.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "runner/utf8_locale.h"
#include "validator/examine.h"

namespace validator {
namespace {

struct GoodPlugin {
    const char* name;
    const char* module;
    const char* declared;  // the file; empty for none
};

const GoodPlugin kGoodPlugins[] = {{"Exflate", EXFLATE, EXFLATE_DECLARED},
                                   {"HideLayers", HIDE_LAYERS, ""},
                                   {"EaseKeyframes", EASE_KEYFRAMES, ""},
                                   {"NumberLayers", NUMBER_LAYERS, ""}};

std::uint64_t seeds() {
    const char* wanted = std::getenv("EXFLATE_SEEDS");
    return wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : 50;
}

class GoodPlugins : public testing::TestWithParam<GoodPlugin> {};

TEST_P(GoodPlugins, pass_on_the_highest_rung_without_a_warning) {
    host::runner::use_utf8_locale();
    CheckRequest request;
    request.module = GetParam().module;
    request.last_seed = seeds();
    request.limits.processor_time = std::chrono::seconds(60);
    request.limits.time = std::chrono::minutes(3);
    if (*GetParam().declared != '\0') {
        std::ifstream in(GetParam().declared);
        request.declared = Declared(std::string(std::istreambuf_iterator<char>(in), {}));
    }
    const Examination examination = examine(request, [](const TestResult& result) {
        EXPECT_FALSE(is_bad(result.verdict)) << result.test->id << ": " << result.reason;
        EXPECT_NE(result.verdict, TestVerdict::warning) << result.test->id << ": " << result.reason;
    });
    EXPECT_EQ(examination.results.size(), all_tests().size());
    std::cout << examination.results.size() << " tests, " << examination.visits << " processes, " << examination.faults
              << " faults, seeds 1 to " << request.last_seed << '\n';
}

INSTANTIATE_TEST_SUITE_P(All, GoodPlugins, testing::ValuesIn(kGoodPlugins),
                         [](const auto& plugin) { return plugin.param.name; });

}  // namespace
}  // namespace validator
