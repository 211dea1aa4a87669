// Memory suite 1.
#include "calls/slot.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

// Memory is cleared whatever the flags.
MemoryBlock new_block(Caller, std::string purpose, AEGP_MemSize size, AEGP_MemFlag) {
    return MemoryBlock(std::move(purpose), size);
}

void free_block(HostState& host, HandleOf<MemoryBlock> handle) {
    if (host.ledger.find_to_dispose<MemoryBlock>(handle.handle).locks() > 0)
        host.ledger.note_freed_while_locked(handle.handle);
    host.ledger.dispose<MemoryBlock>(handle.handle);
}

void* lock(MemoryBlock& block) {
    block.lock();
    return block.data();
}

void unlock(MemoryBlock& block) {
    if (!block.unlock()) refuse_state("The memory is not locked.");
}

int size_of(MemoryBlock& block) {
    return static_cast<int>(block.size());
}

void resize(std::string_view, AEGP_MemSize size, MemoryBlock& block) {
    if (block.locks() > 0) refuse_state("The memory is locked.");
    block.resize(size);
}

}  // namespace

template <>
AEGP_MemorySuite1 make_suite() {
    using Suite = AEGP_MemorySuite1;
    Suite s = trapped_suite<Suite>();
    s.AEGP_NewMemHandle = slot<&Suite::AEGP_NewMemHandle, new_block>;
    s.AEGP_FreeMemHandle = slot<&Suite::AEGP_FreeMemHandle, free_block>;
    s.AEGP_LockMemHandle = slot<&Suite::AEGP_LockMemHandle, lock>;
    s.AEGP_UnlockMemHandle = slot<&Suite::AEGP_UnlockMemHandle, unlock>;
    s.AEGP_GetMemHandleSize = slot<&Suite::AEGP_GetMemHandleSize, size_of>;
    s.AEGP_ResizeMemHandle = slot<&Suite::AEGP_ResizeMemHandle, resize>;
    return s;
}

}  // namespace host::suites
