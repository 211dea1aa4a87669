// An animation packed with gzip.
#pragma once

#include <memory>
#include <string>

#include "packed_file.h"

namespace lottie::packed {

// Throws ArchiveError.
std::unique_ptr<PackedFile> read_gzip(std::string bytes);

}  // namespace lottie::packed
