// Memory for RapidJSON, which goes on with a null pointer where it gets none.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace host::base {

// An allocator as RapidJSON's own one, but it throws std::bad_alloc.
class JsonMemory {
  public:
    static constexpr bool kNeedFree = true;

    static void* Malloc(std::size_t size) { return size == 0 ? nullptr : got(std::malloc(size)); }
    static void* Realloc(void* memory, std::size_t, std::size_t size) {
        if (size != 0) return got(std::realloc(memory, size));
        std::free(memory);
        return nullptr;
    }
    static void Free(void* memory) { std::free(memory); }

  private:
    static void* got(void* memory) {
        if (memory == nullptr) throw std::bad_alloc();
        return memory;
    }
};

}  // namespace host::base
