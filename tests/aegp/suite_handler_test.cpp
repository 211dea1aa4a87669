// The suite handler against a host that writes down what is asked of it.
#include "AEGP_SuiteHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "counted_allocations.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

using Key = std::pair<std::string, int32>;

struct Accessor {
    const char* accessor;
    const char* name;
    int32 version;
    const void* (*use)(AEGP_SuiteHandler&);

    Key key() const { return {name, version}; }
};

void PrintTo(const Accessor& accessor, std::ostream* out) {
    *out << accessor.accessor;
}

#define ACCESSOR(accessor, name, version)                                                                     \
    Accessor {                                                                                                \
#accessor, name, version, [](AEGP_SuiteHandler & suites) -> const void* { return suites.accessor(); } \
    }

const Accessor kAccessors[] = {
    ACCESSOR(CommandSuite1, "AEGP Command Suite", 1),   ACCESSOR(RegisterSuite5, "AEGP Register Suite", 6),
    ACCESSOR(UtilitySuite3, "AEGP Utility Suite", 7),   ACCESSOR(UtilitySuite6, "AEGP Utility Suite", 13),
    ACCESSOR(MemorySuite1, "AEGP Memory Suite", 1),     ACCESSOR(CollectionSuite2, "AEGP Collection Suite", 2),
    ACCESSOR(ItemSuite1, "AEGP Item Suite", 3),         ACCESSOR(ItemSuite5, "AEGP Item Suite", 7),
    ACCESSOR(ItemSuite6, "AEGP Item Suite", 10),        ACCESSOR(ItemSuite8, "AEGP Item Suite", 13),
    ACCESSOR(ProjSuite5, "AEGP Proj Suite", 8),         ACCESSOR(ProjSuite6, "AEGP Proj Suite", 9),
    ACCESSOR(CompSuite4, "AEGP Comp Suite", 9),         ACCESSOR(CompSuite6, "AEGP Comp Suite", 14),
    ACCESSOR(CompSuite7, "AEGP Comp Suite", 15),        ACCESSOR(CompSuite11, "AEGP Comp Suite", 25),
    ACCESSOR(LayerSuite4, "AEGP Layer Suite", 10),      ACCESSOR(LayerSuite5, "AEGP Layer Suite", 11),
    ACCESSOR(LayerSuite6, "AEGP Layer Suite", 12),      ACCESSOR(LayerSuite7, "AEGP Layer Suite", 13),
    ACCESSOR(FootageSuite5, "AEGP Footage Suite", 11),  ACCESSOR(StreamSuite4, "AEGP Stream Suite", 9),
    ACCESSOR(KeyframeSuite4, "AEGP Keyframe Suite", 4), ACCESSOR(EffectSuite3, "AEGP Effect Suite", 3),
};
static_assert(std::size(kAccessors) == 24);

// What the host of the running test was asked, and what it refuses.
struct HostRecord {
    std::vector<Key> acquired;
    std::vector<Key> released;
    Key refused;
    Key given_without_a_table;
    char table = 0;
};
HostRecord* record = nullptr;

SPErr acquire(const char* name, int32 version, const void** suite) {
    const Key key(name, version);
    record->acquired.push_back(key);
    *suite = nullptr;
    if (key == record->refused) return 1;
    if (key != record->given_without_a_table) *suite = &record->table;
    return 0;
}

SPErr release(const char* name, int32 version) {
    record->released.emplace_back(name, version);
    return 0;
}

class SuiteHandler : public testing::Test {
  protected:
    SuiteHandler() {
        record = &record_;
        basic_.AcquireSuite = acquire;
        basic_.ReleaseSuite = release;
    }
    ~SuiteHandler() override { record = nullptr; }

    HostRecord record_;
    SPBasicSuite basic_ = {};
};

class EachSuite : public SuiteHandler, public testing::WithParamInterface<Accessor> {};

INSTANTIATE_TEST_SUITE_P(All, EachSuite, testing::ValuesIn(kAccessors),
                         [](const auto& tested) { return std::string(tested.param.accessor); });

std::vector<Key> every_key_but(const Key& left_out) {
    std::vector<Key> keys;
    for (const Accessor& accessor : kAccessors) {
        if (accessor.key() != left_out) keys.push_back(accessor.key());
    }
    return keys;
}

TEST_P(EachSuite, is_asked_for_by_its_published_name_and_integer_on_first_use) {
    AEGP_SuiteHandler suites(&basic_);
    EXPECT_EQ(GetParam().use(suites), &record_.table);
    EXPECT_THAT(record_.acquired, ElementsAre(GetParam().key()));
}

