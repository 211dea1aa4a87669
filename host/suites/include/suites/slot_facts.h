// Names and numbers of all suites and slots, generated from the list of slots.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace host::suites {

// Numbers the slots of all suites in the order of the list.
namespace ordinal {
enum : int {
#define SLOT(structure, index, function) structure##_##function,
#include "suites.def"
    count
};
}  // namespace ordinal
inline constexpr int kSlotCount = ordinal::count;

struct SlotFacts {
    std::string_view suite;     // "AEGP_LayerSuite5"
    std::string_view accessor;  // "LayerSuite5"
    std::string_view function;  // "AEGP_GetLayerName"
    int ordinal;                // below kSlotCount; -1 for the basic suite
};

// By ordinal; throws std::out_of_range.
extern const std::array<SlotFacts, kSlotCount> kSlots;
inline const SlotFacts& slot_facts(int ordinal) {
    return kSlots.at(static_cast<std::size_t>(ordinal));
}
// "LayerSuite5.AEGP_GetLayerName"
std::string full_name(const SlotFacts& slot);

// The ordinal of a member of a table.
template <auto Member>
inline constexpr int slot_ordinal = -1;
#define SLOT(structure, index, function) \
    template <>                          \
    inline constexpr int slot_ordinal<&structure::function> = ordinal::structure##_##function;
#include "suites.def"

// Whether AEGP_StreamValue2*, without const, is an input of the function.
template <auto Member>
inline constexpr bool records_are_inputs = false;
template <>
inline constexpr bool records_are_inputs<&AEGP_StreamSuite4::AEGP_SetStreamValue> = true;
template <>
inline constexpr bool records_are_inputs<&AEGP_StreamSuite4::AEGP_DisposeStreamValue> = true;

}  // namespace host::suites
