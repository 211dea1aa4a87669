// All suite tables.
#include "tables/suite_list.h"

#include <cstring>
#include <vector>

#include "suites/slot_facts.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

struct AllSuites {
    std::vector<Suite> list;
    std::vector<bool> implemented;  // by slot ordinal

    // A slot is implemented if it differs from the trapped table's.
    template <class Table>
    void add(std::string_view structure, const char* name, std::int32_t version) {
        static const Table table = make_suite<Table>();
        const Table trapped = trapped_suite<Table>();
        constexpr int kSlots = sizeof(Table) / sizeof(void*);
        list.push_back({structure, name, version, &table, static_cast<int>(implemented.size()), kSlots});
        for (std::size_t i = 0; i < kSlots; ++i) {
            const std::size_t at = i * sizeof(void*);
            implemented.push_back(std::memcmp(reinterpret_cast<const char*>(&table) + at,
                                              reinterpret_cast<const char*>(&trapped) + at, sizeof(void*)) != 0);
        }
    }

    AllSuites() {
#define SUITE(structure, accessor, name, version) add<structure>(#structure, name, version);
#include "suites.def"
    }
};

const AllSuites& all_suites() {
    static const AllSuites all;
    return all;
}

}  // namespace

std::span<const Suite> suite_list() {
    return all_suites().list;
}

int find_suite(std::string_view name, std::int32_t version) {
    const auto& list = all_suites().list;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i].version == version && list[i].name == name) return static_cast<int>(i);
    return -1;
}

bool is_implemented(int slot_ordinal) {
    return all_suites().implemented[static_cast<std::size_t>(slot_ordinal)];
}

}  // namespace host::suites
