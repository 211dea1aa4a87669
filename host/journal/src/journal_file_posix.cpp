// The file that a journal is written to.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "journal/journal_file.h"

namespace host::journal {

JournalFile::JournalFile(const std::filesystem::path& file)
    : descriptor_(::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) throw FileError(std::string("cannot be written: ") + std::strerror(errno));
}

JournalFile::~JournalFile() {
    ::close(descriptor_);
}

void JournalFile::write(std::string_view line) noexcept {
    while (error_ == 0 && !line.empty()) {
        const ssize_t count = ::write(descriptor_, line.data(), line.size());
        if (count >= 0)
            line.remove_prefix(static_cast<std::size_t>(count));  // less than all only when the disk is full
        else if (errno != EINTR)
            error_ = errno;
    }
}

std::string JournalFile::problem() const {
    return error_ == 0 ? std::string() : std::string("cannot be written: ") + std::strerror(error_);
}

}  // namespace host::journal
