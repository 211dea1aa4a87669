// What a child process may use.
#pragma once

#include <sys/resource.h>

#include <chrono>
#include <functional>

#include "base/child_process.h"

namespace host::base {

// In the child. `out_of_memory` is called where memory is asked for in vain.
void apply_limits(const ProcessLimits& limits, std::function<void()> out_of_memory);

// In the child, for good.
void forbid_opening_files();

std::chrono::milliseconds processor_time_of(const rusage& used);

// Bytes of memory that this process has in use.
std::size_t resident_memory();

}  // namespace host::base
