// How long a script has been running, with pauses.
#include "clock.h"

namespace host::script {

namespace {

RunClock::Duration duration_of(std::clock_t ticks) {
    return std::chrono::duration_cast<RunClock::Duration>(
        std::chrono::duration<double>(static_cast<double>(ticks) / CLOCKS_PER_SEC));
}

}  // namespace

// Asked often: the processor's clock is the slow one of the two and comes second.
bool RunClock::time_is_up() const {
    return counts_ && used() > limit_ && duration_of(processor_used()) > limit_;
}

void RunClock::restart(Duration limit) {
    limit_ = limit;
    counts_ = true;
    running_ = true;
    used_before_ = {};
    processor_used_before_ = 0;
    since_ = Steady::now();
    processor_since_ = std::clock();
}

RunClock::Duration RunClock::stop() {
    const Duration taken = duration_of(processor_used());
    counts_ = false;
    running_ = false;
    return taken;
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
