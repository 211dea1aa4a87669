// The processor's time.
#include "base/clock.h"

#include <time.h>

namespace host::base {

std::chrono::nanoseconds processor_time() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace host::base
