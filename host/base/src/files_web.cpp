// Whole files, through the JavaScript around the program.
#include "base/files.h"

#include <charconv>

#include "folder_entries.h"
#include "linked_module_name.h"
#include "web_imports.h"

namespace host::base {
namespace {

namespace fs = std::filesystem;

void throw_unless(int is_done, const char* what_failed) {
    if (is_done == 0) throw FileError(what_failed, web_answer());
}

constexpr const char* kUnreadable = "cannot be read";
constexpr const char* kUnwritable = "cannot be written";

std::string read(const fs::path& file, std::size_t limit, bool only_regular) {
    const std::string& name = file.native();
    throw_unless(web_read_file(name.data(), name.size(), static_cast<double>(limit), only_regular ? 1 : 0),
                 kUnreadable);
    return web_answer();
}

struct FileNumbers {
    FileIdentity identity{};
    std::size_t hard_links = 0;
};

std::optional<FileNumbers> numbers_of(const fs::path& file) {
    if (web_identity(file.native().data(), file.native().size()) == 0) return std::nullopt;
    const std::string answer = web_answer();
    const char* at = answer.data();
    const char* const end = at + answer.size();
    const auto next = [&at, end](auto& number) {
        at = std::from_chars(at, end, number).ptr;
        if (at != end) ++at;
    };
    FileNumbers numbers;
    next(numbers.identity.device);
    next(numbers.identity.number);
    next(numbers.hard_links);
    return numbers;
}

}  // namespace

std::string read_file(const fs::path& file, std::size_t limit) {
    return read(file, limit, false);
}

std::string read_own_file(const fs::path& file, std::size_t limit) {
    return kind_of(file) == FileKind::none ? std::string() : read(file, limit, true);
}

// JavaScript's streams have no numbers that files could take.
void keep_places_of_standard_streams() {}

std::string read_standard_input(std::size_t limit) {
    throw_unless(web_read_standard_input(static_cast<double>(limit)), kUnreadable);
    return web_answer();
}

void write_standard_output(Pieces bytes) {
    for (const std::string_view piece : bytes.pieces()) {
        throw_unless(web_write_standard_output(piece.data(), piece.size()), kUnwritable);
    }
}

// A linked module counts as a file, so that it can be found.
FileKind kind_of(const fs::path& file) {
    const auto kind = static_cast<FileKind>(web_kind_of_file(file.native().data(), file.native().size()));
    return kind == FileKind::none && is_linked_module(file) ? FileKind::file : kind;
}

std::vector<FolderEntry> entries_of(const fs::path& folder) {
    throw_unless(web_entries_of(folder.native().data(), folder.native().size()), "cannot be listed");
    const std::string answer = web_answer();
    std::vector<FolderEntry> entries;
    for (std::size_t at = 0; at < answer.size();) {
        const std::size_t end = answer.find('\0', at);
        entries.push_back({answer.substr(at + 1, end - at - 1), static_cast<FileKind>(answer[at] - '0')});
        at = end + 1;
    }
    return entries;
}

fs::path real_path(const fs::path& file) {
    if (web_real_path(file.native().data(), file.native().size()) == 0) return file;
    return web_answer();
}

void make_folder(const fs::path& folder) {
    throw_unless(web_make_folder(folder.native().data(), folder.native().size()), "cannot be made");
}

std::optional<FileIdentity> identity_of(const fs::path& file) {
    const auto numbers = numbers_of(file);
    return numbers ? std::optional(numbers->identity) : std::nullopt;
}

bool are_same_file(const fs::path& a, const fs::path& b) {
    const auto first = identity_of(a);
    return (first && first == identity_of(b)) || real_path(a) == real_path(b);
}

std::size_t other_hard_links(const fs::path& file) {
    const auto numbers = numbers_of(file);
    return numbers && numbers->hard_links > 1 ? numbers->hard_links - 1 : 0;
}

void replace_file(const fs::path& file, Pieces bytes, const ReplaceOptions& options) {
    std::string all;
    for (const std::string_view piece : bytes.pieces()) all += piece;
    throw_unless(web_replace_file(file.native().data(), file.native().size(), all.data(), all.size(),
                                  options.temporary_prefix.data(), options.temporary_prefix.size(),
                                  options.even_if_read_only ? 1 : 0),
                 kUnwritable);
}

void move_file(const fs::path& file, const fs::path& other) {
    throw_unless(
        web_move_file(file.native().data(), file.native().size(), other.native().data(), other.native().size()),
        "cannot be moved");
}

// JavaScript has no locks.
FolderLock::FolderLock(const fs::path& folder) {
    throw_unless(web_make_folder(folder.native().data(), folder.native().size()), "cannot be made or opened");
}

FolderLock::~FolderLock() = default;

// Its lines must outlive a crash, and here nothing does.
LineFile::LineFile(const fs::path& /*file*/) : descriptor_(-1) {
    throw FileError(kUnwritable,
                    "WebAssembly keeps no journals, for nothing of it outlives a crash; use the native command");
}

LineFile::~LineFile() = default;

void LineFile::write(std::string_view /*line*/) noexcept {}

std::string LineFile::problem() const {
    return "";
}

}  // namespace host::base
