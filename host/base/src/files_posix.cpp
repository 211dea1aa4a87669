// Whole files on POSIX systems: reading, and questions about files.
#include "base/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <optional>

#include "descriptor.h"
#include "folder_entries.h"

namespace host::base {
namespace {

namespace fs = std::filesystem;

// The most that one read gives.
constexpr std::size_t kMaxBlock = std::size_t{1} << 16;

constexpr const char* kUnreadable = "cannot be read";
constexpr const char* kUnwritable = "cannot be written";

std::string reason() {
    return std::strerror(errno);
}

std::string in_units(std::size_t bytes) {
    constexpr std::size_t kMega = std::size_t{1} << 20;
    return bytes < 1024 * kMega ? std::to_string(bytes / kMega) + " MB" : std::to_string(bytes / kMega / 1024) + " GB";
}

[[noreturn]] void refuse_size(std::size_t limit) {
    throw FileError(kUnreadable, "it is larger than " + in_units(limit) + ", the most that is read");
}

// For one more block. Left to itself the text would grow to twice what is ever needed.
void make_room(std::string& bytes, std::size_t limit) {
    if (bytes.capacity() - bytes.size() >= kMaxBlock) return;
    std::string larger;
    const std::size_t twice = 2 * bytes.size();
    larger.reserve((twice > limit / 2 ? limit : twice) + kMaxBlock);
    larger += bytes;
    bytes.swap(larger);
}

std::string read_all(int fd, std::size_t size, std::size_t limit) {
    if (size > limit) refuse_size(limit);
    std::string bytes;
    bytes.reserve(size + 1);
    for (;;) {
        switch (read_more(fd, bytes)) {
            case ReadResult::end:
                return bytes;
            case ReadResult::failed:
                throw FileError(kUnreadable, reason());
            case ReadResult::some:
                if (bytes.size() > limit) refuse_size(limit);
                if (bytes.size() > size) make_room(bytes, limit);
        }
    }
}

struct stat facts_of(int fd) {
    struct stat facts {};
    if (::fstat(fd, &facts) != 0) throw FileError(kUnreadable, reason());
    return facts;
}

Descriptor open_to_read(const fs::path& file, int more_flags = 0) {
    return Descriptor(
        retry_on_eintr([&] { return ::open(file.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC | more_flags); }));
}

std::string read_open_file(int fd, std::size_t limit) {
    const struct stat facts = facts_of(fd);
    if (S_ISDIR(facts.st_mode)) throw FileError(kUnreadable, "it is a folder");
    const bool is_terminal = S_ISCHR(facts.st_mode) && ::isatty(fd) == 1;
    if (S_ISBLK(facts.st_mode) || (S_ISCHR(facts.st_mode) && !is_terminal))
        throw FileError(kUnreadable, "it is a device");
    return read_all(fd, S_ISREG(facts.st_mode) ? static_cast<std::size_t>(facts.st_size) : 0, limit);
}

}  // namespace

std::string read_file(const fs::path& file, std::size_t limit) {
    const Descriptor fd = open_to_read(file);
    if (!fd.is_open()) throw FileError(kUnreadable, reason());
    return read_open_file(fd.get(), limit);
}

std::string read_own_file(const fs::path& file, std::size_t limit) {
    const Descriptor fd = open_to_read(file, O_NONBLOCK);
    // A path through something that is not a folder has no file at its end either; writing will say so.
    if (!fd.is_open() && (errno == ENOENT || errno == ENOTDIR)) return {};
    if (!fd.is_open()) throw FileError(kUnreadable, reason());
    const struct stat facts = facts_of(fd.get());
    if (!S_ISREG(facts.st_mode)) {
        throw FileError(kUnreadable, S_ISDIR(facts.st_mode) ? std::strerror(EISDIR) : "it is not a regular file");
    }
    return read_all(fd.get(), static_cast<std::size_t>(facts.st_size), limit);
}

void keep_places_of_standard_streams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0) continue;
        // Takes the lowest free number. Of no use to anybody: standard input can only be written, the others only read.
        (void)::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

std::string read_standard_input(std::size_t limit) {
    struct stat facts {};
    const bool has_size = ::fstat(STDIN_FILENO, &facts) == 0 && S_ISREG(facts.st_mode);
    return read_all(STDIN_FILENO, has_size ? static_cast<std::size_t>(facts.st_size) : 0, limit);
}

void make_folder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw FileError("cannot be made", error.message());
}

std::optional<FileIdentity> identity_of(const fs::path& file) {
    struct stat facts {};
    if (::stat(file.c_str(), &facts) != 0) return std::nullopt;
    return FileIdentity{facts.st_dev, facts.st_ino};
}

FileKind kind_of(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) return FileKind::none;
    if (fs::is_directory(status)) return FileKind::folder;
    return fs::is_regular_file(status) ? FileKind::file : FileKind::other;
}

std::vector<FolderEntry> entries_of(const fs::path& folder) {
    std::vector<FolderEntry> entries;
    std::error_code error;
    fs::directory_iterator at(folder, error);
    for (; !error && at != fs::directory_iterator(); at.increment(error)) {
        const fs::file_type type = at->symlink_status(error).type();
        if (error && type != fs::file_type::not_found) break;
        entries.push_back({at->path().filename().string(), type == fs::file_type::regular     ? FileKind::file
                                                           : type == fs::file_type::directory ? FileKind::folder
                                                                                              : FileKind::other});
    }
    if (error) throw FileError("cannot be listed", error.message());
    return entries;
}

fs::path real_path(const fs::path& file) {
    std::error_code error;
    const fs::path absolute = fs::absolute(file, error);
    if (error) return file;
    const fs::path real = fs::weakly_canonical(absolute, error);
    return error ? absolute : real;
}

bool are_same_file(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return fs::equivalent(a, b, error) || real_path(a) == real_path(b);
}

std::size_t other_hard_links(const fs::path& file) {
    struct stat facts {};
    return ::stat(file.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) ? facts.st_nlink - 1 : 0;
}

void move_file(const fs::path& file, const fs::path& other) {
    if (std::rename(file.c_str(), other.c_str()) != 0 && errno != ENOENT) throw FileError("cannot be moved", reason());
}

FolderLock::FolderLock(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    folder_ = retry_on_eintr([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (folder_ < 0) throw FileError("cannot be made or opened", reason());
    (void)retry_on_eintr([&] { return ::flock(folder_, LOCK_EX); });  // without locks there are none
}

FolderLock::~FolderLock() {
    ::close(folder_);
}

LineFile::LineFile(const fs::path& file)
    : descriptor_(retry_on_eintr(
          [&] { return ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666); })) {
    if (descriptor_ < 0) throw FileError(kUnwritable, reason());
}

LineFile::~LineFile() {
    ::close(descriptor_);
}

void LineFile::write(std::string_view line) noexcept {
    if (error_ == 0 && !write_all(descriptor_, line)) error_ = errno;
}

std::string LineFile::problem() const {
    return error_ == 0 ? std::string() : std::string(kUnwritable) + ": " + std::strerror(error_);
}

}  // namespace host::base
