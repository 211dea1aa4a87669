// Whole files, "-" being a standard stream.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

// The name that stands for standard input, and as an output for standard output.
inline constexpr std::string_view kStandardStream = "-";

// What is larger is refused: no real animation comes near, and several times as much memory is needed to work on one.
inline constexpr std::size_t kMaxInputBytes = std::size_t{1} << 30;

// Throws host::base::FileError, whose sentence lacks the file's name.
std::string read_whole(const std::string& file);

}  // namespace cli
