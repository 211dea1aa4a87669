// What a child process may use, on Linux.
#include "process_limits.h"

#include <signal.h>

#include <fstream>
#include <new>
#include <string>
#include <string_view>

namespace host::base {
namespace {

std::function<void()> tell_out_of_memory;

// Bytes, of what the system has a line for.
std::size_t memory_now(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) return std::stoull(line.substr(name.size())) << 10;
    }
    return 0;
}

}  // namespace

void apply_limits(const ProcessLimits& limits, std::function<void()> out_of_memory) {
    const rlimit no_core{0, 0};
    ::setrlimit(RLIMIT_CORE, &no_core);
    if (limits.processor_time) {
        const auto time = static_cast<rlim_t>(limits.processor_time->count());
        const rlimit most{time, time + 1};
        ::setrlimit(RLIMIT_CPU, &most);
        ::signal(SIGXCPU, SIG_DFL);
    }
    if (limits.memory) {
        const rlim_t most_bytes = memory_now("VmData:") + *limits.memory;
        const rlimit most{most_bytes, most_bytes};
        ::setrlimit(RLIMIT_DATA, &most);
    }
    tell_out_of_memory = std::move(out_of_memory);
    if (limits.memory) std::set_new_handler([] { tell_out_of_memory(); });
}

void forbid_opening_files() {
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_NOFILE, &none);
}

std::chrono::milliseconds processor_time_of(const rusage& used) {
    const auto in_milliseconds = [](const timeval& time) { return time.tv_sec * 1000LL + time.tv_usec / 1000; };
    return std::chrono::milliseconds(in_milliseconds(used.ru_utime) + in_milliseconds(used.ru_stime));
}

std::size_t resident_memory() {
    return memory_now("VmRSS:");
}

}  // namespace host::base
