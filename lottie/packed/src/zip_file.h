// Animations in a zip archive with a manifest.
#pragma once

#include <memory>
#include <string>

#include "packed_file.h"

namespace lottie::packed {

// Throws ArchiveError.
std::unique_ptr<PackedFile> read_zip(std::string bytes);

}  // namespace lottie::packed
