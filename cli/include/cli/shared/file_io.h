// Whole files, "-" being a standard stream.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

// The name that stands for standard input, and as an output for standard output.
inline constexpr std::string_view kStandardStream = "-";

// Larger files are refused: no real animation comes near this size, and working on one takes several times the memory.
inline constexpr std::size_t kMaxInputBytes = std::size_t{1} << 30;

// Throws host::base::FileError, whose sentence does not name the file.
std::string read_whole(const std::string& file);

}  // namespace cli
