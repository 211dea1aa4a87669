// The names of all slots as one array.
#include "suites/slot_facts.h"

#include <array>

namespace host::suites {

namespace {

// Every table's type begins with AEGP_.
constexpr std::string_view without_prefix(std::string_view structure) {
    return structure.substr(5);
}

constexpr std::array<SlotFacts, kSlotCount> kSlots = {{
#define SLOT(structure, index, function) \
    {#structure, without_prefix(#structure), #function, ordinal::structure##_##function},
#include "suites.def"
}};

}  // namespace

const SlotFacts& slot_facts(int ordinal) {
    return kSlots.at(static_cast<std::size_t>(ordinal));
}

std::string full_name(const SlotFacts& slot) {
    return std::string(slot.accessor) + "." + std::string(slot.function);
}

}  // namespace host::suites
