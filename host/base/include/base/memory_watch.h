// Whether a part of the program was refused memory, though it may say something else or nothing about it.
#pragma once

#include <cstddef>
#include <new>

namespace host::base {

// Watches operator new, wherever it is called, as long as it exists.
class MemoryWatch {
  public:
    MemoryWatch();
    ~MemoryWatch();
    MemoryWatch(const MemoryWatch&) = delete;

    bool was_refused() const;

  private:
    std::new_handler before_;
    std::size_t refused_before_;
};

}  // namespace host::base
