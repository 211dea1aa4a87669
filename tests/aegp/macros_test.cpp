// The chain of guarded calls, and clearing.
#include "AE_Macros.h"

#include <gtest/gtest.h>

#include "AE_GeneralPlug.h"

namespace {

class ErrorChain : public testing::Test {
  protected:
    A_Err step(A_Err result) {
        ++steps_;
        return result;
    }

    int steps_ = 0;
};

TEST_F(ErrorChain, err_runs_each_call_while_all_succeed) {
    A_Err err = A_Err_NONE;
    ERR(step(A_Err_NONE));
    ERR(step(A_Err_NONE));
    EXPECT_EQ(steps_, 2);
    EXPECT_EQ(err, A_Err_NONE);
}

TEST_F(ErrorChain, err_keeps_the_failure_and_runs_nothing_after_it) {
    A_Err err = A_Err_NONE;
    ERR(step(A_Err_ALLOC));
    ERR(step(A_Err_NONE));
    ERR(step(A_Err_GENERIC));
    EXPECT_EQ(steps_, 1);
    EXPECT_EQ(err, A_Err_ALLOC);
}

TEST_F(ErrorChain, err2_runs_after_a_failure_and_keeps_the_first_one) {
    A_Err err = A_Err_ALLOC;
    A_Err err2 = A_Err_NONE;
    ERR2(step(A_Err_PARAMETER));
    EXPECT_EQ(steps_, 1);
    EXPECT_EQ(err, A_Err_ALLOC);
    EXPECT_EQ(err2, A_Err_PARAMETER);
}

TEST_F(ErrorChain, err2_gives_its_failure_to_a_chain_without_one) {
    A_Err err = A_Err_NONE;
    A_Err err2 = A_Err_NONE;
    ERR2(step(A_Err_PARAMETER));
    EXPECT_EQ(err, A_Err_PARAMETER);
}

TEST_F(ErrorChain, err_is_one_statement_under_an_if_without_braces) {
    A_Err err = A_Err_NONE;
    if (steps_ > 0)
        ERR(step(A_Err_GENERIC));
    else
        ERR(step(A_Err_ALLOC));
    EXPECT_EQ(err, A_Err_ALLOC);
}

TEST(ClearStruct, zeroes_every_byte) {
    AEGP_CollectionItemV2 item;
    memset(&item, 0xFF, sizeof item);
    AEFX_CLR_STRUCT(item);
    const unsigned char zeros[sizeof item] = {};
    EXPECT_EQ(memcmp(&item, zeros, sizeof item), 0);
}

}  // namespace
