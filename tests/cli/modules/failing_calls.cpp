// A library that is loaded before all others and stands between a program and the system: it makes the n-th call fail,
// be cut short, or be the last.
//
//   FAILING_CALL       n, from 1; 0 for none
//   FAILING_CALL_HOW   before:S or after:S (the process sends itself the signal S), error:E (the call fails with the
//   error
//                      E; a call that no signal interrupts does not fail with EINTR), short (half is written or read)
//   FAILING_CALL_LOG   a file that gets a line with the name of each call, in order
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

extern "C" {
long syscall(long number, ...) noexcept;
int getpid() noexcept;
}

namespace {

enum class How { nothing, before, after, error, cut_short };

struct Wish {
    int at = 0;
    How how = How::nothing;
    int number = 0;  // of the signal or the error
};

const char* word(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr ? value : "";
}

Wish read_wish() {
    Wish wish;
    wish.at = std::atoi(word("FAILING_CALL"));
    const char* how = word("FAILING_CALL_HOW");
    const char* colon = std::strchr(how, ':');
    if (std::strncmp(how, "before", 6) == 0) wish.how = How::before;
    if (std::strncmp(how, "after", 5) == 0) wish.how = How::after;
    if (std::strncmp(how, "error", 5) == 0) wish.how = How::error;
    if (std::strncmp(how, "short", 5) == 0) wish.how = How::cut_short;
    if (colon != nullptr) wish.number = std::atoi(colon + 1);
    return wish;
}

const Wish& wish() {
    static const Wish the_wish = read_wish();
    return the_wish;
}

// By the system's own calls: those of the library are under test.
void write_to_log(const char* name) {
    static const long log =
        syscall(SYS_openat, AT_FDCWD, word("FAILING_CALL_LOG"), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    char line[32] = {};
    const std::size_t length = std::strlen(name);
    std::memcpy(line, name, length);
    line[length] = '\n';
    syscall(SYS_write, log, line, length + 1);
}

bool is_the_one(const char* name) {
    static int count = 0;
    write_to_log(name);
    return ++count == wish().at;
}

void send_signal() {
    syscall(SYS_kill, getpid(), wish().number);
}

enum class Interrupts { possible, impossible };

// `call` gets whether it is to be cut short.
template <class Call>
auto between(const char* name, Interrupts interrupts, Call call) -> decltype(call(false)) {
    if (!is_the_one(name)) return call(false);
    switch (wish().how) {
        case How::before:
            send_signal();
            return call(false);
        case How::after: {
            const auto result = call(false);
            const int error = errno;
            send_signal();
            errno = error;
            return result;
        }
        case How::error:
            if (wish().number == EINTR && interrupts == Interrupts::impossible) return call(false);
            if (std::strcmp(name, "close") == 0) (void)call(false);  // a close that fails has closed
            errno = wish().number;
            return -1;
        case How::cut_short:
            return call(true);
        case How::nothing:
            break;
    }
    return call(false);
}

template <class Function>
Function real(const char* name, Function /*same type*/) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::size_t length_of(std::size_t wanted, bool is_short) {
    return is_short && wanted > 1 ? wanted / 2 : wanted;
}

mode_t mode_in(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

#define STANDS_BETWEEN extern "C" __attribute__((visibility("default")))

// Plain functions. Here they have names of their own, since some share theirs with a struct.
#define PASS_ON(interrupts, name, parameters, arguments)                                                            \
    STANDS_BETWEEN int between_##name parameters __asm__(#name);                                                    \
    int between_##name parameters {                                                                                 \
        return between(#name, Interrupts::interrupts, [&](bool) { return real(#name, between_##name) arguments; }); \
    }

STANDS_BETWEEN int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_in(flags, arguments);
    va_end(arguments);
    return between("open", Interrupts::possible, [&](bool) { return real("open", open)(path, flags, mode); });
}

STANDS_BETWEEN int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_in(flags, arguments);
    va_end(arguments);
    return between("openat", Interrupts::possible,
                   [&](bool) { return real("openat", openat)(folder, path, flags, mode); });
}

STANDS_BETWEEN ssize_t read(int fd, void* bytes, std::size_t count) {
    return between("read", Interrupts::possible,
                   [&](bool is_short) { return real("read", read)(fd, bytes, length_of(count, is_short)); });
}

STANDS_BETWEEN ssize_t write(int fd, const void* bytes, std::size_t count) {
    return between("write", Interrupts::possible,
                   [&](bool is_short) { return real("write", write)(fd, bytes, length_of(count, is_short)); });
}

STANDS_BETWEEN ssize_t pwrite(int fd, const void* bytes, std::size_t count, off_t at) {
    return between("pwrite", Interrupts::possible,
                   [&](bool is_short) { return real("pwrite", pwrite)(fd, bytes, length_of(count, is_short), at); });
}

STANDS_BETWEEN ssize_t writev(int fd, const iovec* parts, int count) {
    return between("writev", Interrupts::possible,
                   [&](bool is_short) { return real("writev", writev)(fd, parts, is_short && count > 1 ? 1 : count); });
}

STANDS_BETWEEN ssize_t readlink(const char* path, char* bytes, std::size_t count) noexcept {
    return between("readlink", Interrupts::impossible,
                   [&](bool) { return real("readlink", readlink)(path, bytes, count); });
}

PASS_ON(possible, mkostemp, (char* name, int flags), (name, flags))
PASS_ON(possible, mkstemp, (char* name), (name))
PASS_ON(possible, fsync, (int fd), (fd))
PASS_ON(possible, fdatasync, (int fd), (fd))
PASS_ON(possible, close, (int fd), (fd))
PASS_ON(possible, ftruncate, (int fd, off_t length), (fd, length))
PASS_ON(possible, fchmod, (int fd, mode_t mode), (fd, mode))
PASS_ON(possible, fchown, (int fd, uid_t owner, gid_t group), (fd, owner, group))
PASS_ON(possible, flock, (int fd, int how), (fd, how))
PASS_ON(impossible, rename, (const char* from, const char* to), (from, to))
PASS_ON(impossible, renameat, (int a, const char* from, int b, const char* to), (a, from, b, to))
PASS_ON(impossible, renameat2, (int a, const char* from, int b, const char* to, unsigned flags),
        (a, from, b, to, flags))
PASS_ON(impossible, unlink, (const char* path), (path))
PASS_ON(impossible, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
PASS_ON(impossible, link, (const char* from, const char* to), (from, to))
PASS_ON(impossible, chmod, (const char* path, mode_t mode), (path, mode))
PASS_ON(impossible, chown, (const char* path, uid_t owner, gid_t group), (path, owner, group))
PASS_ON(impossible, mkdir, (const char* path, mode_t mode), (path, mode))
PASS_ON(impossible, dup, (int fd), (fd))
PASS_ON(impossible, stat, (const char* path, void* facts), (path, facts))
PASS_ON(impossible, lstat, (const char* path, void* facts), (path, facts))
PASS_ON(impossible, fstat, (int fd, void* facts), (fd, facts))
