// How long a script has been running, with pauses.
#include "clock.h"

namespace host::script {

bool RunClock::time_is_up() const {
    return counts_ && used() > limit_;
}

void RunClock::restart() {
    used_before_ = {};
    counts_ = true;
    running_ = true;
    since_ = Steady::now();
}

void RunClock::stop() {
    counts_ = false;
    running_ = false;
}

RunClock::Steady::duration RunClock::used() const {
    return running_ ? used_before_ + (Steady::now() - since_) : used_before_;
}

void RunClock::switch_to(bool running) {
    used_before_ = used();
    running_ = running;
    since_ = Steady::now();
}

}  // namespace host::script
