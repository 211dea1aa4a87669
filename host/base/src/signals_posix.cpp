// Signals of the process.
#include "base/signals.h"

#include <signal.h>

namespace host::base {

struct BlockTermination::State {
    sigset_t signals;
};

void ignore_failed_write_signals() {
    for (const int signal : {SIGPIPE, SIGXFSZ}) ::signal(signal, SIG_IGN);
}

BlockTermination::BlockTermination() : before_(std::make_unique<State>()) {
    sigset_t endings;
    sigemptyset(&endings);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&endings, signal);
    ::pthread_sigmask(SIG_BLOCK, &endings, &before_->signals);
}

BlockTermination::~BlockTermination() {
    ::pthread_sigmask(SIG_SETMASK, &before_->signals, nullptr);
}

}  // namespace host::base
