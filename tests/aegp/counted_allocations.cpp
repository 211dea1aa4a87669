// The program's own operator new and delete; apart from the tests, for GCC takes inlined ones for a mismatched pair.
#include "counted_allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

}  // namespace

std::size_t allocations_so_far() {
    return allocations;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* block = std::malloc(size)) return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
