// The plug-in's outward functions with hosts that behave like none: the globals before any call, a host that throws.
#include <gtest/gtest.h>

#include <stdexcept>

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

TEST(Outward, no_exception_of_the_host_leaves_the_plugin) {
    SPBasicSuite throwing = {};
    throwing.AcquireSuite = [](const char*, int32, const void**) -> SPErr { throw std::runtime_error("no host"); };
    EXPECT_EQ(EntryPointFunc(&throwing, 114, 0, 7, nullptr), A_Err_GENERIC);
    EXPECT_EQ(UpdateMenuHook(nullptr, nullptr, AEGP_WindType_NONE), A_Err_GENERIC);

    A_Boolean handled = false;
    EXPECT_EQ(CommandHook(nullptr, nullptr, S_Exflate_cmd, AEGP_HP_BeforeAE, false, &handled), A_Err_GENERIC);
}
