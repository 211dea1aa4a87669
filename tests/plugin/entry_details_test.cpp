// The plug-in's globals before the host has called anything.
#include <gtest/gtest.h>

#include "Exflate.h"

namespace {

// Read while the program starts, before any test writes them.
const SPBasicSuite* const basic_at_start = sP;
const AEGP_PluginID id_at_start = S_my_id;
const AEGP_Command command_at_start = S_Exflate_cmd;

}  // namespace

TEST(Globals, are_zero_until_the_host_calls) {
    EXPECT_EQ(basic_at_start, nullptr);
    EXPECT_EQ(id_at_start, 0);
    EXPECT_EQ(command_at_start, 0);
}
