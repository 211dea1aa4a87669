// Whether a part of the program was refused memory, though it may say something else or nothing about it.
#include "base/memory_watch.h"

#include <atomic>

namespace host::base {
namespace {

std::atomic<std::size_t> refused = 0;
std::atomic<std::new_handler> next = nullptr;

void note_and_refuse() {
    ++refused;
    if (next == nullptr) throw std::bad_alloc();
    next.load()();
}

}  // namespace

MemoryWatch::MemoryWatch() : before_(std::get_new_handler()), refused_before_(refused) {
    if (before_ == note_and_refuse) return;  // inside of another watch
    next = before_;
    std::set_new_handler(note_and_refuse);
}

MemoryWatch::~MemoryWatch() {
    std::set_new_handler(before_);
}

bool MemoryWatch::was_refused() const {
    return refused != refused_before_;
}

}  // namespace host::base
