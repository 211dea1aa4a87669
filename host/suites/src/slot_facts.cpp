// Names and numbers of all slots.
#include "suites/slot_facts.h"

namespace host::suites {

namespace {

// Every table's type begins with AEGP_.
constexpr std::string_view without_prefix(std::string_view structure) {
    return structure.substr(5);
}

}  // namespace

constinit const std::array<SlotFacts, kSlotCount> kSlots = {{
#define SLOT(structure, index, function) \
    {#structure, without_prefix(#structure), #function, ordinal::structure##_##function},
#include "suites.def"
}};

std::string full_name(const SlotFacts& slot) {
    return std::string(slot.accessor) + "." + std::string(slot.function);
}

}  // namespace host::suites
