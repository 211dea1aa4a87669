// The suites the host offers.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace host::suites {

struct Suite {
    std::string_view structure;  // "AEGP_LayerSuite5"
    const char* name;            // "AEGP Layer Suite"
    std::int32_t version;        // the integer for AcquireSuite
    const void* table;
    int first_slot;  // ordinal
    int slots;
};

// In the order of the list of slots. The tables are created once and shared by all hosts.
std::span<const Suite> suite_list();
// Its index in the list; -1 if there is none.
int find_suite(std::string_view name, std::int32_t version);
bool is_implemented(int slot_ordinal);

}  // namespace host::suites
