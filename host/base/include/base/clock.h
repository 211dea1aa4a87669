// The processor's time.
#pragma once

#include <chrono>

namespace host::base {

// That this process has taken so far.
std::chrono::nanoseconds processor_time();

}  // namespace host::base
