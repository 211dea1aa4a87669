// The processes that this one has started, on Linux, which tells a process of its parent's end.
#include "living_children.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <fstream>
#include <vector>

namespace host::base {
namespace {

constexpr std::size_t kMaxChildren = 1024;
constexpr int kEndings[] = {SIGHUP, SIGINT, SIGTERM};

// A process that is in the middle of putting a file in place has this long to be done with it.
constexpr int kGraceMilliseconds = 2000;

// The handler reads it at any moment.
std::array<std::atomic<pid_t>, kMaxChildren> living_children{};
static_assert(std::atomic<pid_t>::is_always_lock_free);

void send_to_all(int signal) {
    for (const auto& child : living_children) {
        const pid_t process = child;
        if (process <= 0) continue;
        ::kill(process, signal);
        if (signal == SIGKILL) ::kill(-process, signal);  // a group, if it is the head of one
    }
}

// Whether all have ended.
bool are_all_gone(int flags) {
    for (auto& child : living_children) {
        const pid_t process = child;
        if (process <= 0) continue;
        pid_t ended = 0;
        do ended = ::waitpid(process, nullptr, flags);
        while (ended < 0 && errno == EINTR);
        if (ended == 0) return false;
        child = 0;
    }
    return true;
}

// Ends the children, then the program by the signal's own action. Calls only what a signal
// handler may call.
void end_with_children(int signal) {
    send_to_all(SIGTERM);
    const timespec moment{0, 1'000'000};
    for (int waited = 0; waited < kGraceMilliseconds && !are_all_gone(WNOHANG); ++waited) ::nanosleep(&moment, nullptr);
    send_to_all(SIGKILL);
    are_all_gone(0);
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

// For signals that still have their default action.
void handle_endings() {
    for (const int signal : kEndings) {
        struct sigaction now {};
        if (::sigaction(signal, nullptr, &now) != 0 || now.sa_handler != SIG_DFL) continue;
        struct sigaction own {};
        own.sa_handler = end_with_children;
        for (const int other : kEndings) sigaddset(&own.sa_mask, other);
        ::sigaction(signal, &own, nullptr);
    }
}

void leave_endings_to_the_system() {
    for (const int signal : kEndings) {
        struct sigaction now {};
        if (::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == end_with_children) ::signal(signal, SIG_DFL);
    }
}

bool is_any_alive() {
    for (const auto& child : living_children) {
        if (child > 0) return true;
    }
    return false;
}

// If the parent ended before the signal was asked for, this process has another parent now.
void end_with_parent(pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(1);
}

// Children of this thread, to which orphans come too, that were not started here.
std::vector<pid_t> children_of_others() {
    std::vector<pid_t> others;
    std::ifstream list("/proc/thread-self/children");
    for (pid_t process = 0; list >> process;) {
        const auto is_it = [process](const std::atomic<pid_t>& child) { return child == process; };
        if (std::none_of(living_children.begin(), living_children.end(), is_it)) others.push_back(process);
    }
    return others;
}

}  // namespace

pid_t fork_child(std::size_t& entry) {
    entry = 0;
    while (entry < kMaxChildren && living_children[entry] != 0) ++entry;
    if (entry == kMaxChildren) {
        errno = EAGAIN;
        return -1;
    }
    sigset_t endings;
    sigset_t before;
    sigemptyset(&endings);
    for (const int signal : kEndings) sigaddset(&endings, signal);
    ::pthread_sigmask(SIG_BLOCK, &endings, &before);
    handle_endings();
    const pid_t parent = ::getpid();
    const pid_t process = ::fork();
    if (process == 0) {
        end_with_parent(parent);
        leave_endings_to_the_system();
    } else if (process > 0) {
        living_children[entry] = process;
    }
    const int error = errno;
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return process;
}

void forget_child(std::size_t entry) {
    living_children[entry] = 0;
    if (!is_any_alive()) leave_endings_to_the_system();
}

void take_in_orphans() {
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
}

void end_orphans() {
    for (std::vector<pid_t> orphans = children_of_others(); !orphans.empty(); orphans = children_of_others()) {
        for (const pid_t orphan : orphans) ::kill(orphan, SIGKILL);
        for (const pid_t orphan : orphans) {
            while (::waitpid(orphan, nullptr, 0) < 0 && errno == EINTR) continue;
        }
    }
}

void forget_all_children() {
    for (auto& child : living_children) child = 0;
}

}  // namespace host::base
