// Suite tables whose slots call the ReplayHost.
#include "replay/tables.h"

#include <cstring>
#include <tuple>

#include "arguments.h"
#include "replay/replay_host.h"
#include "slots.h"

namespace host::journal {
namespace {

template <class... Args>
A_Err ask(std::int32_t slot, Args... args) noexcept {
    std::tuple<Args...> arguments(args...);
    return ReplayHost::active()->answer(slot, &arguments);
}

template <auto Member>
struct Slot;
template <class Suite, class... Args, A_Err (*Suite::*Member)(Args...)>
struct Slot<Member> {
    static A_Err call(Args... args) noexcept { return ask(suites::slot_ordinal<Member>, args...); }
};

template <class Suite>
Suite make_table();
#define SUITE(structure, accessor, name, version) \
    template <>                                   \
    structure make_table<structure>() {           \
        structure table;
#define SLOT(structure, index, function) table.function = &Slot<&structure::function>::call;
#define SUITE_END(structure) \
    return table;            \
    }
#include "suites.def"

SPErr acquire(const char* name, int32 version, const void** suite) {
    return ask(kAcquire, name, version, suite);
}
SPErr release(const char* name, int32 version) {
    return ask(kRelease, name, version);
}
SPBoolean is_equal(const char* a, const char* b) {
    return a && b ? std::strcmp(a, b) == 0 : a == b;
}
SPErr allocate(size_t size, void** block) {
    return ask(kAllocate, size, block);
}
SPErr free_block(void* block) {
    return ask(kFree, block);
}
SPErr reallocate(void* block, size_t size, void** new_block) {
    return ask(kReallocate, block, size, new_block);
}
SPErr undefined() {
    return ask(kUndefined);
}

}  // namespace

const void* replay_table(std::string_view name, std::int32_t version) {
#define SUITE(structure, accessor, suite_name, suite_version)   \
    if (name == (suite_name) && version == (suite_version)) {   \
        static const structure table = make_table<structure>(); \
        return &table;                                          \
    }
#include "suites.def"
    return nullptr;
}

SPBasicSuite* replay_basic_suite() {
    static SPBasicSuite suite{acquire, release, is_equal, allocate, free_block, reallocate, undefined};
    return &suite;
}

}  // namespace host::journal
