// The memory and the time that scripts may use: allocation functions that count, and the check that ends endless loops.
#include "heap.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

// Asked by the engine every few hundred instructions, and then again until the script has been unwound.
extern "C" int host_script_must_end(void* heap_udata) {
    return static_cast<host::script::Heap*>(heap_udata)->must_end() ? 1 : 0;
}

namespace host::script {

namespace {

// Stands before each block; as large as the strictest alignment, so that the block behind it is aligned.
union BlockHeader {
    std::size_t size;
    std::max_align_t alignment;
};

// Between the limit, beyond which a script is ended at the next check, and the amount from which on memory is refused.
// A refusal is slow: the engine tries to shrink every object it has before it gives up.
constexpr std::size_t kReserve = std::size_t{64} << 20;

// Everything runs in protected calls, so only a damaged heap gets here.
[[noreturn]] void die(void*, const char* message) {
    std::fprintf(stderr, "script engine: %s\n", message ? message : "fatal error");
    std::abort();
}

}  // namespace

Heap::Heap(const Limits& limits, Host& host)
    : host_(host), clock_(limits.time), limit_(limits.memory), allowed_(limits.memory) {
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
    // What earlier runs left behind must not keep this one from starting, or from clearing up.
    allowed_ = std::max(limit_, used_ + kReserve / 4);
    clock_.restart();
}

bool Heap::must_end() {
    if (used_ > allowed_) out_of_memory_ = true;
    return out_of_memory_ || time_is_up();
}

bool Heap::may_grow_by(std::size_t bytes) {
    if (bytes <= limit_ + kReserve && used_ <= limit_ + kReserve - bytes) return true;
    out_of_memory_ = true;
    return false;
}

void* Heap::allocate(void* self, duk_size_t size) {
    auto& heap = *static_cast<Heap*>(self);
    if (size == 0 || !heap.may_grow_by(size)) return nullptr;
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (header == nullptr) return nullptr;
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
    if (moved == nullptr) return nullptr;
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
