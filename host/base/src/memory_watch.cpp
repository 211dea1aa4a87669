// Whether a part of the program was refused memory, though it may say something else or nothing about it.
#include "base/memory_watch.h"

#include <atomic>

namespace host::base {
namespace {

std::atomic<std::size_t> refused = 0;

void note_and_refuse() {
    ++refused;
    throw std::bad_alloc();
}

}  // namespace

MemoryWatch::MemoryWatch() : before_(std::set_new_handler(note_and_refuse)), refused_before_(refused) {}

MemoryWatch::~MemoryWatch() {
    std::set_new_handler(before_);
}

bool MemoryWatch::was_refused() const {
    return refused != refused_before_;
}

}  // namespace host::base
