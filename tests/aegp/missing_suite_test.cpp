// A program may link its own answer to a missing suite in place of the handler's.
#include <gtest/gtest.h>

#include <stdexcept>

#include "AEGP_SuiteHandler.h"

void AEGP_SuiteHandler::MissingSuiteError() const {
    throw std::runtime_error("this program's own answer");
}

namespace {

TEST(MissingSuite, is_answered_by_the_program_if_it_has_an_answer) {
    SPBasicSuite basic = {};
    basic.AcquireSuite = [](const char*, int32, const void** suite) -> SPErr {
        *suite = nullptr;
        return 1;
    };
    AEGP_SuiteHandler suites(&basic);
    EXPECT_THROW(suites.StreamSuite4(), std::runtime_error);
}

}  // namespace
