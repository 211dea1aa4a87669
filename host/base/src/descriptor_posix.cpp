// File descriptors used whole.
#include "descriptor.h"

#include <array>

namespace host::base {

bool write_all(int fd, std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t count = retry_on_eintr([&] { return ::write(fd, bytes.data(), bytes.size()); });
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));  // less than all only when the disk is full
    }
    return true;
}

ReadResult read_more(int fd, std::string& bytes) {
    std::array<char, 1 << 16> block;
    const ssize_t count = retry_on_eintr([&] { return ::read(fd, block.data(), block.size()); });
    if (count < 0) return ReadResult::failed;
    bytes.append(block.data(), static_cast<std::size_t>(count));
    return count == 0 ? ReadResult::end : ReadResult::some;
}

}  // namespace host::base
