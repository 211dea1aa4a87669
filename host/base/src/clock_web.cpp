// The processor's time: WebAssembly knows only the clock, and a program has its thread to itself.
#include "base/clock.h"

namespace host::base {

std::chrono::nanoseconds processor_time() {
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::steady_clock::now() - start;
}

}  // namespace host::base
