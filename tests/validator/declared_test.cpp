// Declarations of what is left undone on purpose.
#include "validator/declared.h"

#include <gtest/gtest.h>

namespace validator {
namespace {

using host::suites::HandleKind;

TEST(Declared, tells_kinds_and_functions_apart) {
    const Declared declared(
        "# nothing\n\nleaves stream value of AEGP_GetNewStreamValue # why\n"
        "leaves memory of UtilitySuite6.AEGP_ExecuteScript\n");
    EXPECT_TRUE(declared.leaves(HandleKind::stream_value, "StreamSuite4.AEGP_GetNewStreamValue"));
    EXPECT_FALSE(declared.leaves(HandleKind::stream, "StreamSuite4.AEGP_GetNewStreamValue"));
    EXPECT_TRUE(declared.leaves(HandleKind::memory, "UtilitySuite6.AEGP_ExecuteScript"));
    EXPECT_FALSE(declared.leaves(HandleKind::memory, "UtilitySuite5.AEGP_ExecuteScript"));
}

TEST(Declared, knows_every_verb) {
    const Declared declared(
        "leaves-after-failure effect of AEGP_A\nfrees-locked memory of AEGP_B\ndrops AEGP_C\n"
        "continues with AEGP_D\nleaves-group-open without LayerSuite5\nremembers\ngrows\n");
    EXPECT_TRUE(declared.leaves_after_failure(HandleKind::effect, "S.AEGP_A"));
    EXPECT_FALSE(declared.leaves(HandleKind::effect, "S.AEGP_A"));
    EXPECT_TRUE(declared.frees_locked("S.AEGP_B"));
    EXPECT_TRUE(declared.drops("S.AEGP_C"));
    EXPECT_TRUE(declared.continues_with("S.AEGP_D"));
    EXPECT_TRUE(declared.leaves_group_open_without("LayerSuite5"));
    EXPECT_TRUE(declared.remembers());
    EXPECT_TRUE(declared.grows());
    EXPECT_FALSE(Declared().grows());
}

TEST(Declared, means_several_by_lists_and_stars) {
    const Declared declared(
        "drops LayerSuite5, EffectSuite3.AEGP_Get*\n"
        "leaves-after-failure anything of *\n");
    EXPECT_TRUE(declared.drops("LayerSuite5"));
    EXPECT_TRUE(declared.drops("EffectSuite3.AEGP_GetEffectFlags"));
    EXPECT_FALSE(declared.drops("EffectSuite3.AEGP_SetEffectFlags"));
    EXPECT_FALSE(declared.drops("LayerSuite5.AEGP_GetLayerName"));
    EXPECT_TRUE(declared.leaves_after_failure(HandleKind::memory, "S.AEGP_A"));
    EXPECT_TRUE(declared.leaves_after_failure(HandleKind::block, "AllocateBlock"));
    EXPECT_FALSE(declared.leaves(HandleKind::memory, "S.AEGP_A"));
}

TEST(Declared, refuses_what_it_does_not_understand_with_its_line) {
    for (const char* text : {"forgets everything", "leaves", "leaves nothing of AEGP_A", "drops", "drops A B",
                             "continues AEGP_D", "remembers all", "drops A,", "drops , A"}) {
        try {
            const Declared declared(std::string("# one\n") + text);
            ADD_FAILURE() << text;
        } catch (const DeclarationError& error) {
            EXPECT_NE(std::string(error.what()).find("line 2"), std::string::npos) << error.what();
        }
    }
}

}  // namespace
}  // namespace validator
