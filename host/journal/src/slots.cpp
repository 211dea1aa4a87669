// Numbers of all functions that a plug-in can call.
#include "slots.h"

#include <array>
#include <string>
#include <unordered_map>

#include "journal/journal.h"

namespace host::journal {
namespace {

constexpr std::array<std::string_view, kFunctionCount - kAcquire> kBasic = {
    "AcquireSuite", "ReleaseSuite", "AllocateBlock", "FreeBlock", "ReallocateBlock", "Undefined"};

}  // namespace

std::string name_of_slot(std::int32_t slot) {
    if (slot < kAcquire) return suites::full_name(suites::slot_facts(slot));
    return "SPBasicSuite." + std::string(kBasic.at(static_cast<std::size_t>(slot - kAcquire)));
}

std::int32_t basic_slot(std::string_view function) {
    for (std::size_t i = 0; i < kBasic.size(); ++i)
        if (kBasic[i] == function) return kAcquire + static_cast<std::int32_t>(i);
    return -1;
}

std::int32_t slot_named(std::string_view full_name) {
    static const auto all = [] {
        std::unordered_map<std::string, std::int32_t> slots;
        for (std::int32_t slot = 0; slot < kFunctionCount; ++slot) slots.emplace(name_of_slot(slot), slot);
        return slots;
    }();
    const auto found = all.find(std::string(full_name));
    return found == all.end() ? -1 : found->second;
}

}  // namespace host::journal
