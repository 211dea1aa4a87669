// Reading whole files and putting whole files in place.
#include "cli/file_io.h"

#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <utility>

namespace cli {
namespace {

namespace fs = std::filesystem;

// A call that a signal interrupted is made again.
template <class Call>
int uninterrupted(Call call) {
    for (;;) {
        const int result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

int open_file(const fs::path& file, int flags) {
    return uninterrupted([&] { return ::open(file.c_str(), flags | O_CLOEXEC); });
}

// Owns a file descriptor; standard streams are borrowed by the functions below instead.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return fd_; }
    bool is_open() const { return fd_ >= 0; }
    // Closing can be what reports that the disk is full. An interrupted one has closed all the same.
    bool close() { return ::close(std::exchange(fd_, -1)) == 0 || errno == EINTR; }

  private:
    int fd_;
};

std::string reason() {
    return std::strerror(errno);
}

std::string read_all(int fd) {
    std::string text;
    struct stat facts {};
    if (::fstat(fd, &facts) == 0 && S_ISREG(facts.st_mode)) text.reserve(static_cast<std::size_t>(facts.st_size) + 1);
    std::array<char, 1 << 16> block;
    for (;;) {
        const ssize_t count = ::read(fd, block.data(), block.size());
        if (count > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0) {
            return text;
        } else if (errno == EISDIR) {
            throw IoError("is a folder; name the files in it, as in FOLDER/*.json");
        } else if (errno != EINTR) {
            throw IoError("cannot be read: " + reason());
        }
    }
}

// As many pieces at once as the system takes.
void write_all(int fd, Pieces bytes) {
    std::vector<iovec> rest;
    rest.reserve(bytes.pieces().size());
    for (const std::string_view piece : bytes.pieces()) {
        if (!piece.empty()) rest.push_back({const_cast<char*>(piece.data()), piece.size()});
    }
    for (auto next = rest.begin(); next != rest.end();) {
        const auto count = std::min<std::ptrdiff_t>(rest.end() - next, IOV_MAX);
        const ssize_t result = ::writev(fd, &*next, static_cast<int>(count));
        if (result < 0 && errno != EINTR) throw IoError("cannot be written: " + reason());
        auto written = static_cast<std::size_t>(std::max<ssize_t>(result, 0));
        while (next != rest.end() && written >= next->iov_len) written -= (next++)->iov_len;
        if (next == rest.end()) break;
        next->iov_base = static_cast<char*>(next->iov_base) + written;
        next->iov_len -= written;
    }
}

// The file that a chain of symbolic links ends at, whether or not it exists. Throws IoError rather than give a link:
// the new file would take the link's place.
fs::path follow_links(fs::path file) {
    for (;;) {  // an endless chain has been refused before
        std::error_code error;
        const fs::file_type type = fs::symlink_status(file, error).type();
        if (type == fs::file_type::none) throw IoError("cannot be written: " + error.message());
        if (type != fs::file_type::symlink) return file;
        const fs::path target = fs::read_symlink(file, error);
        if (error) throw IoError("cannot be written: " + error.message());
        file = target.is_absolute() ? target : file.parent_path() / target;
    }
}

fs::path folder_of(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

void sync_folder(const fs::path& folder) {
    const Descriptor fd(open_file(folder, O_RDONLY | O_DIRECTORY));
    // The new file is whole and in place already; a file system that cannot sync folders is no reason to fail.
    if (fd.is_open()) (void)::fsync(fd.get());
}

mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void write_directly(const fs::path& file, Pieces bytes) {
    Descriptor fd(open_file(file, O_WRONLY));
    if (!fd.is_open()) throw IoError("cannot be written: " + reason());
    write_all(fd.get(), bytes);
    if (!fd.close()) throw IoError("cannot be written: " + reason());
}

// While it lives, the usual ways to end a program wait, so that no temporary file stays behind.
class EndingWaits {
  public:
    EndingWaits() {
        sigset_t endings;
        sigemptyset(&endings);
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&endings, signal);
        sigprocmask(SIG_BLOCK, &endings, &before_);
    }
    ~EndingWaits() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    EndingWaits(const EndingWaits&) = delete;
    EndingWaits& operator=(const EndingWaits&) = delete;

  private:
    sigset_t before_;
};

// An empty file in the folder under a new name, of the same length whatever the file's is, and one that tells where it
// comes from: it stays behind when the process is killed.
int make_temporary_file(const fs::path& folder, std::string& name) {
    return uninterrupted([&] {
        name = (folder / ".exflate-XXXXXX").string();
        return ::mkostemp(name.data(), O_CLOEXEC);
    });
}

// Only root may give files away; for anybody else the file becomes theirs, as with any editor, and keeps its group
// where they are in it.
void keep_owner(int fd, const struct stat& old) {
    if (uninterrupted([&] { return ::fchown(fd, old.st_uid, old.st_gid); }) == 0) return;
    (void)!uninterrupted([&] { return ::fchown(fd, static_cast<uid_t>(-1), old.st_gid); });
}

void replace(const fs::path& file, const struct stat* old, Pieces bytes) {
    const EndingWaits whole_or_nothing;
    const fs::path folder = folder_of(file);
    std::string temporary;
    Descriptor fd(make_temporary_file(folder, temporary));
    if (!fd.is_open()) throw IoError("cannot be written: no file can be made in its folder: " + reason());
    try {
        write_all(fd.get(), bytes);
        if (old != nullptr) keep_owner(fd.get(), *old);
        const mode_t mode = old != nullptr ? old->st_mode & 07777 : mode_of_new_files();
        if (uninterrupted([&] { return ::fchmod(fd.get(), mode); }) != 0 ||
            uninterrupted([&] { return ::fsync(fd.get()); }) != 0 || !fd.close() ||
            ::rename(temporary.c_str(), file.c_str()) != 0) {
            throw IoError("cannot be written: " + reason());
        }
    } catch (const IoError&) {
        ::unlink(temporary.c_str());
        throw;
    }
    sync_folder(folder);
}

}  // namespace

std::string read_whole(const std::string& file) {
    if (file == kStandardStream) return read_all(STDIN_FILENO);
    const Descriptor fd(open_file(file, O_RDONLY));
    if (!fd.is_open()) throw IoError("cannot be read: " + reason());
    return read_all(fd.get());
}

void write_standard_output(Pieces bytes) {
    write_all(STDOUT_FILENO, bytes);
    // Some file systems report a full disk only on closing; the copy's closing tells without giving up the stream.
    Descriptor copy(::dup(STDOUT_FILENO));
    if (!copy.is_open() || !copy.close()) throw IoError("cannot be written: " + reason());
}

void make_folder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw IoError("cannot be made: " + error.message());
}

void put_in_place(const fs::path& file, Pieces bytes) {
    struct stat old {};
    const bool exists = ::stat(file.c_str(), &old) == 0;
    // What cannot be looked at might be a device, or have a mode to keep.
    if (!exists && errno != ENOENT && errno != ENOTDIR) throw IoError("cannot be written: " + reason());
    if (exists && S_ISDIR(old.st_mode)) throw IoError("cannot be written: it is a folder");
    if (exists && !S_ISREG(old.st_mode)) {
        write_directly(file, bytes);
    } else {
        replace(follow_links(file), exists ? &old : nullptr, bytes);
    }
}

}  // namespace cli
