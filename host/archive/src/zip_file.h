// Animations in a zip archive with a manifest.
#pragma once

#include <memory>
#include <string>

#include "packed.h"

namespace host::archive {

// Throws ArchiveError.
std::unique_ptr<Packed> read_zip(std::string bytes);

}  // namespace host::archive
