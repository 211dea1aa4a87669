// Whole files: read with a limit, put in place as a whole.
#pragma once

#include <concepts>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host::base {

// A file that cannot be read or written; what() is one sentence without the file's name: "cannot be read: REASON".
class FileError : public std::runtime_error {
  public:
    FileError(const std::string& what_failed, std::string reason)
        : std::runtime_error(what_failed + ": " + reason), reason_(std::move(reason)) {}
    const std::string& reason() const { return reason_; }

  private:
    std::string reason_;
};

// Bytes to write: one text, or several that follow one another. Points at what it is made from.
class Pieces {
  public:
    template <std::convertible_to<std::string_view> Text>
    Pieces(const Text& text) : one_(text) {}
    Pieces(const std::vector<std::string_view>& several) : several_(&several) {}

    std::span<const std::string_view> pieces() const {
        return several_ != nullptr ? std::span(*several_) : std::span(&one_, 1);
    }

  private:
    std::string_view one_;
    const std::vector<std::string_view>* several_ = nullptr;
};

// The file's bytes, at most `limit` of them; what has more is refused, before it is read where its size is known. A
// pipe is read to its end, a device is refused. Throws FileError.
std::string read_file(const std::filesystem::path& file, std::size_t limit);

// The same of a file that a program keeps for itself; empty if there is none. Only a regular file is read: a pipe in
// its place could make the reader wait for ever. Throws FileError.
std::string read_own_file(const std::filesystem::path& file, std::size_t limit);

// A standard stream that is closed stays so: no file that is opened takes its place.
void keep_places_of_standard_streams();

std::string read_standard_input(std::size_t limit);

// Throws FileError; a reader that has gone away is one, not a signal, once ignore_failed_write_signals() was called.
void write_standard_output(Pieces bytes);

// What a name stands for, symbolic links being followed.
enum class FileKind { none, file, folder, other };
FileKind kind_of(const std::filesystem::path& file);

// The regular files in a folder and in the folders in it, as names below it, sorted. What is hidden (a name that begins
// with a dot) and what symbolic links mean are left out, and so is the folder `except`. Throws FileError: "cannot be
// listed: REASON", the reason naming the folder inside that cannot.
std::vector<std::string> files_below(const std::filesystem::path& folder, const std::filesystem::path& except = {});

// The absolute name without symbolic links, as far as there are files; the name as it is where the system does not
// tell.
std::filesystem::path real_path(const std::filesystem::path& file);

// Makes the folder and those it stands in, where they are missing. Throws FileError.
void make_folder(const std::filesystem::path& folder);

// Whether both names mean one file, made already or not.
bool are_same_file(const std::filesystem::path& a, const std::filesystem::path& b);

// What tells a file from all others that there are now, whatever it is called; none if there is no such file.
struct FileIdentity {
    unsigned long long device;
    unsigned long long number;
    auto operator<=>(const FileIdentity&) const = default;
};
std::optional<FileIdentity> identity_of(const std::filesystem::path& file);

// Why a file that may not be written is refused.
inline constexpr const char* kReadOnly = "it is read-only";

struct ReplaceOptions {
    // What the name of the new file begins with until it takes its place; six characters follow.
    std::string_view temporary_prefix;
    // An existing file that may not be written is replaced all the same, if its folder allows it.
    bool even_if_read_only = true;
};

// Makes `bytes` the content of the file or leaves everything as it was: they go to a temporary file in the same folder,
// reach the disk, and take the file's place by renaming. A process that is killed leaves that file behind at most; an
// interrupt waits until it is gone. In a ChildProcess this waits for the parent, which renames when it hears. An
// existing file keeps its mode, its extended attributes with its access list, and its owner and group where that is
// allowed; its other hard links keep the old content; a symbolic link stays and the file it means is replaced. What is
// not a regular file (a device, a pipe) is written directly. Throws FileError.
void replace_file(const std::filesystem::path& file, Pieces bytes, const ReplaceOptions& options);

// How many names the file has beside this one, a symbolic link being followed; 0 if there is no such file.
std::size_t other_hard_links(const std::filesystem::path& file);

// Moves the file, over whatever has the other name; no matter if there is none. Throws FileError.
void move_file(const std::filesystem::path& file, const std::filesystem::path& other);

// Keeps other processes that make one of these out of the folder, which is made if it is missing. Released by the
// destructor, and by the system when the process ends. A file system without locks is not an error. Throws FileError.
class FolderLock {
  public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int folder_ = -1;
};

// A file that grows line by line. Nothing waits in this process: a written line is the kernel's, and a crash of the
// program loses none.
class LineFile {
  public:
    // Makes the file, or empties it. Throws FileError.
    explicit LineFile(const std::filesystem::path& file);
    ~LineFile();
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;

    // Writes the line in one call. After a call that failed nothing more is written.
    void write(std::string_view line) noexcept;
    // Why a write failed, one sentence without the file's name; empty if none did.
    std::string problem() const;

  private:
    int descriptor_;
    int error_ = 0;
};

}  // namespace host::base
