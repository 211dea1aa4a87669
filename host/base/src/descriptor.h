// File descriptors: owned, and used whole.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace host::base {

// A call that a signal interrupted is made again.
template <class Call>
auto retry_on_eintr(Call call) {
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

class Descriptor {
  public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }

    int get() const { return fd_; }
    bool is_open() const { return fd_ >= 0; }
    // Closing can be what reports that the disk is full. An interrupted one has closed all the same.
    bool close() { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0 || errno == EINTR; }

  private:
    int fd_;
};

// False with errno set when not all could be written.
bool write_all(int fd, std::string_view bytes) noexcept;

// Appends the next bytes; errno is set after a failure.
enum class ReadResult { some, end, failed };
ReadResult read_more(int fd, std::string& bytes);

}  // namespace host::base
