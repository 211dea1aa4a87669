// Animations in a zip archive with a manifest.
#pragma once

#include <memory>
#include <string>

#include "packed.h"

namespace lottie::packed {

// Throws ArchiveError.
std::unique_ptr<Packed> read_zip(std::string bytes);

}  // namespace lottie::packed
