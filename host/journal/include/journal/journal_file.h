// The file that a journal is written to.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace host::journal {

// A file that cannot be opened; what() is one sentence without the file's name.
class FileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Nothing waits in this process: a written line is the kernel's, and a crash of the program loses none.
class JournalFile {
  public:
    // Makes the file, or empties it. Throws FileError.
    explicit JournalFile(const std::filesystem::path& file);
    ~JournalFile();
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    // With one write. After a write that failed nothing more is written.
    void write(std::string_view line) noexcept;
    // Why a write failed, one sentence without the file's name; empty if none did.
    std::string problem() const;

  private:
    int descriptor_;
    int error_ = 0;
};

}  // namespace host::journal