TEST_P(EachSuite, is_asked_for_once_however_often_it_is_used) {
    AEGP_SuiteHandler suites(&basic_);
    for (int use = 0; use < 3; ++use) EXPECT_EQ(GetParam().use(suites), &record_.table);
    EXPECT_EQ(record_.acquired.size(), 1u);
}

TEST_P(EachSuite, is_released_once_when_the_handler_goes_and_not_before) {
    {
        AEGP_SuiteHandler suites(&basic_);
        GetParam().use(suites);
        EXPECT_THAT(record_.released, IsEmpty());
    }
    EXPECT_THAT(record_.released, ElementsAre(GetParam().key()));
}

TEST_P(EachSuite, throws_516_when_refused_and_the_others_are_released) {
    record_.refused = GetParam().key();
    const auto operation = [this]() -> A_Err {
        try {
            AEGP_SuiteHandler suites(&basic_);
            for (const Accessor& accessor : kAccessors) {
                if (accessor.key() != GetParam().key()) accessor.use(suites);
            }
            GetParam().use(suites);
            return A_Err_NONE;
        } catch (A_Err missing_suite) {
            return missing_suite;
        }
    };
    EXPECT_EQ(operation(), 516);
    EXPECT_THAT(record_.released, UnorderedElementsAreArray(every_key_but(GetParam().key())));
}

TEST_P(EachSuite, throws_516_when_the_host_agrees_but_gives_no_table) {
    record_.given_without_a_table = GetParam().key();
    AEGP_SuiteHandler suites(&basic_);
    try {
        GetParam().use(suites);
        FAIL() << "nothing was thrown";
    } catch (A_Err missing_suite) {
        EXPECT_EQ(missing_suite, 516);
    }
}

TEST_F(SuiteHandler, asks_for_nothing_before_the_first_use) {
    { AEGP_SuiteHandler suites(&basic_); }
    EXPECT_THAT(record_.acquired, IsEmpty());
    EXPECT_THAT(record_.released, IsEmpty());
}

TEST_F(SuiteHandler, holds_all_24_suites_at_once_and_releases_each_exactly_once) {
    {
        AEGP_SuiteHandler suites(&basic_);
        for (int round = 0; round < 2; ++round) {
            for (const Accessor& accessor : kAccessors) accessor.use(suites);
        }
    }
    EXPECT_THAT(record_.acquired, UnorderedElementsAreArray(every_key_but({})));
    EXPECT_THAT(record_.released, UnorderedElementsAreArray(every_key_but({})));
}

TEST_F(SuiteHandler, asks_again_after_a_refusal) {
    record_.refused = {"AEGP Layer Suite", 11};
    AEGP_SuiteHandler suites(&basic_);
    EXPECT_THROW(suites.LayerSuite5(), A_Err);
    record_.refused = {};
    EXPECT_NE(suites.LayerSuite5(), nullptr);
    EXPECT_EQ(record_.acquired.size(), 2u);
}

TEST_F(SuiteHandler, releases_what_it_holds_when_another_exception_passes) {
    try {
        AEGP_SuiteHandler suites(&basic_);
        suites.MemorySuite1();
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
    }
    EXPECT_THAT(record_.released, ElementsAre(Key("AEGP Memory Suite", 1)));
}

TEST_F(SuiteHandler, two_handlers_hold_their_suites_apart) {
    AEGP_SuiteHandler outer(&basic_);
    outer.CompSuite11();
    {
        AEGP_SuiteHandler inner(&basic_);
        inner.CompSuite11();
    }
    EXPECT_EQ(record_.acquired.size(), 2u);
    EXPECT_EQ(record_.released.size(), 1u);
}

TEST(SuiteHandlerType, cannot_be_copied_or_moved) {
    EXPECT_FALSE(std::is_copy_constructible_v<AEGP_SuiteHandler>);
    EXPECT_FALSE(std::is_move_constructible_v<AEGP_SuiteHandler>);
    EXPECT_FALSE(std::is_copy_assignable_v<AEGP_SuiteHandler>);
}

TEST(SuiteHandlerType, allocates_nothing) {
    static const char table = 0;
    SPBasicSuite basic = {};
    basic.AcquireSuite = [](const char*, int32, const void** suite) -> SPErr {
        *suite = &table;
        return 0;
    };
    basic.ReleaseSuite = [](const char*, int32) -> SPErr { return 0; };

    const size_t before = allocations_so_far();
    {
        AEGP_SuiteHandler suites(&basic);
        for (const Accessor& accessor : kAccessors) accessor.use(suites);
    }
    EXPECT_EQ(allocations_so_far(), before);

    ::operator delete(::operator new(1));
    EXPECT_EQ(allocations_so_far(), before + 1) << "allocations are not counted at all";
}

}  // namespace
