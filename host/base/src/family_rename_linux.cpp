// Renaming in a family of processes, on Linux, where a signal that waits can be polled for.
#include "family_rename.h"

#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <sys/socket.h>

#include <array>
#include <cstdio>
#include <optional>

#include "descriptor.h"

namespace host::base {
namespace {

// Of the child's end; none in the process at the head.
std::optional<int> to_parent;

// The signals that end this process unless they are blocked, as a file that can be read when one waits.
Descriptor waiting_endings() {
    sigset_t endings;
    sigemptyset(&endings);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction now {};
        if (::sigaction(signal, nullptr, &now) == 0 && now.sa_handler != SIG_IGN) sigaddset(&endings, signal);
    }
    return Descriptor(::signalfd(-1, &endings, SFD_CLOEXEC));
}

bool fail_with(int error) {
    errno = error;
    return false;
}

// The parent's error number, 0 if it has renamed; false with errno set if there is no answer.
bool wait_for_answer(int& error) {
    const Descriptor endings = waiting_endings();
    pollfd ends[] = {{*to_parent, POLLIN, 0}, {endings.get(), POLLIN, 0}};
    if (retry_on_eintr([&] { return ::poll(ends, 2, -1); }) < 0) return false;
    if (ends[0].revents == 0) return fail_with(EINTR);
    const ssize_t size = retry_on_eintr([&] { return ::recv(*to_parent, &error, sizeof error, 0); });
    return size == sizeof error || fail_with(ECANCELED);
}

}  // namespace

void ask_parent_to_rename(int socket) {
    to_parent = socket;
}

bool rename_for_child(int socket) {
    std::array<char, 2 * (PATH_MAX + 1)> names;
    const ssize_t size = retry_on_eintr([&] { return ::recv(socket, names.data(), names.size(), 0); });
    if (size <= 0) return false;
    const std::string both(names.data(), static_cast<std::size_t>(size));
    const std::size_t end = both.find('\0');
    int error = ENAMETOOLONG;
    if (end != std::string::npos) error = rename_in_family(both.substr(0, end), both.substr(end + 1)) ? 0 : errno;
    (void)::send(socket, &error, sizeof error, MSG_NOSIGNAL);  // whoever has asked may be gone
    return true;
}

bool rename_in_family(const std::string& from, const std::string& to) {
    if (!to_parent) return std::rename(from.c_str(), to.c_str()) == 0;
    if (from.size() > PATH_MAX || to.size() > PATH_MAX) return fail_with(ENAMETOOLONG);
    const std::string names = from + '\0' + to;
    if (retry_on_eintr([&] { return ::send(*to_parent, names.data(), names.size(), MSG_NOSIGNAL); }) < 0) return false;
    int error = 0;
    return wait_for_answer(error) && (error == 0 || fail_with(error));
}

}  // namespace host::base
