// Every suite: its name, the integer it is acquired with, its length and the place of each slot.
#include "layout_checks.h"

// A pointer is eight bytes on every system the host runs on.
static_assert(sizeof(void*) == 8);

CHECK_TEXT(kAEGPCommandSuite, "AEGP Command Suite");
CHECK_TEXT(kAEGPRegisterSuite, "AEGP Register Suite");
CHECK_TEXT(kAEGPUtilitySuite, "AEGP Utility Suite");
CHECK_TEXT(kAEGPMemorySuite, "AEGP Memory Suite");
CHECK_TEXT(kAEGPCollectionSuite, "AEGP Collection Suite");
CHECK_TEXT(kAEGPItemSuite, "AEGP Item Suite");
CHECK_TEXT(kAEGPProjSuite, "AEGP Proj Suite");
CHECK_TEXT(kAEGPCompSuite, "AEGP Comp Suite");
CHECK_TEXT(kAEGPLayerSuite, "AEGP Layer Suite");
CHECK_TEXT(kAEGPFootageSuite, "AEGP Footage Suite");
CHECK_TEXT(kAEGPStreamSuite, "AEGP Stream Suite");
CHECK_TEXT(kAEGPKeyframeSuite, "AEGP Keyframe Suite");
CHECK_TEXT(kAEGPEffectSuite, "AEGP Effect Suite");

// Macro, integer, table, slots.
#define CHECK_SUITE(family, number, integer, slots)       \
    CHECK_VALUE(kAEGP##family##Version##number, integer); \
    CHECK_SIZE(AEGP_##family##number, (slots)*8, 8)

CHECK_SUITE(CommandSuite, 1, 1, 8);
CHECK_SUITE(RegisterSuite, 5, 6, 12);
CHECK_SUITE(UtilitySuite, 3, 7, 25);
CHECK_SUITE(UtilitySuite, 6, 13, 33);
CHECK_SUITE(MemorySuite, 1, 1, 8);
CHECK_SUITE(CollectionSuite, 2, 2, 6);
CHECK_SUITE(ItemSuite, 1, 3, 20);
CHECK_SUITE(ItemSuite, 5, 7, 22);
CHECK_SUITE(ItemSuite, 6, 10, 26);
CHECK_SUITE(ItemSuite, 8, 13, 27);
CHECK_SUITE(ProjSuite, 5, 8, 14);
CHECK_SUITE(ProjSuite, 6, 9, 14);
CHECK_SUITE(CompSuite, 4, 9, 28);
CHECK_SUITE(CompSuite, 6, 14, 34);
CHECK_SUITE(CompSuite, 7, 15, 34);
CHECK_SUITE(CompSuite, 11, 25, 44);
CHECK_SUITE(LayerSuite, 4, 10, 45);
CHECK_SUITE(LayerSuite, 5, 11, 46);
CHECK_SUITE(LayerSuite, 6, 12, 46);
CHECK_SUITE(LayerSuite, 7, 13, 48);
CHECK_SUITE(FootageSuite, 5, 11, 21);
CHECK_SUITE(StreamSuite, 4, 9, 22);
CHECK_SUITE(KeyframeSuite, 4, 4, 20);
CHECK_SUITE(EffectSuite, 3, 3, 17);

// By its place, because include/ is not on the path when the kit's headers are.
#define SLOT(structure, index, function) CHECK_FIELD(structure, function, (index)*8);
#include "../include/suites.def"
