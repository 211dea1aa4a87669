// Numbers of all functions that a plug-in can call: the slots of all suites, then the basic suite's functions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "suites/slot_facts.h"

namespace host::journal {

enum BasicSlot : std::int32_t {
    kAcquire = suites::kSlotCount,
    kRelease,
    kAllocate,
    kFree,
    kReallocate,
    kUndefined,
    kFunctionCount
};

// "LayerSuite5.AEGP_GetLayerName"
std::string name_of_slot(std::int32_t slot);

// -1 if the basic suite has no such function, or it is not recorded.
std::int32_t basic_slot(std::string_view function);

}  // namespace host::journal
