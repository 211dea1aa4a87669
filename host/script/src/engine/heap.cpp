// Limits on memory and time: counting allocation functions, and the check that stops endless loops.
#include "engine/heap.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

// Called by the engine every few hundred instructions, and again until the script has unwound.
extern "C" int host_script_must_end(void* heap_udata) {
    return static_cast<host::script::Heap*>(heap_udata)->must_end() ? 1 : 0;
}

// Called inside loops of built-in functions.
extern "C" int host_script_must_end_after(void* heap_udata, std::size_t steps) {
    return static_cast<host::script::Heap*>(heap_udata)->must_end_after(steps) ? 1 : 0;
}

// Called before native recursion.
extern "C" int host_script_stack_is_short(void* heap_udata) {
    return static_cast<const host::script::Heap*>(heap_udata)->is_stack_short() ? 1 : 0;
}

namespace host::script {

namespace {

// Precedes each block; as large as the strictest alignment, so the block after it is aligned.
union BlockHeader {
    std::size_t size;
    std::max_align_t alignment;
};

// Between the limit, above which a script is stopped at the next check, and the amount at which allocation fails. A
// failed allocation is slow: the engine tries to shrink every object before it gives up.
constexpr std::size_t kReserve = std::size_t{64} << 20;

// Stack for one run. Main threads have 8 MiB.
constexpr std::ptrdiff_t kStack = std::ptrdiff_t{4} << 20;

// Between two checks of the clock: a few microseconds.
constexpr std::size_t kStepsBetweenChecks = 1000;

const char* stack_now() {
    return static_cast<const char*>(__builtin_frame_address(0));
}

// Everything runs in protected calls, so only a corrupt heap gets here.
[[noreturn]] void die(void*, const char* message) {
    std::fprintf(stderr, "script engine: %s\n", message ? message : "fatal error");
    std::abort();
}

}  // namespace

Heap::Heap(const Limits& limits, ScriptEnvironment& environment)
    : environment_(environment), limits_(limits), allowed_(limits.memory) {
    ctx_ = duk_create_heap(allocate, reallocate, release, this, die);
    if (ctx_ == nullptr) throw std::runtime_error("there is no memory to start the script engine");
}

Heap::~Heap() {
    close();
}

void Heap::close() {
    if (ctx_ == nullptr) return;
    clock_.stop();
    duk_destroy_heap(ctx_);
    ctx_ = nullptr;
}

Heap& Heap::of(duk_context* ctx) {
    duk_memory_functions functions;
    duk_get_memory_functions(ctx, &functions);
    return *static_cast<Heap*>(functions.udata);
}

void Heap::begin_run() {
    out_of_memory_ = false;
    was_refused_memory_ = false;
    // Memory left by earlier runs must not keep this one from starting, or from cleaning up.
    allowed_ = std::max(limits_.memory, used_ + kReserve / 4);
    steps_ = 0;
    stack_at_start_ = stack_now();
    clock_.restart(std::min<RunClock::Duration>(limits_.time, limits_.time_of_all->left()));
}

void Heap::end_run() {
    limits_.time_of_all->spend(clock_.stop());
    stack_at_start_ = nullptr;
}

bool Heap::must_end() {
    if (used_ > allowed_) out_of_memory_ = true;
    return out_of_memory_ || time_is_up();
}

bool Heap::must_end_after(std::size_t steps) {
    steps_ += steps;
    if (steps_ < kStepsBetweenChecks) return false;
    steps_ = 0;
    return must_end();
}

bool Heap::is_stack_short() const {
    return stack_at_start_ != nullptr && std::abs(stack_at_start_ - stack_now()) > kStack;
}

bool Heap::may_grow_by(std::size_t bytes) {
    if (bytes <= limits_.memory + kReserve && used_ <= limits_.memory + kReserve - bytes) return true;
    out_of_memory_ = true;
    return false;
}

void* Heap::refused() {
    note_refused_memory();
    return nullptr;
}

void* Heap::allocate(void* self, duk_size_t size) {
    auto& heap = *static_cast<Heap*>(self);
    if (size == 0 || !heap.may_grow_by(size)) return nullptr;
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (header == nullptr) return heap.refused();
    header->size = size;
    heap.used_ += size;
    return header + 1;
}

void* Heap::reallocate(void* self, void* block, duk_size_t size) {
    if (block == nullptr) return allocate(self, size);
    if (size == 0) {
        release(self, block);
        return nullptr;
    }
    auto& heap = *static_cast<Heap*>(self);
    BlockHeader* header = static_cast<BlockHeader*>(block) - 1;
    const std::size_t old_size = header->size;
    if (size > old_size && !heap.may_grow_by(size - old_size)) return nullptr;
    auto* moved = static_cast<BlockHeader*>(std::realloc(header, sizeof(BlockHeader) + size));
    if (moved == nullptr) return heap.refused();
    moved->size = size;
    heap.used_ += size;
    heap.used_ -= old_size;
    return moved + 1;
}

void Heap::release(void* self, void* block) {
    if (block == nullptr) return;
    BlockHeader* header = static_cast<BlockHeader*>(block) - 1;
    static_cast<Heap*>(self)->used_ -= header->size;
    std::free(header);
}

}  // namespace host::script
