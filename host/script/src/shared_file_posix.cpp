// A small file that several processes read and replace: POSIX systems.
#include "shared_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <initializer_list>
#include <system_error>

#include "script/settings.h"

namespace host::script {

namespace {

[[noreturn]] void give_up(const char* doing, const std::filesystem::path& path, int error) {
    throw SettingsError(std::string("Cannot ") + doing + " \"" + path.string() +
                        "\": " + std::generic_category().message(error) + ".");
}

// A call that a signal interrupted is made again.
template <class ScriptCall>
int uninterrupted(ScriptCall call) {
    for (;;) {
        const int result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

// While it lives, the usual ways to end a program wait for this thread, so that no temporary file stays behind.
class EndingWaits {
  public:
    EndingWaits() {
        sigset_t endings;
        sigemptyset(&endings);
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&endings, signal);
        pthread_sigmask(SIG_BLOCK, &endings, &before_);
    }
    ~EndingWaits() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    EndingWaits(const EndingWaits&) = delete;
    EndingWaits& operator=(const EndingWaits&) = delete;

  private:
    sigset_t before_;
};

class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }

  private:
    int fd_;
};

// 0 or the error.
int write_all(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(fd, text.data(), text.size());
        if (written < 0 && errno != EINTR) return errno;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return uninterrupted([&] { return ::fsync(fd); }) == 0 ? 0 : errno;
}

}  // namespace

std::string read_shared_file(const std::filesystem::path& file) {
    const Descriptor from(uninterrupted([&] { return ::open(file.c_str(), O_RDONLY | O_CLOEXEC); }));
    // A path through something that is no folder has no file at its end either; saving will say so.
    if (from.get() < 0 && (errno == ENOENT || errno == ENOTDIR)) return {};
    if (from.get() < 0) give_up("read settings file", file, errno);
    std::string text;
    char part[4096];
    for (;;) {
        const ssize_t count = ::read(from.get(), part, sizeof part);
        if (count < 0 && errno != EINTR) give_up("read settings file", file, errno);
        if (count == 0) return text;
        if (count > 0) text.append(part, static_cast<std::size_t>(count));
    }
}

void replace_shared_file(const std::filesystem::path& file, std::string_view text) {
    const EndingWaits whole_or_nothing;
    std::string temporary;
    const Descriptor to(uninterrupted([&] {
        temporary = file.string() + ".XXXXXX";
        return ::mkostemp(temporary.data(), O_CLOEXEC);
    }));
    if (to.get() < 0) give_up("write settings file", file, errno);
    int error = write_all(to.get(), text);
    if (error == 0 && std::rename(temporary.c_str(), file.c_str()) != 0) error = errno;
    if (error != 0) {
        ::unlink(temporary.c_str());
        give_up("write settings file", file, error);
    }
}

void keep_aside(const std::filesystem::path& file, const std::filesystem::path& other) {
    if (std::rename(file.c_str(), other.c_str()) != 0 && errno != ENOENT) {
        give_up("move damaged settings file", file, errno);
    }
}

FolderLock::FolderLock(const std::filesystem::path& file) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    folder_ = uninterrupted([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (folder_ < 0) give_up("make or open settings folder", folder, errno);
    // Without a lock two savers could lose each other's values; a file system that has none is no reason to fail.
    (void)uninterrupted([&] { return ::flock(folder_, LOCK_EX); });
}

FolderLock::~FolderLock() {
    ::close(folder_);
}

}  // namespace host::script
