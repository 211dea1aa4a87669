// Reading whole files and putting whole files in place.
#pragma once

#include <concepts>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

// The name that stands for standard input, and as an output for standard output.
inline constexpr std::string_view kStandardStream = "-";

// A failed read or write; what() is one sentence without the file's name.
class IoError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
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

// The bytes of a file, or of standard input for "-". Throws IoError.
std::string read_whole(const std::string& file);

// Throws IoError; a reader that has gone away is one, not a signal, once broken pipes are ignored.
void write_standard_output(Pieces bytes);

// Makes the folder and those it stands in, where they are missing. Throws IoError.
void make_folder(const std::filesystem::path& folder);

// Makes `bytes` the content of the file or leaves everything as it was: they go to a temporary file in the same folder,
// reach the disk, and take the file's place by renaming. A process that is killed leaves that file behind at most,
// named .exflate- and six characters; an interrupt waits until it is gone. An existing file keeps its mode, and its
// owner and group where that is allowed; its other hard links keep the old content; a symbolic link stays and the file
// it means is replaced. What is no regular file (a device, a pipe) is written directly. Throws IoError.
void put_in_place(const std::filesystem::path& file, Pieces bytes);

}  // namespace cli
