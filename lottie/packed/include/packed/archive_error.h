// Why a file is refused as an archive.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace lottie::packed {

// what() is one sentence without the file's name: what is wrong and what to do about it.
class ArchiveError : public std::runtime_error {
  public:
    explicit ArchiveError(const std::string& sentence, std::string entry = "")
        : std::runtime_error(sentence), entry_(std::move(entry)) {}

    // The entry of the archive that is at fault, as the archive spells it; empty for the archive as a whole.
    const std::string& entry() const { return entry_; }

  private:
    std::string entry_;
};

}  // namespace lottie::packed
