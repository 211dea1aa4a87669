// How long a script has been running, with pauses.
#include "clock.h"

#include "base/clock.h"

namespace host::script {

// Called often. Reading the processor's clock is the slower of the two, so it comes second.
bool RunClock::time_is_up() const {
    return counts_ && used() > limit_ && processor_used() > limit_;
}

void RunClock::restart(Duration limit) {
    limit_ = limit;
    counts_ = true;
    running_ = true;
    used_before_ = {};
    processor_used_before_ = {};
    since_ = Steady::now();
    processor_since_ = base::processor_time();
}

RunClock::Duration RunClock::stop() {
    const Duration taken = processor_used();
    counts_ = false;
    running_ = false;
    return taken;
}

RunClock::Steady::duration RunClock::used() const {
    return running_ ? used_before_ + (Steady::now() - since_) : used_before_;
}

RunClock::Duration RunClock::processor_used() const {
    return running_ ? processor_used_before_ + (base::processor_time() - processor_since_) : processor_used_before_;
}

void RunClock::switch_to(bool running) {
    used_before_ = used();
    processor_used_before_ = processor_used();
    running_ = running;
    since_ = Steady::now();
    processor_since_ = base::processor_time();
}

}  // namespace host::script
