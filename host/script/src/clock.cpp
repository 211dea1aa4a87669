// How long a script has been running, with pauses.
#include "clock.h"

namespace host::script {

// Asked often: the processor's clock is the slow one of the two and comes second.
bool RunClock::time_is_up() const {
    if (!counts_ || used() <= limit_) return false;
    const std::chrono::duration<double> processor(static_cast<double>(processor_used()) / CLOCKS_PER_SEC);
    return processor > limit_;
}

void RunClock::restart() {
    counts_ = true;
    running_ = true;
    used_before_ = {};
    processor_used_before_ = 0;
    since_ = Steady::now();
    processor_since_ = std::clock();
}

void RunClock::stop() {
    counts_ = false;
    running_ = false;
}

RunClock::Steady::duration RunClock::used() const {
    return running_ ? used_before_ + (Steady::now() - since_) : used_before_;
}

std::clock_t RunClock::processor_used() const {
    return running_ ? processor_used_before_ + (std::clock() - processor_since_) : processor_used_before_;
}

void RunClock::switch_to(bool running) {
    used_before_ = used();
    processor_used_before_ = processor_used();
    running_ = running;
    since_ = Steady::now();
    processor_since_ = std::clock();
}

}  // namespace host::script
