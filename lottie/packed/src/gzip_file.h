// An animation packed with gzip.
#pragma once

#include <memory>
#include <string>

#include "packed.h"

namespace lottie::packed {

// Throws ArchiveError.
std::unique_ptr<Packed> read_gzip(std::string bytes);

}  // namespace lottie::packed
