// Putting whole files in place on POSIX systems.
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/files.h"
#include "base/signals.h"
#include "descriptor.h"
#include "family_rename.h"

namespace host::base {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& reason) {
    throw FileError("cannot be written", reason);
}

[[noreturn]] void refuse_with_errno() {
    refuse(std::strerror(errno));
}

// As many pieces at once as the system takes.
void write_pieces(int fd, Pieces bytes) {
    std::vector<iovec> rest;
    rest.reserve(bytes.pieces().size());
    for (const std::string_view piece : bytes.pieces()) {
        if (!piece.empty()) rest.push_back({const_cast<char*>(piece.data()), piece.size()});
    }
    for (auto next = rest.begin(); next != rest.end();) {
        const auto count = std::min<std::ptrdiff_t>(rest.end() - next, IOV_MAX);
        const ssize_t result = retry_on_eintr([&] { return ::writev(fd, &*next, static_cast<int>(count)); });
        if (result < 0) refuse_with_errno();
        auto written = static_cast<std::size_t>(result);
        while (next != rest.end() && written >= next->iov_len) written -= (next++)->iov_len;
        if (next == rest.end()) break;
        next->iov_base = static_cast<char*>(next->iov_base) + written;
        next->iov_len -= written;
    }
}

// The file that a chain of symbolic links ends at, whether or not it exists. Throws FileError rather than give a link:
// the new file would take the link's place.
fs::path follow_links(fs::path file) {
    for (;;) {  // an endless chain has been refused before
        std::error_code error;
        const fs::file_type type = fs::symlink_status(file, error).type();
        if (type == fs::file_type::none) refuse(error.message());
        if (type != fs::file_type::symlink) return file;
        const fs::path target = fs::read_symlink(file, error);
        if (error) refuse(error.message());
        file = target.is_absolute() ? target : file.parent_path() / target;
    }
}

void sync_folder(const fs::path& folder) {
    const Descriptor fd(retry_on_eintr([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    // The new file is whole and in place already; a file system that cannot sync folders is no reason to fail.
    if (fd.is_open()) (void)::fsync(fd.get());
}

mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void write_directly(const fs::path& file, Pieces bytes) {
    Descriptor fd(retry_on_eintr([&] { return ::open(file.c_str(), O_WRONLY | O_CLOEXEC); }));
    if (!fd.is_open()) refuse_with_errno();
    write_pieces(fd.get(), bytes);
    if (!fd.close()) refuse_with_errno();
}

// Only root may give files away; for anybody else the file becomes theirs, as with any editor, and keeps its group
// where they are in it.
void keep_owner(int fd, const struct stat& old) {
    if (retry_on_eintr([&] { return ::fchown(fd, old.st_uid, old.st_gid); }) == 0) return;
    (void)!retry_on_eintr([&] { return ::fchown(fd, static_cast<uid_t>(-1), old.st_gid); });
}

// Extended attributes, the access list among them: what the system lets this user write. Some are its own business, and
// some file systems have none.
void keep_attributes(const fs::path& file, int fd) {
    std::string names(XATTR_LIST_MAX, '\0');
    const ssize_t length = ::listxattr(file.c_str(), names.data(), names.size());
    names.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    std::string value;
    for (std::size_t at = 0; at < names.size(); at += std::strlen(&names[at]) + 1) {
        value.resize(XATTR_SIZE_MAX);
        const ssize_t size = ::getxattr(file.c_str(), &names[at], value.data(), value.size());
        if (size >= 0) (void)!::fsetxattr(fd, &names[at], value.data(), static_cast<std::size_t>(size), 0);
    }
}

void replace(const fs::path& file, const struct stat* old, Pieces bytes, std::string_view temporary_prefix) {
    const BlockTermination whole_or_nothing;
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    std::string temporary;
    Descriptor fd(retry_on_eintr([&] {
        temporary = (folder / (std::string(temporary_prefix) + "XXXXXX")).string();
        return ::mkostemp(temporary.data(), O_CLOEXEC);
    }));
    if (!fd.is_open()) refuse("no file can be made in its folder: " + std::string(std::strerror(errno)));
    try {
        write_pieces(fd.get(), bytes);
        if (old != nullptr) {
            keep_owner(fd.get(), *old);
            keep_attributes(file, fd.get());
        }
        const mode_t mode = old != nullptr ? old->st_mode & 07777 : mode_of_new_files();
        if (retry_on_eintr([&] { return ::fchmod(fd.get(), mode); }) != 0 ||
            retry_on_eintr([&] { return ::fsync(fd.get()); }) != 0 || !fd.close() ||
            !rename_in_family(temporary, file.string())) {
            refuse_with_errno();
        }
    } catch (const FileError&) {
        ::unlink(temporary.c_str());
        throw;
    }
    sync_folder(folder);
}

}  // namespace

void write_standard_output(Pieces bytes) {
    write_pieces(STDOUT_FILENO, bytes);
    // Some file systems report a full disk only on closing; the copy's closing tells without giving up the stream.
    Descriptor copy(::dup(STDOUT_FILENO));
    if (!copy.is_open() || !copy.close()) refuse_with_errno();
}

void replace_file(const fs::path& file, Pieces bytes, const ReplaceOptions& options) {
    struct stat old {};
    const bool exists = ::stat(file.c_str(), &old) == 0;
    // What cannot be looked at might be a device, or have a mode to keep.
    if (!exists && errno != ENOENT && errno != ENOTDIR) refuse_with_errno();
    if (exists && S_ISDIR(old.st_mode)) refuse("it is a folder");
    if (exists && !S_ISREG(old.st_mode)) return write_directly(file, bytes);
    if (exists && !options.even_if_read_only && (old.st_mode & 0222) == 0) refuse(kReadOnly);
    replace(follow_links(file), exists ? &old : nullptr, bytes, options.temporary_prefix);
}

}  // namespace host::base
