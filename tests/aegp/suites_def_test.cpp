// The list of suites and slots: complete, in order, without duplicates.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "AE_GeneralPlug.h"

namespace {

struct ListedSlot {
    std::string structure;
    size_t index;
    std::string function;
};

struct ListedSuite {
    std::string structure;
    std::string accessor;
    std::string name;
    int version;
    size_t size;
    std::vector<ListedSlot> slots;
    std::string end;
};

std::vector<ListedSuite> listed_suites() {
    std::vector<ListedSuite> suites;
#define SUITE(structure, accessor, name, version) \
    suites.push_back({#structure, #accessor, name, version, sizeof(structure), {}, {}});
#define SLOT(structure, index, function) suites.back().slots.push_back({#structure, index, #function});
#define SUITE_END(structure) suites.back().end = #structure;
#include "suites.def"
    return suites;
}

TEST(SuitesDef, lists_24_suites_alone) {
    int suites = 0;
#define SUITE(structure, accessor, name, version) ++suites;
#include "suites.def"
    EXPECT_EQ(suites, 24);
}

TEST(SuitesDef, lists_620_slots_alone) {
    int slots = 0;
#define SLOT(structure, index, function) ++slots;
#include "suites.def"
    EXPECT_EQ(slots, 620);
}

TEST(SuitesDef, leaves_no_macro_behind) {
#define SUITE(structure, accessor, name, version)
#include "suites.def"
#if defined(SUITE) || defined(SLOT) || defined(SUITE_END)
    FAIL();
#endif
}

TEST(SuitesDef, counts_the_slots_of_each_suite_from_0_and_closes_it) {
    for (const ListedSuite& suite : listed_suites()) {
        SCOPED_TRACE(suite.structure);
        for (size_t i = 0; i < suite.slots.size(); ++i) {
            EXPECT_EQ(suite.slots[i].index, i);
            EXPECT_EQ(suite.slots[i].structure, suite.structure);
        }
        EXPECT_EQ(suite.end, suite.structure);
    }
}

TEST(SuitesDef, fills_each_table_to_its_last_pointer) {
    for (const ListedSuite& suite : listed_suites()) {
        EXPECT_EQ(suite.slots.size() * sizeof(void*), suite.size) << suite.structure;
    }
}

TEST(SuitesDef, names_each_slot_of_a_suite_once) {
    for (const ListedSuite& suite : listed_suites()) {
        std::set<std::string> functions;
        for (const ListedSlot& slot : suite.slots) EXPECT_TRUE(functions.insert(slot.function).second) << slot.function;
    }
}

TEST(SuitesDef, names_each_suite_once_by_structure_and_by_name_and_integer) {
    std::set<std::string> structures;
    std::set<std::pair<std::string, int>> keys;
    for (const ListedSuite& suite : listed_suites()) {
        EXPECT_TRUE(structures.insert(suite.structure).second) << suite.structure;
        EXPECT_TRUE(keys.insert({suite.name, suite.version}).second) << suite.structure;
        EXPECT_EQ("AEGP_" + suite.accessor, suite.structure);
    }
}

TEST(SuitesDef, gives_the_published_integers) {
#define SUITE(structure, accessor, name, version) const int accessor = version;
#include "suites.def"
    EXPECT_EQ(CommandSuite1, kAEGPCommandSuiteVersion1);
    EXPECT_EQ(RegisterSuite5, kAEGPRegisterSuiteVersion5);
    EXPECT_EQ(UtilitySuite3, kAEGPUtilitySuiteVersion3);
    EXPECT_EQ(UtilitySuite6, kAEGPUtilitySuiteVersion6);
    EXPECT_EQ(MemorySuite1, kAEGPMemorySuiteVersion1);
    EXPECT_EQ(CollectionSuite2, kAEGPCollectionSuiteVersion2);
    EXPECT_EQ(ItemSuite1, kAEGPItemSuiteVersion1);
    EXPECT_EQ(ItemSuite5, kAEGPItemSuiteVersion5);
    EXPECT_EQ(ItemSuite6, kAEGPItemSuiteVersion6);
    EXPECT_EQ(ItemSuite8, kAEGPItemSuiteVersion8);
    EXPECT_EQ(ProjSuite5, kAEGPProjSuiteVersion5);
    EXPECT_EQ(ProjSuite6, kAEGPProjSuiteVersion6);
    EXPECT_EQ(CompSuite4, kAEGPCompSuiteVersion4);
    EXPECT_EQ(CompSuite6, kAEGPCompSuiteVersion6);
    EXPECT_EQ(CompSuite7, kAEGPCompSuiteVersion7);
    EXPECT_EQ(CompSuite11, kAEGPCompSuiteVersion11);
    EXPECT_EQ(LayerSuite4, kAEGPLayerSuiteVersion4);
    EXPECT_EQ(LayerSuite5, kAEGPLayerSuiteVersion5);
    EXPECT_EQ(LayerSuite6, kAEGPLayerSuiteVersion6);
    EXPECT_EQ(LayerSuite7, kAEGPLayerSuiteVersion7);
    EXPECT_EQ(FootageSuite5, kAEGPFootageSuiteVersion5);
    EXPECT_EQ(StreamSuite4, kAEGPStreamSuiteVersion4);
    EXPECT_EQ(KeyframeSuite4, kAEGPKeyframeSuiteVersion4);
    EXPECT_EQ(EffectSuite3, kAEGPEffectSuiteVersion3);
}

}  // namespace
