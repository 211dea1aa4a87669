// Acquires and releases suites, allocates blocks of memory.
#include "tables/basic_suite.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "calls/argument_text.h"
#include "calls/dispatch.h"
#include "refusals.h"
#include "suites/error_codes.h"
#include "tables/suite_list.h"

namespace host::suites {

namespace {

constexpr SlotFacts named(std::string_view function) {
    return {"SPBasicSuite", "SPBasicSuite", function, -1};
}

constexpr SlotFacts kAcquire = named("AcquireSuite");
constexpr SlotFacts kRelease = named("ReleaseSuite");
constexpr SlotFacts kAllocate = named("AllocateBlock");
constexpr SlotFacts kFree = named("FreeBlock");
constexpr SlotFacts kReallocate = named("ReallocateBlock");
constexpr SlotFacts kUndefined = named("Undefined");

// Runs `body(host)` as one call; `args` are its C arguments, for the observers.
template <class Body, class... Args>
SPErr call(const SlotFacts& slot, std::string_view requested_suite, Body body, Args... args) noexcept {
    struct BoundCall {
        std::tuple<Args...> arguments;  // must come first: its address is the call's
        Body body;
    } packed{std::tuple<Args...>(args...), body};
    static constexpr CallText text{
        [](const HostState& host, const void* raw) {
            return ArgumentText<false, Args...>::arguments(host, &static_cast<const BoundCall*>(raw)->arguments);
        },
        [](const HostState&, const void*) { return std::string(); }};  // addresses are of no interest
    const SlotEntry entry{slot, true, [](HostState& host, void* raw) { static_cast<BoundCall*>(raw)->body(host); },
                          text};
    return dispatch({entry, &packed, requested_suite});
}

[[noreturn]] void refuse_unknown(const char* name, int32 version) {
    refuse_argument("There is no suite " + quoted(name ? name : "") + " of version " + std::to_string(version) + ".");
}

int place_of(const char* name, int32 version) {
    return name ? find_suite(name, version) : -1;
}

std::string_view structure_at(int place) {
    return place < 0 ? std::string_view() : suite_list()[static_cast<std::size_t>(place)].structure;
}

SPErr acquire(const char* name, int32 version, const void** suite) {
    if (suite) *suite = nullptr;
    const int place = place_of(name, version);
    return call(
        kAcquire, structure_at(place),
        [=](HostState& host) {
            if (!suite) refuse_argument("The pointer for the suite is null.");
            if (place < 0) refuse_unknown(name, version);
            ++host.suites_held[static_cast<std::size_t>(place)];
            *suite = suite_list()[static_cast<std::size_t>(place)].table;
        },
        name, version, suite);
}

SPErr release(const char* name, int32 version) {
    const int place = place_of(name, version);
    return call(
        kRelease, structure_at(place),
        [=](HostState& host) {
            if (place < 0) refuse_unknown(name, version);
            auto& held = host.suites_held[static_cast<std::size_t>(place)];
            if (held == 0) refuse_state(std::string(structure_at(place)) + " is not held.");
            --held;
        },
        name, version);
}

SPBoolean is_equal(const char* a, const char* b) {
    return a && b ? std::strcmp(a, b) == 0 : a == b;
}

void* allocate_or_throw(std::size_t size) {
    void* block = std::malloc(std::max<std::size_t>(size, 1));
    if (!block) throw std::bad_alloc();
    return block;
}

SPErr allocate(size_t size, void** block) {
    return call(
        kAllocate, {},
        [=](HostState& host) {
            if (!block) refuse_argument("The pointer for the block is null.");
            void* made = allocate_or_throw(size);
            host.ledger.add_block(made);
            *block = made;
        },
        size, block);
}

SPErr free_block(void* block) {
    return call(
        kFree, {},
        [=](HostState& host) {
            if (!block) return;
            if (!host.ledger.remove_block(block)) refuse_argument("The block is none of this host's, or was freed.");
            std::free(block);
        },
        block);
}

SPErr reallocate(void* block, size_t size, void** new_block) {
    return call(
        kReallocate, {},
        [=](HostState& host) {
            if (!new_block) refuse_argument("The pointer for the block is null.");
            if (block && !host.ledger.has_block(block))
                refuse_argument("The block is none of this host's, or was freed.");
            void* made = std::realloc(block, std::max<std::size_t>(size, 1));
            if (!made) throw std::bad_alloc();
            if (block) host.ledger.remove_block(block);
            host.ledger.add_block(made);
            *new_block = made;
        },
        block, size, new_block);
}

// The function for slots that suites leave empty.
SPErr undefined() {
    return call(kUndefined, {}, [](HostState&) { refuse_as_unsupported("The function is undefined."); });
}

}  // namespace

SPBasicSuite* basic_suite() {
    static SPBasicSuite suite{acquire, release, is_equal, allocate, free_block, reallocate, undefined};
    return &suite;
}

}  // namespace host::suites
