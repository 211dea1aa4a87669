// A limit for what is being unpacked.
#pragma once

#include <cstddef>
#include <string>

namespace lottie::packed {

class UnpackLimit {
  public:
    // `packed` bytes of `entry` are going to be unpacked, to `most` at the most.
    UnpackLimit(std::size_t packed, std::size_t most, std::string entry);

    // So many bytes more came out. Throws ArchiveError as soon as it is too much.
    void add(std::size_t count);

  private:
    std::size_t packed_;
    std::size_t most_;
    std::string entry_;
    std::size_t unpacked_ = 0;
};

}  // namespace lottie::packed
